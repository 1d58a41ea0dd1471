#pragma once
// A path as it was in some revision of the repository that holds it.

#include <string>
#include <vector>

#include "services/TemporaryFolder.h"

namespace vendrel::cli {

/// All files of one revision, in a folder that goes with the object. The repository, its files and
/// its index stay as they are.
class GitRevision {
 public:
  /// `path` may be gone by now: the repository is looked for from there upwards. Raises a
  /// `ToolError` where there is no repository, no such revision, no such path in it, or no git.
  GitRevision(const std::string& path, const std::string& revision);

  /// The path in that folder.
  const std::string& Path() const { return mPath; }
  /// The folder of the files, and what is shown in its place: "v1.2:".
  std::string Folder() const { return mFolder.Path() + "/tree/"; }
  std::string Shown() const { return mRevision + ":"; }

 private:
  int Git(const std::vector<std::string>& arguments);
  std::string Told() const;

  std::string mRevision;
  TemporaryFolder mFolder{"revision"};
  std::string mRepository;
  std::string mPath;
};

}  // namespace vendrel::cli
