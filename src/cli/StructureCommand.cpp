#include <map>
#include <memory>

#include "cli/Commands.h"
#include "cli/ProjectSets.h"
#include "cli/Report.h"
#include "cli/Results.h"
#include "core/CaseFold.h"

namespace vendrel::cli {
namespace {

struct StructureArguments {
  CommonOptions Common;
  std::string Path;
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

// The projects behind a path, listed but not read. Of those with one name in a folder all are kept.
struct ListedProjects {
  std::shared_ptr<VBProjectGroup> Group;
  VBProjects Own;
  int Code = exDone;
  VBProjects& All() { return Group ? Group->AllVBProjects() : Own; }
};

void List(const StructureArguments& arguments, const Streams& streams, ListedProjects& listed) {
  const CommonOptions& options = arguments.Common;
  ApplyToProcess(options);
  const auto add = [&](const std::shared_ptr<VBProject>& project) {
    if (!project) return;
    listed.Code = Worse(listed.Code, ReportDiagnostics(*project, options, streams.Err));
    const std::string& name = project->ProjectName;
    listed.Own.Add(project, listed.Own.HasKey(name) ? std::string_view() : name);
  };
  Diagnostics told;
  switch (KindOfInput(arguments.Path)) {
    case InputKind::Group:
      listed.Group = LoadGroup(arguments.Path, options, streams, LoadDepth::ProjectFile);
      listed.Code = ReportList(listed.Group->Diagnostics, options, streams.Err);
      break;
    case InputKind::Folder:
      for (const FileSystemObject& file : ProjectFilesBelow(arguments.Path, told))
        add(LoadOneOf(file.FullPath(), options, streams, told, LoadDepth::ProjectFile));
      listed.Code = Worse(listed.Code, ReportList(told, options, streams.Err));
      break;
    default: add(LoadInput(arguments.Path, options, streams, LoadDepth::ProjectFile));
  }
}

int RunStructure(const StructureArguments& arguments, const Streams& streams) {
  ListedProjects listed;
  List(arguments, streams, listed);
  if (listed.All().Count() == 0)
    throw ToolError(Worse(listed.Code, exNo),
                    arguments.Path + ": no project (.vbp) lies in or below this folder");
  listed.All().CementReferences();
  WriteResult(arguments.Common, streams, arguments.Path, [&](std::ostream& out) {
    if (arguments.Dot)
      Graph(listed.All()).WriteDot(out);
    else if (arguments.Mermaid)
      Graph(listed.All()).WriteMermaid(out);
    else
      out << listed.All().Structure();
  });
  return listed.Code;
}

}  // namespace

void AddStructureCommand(CLI::App& app, Job& job) {
  auto* command =
      app.add_subcommand("structure", "Projects and which refers to which, as XML or as a graph");
  const auto arguments = std::make_shared<StructureArguments>();
  command->add_option("path", arguments->Path, "A group, a folder, or a project")->required();
  auto* dot = command->add_flag("--dot", arguments->Dot, "As a graph for Graphviz");
  command->add_flag("--mermaid", arguments->Mermaid, "As a Mermaid graph")->excludes(dot);
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &job] {
    job.Run = [arguments, &streams = job.Streams] { return RunStructure(*arguments, streams); };
  });
}

}  // namespace vendrel::cli
