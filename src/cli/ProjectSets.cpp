#include "cli/ProjectSets.h"

#include <algorithm>

#include "cli/AssemblySet.h"
#include "cli/InputJudgement.h"
#include "cli/Progress.h"
#include "cli/ProjectsAhead.h"
#include "cli/Report.h"
#include "core/Ascii.h"
#include "diagnostics/ErrorReport.h"
#include "dotnet/Sources.h"
#include "services/CodePage.h"
#include "services/FolderCache.h"

namespace vendrel::cli {
namespace {

// Puts the project as the options want it in the place of the listed one.
void ReplaceMember(VBProjectGroup& group, std::size_t index, std::shared_ptr<VBProject> project) {
  VBProjects& projects = group.AllVBProjects();
  const std::string name = project->ProjectName;
  projects.Remove(index);
  projects.Add(std::move(project), name, index <= projects.Count() ? Position(index) : Position());
}

void ReportUnread(const std::string& path, const ToolError& error) {
  const auto* input = dynamic_cast<const InputError*>(&error);
  ReportAt(DiagnosticCode::UnreadProject, path, 0, {input ? input->Reason() : error.what()});
}

void ResolveMembers(VBProjectGroup& group, const CommonOptions& options, LoadDepth depth) {
  std::vector<VBProject*> members;
  for (VBProject& project : group.AllVBProjects())
    if (project.LanguageVersion() == lvVisualBasicDotNet) members.push_back(&project);
  for (VBProject* member : members) TieNetReferences(*member, members);
  if (options.Unresolved || depth != LoadDepth::Modules) return;
  for (VBProject* member : members) ResolveSourceTypes(*member);
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
  const KeptFolders folders;
  const std::vector<FileSystemObject> files = ProjectFilesBelow(path, told);
  int code = exDone;
  std::vector<std::string> paths;
  for (const FileSystemObject& file : files) paths.push_back(file.FullPath());
  ProgressOfMany progress(files.size(), options, streams);
  ProjectsAhead projects(std::move(paths), options, streams, depth, prepare);
  while (true) {
    progress.Step();
    const auto turn = projects.Next(told);
    progress.Clear();
    if (!turn) break;
    if (!turn->Project) continue;
    if (turn->IsAside) progress.Add(*turn->Project);
    const DiagnosticScope scope(&told, turn->Path);
    try {
      visit(*turn->Project);
      code = Worse(code, ReportDiagnostics(*turn->Project, options, streams.Err));
    } catch (const ToolError& error) {
      if (error.Code() != exFailed) throw;  // it concerns the run, not this project
      Report(DiagnosticCode::Told, {error.what()});
      code = Worse(code, error.Code());
    }
  }
  code = Worse(code, ReportList(told, options, streams.Err));
  if (!files.empty()) return code;
  const auto project = LoadFolderOfModules(path, options, streams, depth, prepare, code);
  visit(*project);
  return Worse(code, ReportDiagnostics(*project, options, streams.Err));
}

int VisitSet(const std::string& path, const CommonOptions& options, const Streams& streams,
             const std::function<void(VBProject&)>& visit) {
  SetOptions set;
  set.Common = options;
  set.Files.push_back(path);
  const auto assemblies = LoadSet(set);
  for (Assembly& assembly : *assemblies) visit(*assembly.VBProject());
  return ReportSet(*assemblies, options, streams.Err);
}

}  // namespace

std::vector<FileSystemObject> ProjectFilesBelow(const std::string& path, Diagnostics& told) {
  const DiagnosticScope scope(&told, AbsolutePath(path));
  try {
    std::vector<FileSystemObject> ofNet;
    std::vector<FileSystemObject> files = VBProjects::ProjectFilesBelow(AbsolutePath(path), &ofNet);
    for (FileSystemObject& file : ofNet)
      if (!IsOfWebEditor(file)) files.push_back(std::move(file));
    return files;
  } catch (const VendrelError& error) {
    throw InputError(path, "cannot be read: " + ReasonOf(error, path));
  }
}

std::shared_ptr<VBProject> LoadOneOf(const std::string& path, const CommonOptions& options,
                                     const Streams& streams, Diagnostics& told, LoadDepth depth,
                                     const std::function<void(VBProject&)>& prepare) {
  const DiagnosticScope scope(&told, path);
  try {
    return LoadInput(path, options, streams.ForOneOfMany(), depth, prepare);
  } catch (const ToolError& error) {
    if (error.Code() == exUsage) throw;  // of the command line: it holds for all of them
    ReportUnread(path, error);
    return nullptr;
  }
}

std::shared_ptr<VBProjectGroup> LoadGroup(const std::string& path, const CommonOptions& options,
                                          const Streams& streams, LoadDepth depth,
                                          const std::function<void(VBProject&)>& prepare) {
  ApplyToProcess(options);
  const KeptFolders folders;
  auto group = std::make_shared<VBProjectGroup>();
  if (streams.Lasting) streams.Lasting->push_back(group);
  const std::string evidence = UseCodePageFor(AbsolutePath(path), options);
  // A line that fails is kept, as it is in a project that is loaded alone: each is loaded so below,
  // and tells it then.
  group->BeforeLoad = [](VBProject& project) {
    project.OnLineFailure = [](const VendrelError&, std::string_view, std::int32_t) {
      return StepOver::SkipLine;
    };
  };
  try {
    if (!group->Load(AbsolutePath(path), true, true))
      throw InputError(path, "cannot be read: " + ReasonIn(group->LastErrorString, path));
    RefuseNoGroup(path, *group);
  } catch (const VendrelError& error) {
    ReportError(error);
    throw InputError(path, "cannot be read: " + ReasonOf(error, path));
  }
  const auto join = [&](VBProject& project) {
    project.SetVBProjectGroup(group.get());
    if (prepare) prepare(project);
  };
  const DiagnosticScope scope(&group->Diagnostics, group->FileName().FullPath());
  if (!evidence.empty())
    Report(DiagnosticCode::CodePageGuessed,
           {FileOptions::Current().CodePage, evidence + "; --codepage sets another"});
  // Types of VB.NET are looked up in each other's projects, once all are there.
  CommonOptions ofMembers = options;
  ofMembers.Unresolved = ofMembers.NoReferences = true;
  for (std::size_t i = 1; i <= group->AllVBProjects().Count();) {
    const std::string file = group->AllVBProjects().Item(i)->FileName.FullPath();
    auto project = LoadOneOf(file, ofMembers, streams, group->Diagnostics, depth, join);
    if (project)
      ReplaceMember(*group, i++, std::move(project));
    else
      group->AllVBProjects().Remove(i);
  }
  group->AllVBProjects().CementReferences();
  ResolveMembers(*group, options, depth);
  return group;
}

int ForEachProject(const std::string& path, const CommonOptions& options, const Streams& streams,
                   const std::function<void(VBProject&)>& visit, LoadDepth depth,
                   const std::function<void(VBProject&)>& prepare) {
  ApplyToProcess(options);
  const InputKind kind = KindOfInput(path);
  if (kind == InputKind::Group) return VisitGroup(path, options, streams, visit, depth, prepare);
  if (kind == InputKind::Folder) return VisitFolder(path, options, streams, visit, depth, prepare);
  if (kind == InputKind::Unknown && IsSetFile(path)) return VisitSet(path, options, streams, visit);
  const auto project = LoadInput(path, options, streams, depth, prepare);
  visit(*project);
  return ReportDiagnostics(*project, options, streams.Err);
}

int ReportGroup(const VBProjectGroup& group, const CommonOptions& options, std::ostream& err) {
  int code = ReportList(group.Diagnostics, options, err);
  for (const VBProject& project : group.AllVBProjects())
    code = Worse(code, ReportDiagnostics(project, options, err));
  return code;
}

int ReportList(const Diagnostics& list, const CommonOptions& options, std::ostream& err) {
  TellDiagnostics(list, options, err);
  for (const Diagnostic& item : list)
    if (SeverityOf(item.Code) == Severity::Error) return exFailed;
  return options.Strict && HasWarnings(list) ? exWarnings : exDone;
}

}  // namespace vendrel::cli
