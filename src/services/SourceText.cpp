#include "services/SourceText.h"

#include <cstring>

#include "core/Utf8.h"
#include "diagnostics/Context.h"
#include "services/SourceCache.h"

namespace vendrel {
namespace {

constexpr std::string_view Utf8Mark = "\xEF\xBB\xBF", LittleMark = "\xFF\xFE", BigMark = "\xFE\xFF";

bool StartsWith(std::string_view text, std::string_view prefix) {
  return text.substr(0, prefix.size()) == prefix;
}

void DescribeLines(SourceText& text, const ByteSummary& summary) {
  using Kind = LineEnds::Kind;
  const std::size_t cr = summary.CarriageReturns, lf = summary.LineFeeds, pairs = summary.Pairs;
  text.LineEnds.Form = cr + lf == 0                 ? Kind::None
                       : cr == pairs && lf == pairs ? Kind::CrLf
                       : cr == 0                    ? Kind::Lf
                       : lf == 0                    ? Kind::Cr
                                                    : Kind::Mixed;
  const char last = text.Text.empty() ? '\n' : text.Text.back();
  text.LineEnds.LastLineEnds = last == '\n' || last == '\r';
  text.HasNul = summary.HasNul;
}

// Lines of ASCII are taken over as they are; `decode(line, out)` appends each other one and tells
// whether its text gives its bytes again. No trail byte of any page is a line end.
template <typename DecodeLine>
void DecodeLines(std::string_view bytes, SourceText& text, DecodeLine decode) {
  text.Text.reserve(bytes.size() + bytes.size() / 8);
  std::size_t done = 0;
  while (true) {
    const std::size_t at = FirstNonAscii(bytes, done);
    if (at == bytes.size()) break;
    std::size_t start = at;
    while (start > done && bytes[start - 1] != '\n' && bytes[start - 1] != '\r') --start;
    text.Text.append(bytes.substr(done, start - done));
    for (done = at; done < bytes.size() && bytes[done] != '\r' && bytes[done] != '\n';) ++done;
    const std::string_view line = bytes.substr(start, done - start);
    const std::size_t offset = text.Text.size();
    if (!decode(line, text.Text)) text.RawLines.emplace(offset, line);
  }
  text.Text.append(bytes.substr(done));
}

// UTF-16 by lines; surrogates without their half and an odd last byte become U+FFFD.
class Utf16Decoder {
 public:
  Utf16Decoder(std::string_view bytes, bool bigEndian, SourceText& text)
      : mBytes(bytes), mBigEndian(bigEndian), mText(text) {}

  void Run() {
    mText.Text.reserve(mBytes.size() / 2 + mBytes.size() / 16);
    while (mAt + 1 < mBytes.size()) {
      const std::size_t start = mAt;
      const char32_t c = Take();
      if (c == '\r' || c == '\n') EndLine(start);
      AppendUtf8(mText.Text, c);
      if (c == '\r' || c == '\n') StartLine();
    }
    if (mAt < mBytes.size()) {
      mClean = false;
      AppendUtf8(mText.Text, ReplacementCharacter);
    }
    EndLine(mBytes.size());
  }

 private:
  char32_t Unit(std::size_t at) const {
    const auto first = static_cast<unsigned char>(mBytes[at]);
    const auto second = static_cast<unsigned char>(mBytes[at + 1]);
    return static_cast<char32_t>(mBigEndian ? first << 8 | second : second << 8 | first);
  }
  char32_t Take() {
    const char32_t unit = Unit(mAt);
    mAt += 2;
    if (unit < 0xD800 || unit > 0xDFFF) return unit;
    const char32_t next = unit < 0xDC00 && mAt + 1 < mBytes.size() ? Unit(mAt) : 0;
    if (next < 0xDC00 || next > 0xDFFF) {
      mClean = false;
      return ReplacementCharacter;
    }
    mAt += 2;
    return 0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00);
  }
  void EndLine(std::size_t end) {
    if (!mClean) mText.RawLines.emplace(mTextStart, mBytes.substr(mLineStart, end - mLineStart));
    mClean = true;
  }
  void StartLine() {
    mLineStart = mAt;
    mTextStart = mText.Text.size();
  }

