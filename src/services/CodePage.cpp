#include "services/CodePage.h"

#include <iconv.h>

#include <array>
#include <cerrno>
#include <unordered_map>
#include <utility>

#include "core/Ascii.h"
#include "core/Utf8.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"

namespace vendrel {
namespace {

constexpr std::string_view DefaultName = "windows-1252";

struct Alias {
  std::string_view Given, Name, SystemName;
};

// Pages whose number or common name is not what the C library calls them.
constexpr Alias Aliases[] = {
    {"65001", "utf-8", "UTF-8"},
    {"utf8", "utf-8", "UTF-8"},
    {"utf-8", "utf-8", "UTF-8"},
    {"54936", "gb18030", "GB18030"},
    {"shift_jis", "cp932", "CP932"},
    {"shift-jis", "cp932", "CP932"},
    {"sjis", "cp932", "CP932"},
    {"gbk", "cp936", "CP936"},
    {"gb2312", "cp936", "CP936"},
    {"euc-kr", "cp949", "CP949"},
    {"uhc", "cp949", "CP949"},
    {"big5", "cp950", "CP950"},
    {"1361", "cp1361", "JOHAB"},
    {"20866", "koi8-r", "KOI8-R"},
    {"21866", "koi8-u", "KOI8-U"},
    {"51932", "euc-jp", "EUC-JP"},
    {"10000", "macintosh", "MACINTOSH"},
    {"20127", "windows-1252", "CP1252"},
    {"us-ascii", "windows-1252", "CP1252"},
    {"ascii", "windows-1252", "CP1252"},
    {"ansi", "windows-1252", "CP1252"},
};

bool IsNumber(std::string_view text) {
  for (const char c : text)
    if (!IsDigitAscii(c)) return false;
  return !text.empty() && text.size() <= 5;
}

// Own name and the C library's name of a page.
std::pair<std::string, std::string> NamesOf(std::string_view given) {
  std::string name = LowerAscii(Trim(given));
  for (const std::string_view prefix : {"windows-", "cp-", "cp"})
    if (name.compare(0, prefix.size(), prefix) == 0 && IsNumber(name.substr(prefix.size())))
      name.erase(0, prefix.size());
  if (name.empty()) name = DefaultName.substr(8);
  for (const Alias& alias : Aliases)
    if (alias.Given == name) return {std::string(alias.Name), std::string(alias.SystemName)};
  if (!IsNumber(name)) return {name, UpperAscii(name)};
  const int number = std::stoi(name);
  if (number >= 28591 && number <= 28606) {
    const std::string part = std::to_string(number - 28590);
    return {"iso-8859-" + part, "ISO-8859-" + part};
  }
  return {(number >= 1250 && number <= 1258 ? "windows-" : "cp") + name, "CP" + name};
}

// The page that nearly all files have: opening a converter to ask it for these costs more than to
// decode a file. The holes are control characters.
constexpr std::string_view kDefaultSystemName = "CP1252";
constexpr char32_t kDefaultFrom80[] = {
    0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};
static_assert(std::size(kDefaultFrom80) == 0x20);

bool IsUndefined(char32_t c) { return c == ReplacementCharacter || (c >= 0x80 && c < 0xA0); }

}  // namespace

struct CodePage::Tables {
  std::array<char32_t, 256> Characters{};
  /// The first 128 are those of ASCII.
  bool HoldsAscii = true;
  /// Filled by the first look-up: few pages are written in.
  std::unordered_map<char32_t, unsigned char> Bytes;

