#pragma once
#include <cstdint>
#include <string_view>

namespace vendrel {

/// What a line of VB.NET tells by itself, at the beginning of a statement.
enum class NetLineShape : std::uint8_t {
  /// It takes a closer look: attributes, XML and interpolated texts, names in brackets, queries,
  /// headers of lambdas, colons, underscores, or anything at its end that the next line continues.
  Unclear,
  /// No statement: blank, comment or directive.
  Bare,
  /// One whole statement. One more condition is left to the reader: that the next line does not
  /// begin with Handles or Implements.
  Whole,
  /// The same, and it declares, opens and ends nothing that the intake knows; it has no comment,
  /// and the text between its outer blanks and tabs is the statement.
  Plain,
};

NetLineShape ShapeOfNetLine(std::string_view line);

}  // namespace vendrel
