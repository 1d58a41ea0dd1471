#pragma once
// Copies of what is about to be overwritten: modules and project file in the folder "SourceBackup"
// beside the project file, and the project file again beside itself as ".bak".

#include <string>
#include <unordered_set>

#include "project/VBProject.h"

namespace vendrel {

/// The backups of one write in place. Each function gives false when nothing more may be written:
/// after a failure, if `Silent`, or if the user says so.
class Backups {
 public:
  explicit Backups(VBProject& project);

  bool MakeFolder();
  bool KeepProjectFile();
  bool KeepModule(const FileSystemObject& file);
  bool KeepProjectFileBesideItself();

 private:
  bool Copy(const FileSystemObject& file, const std::string& to, std::string_view question);
  std::string NameFor(const FileSystemObject& file);

  VBProject& mProject;
  std::string mFolder;
  /// The user goes on although there is no folder for backups.
  bool mNoModules = false;
  std::unordered_set<std::string> mTaken;
};

}  // namespace vendrel
