#pragma once
// The one hash of the library's own tables: byte after byte, equal on every machine.

#include <cstdint>

namespace vendrel {

/// Add the bytes of a text in their order, folded as the table compares them.
class TextHash {
 public:
  constexpr void Add(char c) { mHash = (mHash ^ static_cast<unsigned char>(c)) * 16777619u; }
  /// The high bits take part in the low ones, by which a table chooses a slot.
  constexpr std::uint32_t Value() const { return mHash ^ (mHash >> 15); }

 private:
  std::uint32_t mHash = 2166136261u;
};

}  // namespace vendrel
