#include <memory>

#include "cli/Commands.h"
#include "cli/ProjectCounts.h"
#include "cli/Report.h"
#include "cli/Results.h"
#include "cli/Session.h"

namespace vendrel::cli {
namespace {

struct CheckArguments {
  CommonOptions Common;
  std::string Path;
  bool Json = false;

  bool AsJson() const { return Json || Common.DiagnosticsAsJson(); }
};

std::vector<std::string> ProjectsBelow(const std::string& path) {
  if (KindOfInput(path) != InputKind::Folder) return {path};
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
    for (const Diagnostic& item : project->Diagnostics)
      if (!arguments.Common.Quiet || SeverityOf(item.Code) == Severity::Error)
        WriteDiagnostic(out, item, paths, arguments.AsJson());
    counts.Add(*project);
  } catch (const std::exception& error) {
    if (alone) throw;
    streams.Err << "vendrelmodel: " << paths.Of(path) << ": " << error.what() << '\n';
    ++counts.Unread;
  }
}

int RunCheck(const CheckArguments& arguments, const Streams& streams) {
  ApplyToProcess(arguments.Common);
  const auto projects = ProjectsBelow(arguments.Path);
  ProjectCounts counts;
  WriteResult(arguments.Common, streams, arguments.Path, [&](std::ostream& out) {
    ShownPaths paths;
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
  command->add_option("path", arguments->Path, "A project, a module, or a folder")->required();
  command->add_flag("--json", arguments->Json, "One JSON object a line");
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &job] {
    job.Run = [arguments, &streams = job.Streams] { return RunCheck(*arguments, streams); };
  });
}

}  // namespace vendrel::cli
