#include "writer/RawLine.h"

#include <algorithm>

#include "core/Utf8.h"

namespace vendrel {
namespace {

constexpr std::size_t kLongestCharacter = 4;

std::size_t LengthInUtf8(char32_t c, std::string_view bytes) {
  std::size_t length = 0;
  const char32_t found = TakeCharacter(bytes, length);
  return found == c || (found == IllFormed && c == ReplacementCharacter) ? length : 0;
}

// The shortest beginning of the bytes that reads as the character: a byte that leads others means
// nothing alone.
std::size_t LengthInPage(char32_t c, std::string_view bytes, const CodePage& page) {
  std::string wanted, read;
  AppendUtf8(wanted, c);
  for (std::size_t length = 1; length <= std::min(kLongestCharacter, bytes.size()); ++length) {
    read.clear();
    page.Decode(bytes.substr(0, length), read);
    if (read == wanted) return length;
  }
  return 0;
}

// How many bytes stand for the character at the front of `bytes`; 0 if none do.
std::size_t LengthOf(char32_t c, std::string_view bytes, const TextForm& form) {
  if (bytes.empty()) return 0;
  switch (form.Encoding) {
    case TextEncoding::Utf16LE:
    case TextEncoding::Utf16BE: return std::min<std::size_t>(c < 0x10000 ? 2 : 4, bytes.size());
    case TextEncoding::Utf8:
    case TextEncoding::Utf8Bom: return LengthInUtf8(c, bytes);
    case TextEncoding::Ascii:
    case TextEncoding::CodePage: break;
  }
  return LengthInPage(c, bytes, PageOf(form));
}

}  // namespace

std::optional<std::vector<std::size_t>> BytePositions(std::string_view text, std::string_view bytes,
                                                      const TextForm& form) {
  std::vector<std::size_t> positions;
  std::size_t at = 0, byte = 0;
  while (at < text.size()) {
    const char32_t c = TakeCharacter(text, at);
    positions.resize(at, byte);
    const std::size_t length = LengthOf(c, bytes.substr(byte), form);
    if (length == 0) return std::nullopt;
    byte += length;
  }
  if (byte != bytes.size()) return std::nullopt;
  positions.push_back(byte);
  return positions;
}

}  // namespace vendrel
