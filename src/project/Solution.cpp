#include "project/Solution.h"

#include "core/Ascii.h"
#include "services/SourceText.h"

namespace vendrel {
namespace {

// "http://server/Shop/Shop.vbproj" as "Shop/Shop.vbproj".
std::string_view WithoutServer(std::string_view path) {
  const std::size_t mark = path.find("://");
  const std::size_t slash = mark == kNotFound ? kNotFound : path.find('/', mark + 3);
  return slash == kNotFound ? path : path.substr(slash + 1);
}

}  // namespace

// Project("{F184...}") = "Shop", "Shop\Shop.vbproj", "{A1...}"
std::optional<SolutionProject> SolutionProjectOf(std::string_view line) {
  line = TrimGaps(line);
  if (!StartsWithNoCaseAscii(line, "Project(")) return std::nullopt;
  std::vector<std::string_view> quoted;
  while (line.find('"') != kNotFound) {
    TakeField(line, '"');
    quoted.push_back(TakeField(line, '"'));
  }
  if (quoted.size() < 3) return std::nullopt;
  const std::string_view path = quoted[2];
  const std::size_t dot = path.rfind('.');
  // Folders of a solution name themselves, web sites a folder or an address.
  if (dot == kNotFound || !EndsWithNoCaseAscii(path.substr(dot), "proj")) return std::nullopt;
  return SolutionProject{std::string(quoted[1]), std::string(WithoutServer(path)),
                         quoted.size() > 3 ? std::string(quoted[3]) : std::string(), 0};
}

std::vector<SolutionProject> ProjectsOfSolution(std::string_view text) {
  std::vector<SolutionProject> projects;
  for (std::int32_t number = 1; !text.empty(); ++number)
    if (auto project = SolutionProjectOf(TakeLine(text))) {
      project->Line = number;
      projects.push_back(std::move(*project));
    }
  return projects;
}

}  // namespace vendrel