  void Set(unsigned byte, char32_t c) {
    Characters[byte] = c;
    if (byte < 0x80 && c != byte) HoldsAscii = false;
  }
  static std::unique_ptr<Tables> OfDefault() {
    auto tables = std::make_unique<Tables>();
    for (unsigned byte = 0; byte < 256; ++byte)
      tables->Set(byte, byte >= 0x80 && byte < 0xA0 ? kDefaultFrom80[byte - 0x80] : byte);
    return tables;
  }
  /// The byte of a character; -1 if it has none.
  int ByteOf(char32_t c) {
    if (Bytes.empty())
      for (unsigned byte = 0; byte < 256; ++byte)
        if (Characters[byte] != ReplacementCharacter)
          Bytes.emplace(Characters[byte], static_cast<unsigned char>(byte));
    const auto found = Bytes.find(c);
    return found == Bytes.end() ? -1 : found->second;
  }
};

struct CodePage::Converters {
  iconv_t ToText = reinterpret_cast<iconv_t>(-1);
  iconv_t FromText = reinterpret_cast<iconv_t>(-1);
  ~Converters() {
    if (IsOpen(ToText)) iconv_close(ToText);
    if (IsOpen(FromText)) iconv_close(FromText);
  }
  static bool IsOpen(iconv_t converter) { return converter != reinterpret_cast<iconv_t>(-1); }

  // Turns one byte into one character; 0xFFFFFFFF where it begins a longer one.
  char32_t Single(unsigned char byte) const {
    char in = static_cast<char>(byte), buffer[16];
    char *from = &in, *to = buffer;
    std::size_t fromLeft = 1, toLeft = sizeof buffer;
    iconv(ToText, nullptr, nullptr, nullptr, nullptr);
    const std::size_t result = iconv(ToText, &from, &fromLeft, &to, &toLeft);
    if (result == static_cast<std::size_t>(-1))
      return errno == EINVAL ? IllFormed : ReplacementCharacter;
    // Some pages hold a letter back to join it with an accent behind it.
    iconv(ToText, nullptr, nullptr, &to, &toLeft);
    std::size_t at = 0;
    return TakeCharacter(std::string_view(buffer, sizeof buffer - toLeft), at);
  }
};

CodePage::~CodePage() = default;

CodePage::CodePage(std::string name, const std::string& systemName) : mName(std::move(name)) {
  if (systemName == kDefaultSystemName) {
    mTables = Tables::OfDefault();
    return;
  }
  mConverters = std::make_unique<Converters>();
  mConverters->ToText = iconv_open("UTF-8", systemName.c_str());
  mConverters->FromText = iconv_open(systemName.c_str(), "UTF-8");
  if (!Converters::IsOpen(mConverters->ToText)) return;
  auto tables = std::make_unique<Tables>();
  for (unsigned byte = 0; byte < 256; ++byte) {
    char32_t c = mConverters->Single(static_cast<unsigned char>(byte));
    if (c == IllFormed) return;  // a page of longer characters
    if (c == ReplacementCharacter && byte >= 0x80 && byte < 0xA0) c = byte;
    tables->Set(byte, c);
  }
  mTables = std::move(tables);
}

// A converter has a state: pages are those of one workspace.
struct CodePage::PageStore {
  std::unordered_map<std::string, std::unique_ptr<CodePage>> Pages;
  const CodePage* Default = nullptr;
  /// What was asked for last, which is asked for again with each file.
  std::string LastGiven;
  const CodePage* LastFound = nullptr;
};

// Whether it is there, and what source is made of stands in it at its place.
bool CodePage::HoldsAscii() const {
  if (!mConverters) return true;
  const Converters& converters = *mConverters;
  return Converters::IsOpen(converters.ToText) && Converters::IsOpen(converters.FromText) &&
         converters.Single('A') == 'A' && converters.Single('\n') == '\n' &&
         converters.Single('"') == '"';
}

const CodePage* CodePage::Find(std::string_view given) {
  PageStore& store = InUse<PageStore>();
  if (store.LastFound && store.LastGiven == given) return store.LastFound;
  const auto [name, systemName] = NamesOf(given);
  const auto known = store.Pages.find(name);
  const CodePage* found = known == store.Pages.end() ? nullptr : known->second.get();
  if (!found) {
    std::unique_ptr<CodePage> page(new CodePage(name, systemName));
    if (!page->HoldsAscii()) return nullptr;
    found = (store.Pages[name] = std::move(page)).get();
  }
  store.LastGiven = given;
  return store.LastFound = found;
}

const CodePage& CodePage::Named(std::string_view name) try {
  if (const CodePage* page = Find(name)) return *page;
  throw VendrelError(errInvalidArgument, "unknown code page " + std::string(name));
}
VENDREL_CONTEXT(name)

const CodePage& CodePage::Default() {
  const CodePage*& page = InUse<PageStore>().Default;
  if (!page) page = &Named(DefaultName);
  return *page;
}

bool CodePage::Decode(std::string_view bytes, std::string& out) const {
  if (!mTables) return DecodeByConverter(bytes, out);
  bool clean = true;
  std::size_t done = 0;
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    const auto byte = static_cast<unsigned char>(bytes[at]);
    if (byte < 0x80 && mTables->HoldsAscii) continue;
    out.append(bytes.substr(done, at - done));
    done = at + 1;
    const char32_t c = mTables->Characters[byte];
    if (c == ReplacementCharacter) clean = false;
    AppendUtf8(out, c);
  }
  out.append(bytes.substr(done));
  return clean;
}

