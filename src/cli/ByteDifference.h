#pragma once
// Two files held against each other, byte by byte.

#include <ostream>
#include <string>
#include <string_view>

namespace vendrel::cli {

/// What stands between the lines with which both of two files begin and those with which both end.
struct ByteDifference {
  bool Differs = false;
  /// 1-based line at which it begins.
  std::size_t Line = 0;
  /// With their line ends.
  std::string_view Before, After;
};

/// Compares the bytes of two files; the views are of these bytes.
ByteDifference CompareBytes(std::string_view before, std::string_view after);

/// Writes both sides, lines in quotes so that blanks and line ends are seen.
void WriteByteDifference(std::ostream& out, const ByteDifference& difference);

}  // namespace vendrel::cli
