#include <memory>

#include "cli/Commands.h"
#include "cli/ProjectCounts.h"
#include "cli/Report.h"
#include "cli/Results.h"
#include "cli/Session.h"
#include "cli/ShownText.h"
#include "project/VBProjectGroup.h"

namespace vendrel::cli {
namespace {

struct CheckArguments {
  CommonOptions Common;
  std::string Path;
  bool Json = false;

  bool AsJson() const { return Json || Common.DiagnosticsAsJson(); }
};

// The projects of a group; those that it names in vain are told.
std::vector<std::string> ProjectsOfGroup(const std::string& path, Diagnostics& told) {
  VBProjectGroup group;
  if (!group.Load(AbsolutePath(path), true, true))
    throw ToolError(exFailed, path + ": cannot be read: " + ReasonIn(group.LastErrorString, path));
  std::vector<std::string> paths;
  for (const VBProject& project : group.AllVBProjects())
    paths.push_back(project.FileName.FullPath());
  for (const Diagnostic& item : group.Diagnostics) told.Add(item);
  return paths;
}

std::vector<std::string> ProjectsBehind(const std::string& path, Diagnostics& told) {
  const InputKind kind = KindOfInput(path);
  if (kind == InputKind::Group) return ProjectsOfGroup(path, told);
  if (kind != InputKind::Folder) return {path};
  std::vector<FileSystemObject> found;
  FileSystemObject(AbsolutePath(path) + "/").FindFiles("*.vbp", 0, found);
  if (found.empty())
    throw ToolError(exNo, path + ": no project (.vbp) lies in or below this folder");
  std::vector<std::string> paths;
  paths.reserve(found.size());
  for (const FileSystemObject& file : found) paths.push_back(file.FullPath());
  return paths;
}

// Told by this command alone: on this machine hardly any registered library has its file.
void TellMissingReferences(VBProject& project) {
  const DiagnosticScope scope(&project.Diagnostics, project.FileName.FullPath());
  for (const Reference& reference : project.References)
    if (!reference.FileName.Exists())
      TellAt(DiagnosticCode::MissingReference, project.FileName.FullPath(), reference.SourceLine(),
             {reference.FileName.FullPath().empty() ? reference.Name()
                                                    : reference.FileName.FullPath()});
}

// One project; in a folder, one that cannot be read does not end the walk.
void CheckOne(const CheckArguments& arguments, const Streams& streams, const std::string& path,
              bool alone, std::ostream& out, ShownPaths& paths, ProjectCounts& counts) {
  try {
    const auto project = LoadInput(path, arguments.Common, streams);
    TellMissingReferences(*project);
    for (const Diagnostic& item : project->Diagnostics)  // the result, --quiet or not
      WriteDiagnostic(out, item, paths, arguments.AsJson());
    counts.Add(*project);
  } catch (const std::exception& error) {
    if (alone) throw;
    streams.Err << "vendrelmodel: " << Shown(paths.Of(path) + ": " + error.what()) << '\n';
    ++counts.Unread;
  }
}

int RunCheck(const CheckArguments& arguments, const Streams& streams) {
  ApplyToProcess(arguments.Common);
  Diagnostics told;
  const auto projects = ProjectsBehind(arguments.Path, told);
  ProjectCounts counts;
  counts.Unread = told.CountOf(DiagnosticCode::MissingProject);
  WriteResult(arguments.Common, streams, arguments.Path, [&](std::ostream& out) {
    ShownPaths paths;
    for (const Diagnostic& item : told) WriteDiagnostic(out, item, paths, arguments.AsJson());
    for (const std::string& path : projects)
      CheckOne(arguments, streams, path, projects.size() == 1, out, paths, counts);
    counts.Write(out, arguments.AsJson());
  });
  if (counts.Unread > 0) return exFailed;
  if (counts.Missing > 0) return exNo;
  return arguments.Common.Strict && counts.Warnings ? exWarnings : exDone;
}

}  // namespace

void AddCheckCommand(CLI::App& app, Job& job) {
  auto* command =
      app.add_subcommand("check", "What is missing or not understood in a project or folder");
  const auto arguments = std::make_shared<CheckArguments>();
  command->add_option("path", arguments->Path, "A project, module, group or folder")->required();
  command->add_flag("--json", arguments->Json, "One JSON object a line");
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &job] {
    job.Run = [arguments, &streams = job.Streams] { return RunCheck(*arguments, streams); };
  });
}

}  // namespace vendrel::cli
