#include "services/RegistryFile.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "core/Utf8.h"

namespace vendrel {
namespace {

constexpr char Between = '\x01', BehindAllBelow = '\x02';

std::string FoldedPath(std::string_view canonical) {
  std::string key = FoldKey(canonical);
  for (char& c : key)
    if (c == '\\') c = Between;
  return key;
}

struct Hive {
  std::string_view Given, Path;
};
constexpr Hive Hives[] = {
    {"HKEY_CLASSES_ROOT", "HKEY_LOCAL_MACHINE\\Software\\Classes"},
    {"HKCR", "HKEY_LOCAL_MACHINE\\Software\\Classes"},
    {"HKLM", "HKEY_LOCAL_MACHINE"},
    {"HKCU", "HKEY_CURRENT_USER"},
    {"HKU", "HKEY_USERS"},
};

// "HKEY_USERS\S-1-5-21-...-1000" is a user, "..._Classes" are that user's classes.
std::string OfOneUser(std::string_view path) {
  constexpr std::string_view users = "HKEY_USERS\\S-1-5-21-", classes = "_Classes";
  if (!StartsWithNoCaseAscii(path, users)) return std::string(path);
  const std::size_t end = std::min(path.find('\\', users.size()), path.size());
  const bool isClasses = EndsWithNoCaseAscii(path.substr(0, end), classes);
  return std::string(isClasses ? "HKEY_CURRENT_USER\\Software\\Classes" : "HKEY_CURRENT_USER")
      .append(path.substr(end));
}

std::uint64_t HexNumber(std::string_view text) {
  std::uint64_t value = 0;
  std::from_chars(text.data(), text.data() + text.size(), value, 16);
  return value;
}

// "41,00,42": what is no number counts as 0.
std::string HexBytes(std::string_view text) {
  std::string bytes;
  while (!text.empty()) bytes.push_back(static_cast<char>(HexNumber(Trim(TakeField(text, ',')))));
  return bytes;
}

std::uint64_t LittleEndian(std::string_view bytes) {
  std::uint64_t value = 0;
  for (std::size_t i = std::min<std::size_t>(bytes.size(), 8); i-- > 0;)
    value = value << 8 | static_cast<unsigned char>(bytes[i]);
  return value;
}

// Ends at the last string; strings of a list are parted by line feeds.
std::string WithoutNuls(std::string text) {
  while (!text.empty() && text.back() == '\0') text.pop_back();
  for (char& c : text)
    if (c == '\0') c = '\n';
  return text;
}

enum DataType : std::uint64_t {
  dtString = 1,
  dtExpandable = 2,
  dtNumber = 4,
  dtBigEndian = 5,
  dtStrings = 7,
  dtLongNumber = 11
};

}  // namespace

std::string CanonicalKeyPath(std::string_view path) {
  while (!path.empty() && path.back() == '\\') path.remove_suffix(1);
  const std::string_view hive = path.substr(0, path.find('\\'));
  for (const Hive& known : Hives)
    if (EqualsNoCaseAscii(hive, known.Given))
      return OfOneUser(std::string(known.Path).append(path.substr(hive.size())));
  return OfOneUser(path);
}

/// Reads the lines of one file into its keys.
class RegistryParser {
 public:
  RegistryParser(RegistryFile& file, const SourceText& source)
      : mFile(file), mRest(source.Text), mEnds(source.LineEnds.Form) {}

  void Run() {
    bool first = true;
    while (!mRest.empty()) {
      const std::string_view line = NextLine();
      if (line.empty()) continue;
      if (first) ReadHeader(line);
      first = false;
      if (line[0] == '[') {
        ReadKey(line);
      } else if (line[0] == '@' || line[0] == '"') {
        ReadValue(line);
      } else if (mIsWine && StartsWithNoCaseAscii(line, ";; All keys relative to ")) {
        ReadRoot(line);
      }
    }
  }

