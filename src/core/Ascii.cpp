#include "core/Ascii.h"

#include <algorithm>

#include "core/EightBytes.h"

namespace vendrel {

namespace {

// Where one of eight positions may hold `c` in either case, rarely another character.
std::uint64_t MayBeNoCase(std::string_view text, std::size_t at, char c) {
  constexpr std::uint64_t kCase = kOnes * 0x20;
  return MayBe(EightAt(text, at) | kCase, static_cast<char>(c | 0x20));
}

}  // namespace

// Eight places are looked at in one step, by the first two characters: one is found too often.
std::size_t FindNoCaseAscii(std::string_view text, std::string_view sought, std::size_t start) {
  if (sought.empty()) return start <= text.size() ? start : std::string_view::npos;
  if (sought.size() > text.size()) return std::string_view::npos;
  const char first = sought.front(), second = sought[sought.size() > 1 ? 1 : 0];
  const std::size_t last = text.size() - sought.size(), step = sought.size() > 1 ? 1 : 0;
  for (std::size_t i = start; i <= last;) {
    if (i + step + 8 <= text.size() &&
        (MayBeNoCase(text, i, first) & MayBeNoCase(text, i + step, second) & kHighBits) == 0) {
      i += 8;
      continue;
    }
    for (const std::size_t end = std::min(i + 8, last + 1); i < end; ++i)
      if (EqualsNoCaseAscii(text.substr(i, sought.size()), sought)) return i;
  }
  return std::string_view::npos;
}

std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to) {
  std::string result;
  std::size_t start = 0;
  while (!from.empty()) {
    const std::size_t at = text.find(from, start);
    if (at == std::string_view::npos) break;
    result.append(text, start, at - start).append(to);
    start = at + from.size();
  }
  result.append(text, start);
  return result;
}

}  // namespace vendrel
