#pragma once
// Solutions: files that list projects of VB.NET and other languages.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vendrel {

/// One project that a solution lists.
struct SolutionProject {
  std::string Name;
  /// Seen from the folder of the solution. Of a project on a web server what follows the server's
  /// name: there its files mostly lie.
  std::string Path;
  std::string GUID;
  /// 1-based; 0 where it was read from a line alone.
  std::int32_t Line = 0;
};

/// The project that a line of a solution lists; nothing for any other line, and for folders.
std::optional<SolutionProject> SolutionProjectOf(std::string_view line);

/// All projects of a solution file, in its order.
std::vector<SolutionProject> ProjectsOfSolution(std::string_view text);

}  // namespace vendrel