std::size_t CodePage::CountUndefined(std::string_view bytes) const {
  std::size_t undefined = 0;
  if (mTables) {
    for (const char byte : bytes)
      if (IsUndefined(mTables->Characters[static_cast<unsigned char>(byte)])) ++undefined;
    return undefined;
  }
  std::string text;
  Decode(bytes, text);
  for (std::size_t at = FirstNonAscii(text); at < text.size();)
    if (IsUndefined(TakeCharacter(text, at))) ++undefined;
  return undefined;
}

bool CodePage::Encode(std::string_view utf8, std::string& out) const {
  if (FirstNonAscii(utf8) == utf8.size()) {
    out.append(utf8);
    return true;
  }
  if (!mTables) return EncodeByConverter(utf8, out);
  const std::size_t before = out.size();
  std::size_t i = 0;
  while (i < utf8.size()) {
    const int byte = mTables->ByteOf(TakeCharacter(utf8, i));
    if (byte < 0) {
      out.resize(before);
      return false;
    }
    out.push_back(static_cast<char>(byte));
  }
  return true;
}

bool CodePage::DecodeByConverter(std::string_view bytes, std::string& out) const {
  iconv_t converter = mConverters->ToText;
  iconv(converter, nullptr, nullptr, nullptr, nullptr);
  const std::size_t start = out.size();
  char* from = const_cast<char*>(bytes.data());
  std::size_t fromLeft = bytes.size();
  bool clean = true;
  while (fromLeft > 0) {
    char buffer[1024];
    char* to = buffer;
    std::size_t toLeft = sizeof buffer;
    const std::size_t result = iconv(converter, &from, &fromLeft, &to, &toLeft);
    const int failure = result == static_cast<std::size_t>(-1) ? errno : 0;
    out.append(buffer, sizeof buffer - toLeft);
    if (failure == 0 || failure == E2BIG) continue;
    clean = false;  // no character begins here: this byte alone is lost to the text
    AppendUtf8(out, ReplacementCharacter);
    ++from;
    --fromLeft;
    iconv(converter, nullptr, nullptr, nullptr, nullptr);
  }
  if (!clean) return false;
  std::string back;
  return EncodeByConverter(std::string_view(out).substr(start), back) && back == bytes;
}

bool CodePage::EncodeByConverter(std::string_view utf8, std::string& out) const {
  iconv_t converter = mConverters->FromText;
  iconv(converter, nullptr, nullptr, nullptr, nullptr);
  const std::size_t before = out.size();
  char* from = const_cast<char*>(utf8.data());
  std::size_t fromLeft = utf8.size();
  while (fromLeft > 0) {
    char buffer[1024];
    char* to = buffer;
    std::size_t toLeft = sizeof buffer;
    const std::size_t result = iconv(converter, &from, &fromLeft, &to, &toLeft);
    const bool failed = result == static_cast<std::size_t>(-1) ? errno != E2BIG : result > 0;
    out.append(buffer, sizeof buffer - toLeft);
    if (!failed) continue;
    out.resize(before);
    return false;
  }
  return true;
}

const CodePage& FileOptions::Page() const {
  const vendrel::CodePage* page = vendrel::CodePage::Find(CodePage);
  return page ? *page : vendrel::CodePage::Default();
}

FileOptions& FileOptions::Current() { return InUse<FileOptions>(); }

}  // namespace vendrel
