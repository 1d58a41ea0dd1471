#include "cli/ProjectSets.h"

#include <algorithm>

#include "cli/Report.h"

namespace vendrel::cli {
namespace {

// Puts the project as the options want it in the place of the listed one.
void ReplaceMember(VBProjectGroup& group, std::size_t index, std::shared_ptr<VBProject> project) {
  VBProjects& projects = group.AllVBProjects();
  const std::string name = project->ProjectName;
  projects.Remove(index);
  projects.Add(std::move(project), name, index <= projects.Count() ? Position(index) : Position());
}

// A failure to read is the input's, also where it happens while a result is being written.
std::shared_ptr<VBProject> LoadOne(const std::string& path, const CommonOptions& options,
                                   const Streams& streams, LoadDepth depth,
                                   const std::function<void(VBProject&)>& prepare) {
  try {
    return LoadInput(path, options, streams, depth, prepare);
  } catch (const VendrelError& error) {
    throw ToolError(exFailed, path + ": cannot be read: " + ReasonOf(error, path));
  }
}

std::vector<FileSystemObject> FilesBelow(const std::string& path, Diagnostics& told) {
  const DiagnosticScope scope(&told, AbsolutePath(path));
  try {
    return VBProjects::ProjectFilesBelow(AbsolutePath(path));
  } catch (const VendrelError& error) {
    throw ToolError(exFailed, path + ": cannot be read: " + ReasonOf(error, path));
  }
}

int VisitGroup(const std::string& path, const CommonOptions& options, const Streams& streams,
               const std::function<void(VBProject&)>& visit, LoadDepth depth,
               const std::function<void(VBProject&)>& prepare) {
  const auto group = LoadGroup(path, options, streams, depth, prepare);
  for (VBProject& project : group->AllVBProjects()) visit(project);
  return ReportGroup(*group, options, streams.Err);
}

int VisitFolder(const std::string& path, const CommonOptions& options, const Streams& streams,
                const std::function<void(VBProject&)>& visit, LoadDepth depth,
                const std::function<void(VBProject&)>& prepare) {
  Diagnostics told;
  const std::vector<FileSystemObject> files = FilesBelow(path, told);
  if (files.empty())
    throw ToolError(exNo, path + ": no project (.vbp) lies in or below this folder");
  int code = exDone;
  for (const FileSystemObject& file : files) {
    const DiagnosticScope scope(&told, file.FullPath());
    try {
      const auto project = LoadOne(file.FullPath(), options, streams, depth, prepare);
      visit(*project);
      code = std::max(code, ReportDiagnostics(*project, options, streams.Err));
    } catch (const ToolError& error) {
      Tell(DiagnosticCode::Told, {error.what()});
    }
  }
  return std::max(code, ReportList(told, options, streams.Err));
}

}  // namespace

std::shared_ptr<VBProjectGroup> LoadGroup(const std::string& path, const CommonOptions& options,
                                          const Streams& streams, LoadDepth depth,
                                          const std::function<void(VBProject&)>& prepare) {
  ApplyToProcess(options);
  auto group = std::make_shared<VBProjectGroup>();
  if (!group->Load(AbsolutePath(path), true, true))
    throw ToolError(exFailed, path + ": cannot be read: " + ReasonIn(group->LastErrorString, path));
  const auto join = [&](VBProject& project) {
    project.SetVBProjectGroup(group.get());
    if (prepare) prepare(project);
  };
  const DiagnosticScope scope(&group->Diagnostics, group->FileName().FullPath());
  for (std::size_t i = 1; i <= group->AllVBProjects().Count(); ++i) {
    const std::string file = group->AllVBProjects().Item(i)->FileName.FullPath();
    try {
      ReplaceMember(*group, i, LoadOne(file, options, streams, depth, join));
    } catch (const ToolError& error) {
      Tell(DiagnosticCode::Told, {error.what()});
    }
  }
  group->AllVBProjects().CementReferences();
  return group;
}

int ForEachProject(const std::string& path, const CommonOptions& options, const Streams& streams,
                   const std::function<void(VBProject&)>& visit, LoadDepth depth,
                   const std::function<void(VBProject&)>& prepare) {
  ApplyToProcess(options);
  const InputKind kind = KindOfInput(path);
  if (kind == InputKind::Group) return VisitGroup(path, options, streams, visit, depth, prepare);
  if (kind == InputKind::Folder) return VisitFolder(path, options, streams, visit, depth, prepare);
  const auto project = LoadOne(path, options, streams, depth, prepare);
  visit(*project);
  return ReportDiagnostics(*project, options, streams.Err);
}

int ReportGroup(const VBProjectGroup& group, const CommonOptions& options, std::ostream& err) {
  int code = ReportList(group.Diagnostics, options, err);
  for (const VBProject& project : group.AllVBProjects())
    code = std::max(code, ReportDiagnostics(project, options, err));
  return code;
}

int ReportList(const Diagnostics& list, const CommonOptions& options, std::ostream& err) {
  ShownPaths paths;
  for (const Diagnostic& item : list)
    if (!options.Quiet || SeverityOf(item.Code) == Severity::Error)
      WriteDiagnostic(err, item, paths, options.DiagnosticsAsJson());
  return options.Strict && HasWarnings(list) ? exWarnings : exDone;
}

}  // namespace vendrel::cli
