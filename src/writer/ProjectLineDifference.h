#pragma once
// What writing did to the lines of a project file. Many lines are rebuilt from what was read of
// them, in another order and spelling; those are told apart from lines that went or came otherwise.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vendrel {

/// A line that only one of two project files has.
struct ProjectLineChange {
  /// Whether the file that was written has it.
  bool IsWritten;
  /// Whether the rules for project files ask for it: it was rebuilt, or is always written.
  bool ByRule;
  /// 1-based in its file.
  std::int32_t Line;
  std::string Text;
};

/// Compares the texts of a project file that was read and of the one written from it, as sets of
/// lines: their order does not count. Lines that went come first, each in the order of its file.
std::vector<ProjectLineChange> CompareProjectLines(std::string_view before, std::string_view after);

/// Whether a line that was read may stand as this one in a project file that was written to another
/// folder with its lines kept: both are of one key, and that key tells a path.
bool IsSamePathLine(std::string_view before, std::string_view after);

}  // namespace vendrel
