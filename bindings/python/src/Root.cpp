#include "Root.h"

#include <utility>

namespace vendrel::python {

Root::~Root() {
  const vendrel::Workspace::Use use(Workspace);
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
