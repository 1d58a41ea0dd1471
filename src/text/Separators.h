#pragma once
// Where a colon parts two statements and where it does not. Asked only at a colon, so lines without
// one pay nothing; each part of a line is walked once, however many colons it holds.

#include <array>
#include <cstddef>
#include <string_view>

#include "core/Ascii.h"

namespace vendrel {

/// Position behind the string whose opening quote stands at `at`.
std::size_t StringEnd(std::string_view text, std::size_t at);

/// Position behind the string, name in brackets or date literal that begins at `at`; `at` if none
/// does.
std::size_t ClosedEnd(std::string_view text, std::size_t at);

/// Whether the character at `at` lies in something that holds no separators. `closedEnd` gives the
/// position behind what begins at a position, or that position; `searched` is 0 at first and
/// remembers how far the line has been walked.
template <typename End>
bool WalkClosed(std::string_view text, std::size_t at, std::size_t& searched, End closedEnd) {
  while (searched < at) {
    const std::size_t end = closedEnd(text, searched);
    searched = end > searched ? end : searched + 1;
  }
  return searched > at;
}

inline constexpr std::array<bool, 256> kWordBytes = [] {
  std::array<bool, 256> bytes{};
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const auto c = static_cast<char>(i);
    bytes[i] = IsLetterAscii(c) || IsDigitAscii(c) || c == '_' || i >= 0x80;
  }
  return bytes;
}();

/// A letter, digit or "_", or a byte of a character beyond ASCII.
constexpr bool IsWordByte(char c) { return kWordBytes[static_cast<unsigned char>(c)]; }

/// Position behind the date literal that begins with the "#" at `at`; `at` if none does. Only
/// digits, blanks, "/-:,", AM, PM and names of months stand in one.
std::size_t DateEnd(std::string_view text, std::size_t at);

/// Whether what stands in front of a colon at the beginning of a line is a label or a line number.
bool IsLabel(std::string_view text);

/// Where a declaration begins that stands behind "Then" or "Else" on the line of its If (or, in a
/// remainder, an "Else" behind such a declaration); `kNotFound` if there is none.
std::size_t DeclarationBehindThen(std::string_view statement, bool isRemainder);

}  // namespace vendrel
