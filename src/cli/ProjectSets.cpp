#include "cli/ProjectSets.h"

#include <algorithm>

#include "cli/Report.h"

namespace vendrel::cli {
namespace {

// Puts the project as the options want it in the place of the listed one.
void ReplaceMember(VBProjectGroup& group, std::size_t index, std::shared_ptr<VBProject> project) {
  VBProjects& projects = group.AllVBProjects();
  const std::string name = project->ProjectName;
  project->SetVBProjectGroup(&group);
  projects.Remove(index);
  projects.Add(std::move(project), name, index <= projects.Count() ? Position(index) : Position());
}

int Report(const VBProject& project, const CommonOptions& options, const Streams& streams) {
  return ReportDiagnostics(project, options, streams.Err);
}

int VisitGroup(const std::string& path, const CommonOptions& options, const Streams& streams,
               const std::function<void(VBProject&)>& visit, LoadDepth depth) {
  const auto group = LoadGroup(path, options, streams, depth);
  int code = ReportList(group->Diagnostics, options, streams.Err);
  for (VBProject& project : group->AllVBProjects()) {
    visit(project);
    code = std::max(code, Report(project, options, streams));
  }
  return code;
}

int VisitFolder(const std::string& path, const CommonOptions& options, const Streams& streams,
                const std::function<void(VBProject&)>& visit, LoadDepth depth) {
  Diagnostics told;
  std::vector<FileSystemObject> files;
  {
    const DiagnosticScope scope(&told, AbsolutePath(path));
    files = VBProjects::ProjectFilesBelow(AbsolutePath(path));
  }
  if (files.empty())
    throw ToolError(exNo, path + ": no project (.vbp) lies in or below this folder");
  int code = exDone;
  for (const FileSystemObject& file : files) {
    const DiagnosticScope scope(&told, file.FullPath());
    try {
      const auto project = LoadInput(file.FullPath(), options, streams, depth);
      visit(*project);
      code = std::max(code, Report(*project, options, streams));
    } catch (const VendrelError& error) {
      Tell(DiagnosticCode::UnreadableFile, {file.FullPath(), error.Text()});
    } catch (const ToolError& error) {
      Tell(DiagnosticCode::Told, {error.what()});
    }
  }
  return std::max(code, ReportList(told, options, streams.Err));
}

}  // namespace

std::shared_ptr<VBProjectGroup> LoadGroup(const std::string& path, const CommonOptions& options,
                                          const Streams& streams, LoadDepth depth) {
  ApplyToProcess(options);
  const auto group = std::make_shared<VBProjectGroup>();
  if (!group->Load(AbsolutePath(path), true, true))
    throw ToolError(exFailed, path + ": cannot be read: " + group->LastErrorString);
  const DiagnosticScope scope(&group->Diagnostics, group->FileName().FullPath());
  for (std::size_t i = 1; i <= group->AllVBProjects().Count(); ++i) {
    const std::string file = group->AllVBProjects().Item(i)->FileName.FullPath();
    try {
      ReplaceMember(*group, i, LoadInput(file, options, streams, depth));
    } catch (const ToolError& error) {
      Tell(DiagnosticCode::Told, {error.what()});
    }
  }
  group->AllVBProjects().CementReferences();
  return group;
}

int ForEachProject(const std::string& path, const CommonOptions& options, const Streams& streams,
                   const std::function<void(VBProject&)>& visit, LoadDepth depth) {
  ApplyToProcess(options);
  const InputKind kind = KindOfInput(path);
  if (kind == InputKind::Group) return VisitGroup(path, options, streams, visit, depth);
  if (kind == InputKind::Folder) return VisitFolder(path, options, streams, visit, depth);
  const auto project = LoadInput(path, options, streams, depth);
  visit(*project);
  return Report(*project, options, streams);
}

int ReportList(const Diagnostics& list, const CommonOptions& options, std::ostream& err) {
  ShownPaths paths;
  for (const Diagnostic& item : list)
    if (!options.Quiet || SeverityOf(item.Code) == Severity::Error)
      WriteDiagnostic(err, item, paths, options.DiagnosticsAsJson());
  return options.Strict && HasWarnings(list) ? exWarnings : exDone;
}

}  // namespace vendrel::cli
