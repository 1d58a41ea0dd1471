#pragma once
// One run of writing: what was backed up and written in it, over all of its projects.

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "services/FileSystemObject.h"

namespace vendrel {

/// While one lives, all writing in place belongs to it: each file is backed up once, as it stood
/// before the run, and written once, by whatever paths and projects it is reached. Open one around
/// the projects of a group. Without one each `VBProject::WriteOut` is a run of its own. Takes
/// effect where a project has `DistinctBackups`. Runs nest: the outermost counts.
class WriteRun {
 public:
  WriteRun();
  ~WriteRun();
  WriteRun(const WriteRun&) = delete;
  WriteRun& operator=(const WriteRun&) = delete;

  /// The run in force; null outside of every run.
  static WriteRun* Current();

  bool IsWritten(const FileSystemObject& file) const { return mWritten.Holds(file); }
  void NoteWritten(const FileSystemObject& file) { mWritten.Note(file); }
  /// Asked and noted before the file is written.
  bool IsBackedUp(const FileSystemObject& file) const { return mBackedUp.Holds(file); }
  void NoteBackedUp(const FileSystemObject& file) { mBackedUp.Note(file); }
  /// Takes the path of a backup; false if another file of the run has it, case ignored.
  bool Take(std::string_view backupPath);

 private:
  /// Files, known again by device and number through whatever link, and by path even where each
  /// write makes a new file.
  class Files {
   public:
    bool Holds(const FileSystemObject& file) const;
    void Note(const FileSystemObject& file);

   private:
    std::set<std::pair<std::uint64_t, std::uint64_t>> mIdentities;
    std::unordered_set<std::string> mPaths;
  };

  WriteRun*& mOutermost;  // of the workspace in use
  WriteRun* mOuter;
  Files mWritten, mBackedUp;
  std::unordered_set<std::string> mBackups;
};

}  // namespace vendrel
