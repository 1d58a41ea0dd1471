#pragma once
// Two texts compared line by line, shown as a unified diff.

#include <ostream>
#include <string_view>
#include <vector>

namespace vendrel::cli {

/// Lines of the old text that give way to lines of the new one; 0-based, either may be empty.
struct LineChange {
  std::size_t OldLine = 0, OldCount = 0;
  std::size_t NewLine = 0, NewCount = 0;
};

/// The changes that make `newText` of `oldText`, in order. Time grows with the lines, and with the
/// square of the differences only within small bounds: far apart texts are told as one change where
/// a shorter answer may exist.
std::vector<LineChange> CompareLines(std::string_view oldText, std::string_view newText);

/// Writes the changes with three lines around each, under headings for both names; nothing for
/// equal texts. Gives the number of changes.
std::size_t WriteUnifiedDiff(std::ostream& out, std::string_view oldName, std::string_view oldText,
                             std::string_view newName, std::string_view newText);

}  // namespace vendrel::cli
