// One project into its files, with what protects its sources and tells what was done.

#include "cli/Interrupts.h"
#include "cli/WatchedFiles.h"
#include "cli/Writer.h"
#include "cli/WrittenFiles.h"
#include "core/CaseFold.h"
#include "diagnostics/ErrorReport.h"
#include "services/FileSource.h"
#include "writer/Backups.h"
#include "writer/LineNumbers.h"
#include "writer/WriteRun.h"

namespace vendrel::cli {
namespace {

std::vector<const VBProject*> WithItsGroup(const VBProject& project) {
  const VBProjectGroup* group = project.VBProjectGroup();
  if (!group) return {&project};
  std::vector<const VBProject*> members;
  for (const VBProject& member : group->AllVBProjects()) members.push_back(&member);
  return members;
}

// A source where backups go would be written over by one, and have none itself.
void RefuseSourcesAmongBackups(const VBProject& project) {
  FileSource& files = FileSource::Current();
  const std::string folder =
      FileSystemObject(project.FileName.FolderPath() + "SourceBackup\\x").NativePath();
  std::vector<FolderEntry> entries;
  if (files.List(folder.substr(0, folder.rfind('/')), entries) < 0) return;
  std::vector<FileStatus> backups;
  for (const FolderEntry& entry : entries) {
    FileStatus status;
    if (files.Status(folder.substr(0, folder.rfind('/') + 1) + entry.Name, status) >= 0)
      backups.push_back(status);
  }
  const auto check = [&](const FileSystemObject& file) {
    FileStatus status;
    const std::string path = file.NativePath();
    if (files.Status(path, status) < 0) return;
    for (const FileStatus& backup : backups)
      if (backup.IsSameFile(status))
        throw ToolError(exUsage, "'" + path + "' lies where the backups of '" +
                                     project.FileName.NativePath() +
                                     "' go; move it, or write the project to another folder");
  };
  for (const VBProject* member : WithItsGroup(project))
    for (const Component& component : member->Components.Listed()) check(component.FileName);
}

// A module alone has the backups of a project, and takes the files beside it along as one does.
void WriteModuleAlone(VBProject& project) {
  Component& module = *project.Components.Item(1);
  const DiagnosticScope scope(&project.Diagnostics, project.FileName.FullPath());
  BeginNumbering(project);
  if (project.SameLocation()) {
    Backups backups(project, WriteRun::Current());
    if (!backups.MakeFolder() || !backups.KeepModule(module.FileName)) return;  // told
  }
  module.WriteOut();
  if (!project.SameLocation()) module.CopyTo(project.OutputFileName.FolderPath());
}

}  // namespace

void WriteOutOrTell(VBProject& project, bool onlyProjectFile) {
  const InterruptHold hold;
  const std::size_t mark = WrittenSoFar();
  try {
    if (project.SameLocation()) RefuseSourcesAmongBackups(project);
    const WatchedFiles::Protection protection(!project.SameLocation());
    project.OutputFileName.CreateFolderPath();
    if (project.ProjectSourceAccess == psaReadWrite)
      project.WriteOut(onlyProjectFile);
    else
      WriteModuleAlone(project);
  } catch (const VendrelError& error) {
    ReportError(error);
    const std::string path = project.FileName.NativePath();
    throw ToolError(
        exFailed, path + ": cannot be written: " + ReasonOf(error, path) + "; " + DoneSince(mark));
  }
}

bool Agrees(const Streams& streams, const std::string& question) {
  streams.Err << question << " [y/N] " << std::flush;
  std::string answer;
  std::getline(*streams.Answers, answer);
  LookForSignal();
  return EqualsNoCase(answer, "y") || EqualsNoCase(answer, "yes");
}

}  // namespace vendrel::cli
