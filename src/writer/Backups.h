#pragma once
// Copies of what is about to be overwritten: modules and project file in the folder "SourceBackup"
// beside the project file, and the project file again beside itself as ".bak".

#include <string>
#include <unordered_set>

#include "project/VBProject.h"
#include "writer/WriteRun.h"

namespace vendrel {

/// The backups of one write in place. Each function gives false when nothing more may be written:
/// after a failure, if `Silent`, or if the user says so.
class Backups {
 public:
  /// `run` remembers what has been backed up; null where nothing is remembered.
  Backups(VBProject& project, WriteRun* run);

  bool MakeFolder();
  bool KeepProjectFile();
  bool KeepModule(const FileSystemObject& file);
  bool KeepProjectFileBesideItself();

 private:
  bool Copy(const FileSystemObject& file, const std::string& to, std::string_view question);
  bool KeepInFolder(const FileSystemObject& file);
  bool TakeName(const FileSystemObject& backup);
  std::string NameFor(const FileSystemObject& file);

  VBProject& mProject;
  WriteRun* const mRun;
  std::string mFolder;
  /// The user goes on although there is no folder for backups.
  bool mNoModules = false;
  std::unordered_set<std::string> mTaken;
};

}  // namespace vendrel