 private:
  std::string_view NextLine() { return TrimGaps(TakeLine(mRest, mEnds)); }

  void ReadHeader(std::string_view line) {
    mIsWine = StartsWithNoCaseAscii(line, "WINE REGISTRY");
    mIsAnsi = EqualsNoCaseAscii(line, "REGEDIT4");
    if (mIsWine) mRoot = "HKEY_LOCAL_MACHINE\\";
  }

  void ReadRoot(std::string_view line) {
    if (ContainsNoCaseAscii(line, "\\User\\\\.Default") ||
        ContainsNoCaseAscii(line, "\\User\\.Default"))
      mRoot = "HKEY_USERS\\.Default\\";
    else if (ContainsNoCaseAscii(line, "\\User\\"))
      mRoot = "HKEY_CURRENT_USER\\";
  }

  // "[path]", "[-path]" to delete it, and "[path] time" with doubled backslashes.
  void ReadKey(std::string_view line) {
    mKey = nullptr;
    std::string path;
    if (mIsWine) {
      line.remove_prefix(1);
      path = Unescape(line, ']');
    } else {
      const std::size_t end = line.rfind(']');
      path = line.substr(1, end == std::string_view::npos ? end : end - 1);
    }
    const bool deletes = !mIsWine && !path.empty() && path[0] == '-';
    const std::string canonical = CanonicalKeyPath(mRoot + path.substr(deletes ? 1 : 0));
    const std::string folded = FoldedPath(canonical);
    if (deletes) {
      auto& keys = mFile.mKeys;
      keys.erase(folded);
      keys.erase(keys.lower_bound(folded + Between), keys.lower_bound(folded + BehindAllBelow));
      return;
    }
    mKey = &mFile.mKeys[folded];
    mKey->Path = canonical;
  }

  void ReadValue(std::string_view line) {
    std::string name;
    if (line[0] == '"') {
      line.remove_prefix(1);
      name = Unescape(line, '"');
    } else {
      line.remove_prefix(1);
    }
    line = TrimLeft(line);
    if (line.empty() || line[0] != '=') return;
    line = TrimLeft(line.substr(1));
    const std::string folded = FoldKey(name);
    if (line == "-") {
      if (mKey) mKey->Values.erase(folded);
      return;
    }
    RegistryValue value = ReadData(line);
    if (mKey) mKey->Values[folded] = std::move(value);
  }

  RegistryValue ReadData(std::string_view data) {
    if (!data.empty() && data[0] == '"') {
      data.remove_prefix(1);
      return {Unescape(data, '"'), false};
    }
    if (StartsWithNoCaseAscii(data, "dword:"))
      return {std::to_string(HexNumber(data.substr(6)) & 0xFFFFFFFF), false};
    const std::size_t colon = data.find(':');
    if (colon == std::string_view::npos) return {};
    const std::size_t open = data.find('(');
    const std::uint64_t type = open < colon ? HexNumber(data.substr(open + 1, colon - open)) : 3;
    std::string_view content = data.substr(colon + 1);
    if (StartsWithNoCaseAscii(data, "str")) {
      content = content.substr(std::min<std::size_t>(content.size(), 1));
      return {WithoutNuls(Unescape(content, '"')), type == dtExpandable};
    }
    return StartsWithNoCaseAscii(data, "hex") ? FromBytes(type, HexBytes(Continued(content)))
                                              : RegistryValue();
  }

  // Long data goes on over lines that end in a backslash.
  std::string Continued(std::string_view content) {
    std::string all;
    while (!content.empty() && content.back() == '\\' && !mRest.empty()) {
      all.append(content.substr(0, content.size() - 1));
      content = NextLine();
    }
    return all.append(content);
  }

  RegistryValue FromBytes(std::uint64_t type, std::string bytes) const {
    switch (type) {
      case dtString:
      case dtExpandable:
      case dtStrings: return {WithoutNuls(TextOf(bytes)), type == dtExpandable};
      case dtBigEndian: bytes.assign(bytes.rbegin(), bytes.rend()); [[fallthrough]];
      case dtNumber:
      case dtLongNumber: return {std::to_string(LittleEndian(bytes)), false};
      default: return {};
    }
  }

