#pragma once
// Graphs, drawn by Graphviz where that is installed.

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace vendrel::site {

struct SiteRun;
struct ModuleEntry;
struct ProjectEntry;

class GraphDrawer {
 public:
  /// Raises 53, with what to install, where there is no Graphviz.
  GraphDrawer();
  ~GraphDrawer();
  GraphDrawer(const GraphDrawer&) = delete;
  GraphDrawer& operator=(const GraphDrawer&) = delete;

  /// Each appends a graph, or nothing where there is none to draw, or too large a one.
  void AppendProjects(std::string& html, const SiteRun& run);
  void AppendHierarchy(std::string& html, const SiteRun& run, const ProjectEntry& project);
  void AppendCalls(std::string& html, const SiteRun& run, const ModuleEntry& module);

 private:
  struct Graph;
  void Append(std::string& html, const Graph& graph, const std::string& title);

  struct State;
  std::unique_ptr<State> mState;
};

}  // namespace vendrel::site
