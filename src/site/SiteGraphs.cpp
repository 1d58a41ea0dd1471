#include "site/SiteGraphs.h"

#include <fstream>
#include <set>
#include <unordered_map>

#include "core/Ascii.h"
#include "diagnostics/VendrelError.h"
#include "services/FileSource.h"
#include "services/ProcessRunner.h"
#include "services/TemporaryFolder.h"
#include "site/SiteHtml.h"
#include "site/SiteRun.h"

namespace vendrel::site {
namespace {

// A larger graph says less than the list beside it, and takes long to lay out.
constexpr std::size_t kMostNodes = 150;
constexpr std::size_t kMostEdges = 600;

// A text between quotation marks of the DOT language.
std::string Quoted(std::string_view text) {
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') quoted += '\\';
    quoted += static_cast<unsigned char>(c) < 0x20 ? ' ' : c;
  }
  return quoted += '"';
}

}  // namespace

struct GraphDrawer::State {
  TemporaryFolder Folder{"graphs"};
};

struct GraphDrawer::Graph {
  struct Node {
    std::string Label, Href;
  };
  std::vector<Node> Nodes;
  std::set<std::pair<std::size_t, std::size_t>> Edges;
  std::unordered_map<const void*, std::size_t> Numbers;
  bool FromTop = true;

  std::size_t NumberOf(const void* key, const std::string& label, const std::string& href) {
    const auto [entry, isNew] = Numbers.try_emplace(key, Nodes.size());
    if (isNew) Nodes.push_back({label, href});
    return entry->second;
  }
  bool IsWorthDrawing() const {
    return !Edges.empty() && Nodes.size() <= kMostNodes && Edges.size() <= kMostEdges;
  }
  std::string Dot() const {
    std::string dot = "digraph g {\n  rankdir=";
    dot.append(FromTop ? "TB" : "LR").append(";\n  bgcolor=\"transparent\";\n");
    dot.append(
        "  node [shape=box, style=\"rounded,filled\", fillcolor=\"#f5f6f8\", "
        "color=\"#8a97a6\", fontname=\"sans-serif\", fontsize=11, height=0.3];\n"
        "  edge [color=\"#5d6673\", arrowsize=0.7];\n");
    for (std::size_t i = 0; i < Nodes.size(); ++i)
      dot.append("  n")
          .append(std::to_string(i))
          .append(" [label=")
          .append(Quoted(Shortened(Nodes[i].Label, 60)))
          .append(", URL=")
          .append(Quoted(Nodes[i].Href))
          .append("];\n");
    for (const auto& [from, to] : Edges)
      dot.append("  n")
          .append(std::to_string(from))
          .append(" -> n")
          .append(std::to_string(to))
          .append(";\n");
    return dot.append("}\n");
  }
};

GraphDrawer::GraphDrawer() : mState(std::make_unique<State>()) {
  int code = 127;
  try {
    code = ProcessRunner::Current().Run(
        {"dot", "-Tsvg", "-o", mState->Folder.Path() + "/none.svg", "/dev/null"}, {});
  } catch (const VendrelError&) {
    code = 127;
  }
  if (code == 127)
    throw VendrelError(errFileNotFound,
                       "dot (graphs are drawn by Graphviz, which is not installed: install its "
                       "package, graphviz, or leave --graphs out; lists tell the same)");
}
GraphDrawer::~GraphDrawer() = default;

void GraphDrawer::Append(std::string& html, const Graph& graph, const std::string& title) {
  if (!graph.IsWorthDrawing()) return;
  const std::string source = mState->Folder.Path() + "/graph.dot";
  const std::string target = mState->Folder.Path() + "/graph.svg";
  {
    std::ofstream out(source, std::ios::binary | std::ios::trunc);
    out << graph.Dot();
  }
  if (ProcessRunner::Current().Run({"dot", "-Tsvg", "-o", target, source}, {}) != 0) return;
  std::ifstream in(target, std::ios::binary);
  std::string svg((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  const std::size_t begin = svg.find("<svg");
  if (begin == kNotFound) return;
  svg.erase(0, begin);
  // Comments hold names; ids of a graph must differ from those of its page.
  for (std::size_t at = svg.find("<!--"); at != kNotFound; at = svg.find("<!--", at)) {
    const std::size_t end = svg.find("-->", at);
    if (end == kNotFound) break;
    svg.erase(at, end + 3 - at);
  }
  svg = ReplaceAll(svg, " id=\"", " id=\"g1-");
  svg = ReplaceAll(svg, "xlink:href", "href");
  svg = ReplaceAll(svg, "xlink:title", "aria-label");
  svg = ReplaceAll(svg, " xmlns:xlink=\"http://www.w3.org/1999/xlink\"", "");
  html.append("<figure class=\"graph\">\n");
  if (!title.empty())
    html.append("<figcaption class=\"note\">").append(Text(title)).append("</figcaption>\n");
  html.append(svg).append("</figure>\n");
}

void GraphDrawer::AppendProjects(std::string& html, const SiteRun& run) {
  Graph graph;
  const auto numberOf = [&](const ProjectEntry& project) {
    return graph.NumberOf(&project, project.Name, project.Folder + "index.html");
  };
  for (const ProjectEntry& project : run.Map.Projects())
    for (const Reference& reference : project.Project->References)
      if (const ProjectEntry* other = run.Map.ProjectOf(reference.ReferencedProject()))
        graph.Edges.emplace(numberOf(project), numberOf(*other));
  Append(html, graph, {});
}

void GraphDrawer::AppendHierarchy(std::string& html, const SiteRun& run,
                                  const ProjectEntry& project) {
  Graph graph;
  graph.FromTop = false;
  const auto numberOf = [&](const ModuleEntry& module) {
    return graph.NumberOf(&module, module.Name,
                          HrefFrom(project.Folder, {module.Folder, "index.html"}));
  };
  for (const ModuleEntry& module : project.Modules) {
    if (const ModuleEntry* base = run.Relations.BaseOf(module))
      graph.Edges.emplace(numberOf(module), numberOf(*base));
    for (const ModuleEntry* each : run.Relations.ImplementersOf(module))
      graph.Edges.emplace(numberOf(*each), numberOf(module));
  }
  Append(html, graph, "Who derives from whom, and implements what");
}

void GraphDrawer::AppendCalls(std::string& html, const SiteRun& run, const ModuleEntry& module) {
  Graph graph;
  graph.FromTop = false;
  for (const MemberEntry& member : module.Members)
    for (const CodeElement* element : member.Elements)
      for (const ElementUse& use : run.Uses.UsedBy(*element)) {
        const Address address = run.Map.Of(use.Other);
        if (use.Kind != "call" || !address || use.Other == element) continue;
        const std::string href = HrefFrom(module.Folder, address);
        graph.Edges.emplace(
            graph.NumberOf(&member, std::string(member.Name), std::string(member.Leaf)),
            graph.NumberOf(use.Other, NameWithModule(*use.Other), href));
      }
  Append(html, graph, "Calls of this module");
}

}  // namespace vendrel::site
