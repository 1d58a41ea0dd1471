#pragma once
// A random sequence that is the same on every machine, which the distributions of the standard
// library are not.

#include <cstddef>
#include <cstdint>

namespace vendrel::bench {

/// Pseudo-random numbers of a seed (the generator known as SplitMix64).
class Dice {
 public:
  explicit Dice(std::uint64_t seed) : mState(seed) {}

  std::uint64_t Next() {
    std::uint64_t z = (mState += 0x9E3779B97F4A7C15u);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
    return z ^ (z >> 31);
  }

  /// A number from `low` to `high`, both included.
  int Between(int low, int high) {
    return low + static_cast<int>(Next() % static_cast<std::uint64_t>(high - low + 1));
  }

  /// True in `percent` of 100 cases.
  bool Chance(int percent) { return Between(1, 100) <= percent; }

  /// One element of an array.
  template <class T, std::size_t N>
  const T& Pick(const T (&from)[N]) {
    return from[Next() % N];
  }

 private:
  std::uint64_t mState;
};

}  // namespace vendrel::bench
