#pragma once
// Rows with names for their columns.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace vendrel {

/// A text, a number or a truth value.
using TableValue = std::variant<std::string, std::int64_t, bool>;
/// A number of things as a table holds it.
inline std::int64_t SizeOf(std::size_t number) { return static_cast<std::int64_t>(number); }

struct Table {
  /// What a row is: "module". Also the name of the table.
  std::string_view Row;
  /// What the rows are together, for people: "modules that no project lists".
  std::string_view Title;
  std::vector<std::string_view> Columns;
  std::vector<std::vector<TableValue>> Rows;
  /// The column by which the ten largest are found; none where the rows are listed as they are.
  std::string_view LargestBy = {};
};

}  // namespace vendrel