  std::string_view mBytes;
  bool mBigEndian;
  SourceText& mText;
  std::size_t mAt = 0, mLineStart = 0, mTextStart = 0;
  bool mClean = true;
};

void DecodeUtf16(std::string_view bytes, bool bigEndian, SourceText& text) {
  text.Encoding = bigEndian ? TextEncoding::Utf16BE : TextEncoding::Utf16LE;
  Utf16Decoder(bytes, bigEndian, text).Run();
  DescribeLines(text, SummariseBytes(text.Text));
}

void AppendUnit(std::string& out, char32_t unit, bool bigEndian) {
  const char high = static_cast<char>(unit >> 8), low = static_cast<char>(unit & 0xFF);
  out.push_back(bigEndian ? high : low);
  out.push_back(bigEndian ? low : high);
}

std::string EncodeUtf16(std::string_view utf8, bool bigEndian) {
  std::string out;
  out.reserve(utf8.size() * 2);
  std::size_t i = 0;
  while (i < utf8.size()) {
    char32_t c = TakeCharacter(utf8, i);
    if (c == IllFormed) c = ReplacementCharacter;
    if (c < 0x10000) {
      AppendUnit(out, c, bigEndian);
    } else {
      AppendUnit(out, 0xD800 + ((c - 0x10000) >> 10), bigEndian);
      AppendUnit(out, 0xDC00 + ((c - 0x10000) & 0x3FF), bigEndian);
    }
  }
  return out;
}

// The rest of Decode, for bytes that begin with no mark of UTF-16.
void DecodeBytes(std::string bytes, const CodePage& page, SourceText& text) {
  const bool marked = StartsWith(bytes, Utf8Mark);
  if (marked) bytes.erase(0, Utf8Mark.size());
  const ByteSummary summary = SummariseBytes(bytes);
  const bool isUtf8 = !summary.Ascii && IsValidUtf8(bytes);
  text.Encoding = marked          ? TextEncoding::Utf8Bom
                  : summary.Ascii ? TextEncoding::Ascii
                  : isUtf8        ? TextEncoding::Utf8
                                  : TextEncoding::CodePage;
  if (summary.Ascii || isUtf8) {
    text.Text = std::move(bytes);
  } else if (marked) {
    DecodeLines(bytes, text,
                [](std::string_view line, std::string& out) { return AppendSanitised(out, line); });
  } else {
    DecodeLines(bytes, text,
                [&](std::string_view line, std::string& out) { return page.Decode(line, out); });
  }
  DescribeLines(text, summary);
}

}  // namespace

std::shared_ptr<const SourceText> SourceText::Decode(std::string bytes, const CodePage& page) {
  auto text = std::make_shared<SourceText>();
  text->CodePageName = page.Name();
  const bool bigEndian = StartsWith(bytes, BigMark);
  if (bigEndian || StartsWith(bytes, LittleMark)) {
    DecodeUtf16(std::string_view(bytes).substr(2), bigEndian, *text);
  } else {
    DecodeBytes(std::move(bytes), page, *text);
  }
  return text;
}

std::shared_ptr<const SourceText> SourceText::Read(const std::string& nativePath,
                                                   const CodePage& page) try {
  return SourceCache::Text(nativePath, page);
}
VENDREL_CONTEXT(nativePath)

std::string_view ByteOrderMark(const TextForm& like) {
  switch (like.Encoding) {
    case TextEncoding::Utf8Bom: return Utf8Mark;
    case TextEncoding::Utf16LE: return LittleMark;
    case TextEncoding::Utf16BE: return BigMark;
    default: return {};
  }
}

const CodePage& PageOf(const TextForm& like) {
  const CodePage* page = like.CodePageName.empty() ? nullptr : CodePage::Find(like.CodePageName);
  return page ? *page : FileOptions::Current().Page();
}

std::optional<std::string> Encode(std::string_view utf8, const TextForm& like) {
  switch (like.Encoding) {
    case TextEncoding::Utf8:
    case TextEncoding::Utf8Bom: return std::string(utf8);
    case TextEncoding::Utf16LE: return EncodeUtf16(utf8, false);
    case TextEncoding::Utf16BE: return EncodeUtf16(utf8, true);
    case TextEncoding::Ascii:
    case TextEncoding::CodePage: break;
  }
  if (FirstNonAscii(utf8) == utf8.size()) return std::string(utf8);
  std::string bytes;
  if (!PageOf(like).Encode(utf8, bytes)) return std::nullopt;
  return bytes;
}

std::string_view TakeLine(std::string_view& rest, LineEnds::Kind ends) {
  if (rest.empty()) return {};
  const char* start = rest.data();
  const auto* feed = static_cast<const char*>(std::memchr(start, '\n', rest.size()));
  std::size_t length = feed ? static_cast<std::size_t>(feed - start) : rest.size();
  std::size_t behind = feed ? length + 1 : length;
  if (ends == LineEnds::Kind::CrLf) {
    if (feed && length > 0 && start[length - 1] == '\r') --length;
  } else if (ends != LineEnds::Kind::Lf) {
    if (const auto* cr = static_cast<const char*>(std::memchr(start, '\r', length))) {
      length = static_cast<std::size_t>(cr - start);
      behind = cr + 1 == feed ? length + 2 : length + 1;
    }
  }
  rest.remove_prefix(behind);
  return {start, length};
}

}  // namespace vendrel
