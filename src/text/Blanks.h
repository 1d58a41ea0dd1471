#pragma once
// Blanks of a line, looked at eight characters in one step: most lines hold nothing to change.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace vendrel {

/// Eight characters as one number, to be searched in one step.
inline constexpr std::uint64_t kOnes = 0x0101010101010101;
inline constexpr std::uint64_t kHighBits = 0x8080808080808080;

inline std::uint64_t EightAt(std::string_view text, std::size_t at) {
  std::uint64_t eight;
  std::memcpy(&eight, text.data() + at, sizeof eight);
  return eight;
}

/// High bits in the bytes that may be `c`: in each that is, and rarely in one behind it.
constexpr std::uint64_t MayBe(std::uint64_t eight, char c) {
  const std::uint64_t zero = eight ^ (kOnes * static_cast<unsigned char>(c));
  return (zero - kOnes) & ~zero;
}

/// Bytes of the character that begins with `lead`.
constexpr std::size_t CharLength(unsigned char lead) {
  return lead < 0xC0 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

/// Length of the blank that stands at `at` and is no " ": a no-break or ideographic one, or one of
/// the typographic ones; 0 if none does.
std::size_t OtherBlankAt(std::string_view text, std::size_t at);

/// The statement with blanks of every kind as blanks, but for those in strings; written to
/// `buffer`, of which the result is a view without blanks in front.
std::string_view WithPlainBlanks(std::string_view statement, std::string& buffer);

/// The statement with each run of blanks as one; written to `buffer` where there are any.
std::string_view Collapsed(std::string_view statement, std::string& buffer);

}  // namespace vendrel