  std::string TextOf(const std::string& bytes) const {
    if (!mIsAnsi) return SourceText::Decode("\xFF\xFE" + bytes, CodePage::Default())->Text;
    std::string text;
    FileOptions::Current().Page().Decode(bytes, text);
    return text;
  }

  // Takes text up to `end` (or the end of the line) off the front of `line`. Wine escapes more
  // than quotes and backslashes.
  std::string Unescape(std::string_view& line, char end) const {
    std::string text;
    while (!line.empty() && line[0] != end) {
      const char c = line[0];
      line.remove_prefix(1);
      if (c != '\\' || line.empty()) {
        text.push_back(c);
      } else if (mIsWine) {
        TakeEscape(line, text);
      } else {
        text.push_back(line[0]);
        line.remove_prefix(1);
      }
    }
    line.remove_prefix(line.empty() ? 0 : 1);
    return text;
  }

  static void TakeEscape(std::string_view& line, std::string& text) {
    constexpr std::string_view letters = "abefnrtv", meanings = "\a\b\x1b\f\n\r\t\v";
    const char c = line[0];
    if (c == 'x') return TakeNumber(line.substr(1), 1, 4, 16, line, text);
    if (c >= '0' && c <= '7') return TakeNumber(line, 0, 3, 8, line, text);
    line.remove_prefix(1);
    const std::size_t letter = letters.find(c);
    text.push_back(letter == std::string_view::npos ? c : meanings[letter]);
  }

  static void TakeNumber(std::string_view digits, std::size_t before, std::size_t most, int base,
                         std::string_view& line, std::string& text) {
    std::uint32_t value = 0;
    digits = digits.substr(0, most);
    const auto end = std::from_chars(digits.data(), digits.data() + digits.size(), value, base);
    const auto length = static_cast<std::size_t>(end.ptr - digits.data());
    AppendUtf8(text, length ? static_cast<char32_t>(value) : U'x');
    line.remove_prefix(before + length);
  }

  RegistryFile& mFile;
  std::string_view mRest;
  LineEnds::Kind mEnds;
  bool mIsWine = false, mIsAnsi = false;
  std::string mRoot;
  RegistryFile::Key* mKey = nullptr;
};

RegistryFile::RegistryFile(const SourceText& source) { RegistryParser(*this, source).Run(); }

const RegistryValue* RegistryFile::Value(std::string_view keyPath,
                                         std::string_view valueName) const {
  const auto key = mKeys.find(FoldedPath(CanonicalKeyPath(keyPath)));
  if (key == mKeys.end()) return nullptr;
  const auto value = key->second.Values.find(FoldKey(valueName));
  return value == key->second.Values.end() ? nullptr : &value->second;
}

void RegistryFile::SubKeys(std::string_view keyPath,
                           std::map<std::string, std::string>& names) const {
  const std::string canonical = CanonicalKeyPath(keyPath);
  const std::string prefix = FoldedPath(canonical) + Between;
  // Folding may change the length of a path, but not the number of its parts.
  const auto depth = std::count(prefix.begin(), prefix.end(), Between);
  auto key = mKeys.lower_bound(prefix);
  while (key != mKeys.end() && key->first.compare(0, prefix.size(), prefix) == 0) {
    const std::size_t end = std::min(key->first.find(Between, prefix.size()), key->first.size());
    const std::string child = key->first.substr(prefix.size(), end - prefix.size());
    std::string_view rest = key->second.Path, part;
    for (auto i = depth; i >= 0; --i) part = TakeField(rest, '\\');
    names.emplace(child, part);
    key = mKeys.lower_bound(prefix + child + BehindAllBelow);
  }
}

}  // namespace vendrel
