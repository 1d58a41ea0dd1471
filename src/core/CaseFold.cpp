#include "core/CaseFold.h"

#include <utf8proc.h>

#include <algorithm>
#include <cstring>

#include "core/Ascii.h"
#include "core/EightBytes.h"

namespace vendrel {
namespace {

// The first byte beyond ASCII; everything before it needs no table.
std::size_t AsciiPrefix(std::string_view text) {
  std::size_t i = 0;
  while (i + 8 <= text.size() && (EightAt(text, i) & kHighBits) == 0) i += 8;
  const bool isTail = i + 8 > text.size() && text.size() >= 8;
  if (isTail && (EightAt(text, text.size() - 8) & kHighBits) == 0) return text.size();
  while (i < text.size() && static_cast<unsigned char>(text[i]) < 0x80) ++i;
  return i;
}

// The `count` characters from `at` on, at most eight; zeros behind them. No byte outside of the
// text is read.
std::uint64_t EightFrom(std::string_view text, std::size_t at, std::size_t count) {
  if (count == 8) return EightAt(text, at);
  if (text.size() >= 8 && at + count == text.size())
    return EightAt(text, text.size() - 8) >> (8 * (8 - count));
  const char* const from = text.data() + at;
  const auto four = [&](std::size_t place) {
    std::uint32_t bytes = 0;
    std::memcpy(&bytes, from + place, sizeof bytes);
    return std::uint64_t{bytes};
  };
  if (count >= 4) return four(0) | four(count - 4) << (8 * (count - 4));
  std::uint64_t few = 0;
  for (std::size_t i = 0; i < count; ++i)
    few |= std::uint64_t{static_cast<unsigned char>(from[i])} << (8 * i);
  return few;
}

void LowerInPlace(char* text, std::size_t size) {
  const auto lowerEightAt = [&](std::size_t at) {
    const std::uint64_t eight = LowerEight(EightAt({text, size}, at));
    std::memcpy(text + at, &eight, sizeof eight);
  };
  if (size < 8) {
    for (std::size_t i = 0; i < size; ++i) text[i] = LowerAscii(text[i]);
    return;
  }
  for (std::size_t i = 0; i + 8 < size; i += 8) lowerEightAt(i);
  lowerEightAt(size - 8);  // what is small already stays
}

// Simple folding is upper-case then lower-case: it joins the letters whose two lower-case forms
// share one capital (final sigma, long s), as a full folding table would.
utf8proc_int32_t FoldOne(utf8proc_int32_t c) { return utf8proc_tolower(utf8proc_toupper(c)); }

template <typename Map>
void AppendMapped(std::string& out, std::string_view text, Map map) {
  const auto* bytes = reinterpret_cast<const utf8proc_uint8_t*>(text.data());
  std::size_t i = 0;
  while (i < text.size()) {
    utf8proc_int32_t c = 0;
    const utf8proc_ssize_t n =
        utf8proc_iterate(bytes + i, static_cast<utf8proc_ssize_t>(text.size() - i), &c);
    if (n <= 0) {  // not text we made: keep the byte, names stay distinct
      out.push_back(text[i++]);
      continue;
    }
    utf8proc_uint8_t buffer[4];
    const utf8proc_ssize_t length = utf8proc_encode_char(map(c), buffer);
    out.append(reinterpret_cast<const char*>(buffer), static_cast<std::size_t>(length));
    i += static_cast<std::size_t>(n);
  }
}

}  // namespace

void AppendFolded(std::string& out, std::string_view text) {
  const std::size_t ascii = AsciiPrefix(text), before = out.size();
  out.append(text.data(), ascii);
  LowerInPlace(out.data() + before, ascii);
  if (ascii < text.size()) AppendMapped(out, text.substr(ascii), FoldOne);
}

std::string FoldKey(std::string_view text) {
  const std::size_t ascii = AsciiPrefix(text);
  std::string key(text.data(), ascii);
  LowerInPlace(key.data(), ascii);
  if (ascii < text.size()) AppendMapped(key, text.substr(ascii), FoldOne);
  return key;
}

// Characters fold one to one: behind parts that are equal, two ASCII characters tell.
bool EqualsNoCase(std::string_view a, std::string_view b) {
  const std::size_t common = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < common; i += 8) {
    const std::size_t count = std::min<std::size_t>(8, common - i);
    const std::uint64_t ofA = EightFrom(a, i, count), ofB = EightFrom(b, i, count);
    if ((ofA | ofB) & kHighBits) return FoldKey(a.substr(i)) == FoldKey(b.substr(i));
    if (ofA != ofB && LowerEight(ofA) != LowerEight(ofB)) return false;
  }
  return a.size() == b.size();
}

std::uint32_t HashFolded(std::string_view text) {
  std::uint64_t hash = 0;
  const auto add = [&](std::uint64_t eight) {
    hash = (hash ^ eight) * 0x9E3779B97F4A7C15u;
    hash ^= hash >> 29;
  };
  for (std::size_t i = 0; i < text.size(); i += 8) {
    const std::uint64_t eight = EightFrom(text, i, std::min<std::size_t>(8, text.size() - i));
    if (eight & kHighBits) {
      const std::string rest = FoldKey(text.substr(i));
      for (std::size_t k = 0; k < rest.size(); k += 8)
        add(EightFrom(rest, k, std::min<std::size_t>(8, rest.size() - k)));
      break;
    }
    add(LowerEight(eight));
  }
  return static_cast<std::uint32_t>(hash ^ (hash >> 32));
}

std::string UpperCase(std::string_view text) {
  if (AsciiPrefix(text) == text.size()) return UpperAscii(text);
  std::string result;
  AppendMapped(result, text, utf8proc_toupper);
  return result;
}

std::string LowerCase(std::string_view text) {
  if (AsciiPrefix(text) == text.size()) return LowerAscii(text);
  std::string result;
  AppendMapped(result, text, utf8proc_tolower);
  return result;
}

}  // namespace vendrel
