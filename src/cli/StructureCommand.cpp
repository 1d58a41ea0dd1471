#include <map>
#include <memory>

#include "cli/Commands.h"
#include "cli/Inputs.h"
#include "cli/ProjectSets.h"
#include "cli/Report.h"
#include "cli/Results.h"
#include "core/CaseFold.h"

namespace vendrel::cli {
namespace {

struct StructureArguments {
  CommonOptions Common;
  Inputs Paths;
  bool Dot = false;
  bool Mermaid = false;
};

/// Projects and what they refer to, as a graph. Projects are boxes, libraries are not.
class Graph {
 public:
  explicit Graph(VBProjects& projects) {
    for (VBProject& project : projects) NodeOf(KeyOf(project), project.ProjectName, true);
    for (VBProject& project : projects) AddEdges(project);
  }

  void WriteDot(std::ostream& out) const {
    out << "digraph projects {\n";
    for (const Node& node : mNodes)
      out << "  n" << node.Number << " [label=\"" << Escaped(node.Label, "\\\"") << "\""
          << (node.IsProject ? ", shape=box" : "") << "];\n";
    for (const auto& [from, to] : mEdges) out << "  n" << from << " -> n" << to << ";\n";
    out << "}\n";
  }

  void WriteMermaid(std::ostream& out) const {
    out << "graph LR\n";
    for (const Node& node : mNodes)
      out << "  n" << node.Number << (node.IsProject ? "[\"" : "([\"")
          << Escaped(node.Label, "#quot;") << (node.IsProject ? "\"]" : "\"])") << '\n';
    for (const auto& [from, to] : mEdges) out << "  n" << from << " --> n" << to << '\n';
  }

 private:
  struct Node {
    std::size_t Number;
    std::string Label;
    bool IsProject;
  };

  static std::string KeyOf(const VBProject& project) {
    return FoldKey(project.FileName.FullPath());
  }
  std::size_t NodeOf(const std::string& key, const std::string& label, bool isProject) {
    const auto [entry, isNew] = mByKey.try_emplace(key, mNodes.size());
    if (isNew) mNodes.push_back({entry->second, label, isProject});
    return entry->second;
  }
  void AddEdges(VBProject& project) {
    const std::size_t from = mByKey.at(KeyOf(project));
    for (const Reference& reference : project.References) {
      const VBProject* target = reference.ReferencedProject();
      const std::string name = reference.Name();
      if (!target && name.empty()) continue;
      const std::size_t to = target ? NodeOf(KeyOf(*target), target->ProjectName, true)
                                    : NodeOf("library " + FoldKey(name), name, false);
      mEdges.emplace_back(from, to);
    }
  }
  static std::string Escaped(const std::string& label, std::string_view quote) {
    std::string text;
    for (const char c : label) {
      if (c == '"')
        text += quote;
      else if (c == '\\')
        text += "\\\\";
      else
        text += c;
    }
    return text;
  }

  std::map<std::string, std::size_t> mByKey;
  std::vector<Node> mNodes;
  std::vector<std::pair<std::size_t, std::size_t>> mEdges;
};

// The projects behind the paths, listed but not read. Of those with one name all are kept, but in a
// group that stands alone.
struct ListedProjects {
  std::vector<std::shared_ptr<VBProjectGroup>> Groups;
  VBProjects Own;
  bool IsOneGroup = false;
  VBProjects& All() { return IsOneGroup ? Groups.front()->AllVBProjects() : Own; }

  void Add(const std::shared_ptr<VBProject>& project) {
    const std::string& name = project->ProjectName;
    Own.Add(project, Own.HasKey(name) ? std::string_view() : name);
  }
};

int ListPath(const std::string& path, const CommonOptions& options, const Streams& streams,
             ListedProjects& listed) {
  int code = exDone;
  const auto add = [&](const std::shared_ptr<VBProject>& project) {
    if (!project) return;
    code = Worse(code, ReportDiagnostics(*project, options, streams.Err));
    listed.Add(project);
  };
  Diagnostics told;
  switch (KindOfInput(path)) {
    case InputKind::Group: {
      listed.Groups.push_back(LoadGroup(path, options, streams, LoadDepth::ProjectFile));
      VBProjectGroup& group = *listed.Groups.back();
      for (std::size_t i = 1; !listed.IsOneGroup && i <= group.AllVBProjects().Count(); ++i)
        listed.Add(group.AllVBProjects().Share(i));
      return ReportList(group.Diagnostics, options, streams.Err);
    }
    case InputKind::Folder:
      for (const FileSystemObject& file : ProjectFilesBelow(path, told))
        add(LoadOneOf(file.FullPath(), options, streams, told, LoadDepth::ProjectFile));
      return Worse(code, ReportList(told, options, streams.Err));
    default: add(LoadInput(path, options, streams, LoadDepth::ProjectFile));
  }
  return code;
}

int RunStructure(const StructureArguments& arguments, const Streams& streams) {
  ApplyToProcess(arguments.Common);
  ListedProjects listed;
  listed.IsOneGroup = KindOfInput(arguments.Paths) == InputKind::Group;
  const int code = ForEachInput(
      arguments.Paths, arguments.Common, streams,
      [&](const std::string& path) { return ListPath(path, arguments.Common, streams, listed); });
  if (listed.All().Count() == 0)
    throw ToolError(Worse(code, exNo),
                    arguments.Paths.Shown() + ": no project (.vbp) lies in or below this folder");
  listed.All().CementReferences();
  WriteResult(arguments.Common, streams, arguments.Paths, [&](std::ostream& out) {
    if (arguments.Dot)
      Graph(listed.All()).WriteDot(out);
    else if (arguments.Mermaid)
      Graph(listed.All()).WriteMermaid(out);
    else
      out << listed.All().Structure();
  });
  return code;
}

}  // namespace

void AddStructureCommand(CLI::App& app, Job& job) {
  auto* command =
      app.add_subcommand("structure", "Projects and which refers to which, as XML or as a graph");
  const auto arguments = std::make_shared<StructureArguments>();
  AddInputs(*command, arguments->Paths);
  auto* dot = command->add_flag("--dot", arguments->Dot, "As a graph for Graphviz");
  command->add_flag("--mermaid", arguments->Mermaid, "As a Mermaid graph")->excludes(dot);
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &job] {
    job.Run = [arguments, &streams = job.Streams] { return RunStructure(*arguments, streams); };
  });
}

}  // namespace vendrel::cli
