#pragma once
// How many arguments a call in source passes.

#include <optional>
#include <string_view>

namespace vendrel {

/// Of a call in a statement, whose name ends at the 0-based `behind` and begins at `name`; nothing
/// where that cannot be told. A call without arguments and brackets passes none.
std::optional<int> CountArguments(std::string_view statement, std::size_t name, std::size_t behind);

}  // namespace vendrel
