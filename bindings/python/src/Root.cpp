#include "Root.h"

#include <atomic>
#include <utility>

namespace vendrel::python {

namespace {

std::atomic<bool> sIsEnding = false;

// Never destroyed: to take a tree of a million lines apart is a tenth of the time of its load.
template <typename Tree>
void Leave(std::shared_ptr<Tree> tree) {
  if (tree) new std::shared_ptr<Tree>(std::move(tree));
}

}  // namespace

void Root::LeaveToTheEnd() { sIsEnding = true; }

Root::~Root() {
  const vendrel::Workspace::Use use(Workspace);
  if (sIsEnding) {
    Leave(std::move(Project));
    Leave(std::move(Group));
  }
  DropBuried();
  Project.reset();
  Group.reset();
  Files.reset();
}

ElementRef Root::Top() const {
  if (Group) return Describe(*Group);
  return Project ? Describe(*Project) : ElementRef{};
}

const UniqueNames& Root::Names() {
  if (!IsWhole) mNames.reset();
  if (!mNames) mNames.emplace().Add(Top());
  return *mNames;
}

void Root::Bury(WeakHandle<HandleTarget> handle) {
  const std::lock_guard lock(mBuriedLock);
  mBuried.push_back(std::move(handle));
}

void Root::DropBuried() {
  std::vector<WeakHandle<HandleTarget>> buried;
  const std::lock_guard lock(mBuriedLock);
  buried.swap(mBuried);
}

Using::Using(Root& root) : mLock(root.Lock, std::try_to_lock), mUse(root.Workspace) {
  if (!mLock) {
    const py::gil_scoped_release release;
    mLock.lock();
  }
  root.DropBuried();
}

}  // namespace vendrel::python
