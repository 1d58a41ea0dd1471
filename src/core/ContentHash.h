#pragma once
// A number that tells contents apart, and is kept in files: the same on every machine and in every
// version.

#include <cstdint>
#include <string>
#include <string_view>

namespace vendrel {

/// FNV-1a with 64 bits.
class ContentHash {
 public:
  void Add(std::string_view bytes) {
    for (const char c : bytes) mHash = (mHash ^ static_cast<unsigned char>(c)) * kPrime;
  }
  /// What follows is a part of its own: "ab", "c" is not "a", "bc".
  void EndPart() { mHash *= kPrime; }
  std::uint64_t Value() const { return mHash; }

 private:
  static constexpr std::uint64_t kPrime = 1099511628211u;
  std::uint64_t mHash = 14695981039346656037u;
};

/// 16 digits.
inline std::string HexOf(std::uint64_t number) {
  std::string digits(16, '0');
  for (std::size_t i = 0; i < digits.size(); ++i)
    digits[i] = "0123456789abcdef"[(number >> (60 - 4 * i)) & 15];
  return digits;
}

}  // namespace vendrel
