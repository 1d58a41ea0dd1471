#include "cli/WrittenFiles.h"

#include <set>
#include <vector>

#include "cli/WatchedFiles.h"
#include "dotnet/Sources.h"

namespace vendrel::cli {
namespace {

constexpr std::string_view kBackupFolder = "/SourceBackup/";
constexpr std::string_view kBackupEnd = ".bak";

std::string Counted(std::size_t count, const std::string& what) {
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

std::vector<std::string> WrittenSince(std::size_t mark) {
  const WatchedFiles* files = WatchedFiles::Current();
  if (!files) return {};
  const std::vector<std::string>& all = files->Written();
  return {all.begin() + static_cast<std::ptrdiff_t>(mark), all.end()};
}

std::string FolderAbove(const std::string& path) { return path.substr(0, path.rfind('/')); }

bool IsInBackupFolder(const std::string& path) {
  return path.substr(0, path.rfind('/') + 1).ends_with(kBackupFolder);
}

std::string BackupFolders(const std::vector<std::string>& written) {
  std::set<std::string> folders;
  for (const std::string& path : written)
    if (IsInBackupFolder(path)) folders.insert(FolderAbove(path));
  std::string text;
  for (const std::string& folder : folders) text += (text.empty() ? "" : ", ") + folder;
  return text;
}

}  // namespace

std::size_t WrittenSoFar() {
  const WatchedFiles* files = WatchedFiles::Current();
  return files ? files->Written().size() : 0;
}

bool IsBackupPath(const std::string& path) {
  return path.ends_with(kBackupEnd) || IsInBackupFolder(path);
}

std::string DoneSince(std::size_t mark) {
  const std::vector<std::string> written = WrittenSince(mark);
  std::set<std::string> files;
  for (const std::string& path : written)
    if (!IsBackupPath(path)) files.insert(path);
  if (files.empty()) return "nothing was written";
  const std::string backups = BackupFolders(written);
  return Counted(files.size(), "file") + " had been written before" +
         (backups.empty() ? "" : ", and what was there lies in " + backups);
}

std::string TargetOf(const VBProject& project, const Component& component) {
  if (project.SameLocation()) return component.FileName.NativePath();
  return FileSystemObject(project.OutputFileName.FolderPath() + component.FileName.LeafName())
      .NativePath();
}

std::string WrittenOf(VBProject& project, std::size_t mark) {
  std::set<std::string> targets, seen;
  for (ProjectFile& file : project.ProjectFiles)
    targets.insert(FileSystemObject(TargetOfSource(project, file)).NativePath());
  if (targets.empty())
    for (const Component& component : project.Components.Listed())
      targets.insert(TargetOf(project, component));
  const std::string projectFile = project.OutputFileName.NativePath();
  const std::vector<std::string> written = WrittenSince(mark);
  std::size_t modules = 0, copies = 0;
  std::string text;
  for (const std::string& path : written) {
    if ((project.SameLocation() && IsBackupPath(path)) || !seen.insert(path).second) continue;
    if (targets.contains(path))
      ++modules;
    else if (path == projectFile)
      text = "project file";
    else
      ++copies;
  }
  if (modules > 0) text = Counted(modules, "module") + (text.empty() ? "" : " and ") + text;
  text = (text.empty() ? "nothing" : text) + " written";
  if (copies > 0) text += ", " + Counted(copies, "file") + " copied";
  const std::string backups = project.SameLocation() ? BackupFolders(written) : std::string();
  return backups.empty() ? text : text + ", backups in " + backups;
}

}  // namespace vendrel::cli
