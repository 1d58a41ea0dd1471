#pragma once
// Two elements of one key, where more can be told of them than their kind.

#include <string_view>

namespace vendrel {

/// As `ReportDuplicateKey` by type alone; the diagnostic has `told` in place of the type, the box
/// keeps to it.
void ReportDuplicateKey(std::string_view typeName, std::string_view key, std::string_view told);

}  // namespace vendrel
