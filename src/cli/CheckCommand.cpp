#include <memory>

#include "cli/Commands.h"
#include "cli/Report.h"
#include "cli/Results.h"
#include "cli/Session.h"
#include "output/Json.h"

namespace vendrel::cli {
namespace {

struct CheckArguments {
  CommonOptions Common;
  std::string Path;
};

// What the closing count tells. Modules dropped as duplicates are listed and found too.
struct Counts {
  std::size_t Projects = 0;
  std::size_t Unread = 0;
  std::size_t Listed = 0;
  std::size_t Found = 0;
  std::size_t OtherCase = 0;
  std::size_t Missing = 0;
  std::size_t DuplicateNames = 0;
  std::size_t ReferencesWithoutFile = 0;
  bool Warnings = false;
};

void CountModules(const VBProject& project, Counts& counts) {
  for (const Component& component : project.Components.Listed()) {
    ++counts.Listed;
    if (!component.FileName.Exists()) {
      ++counts.Missing;
      continue;
    }
    ++counts.Found;
    const PathMatch match = component.FileName.Match();
    if (match == PathMatch::OtherCase || match == PathMatch::ShortName) ++counts.OtherCase;
  }
}

void CountProject(const VBProject& project, Counts& counts) {
  ++counts.Projects;
  CountModules(project, counts);
  counts.DuplicateNames += project.Diagnostics.CountOf(DiagnosticCode::DuplicateName);
  for (const Reference& reference : project.References)
    if (!reference.FileName.Exists()) ++counts.ReferencesWithoutFile;
  counts.Warnings = counts.Warnings || HasWarnings(project.Diagnostics);
}

struct CountName {
  const char* Key;
  const char* Words;
  std::size_t Counts::*Member;
};
constexpr CountName kCounts[] = {
    {"Projects", "projects", &Counts::Projects},
    {"ProjectsNotRead", "projects not read", &Counts::Unread},
    {"ModulesListed", "modules listed", &Counts::Listed},
    {"ModulesFound", "found", &Counts::Found},
    {"ModulesFoundUnderAnotherCase", "found under another case", &Counts::OtherCase},
    {"ModulesMissing", "missing", &Counts::Missing},
    {"DuplicateNames", "duplicate names", &Counts::DuplicateNames},
    {"ReferencesWithoutFile", "references without a file", &Counts::ReferencesWithoutFile},
};

void WriteCounts(std::ostream& out, const Counts& counts, bool asJson) {
  if (!asJson) {
    const char* separator = "";
    for (const CountName& count : kCounts) {
      out << separator << counts.*count.Member << ' ' << count.Words;
      separator = ", ";
    }
    out << '\n';
    return;
  }
  JsonWriter json(out, false);
  json.BeginObject();
  for (const CountName& count : kCounts) {
    json.Key(count.Key);
    json.Number(static_cast<std::int64_t>(counts.*count.Member));
  }
  json.EndObject();
  json.NewLine();
}

std::vector<std::string> ProjectsBelow(const std::string& path) {
  if (KindOfInput(path) != InputKind::Folder) return {path};
  std::vector<FileSystemObject> found;
  FileSystemObject(AbsolutePath(path) + "/").FindFiles("*.vbp", 0, found);
  if (found.empty())
    throw ToolError(exNo, path + ": no project (.vbp) lies in or below this folder");
  std::vector<std::string> paths;
  for (const FileSystemObject& file : found) paths.push_back(file.FullPath());
  return paths;
}

// One project; in a folder, one that cannot be read does not end the walk.
void CheckOne(const CheckArguments& arguments, const Streams& streams, const std::string& path,
              bool alone, std::ostream& out, ShownPaths& paths, Counts& counts) {
  try {
    const auto project = LoadInput(path, arguments.Common, streams);
    for (const Diagnostic& item : project->Diagnostics)
      if (!arguments.Common.Quiet || SeverityOf(item.Code) == Severity::Error)
        WriteDiagnostic(out, item, paths, arguments.Common.DiagnosticsAsJson());
    CountProject(*project, counts);
  } catch (const std::exception& error) {
    if (alone) throw;
    streams.Err << "vendrelmodel: " << paths.Of(path) << ": " << error.what() << '\n';
    ++counts.Unread;
  }
}

int RunCheck(const CheckArguments& arguments, const Streams& streams) {
  ApplyToProcess(arguments.Common);
  const auto projects = ProjectsBelow(arguments.Path);
  Counts counts;
  WriteResult(arguments.Common, streams, arguments.Path, [&](std::ostream& out) {
    ShownPaths paths;
    for (const std::string& path : projects)
      CheckOne(arguments, streams, path, projects.size() == 1, out, paths, counts);
    WriteCounts(out, counts, arguments.Common.DiagnosticsAsJson());
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
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &job] {
    job.Run = [arguments, &streams = job.Streams] { return RunCheck(*arguments, streams); };
  });
}

}  // namespace vendrel::cli
