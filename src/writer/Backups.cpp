#include "writer/Backups.h"

#include "core/CaseFold.h"
#include "core/MessageService.h"
#include "core/Workspace.h"
#include "diagnostics/Diagnostic.h"
#include "services/Procedures.h"

namespace vendrel {
namespace {

constexpr std::string_view kFolderName = "SourceBackup";
constexpr std::string_view kCopyError = "File copy error";
constexpr std::string_view kGoOnWithOthers = "Do you wish to proceed with other files ?";

// A question counts as No while `Silent`.
bool GoesOn(const std::string& problem, std::string_view question, std::string_view caption,
            int style) {
  Report(DiagnosticCode::WriteRefused, {problem});
  if (State().Silent) return false;
  return MessageService::Current().Ask(problem + "\r\n\r\n" + std::string(question), caption,
                                       style);
}

// A file that cannot be looked for may be there, and needs its backup.
bool IsAbsent(const FileSystemObject& file) {
  const FoundPath found = file.Find();
  if (found.Match == PathMatch::None) return found.Failure == 0;
  return found.Status.Type == FileStatus::Kind::Folder;
}

}  // namespace

Backups::Backups(VBProject& project, WriteRun* run)
    : mProject(project),
      mRun(run),
      mFolder(project.FileName.FolderPath() + std::string(kFolderName) + "\\") {}

bool Backups::MakeFolder() {
  FileSystemObject folder;
  folder.SetFolderPath(mFolder);
  try {
    folder.CreateFolderPath();
  } catch (const VendrelError&) {  // whether it is there is looked at below
  }
  if (folder.IsFolder()) return true;
  mNoModules = true;
  return GoesOn(
      "Failed to create a directory '" + mFolder.substr(0, mFolder.size() - 1) + "'.",
      "This directory is required to store backup copies of the source code.  Do you wish "
      "to proceed ?",
      "Could not create directory", msProceedQuestion);
}

bool Backups::Copy(const FileSystemObject& file, const std::string& to, std::string_view question) {
  if (IsAbsent(file) || FileCopy(file.FullPath(), to)) return true;
  return GoesOn("Backup file copy error (" + file.LeafName() + ") : " + State().FileCopy_LastError,
                question, kCopyError, msYesNoQuestion);
}

bool Backups::KeepProjectFile() { return KeepInFolder(mProject.FileName); }

bool Backups::KeepModule(const FileSystemObject& file) { return mNoModules || KeepInFolder(file); }

// What the run has backed up stands there as it was; the file may be another one by now.
bool Backups::KeepInFolder(const FileSystemObject& file) {
  if (mRun && mRun->IsBackedUp(file)) return true;
  if (!Copy(file, mFolder + NameFor(file), kGoOnWithOthers)) return false;
  if (mRun) mRun->NoteBackedUp(file);
  return true;
}

bool Backups::TakeName(const FileSystemObject& backup) {
  return mRun ? mRun->Take(backup.FullPath()) : mTaken.insert(FoldKey(backup.LeafName())).second;
}

// By leaf name; two of one name overwrite each other unless the reading says otherwise.
std::string Backups::NameFor(const FileSystemObject& file) {
  FileSystemObject backup(mFolder + file.LeafName());
  if (!mRun && !mProject.Reading.KeepBackups) return backup.LeafName();
  for (int number = 2; !TakeName(backup); ++number)
    backup.SetBaseName(file.BaseName() + "_" + std::to_string(number));
  return backup.LeafName();
}

bool Backups::KeepProjectFileBesideItself() {
  const FileSystemObject& file = mProject.FileName;
  FileSystemObject backup(file.FullPath() + ".bak");
  // Names that differ in case alone lead to one file.
  for (int number = 2; mRun && !mRun->Take(backup.FullPath()); ++number)
    backup.SetBaseName(file.LeafName() + "_" + std::to_string(number));
  try {
    // One that may be written is replaced as a whole; at no moment there is none.
    if (backup.IsReadOnly()) backup.DeleteFile();
  } catch (const VendrelError&) {  // the copy tells
  }
  if (IsAbsent(file) || FileCopy(file.FullPath(), backup.FullPath())) return true;
  return GoesOn(
      "Backup project file copy error (" + file.LeafName() + ") : " + State().FileCopy_LastError,
      "Do you wish to proceed (all other files have been written) ?", kCopyError, msYesNo);
}

}  // namespace vendrel
