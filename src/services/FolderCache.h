#pragma once
// Project files name their files as a machine without letter case did. A path that is there as it
// is written costs one system call; only one that is not is looked up in listings of its folders,
// and each folder is listed once.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "services/FileSource.h"

namespace vendrel {

/// How a path was found on the disk.
enum class PathMatch : std::uint8_t {
  /// As written.
  Exact,
  /// Some part differs in case only.
  OtherCase,
  /// Some part is a short (8.3) name that can mean one file only.
  ShortName,
  /// Nothing is there.
  None,
};

/// Where a path leads.
struct FoundPath {
  /// The path as the disk spells it, as far as it exists.
  std::string Path;
  PathMatch Match = PathMatch::None;
  /// Of what is there; meaningless for `None`.
  FileStatus Status;
  /// For `None`: why it is not known whether something is there, as an errno; 0 if nothing is.
  /// Whoever writes must not take the one for the other.
  int Failure = 0;
};

/// Looks for a native absolute path. Of several names that differ in case only, the first in the
/// order of their bytes is taken.
FoundPath FindPath(std::string_view nativePath);

/// Drops the cached listings where they depend on the code page in force: to be called when another
/// one comes into force.
void ForgetDecodedNames();
/// Drops all cached listings: to be called when files may have come or gone since.
void ForgetFolders();
/// The same when a load begins, unless that is one of many (`KeptFolders`).
void ForgetFoldersOfLoad();
/// Brings the listing of the folder that holds this path up to date: a file that is there now joins
/// it, else the listing is dropped.
void ForgetFolderOf(std::string_view nativePath);

struct KnownFolders;

/// While one lives, what is known of folders outlives the loads of the workspace that was in use
/// when it was made: for many projects in a row, which ask for the same folders, there or not. What
/// others change in them meanwhile need not be seen.
class KeptFolders {
 public:
  KeptFolders();
  ~KeptFolders();
  KeptFolders(const KeptFolders&) = delete;
  KeptFolders& operator=(const KeptFolders&) = delete;

  /// The number of the run of the workspace in use for which they are kept; 0 if they are not.
  static int Run();
  /// Keeps what was read of a folder, in the order of the names, while they are kept.
  static void Note(const std::string& folder, std::vector<FolderEntry> entries);
  /// What is in a folder, from what is kept of it where it is; none if it cannot be read.
  static std::vector<FolderEntry> Entries(const std::string& folder);

 private:
  KnownFolders& mKnown;
};

/// Whether `name` needs a short name, and that could be `shortName` ("PROGRA~1" for
/// "Program Files"). The number behind the tilde tells nothing.
bool CouldHaveShortName(std::string_view name, std::string_view shortName);

}  // namespace vendrel
