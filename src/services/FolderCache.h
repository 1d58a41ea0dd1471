#pragma once
// Project files name their files as a machine without letter case did. A path that is there as it
// is written costs one system call; only one that is not is looked up in listings of its folders,
// and each folder is listed once.

#include <cstdint>
#include <string>
#include <string_view>

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
/// Drops all cached listings: to be called when files may have come or gone since, at the latest
/// when a project is loaded.
void ForgetFolders();
/// Brings the listing of the folder that holds this path up to date: a file that is there now joins
/// it, else the listing is dropped.
void ForgetFolderOf(std::string_view nativePath);

/// Whether `name` needs a short name, and that could be `shortName` ("PROGRA~1" for
/// "Program Files"). The number behind the tilde tells nothing.
bool CouldHaveShortName(std::string_view name, std::string_view shortName);

}  // namespace vendrel
