#pragma once
#include <cstdint>
#include <string_view>

namespace vendrel {

/// Leading number of a text (sign, decimal digits), 0 if there is none; beyond 32 bits the nearest.
std::int32_t NumericValue(std::string_view text);

}  // namespace vendrel
