#include <memory>

#include "cli/Commands.h"
#include "cli/Inputs.h"
#include "cli/JsonLines.h"
#include "cli/ShownText.h"
#include "survey/GraphText.h"

namespace vendrel::cli {
namespace {

struct GraphArguments {
  CommonOptions Common;
  Inputs Paths;
  std::string Level = "project";
  std::string Focus;
  int Depth = 1;
  bool Calls = false;
  bool Dot = false;
  bool Mermaid = false;
  bool GraphML = false;
  bool Json = false;
};

GraphLevel LevelOf(const GraphArguments& arguments) {
  if (arguments.Level == "module") return GraphLevel::Module;
  return arguments.Level == "class" ? GraphLevel::Class : GraphLevel::Project;
}

void WriteEdgesAsText(std::ostream& out, const CodeGraph& graph) {
  std::vector<bool> isTied(graph.Nodes.size());
  for (const CodeGraph::Edge& edge : graph.Edges) {
    isTied[edge.From] = isTied[edge.To] = true;
    WriteRow(out, {graph.Nodes[edge.From].Label, edge.Relation, graph.Nodes[edge.To].Label,
                   std::to_string(edge.Count)});
  }
  for (std::size_t i = 0; i < graph.Nodes.size(); ++i)
    if (!isTied[i]) WriteRow(out, {graph.Nodes[i].Label});
}

void WriteGraphAsJson(std::ostream& out, const CodeGraph& graph, const CommonOptions& options) {
  JsonLines json(out, "graph", options, true);
  for (const CodeGraph::Node& node : graph.Nodes) {
    json.Begin();
    json.Text("Record", "node");
    json.Text("Label", node.Label);
    json.Text("Kind", node.Kind);
    json.Text("Project", node.Project);
    json.Text("File", node.File);
    json.Number("Line", node.Line);
    json.Number("Column", 0);
    json.End();
  }
  for (const CodeGraph::Edge& edge : graph.Edges) {
    json.Begin();
    json.Text("Record", "edge");
    json.Text("From", graph.Nodes[edge.From].Label);
    json.Text("To", graph.Nodes[edge.To].Label);
    json.Text("Relation", edge.Relation);
    json.Number("Count", edge.Count);
    json.End();
  }
}

int RunGraph(const GraphArguments& arguments, const Streams& streams) {
  if (arguments.Calls && LevelOf(arguments) == GraphLevel::Project)
    throw ToolError(exUsage, "--calls: projects call nothing; --level module shows who does");
  int code = exDone;
  WriteResult(arguments.Common, streams, arguments.Paths, [&](std::ostream& out) {
    CodeGraph graph(LevelOf(arguments), NativeRootOf(arguments.Common));
    code = ForEachProject(
        arguments.Paths, arguments.Common, streams,
        [&](VBProject& project) {
          if (!arguments.Calls) return graph.Add(project);
          CallGraph calls;
          calls.Add(project);
          graph.Add(project, &calls);
        },
        LevelOf(arguments) == GraphLevel::Project ? LoadDepth::ProjectFile : LoadDepth::Modules);
    graph.Finish();
    if (!arguments.Focus.empty() && !graph.Focus(arguments.Focus, arguments.Depth))
      throw ToolError(exNo, "--focus: nothing of the graph is named '" + arguments.Focus + "'");
    if (arguments.Dot)
      WriteDot(out, graph);
    else if (arguments.Mermaid)
      WriteMermaid(out, graph);
    else if (arguments.GraphML)
      WriteGraphML(out, graph);
    else if (arguments.Json)
      WriteGraphAsJson(out, graph, arguments.Common);
    else
      WriteEdgesAsText(out, graph);
  });
  return code;
}

}  // namespace

void AddGraphCommand(CLI::App& app, Job& job) {
  auto* command = app.add_subcommand(
      "graph", "Projects and references, modules, or classes and interfaces as a graph");
  const auto arguments = std::make_shared<GraphArguments>();
  AddInputs(*command, arguments->Paths);
  command->add_option("--level", arguments->Level, "What the nodes are: project, module or class")
      ->check(CLI::IsMember({"project", "module", "class"}))
      ->capture_default_str();
  auto* focus = command->add_option("--focus", arguments->Focus, "Only what is near this node")
                    ->type_name("NAME");
  command->add_option("--depth", arguments->Depth, "How many edges near is")
      ->check(CLI::NonNegativeNumber)
      ->capture_default_str()
      ->needs(focus);
  command->add_flag("--calls", arguments->Calls,
                    "Which modules' procedures call each other, too (--level module or class)");
  auto* form = command->add_option_group("form");
  form->add_flag("--dot", arguments->Dot, "For Graphviz");
  form->add_flag("--mermaid", arguments->Mermaid, "For Mermaid");
  form->add_flag("--graphml", arguments->GraphML, "As GraphML");
  form->add_flag("--json", arguments->Json, "One JSON object a line: nodes, then edges");
  form->require_option(0, 1);
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &job] {
    job.Run = [arguments, &streams = job.Streams] { return RunGraph(*arguments, streams); };
  });
}

}  // namespace vendrel::cli
