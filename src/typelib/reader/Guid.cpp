#include "typelib/reader/Guid.h"

#include <algorithm>

#include "core/Ascii.h"

namespace vendrel::typelib {
namespace {

// Where the pairs of digits of the text stand in the file: the first three fields are numbers.
constexpr int kOrder[16] = {3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15};

int HexDigit(char c) {
  if (IsDigitAscii(c)) return c - '0';
  const char upper = UpperAscii(c);
  return upper >= 'A' && upper <= 'F' ? upper - 'A' + 10 : -1;
}

bool DashBefore(int pair) { return pair == 4 || pair == 6 || pair == 8 || pair == 10; }

}  // namespace

Guid Guid::FromBytes(std::span<const std::uint8_t> bytes) {
  Guid guid;
  std::copy_n(bytes.begin(), std::min<std::size_t>(bytes.size(), 16), guid.Bytes.begin());
  return guid;
}

std::optional<Guid> Guid::Parse(std::string_view text) {
  if (text.size() == 38 && text.front() == '{' && text.back() == '}') text = text.substr(1, 36);
  if (text.size() != 36) return std::nullopt;
  Guid guid;
  std::size_t at = 0;
  for (int pair = 0; pair < 16; ++pair) {
    if (DashBefore(pair) && text[at++] != '-') return std::nullopt;
    const int high = HexDigit(text[at]), low = HexDigit(text[at + 1]);
    if (high < 0 || low < 0) return std::nullopt;
    guid.Bytes[static_cast<std::size_t>(kOrder[pair])] = static_cast<std::uint8_t>(high * 16 + low);
    at += 2;
  }
  return guid;
}

std::string Guid::Text() const {
  constexpr char digits[] = "0123456789ABCDEF";
  std::string text = "{";
  for (int pair = 0; pair < 16; ++pair) {
    if (DashBefore(pair)) text += '-';
    const std::uint8_t byte = Bytes[static_cast<std::size_t>(kOrder[pair])];
    text += digits[byte >> 4];
    text += digits[byte & 15];
  }
  return text + '}';
}

}  // namespace vendrel::typelib
