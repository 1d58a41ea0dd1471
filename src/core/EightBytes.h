#pragma once
// Text looked at eight characters in one step: most steps find nothing.

#include <cstddef>
#include <cstdint>
#include <cstring>
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

/// Eight characters with the capitals of ASCII made small. A carry out of the low seven bits tells
/// whether a letter is at least "A", another whether it is behind "Z".
constexpr std::uint64_t LowerEight(std::uint64_t eight) {
  const std::uint64_t low = eight & ~kHighBits;
  const std::uint64_t fromA = low + kOnes * (0x80 - 'A');
  const std::uint64_t behindZ = low + kOnes * (0x80 - 'Z' - 1);
  return eight | ((fromA & ~behindZ & ~eight & kHighBits) >> 2);
}

/// The bit of case in each byte that is a letter of ASCII.
constexpr std::uint64_t CaseOfLetters(std::uint64_t eight) {
  const std::uint64_t low = (eight & ~kHighBits) | kOnes * 0x20;
  const std::uint64_t fromA = low + kOnes * (0x80 - 'a');
  const std::uint64_t behindZ = low + kOnes * (0x80 - 'z' - 1);
  return (fromA & ~behindZ & ~eight & kHighBits) >> 2;
}

/// High bits in the bytes that may be `c`: in each that is, and rarely in one behind it.
constexpr std::uint64_t MayBe(std::uint64_t eight, char c) {
  const std::uint64_t zero = eight ^ (kOnes * static_cast<unsigned char>(c));
  return (zero - kOnes) & ~zero;
}

}  // namespace vendrel
