#pragma once
// What a load gave, with the workspace that it belongs to. Every element that Python holds keeps it
// alive. One thread at a time uses it; nobody waits for it while holding the interpreter's lock.

#include <pybind11/pybind11.h>

#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "cli/Options.h"
#include "cli/WatchedFiles.h"
#include "core/WeakHandle.h"
#include "core/Workspace.h"
#include "output/Describe.h"
#include "output/UniqueNames.h"
#include "project/VBProjectGroup.h"

namespace vendrel::python {

namespace py = pybind11;

struct Root {
  Root() = default;
  ~Root();
  Root(const Root&) = delete;
  Root& operator=(const Root&) = delete;

  /// The project or group that was loaded.
  ElementRef Top() const;
  /// From here on trees that are let go stay: the process ends, and its memory with it.
  static void LeaveToTheEnd();

  /// Takes a handle that Python has let go; whoever uses the tree next drops it. Any thread.
  void Bury(WeakHandle<HandleTarget> handle);
  void DropBuried();

  /// Unique names of the whole tree, made once for a tree that was loaded whole. Under `Using`.
  const UniqueNames& Names();
  /// The tree was changed: names are to be made anew.
  void Changed() { mNames.reset(); }

  vendrel::Workspace Workspace;
  std::recursive_mutex Lock;
  cli::CommonOptions Options;
  /// All modules have been read; else they come as they are asked for.
  bool IsWhole = false;
  /// From the load to the end, so that a write knows what was read.
  std::optional<cli::WatchedFiles> Files;
  std::shared_ptr<VBProject> Project;
  std::shared_ptr<VBProjectGroup> Group;

 private:
  std::optional<UniqueNames> mNames;
  std::mutex mBuriedLock;
  std::vector<WeakHandle<HandleTarget>> mBuried;
};

/// Uses a tree on this thread, until it ends. Whoever makes one holds the interpreter's lock.
class Using {
 public:
  explicit Using(Root& root);

 private:
  std::unique_lock<std::recursive_mutex> mLock;
  vendrel::Workspace::Use mUse;
};

/// Work on a tree that needs nothing of Python: others run meanwhile.
template <typename Work>
auto WithoutPython(Root& root, Work work) {
  const Using use(root);
  const py::gil_scoped_release release;
  return work();
}

}  // namespace vendrel::python
