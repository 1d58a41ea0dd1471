#include "survey/GraphText.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "output/Xml.h"

namespace vendrel {
namespace {

// Nodes by the project that they are drawn in, the project itself among them.
std::map<std::string, std::vector<std::size_t>> NodesByProject(const CodeGraph& graph) {
  std::map<std::string, std::vector<std::size_t>> groups;
  for (std::size_t i = 0; i < graph.Nodes.size(); ++i)
    if (!graph.Nodes[i].Project.empty()) groups[graph.Nodes[i].Project].push_back(i);
  for (std::size_t i = 0; i < graph.Nodes.size(); ++i) {
    const CodeGraph::Node& node = graph.Nodes[i];
    const auto group = node.Project.empty() ? groups.find(node.Label) : groups.end();
    if (group != groups.end())
      group->second.insert(group->second.begin(), i);
    else if (node.Project.empty())
      groups[{}].push_back(i);
  }
  return groups;
}

// Calls `node` for each node, inside of what `open` and `close` write for its project.
void DrawNodes(const CodeGraph& graph, const std::function<void(const std::string&)>& open,
               const std::function<void()>& close, const std::function<void(std::size_t)>& node) {
  for (const auto& [project, nodes] : NodesByProject(graph)) {
    if (!project.empty()) open(project);
    for (const std::size_t i : nodes) node(i);
    if (!project.empty()) close();
  }
}

std::string Quoted(const std::string& text, std::string_view quote) {
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"')
      quoted += quote;
    else if (c == '\\')
      quoted += "\\\\";
    else if (c == '\n' || c == '\r')
      quoted += ' ';
    else
      quoted += c;
  }
  return quoted + '"';
}

std::string_view DotShape(const CodeGraph::Node& node) {
  if (node.Kind == "library") return "ellipse";
  if (node.Kind == "interface") return "hexagon";
  return node.Project.empty() ? "box3d" : "box";
}

}  // namespace

void WriteDot(std::ostream& out, const CodeGraph& graph) {
  out << "digraph code {\n  rankdir=LR;\n";
  std::size_t number = 0;
  DrawNodes(
      graph,
      [&](const std::string& project) {
        out << "  subgraph cluster_" << number++ << " {\n  label=" << Quoted(project, "\\\"")
            << ";\n";
      },
      [&] { out << "  }\n"; },
      [&](std::size_t i) {
        const CodeGraph::Node& node = graph.Nodes[i];
        out << "  n" << i << " [label=" << Quoted(node.Label, "\\\"")
            << ", shape=" << DotShape(node) << ", tooltip=" << Quoted(node.Kind, "\\\"") << "];\n";
      });
  for (const CodeGraph::Edge& edge : graph.Edges) {
    out << "  n" << edge.From << " -> n" << edge.To;
    if (edge.Relation == "implements")
      out << " [style=dashed, arrowhead=empty]";
    else if (edge.Relation == "inherits")
      out << " [arrowhead=empty]";
    else if (edge.Relation == "uses")
      out << " [color=gray40]";
    out << ";\n";
  }
  out << "}\n";
}

void WriteMermaid(std::ostream& out, const CodeGraph& graph) {
  out << "graph LR\n";
  std::size_t number = 0;
  DrawNodes(
      graph,
      [&](const std::string& project) {
        out << "  subgraph p" << number++ << "[" << Quoted(project, "#quot;") << "]\n";
      },
      [&] { out << "  end\n"; },
      [&](std::size_t i) {
        const CodeGraph::Node& node = graph.Nodes[i];
        const bool isRound = node.Kind == "library", isSix = node.Kind == "interface";
        out << "  n" << i
            << (isRound ? "(["
                : isSix ? "{{"
                        : "[")
            << Quoted(node.Label, "#quot;")
            << (isRound ? "])"
                : isSix ? "}}"
                        : "]")
            << '\n';
      });
  for (const CodeGraph::Edge& edge : graph.Edges) {
    const bool isNamed = edge.Relation == "implements" || edge.Relation == "inherits";
    out << "  n" << edge.From << (isNamed ? " -." : " --");
    if (isNamed) out << ' ' << edge.Relation << " .";
    out << "-> n" << edge.To << '\n';
  }
}

void WriteGraphML(std::ostream& out, const CodeGraph& graph) {
  out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<graphml xmlns=\"http://graphml.graphdrawing.org/xmlns\">\n";
  for (const char* key : {"label", "kind", "project", "file", "line"})
    out << "  <key id=\"" << key << "\" for=\"node\" attr.name=\"" << key << "\" attr.type=\""
        << (std::string_view(key) == "line" ? "int" : "string") << "\"/>\n";
  out << "  <key id=\"relation\" for=\"edge\" attr.name=\"relation\" attr.type=\"string\"/>\n"
         "  <key id=\"count\" for=\"edge\" attr.name=\"count\" attr.type=\"int\"/>\n"
         "  <graph edgedefault=\"directed\">\n";
  const auto data = [&](std::string_view key, const std::string& value) {
    if (value.empty()) return;
    std::string text;
    AppendXmlText(text, value);
    out << "<data key=\"" << key << "\">" << text << "</data>";
  };
  for (std::size_t i = 0; i < graph.Nodes.size(); ++i) {
    const CodeGraph::Node& node = graph.Nodes[i];
    out << "    <node id=\"n" << i << "\">";
    data("label", node.Label);
    data("kind", node.Kind);
    data("project", node.Project);
    data("file", node.File);
    if (node.Line > 0) data("line", std::to_string(node.Line));
    out << "</node>\n";
  }
  for (const CodeGraph::Edge& edge : graph.Edges) {
    out << "    <edge source=\"n" << edge.From << "\" target=\"n" << edge.To << "\">";
    data("relation", std::string(edge.Relation));
    data("count", std::to_string(edge.Count));
    out << "</edge>\n";
  }
  out << "  </graph>\n</graphml>\n";
}

}  // namespace vendrel
