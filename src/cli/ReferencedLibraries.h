#pragma once
// The type libraries that projects refer to, loaded where their files are on this machine.

#include <map>
#include <memory>
#include <string>

#include "cli/Options.h"
#include "core/Workspace.h"
#include "project/VBProject.h"

namespace vendrel::cli {

/// Loads each library once and ties the references of projects to it. The libraries live as long as
/// the object does; references let go of them by themselves. They belong to the workspace in which
/// the object was made: that of a project may go to another thread with the next one.
class ReferencedLibraries {
 public:
  /// Loads what the references of a project name and no project stands for yet. A file that is no
  /// library, or cannot be read, leaves its reference as it is.
  void Load(VBProject& project);

 private:
  Workspace& mWorkspace = Workspace::Current();
  std::map<std::string, std::shared_ptr<VBProject>> mLibraries;  // by native path
};

}  // namespace vendrel::cli
