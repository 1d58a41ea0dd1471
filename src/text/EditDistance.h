#pragma once
// How far a word is from another one, for what was mistyped.

#include <cstddef>
#include <string_view>

namespace vendrel {

/// Words beyond that many bytes are not compared.
inline constexpr std::size_t kLongestCompared = 62;

/// How many letters were added, left out or exchanged, ASCII case ignored; neighbours in the wrong
/// order count as one. Neither word may be longer than `kLongestCompared`.
std::size_t EditDistance(std::string_view a, std::string_view b);

}  // namespace vendrel
