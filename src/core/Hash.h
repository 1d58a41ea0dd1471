#pragma once
// The one hash of the library's own tables: byte after byte, equal on every machine.

#include <cstdint>
#include <cstring>
#include <string_view>

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

/// The same for a whole text at hand: eight bytes in a step, and so not equal on every machine.
inline std::uint32_t HashOfText(std::string_view text) {
  std::uint64_t hash = text.size();
  const auto add = [&](std::uint64_t bytes) {
    hash = (hash ^ bytes) * 0x9E3779B97F4A7C15u;
    hash ^= hash >> 32;
  };
  const auto part = [&](auto bytes, std::size_t at) {
    std::memcpy(&bytes, text.data() + at, sizeof bytes);
    return std::uint64_t{bytes};
  };
  const std::size_t size = text.size();
  if (size >= 8) {
    for (std::size_t at = 0; at + 8 < size; at += 8) add(part(std::uint64_t{}, at));
    add(part(std::uint64_t{}, size - 8));
  } else if (size >= 4) {
    add(part(std::uint32_t{}, 0) << 32 | part(std::uint32_t{}, size - 4));
  } else if (size > 0) {
    add(part(std::uint8_t{}, 0) << 16 | part(std::uint8_t{}, size / 2) << 8 |
        part(std::uint8_t{}, size - 1));
  }
  return static_cast<std::uint32_t>(hash);
}

}  // namespace vendrel
