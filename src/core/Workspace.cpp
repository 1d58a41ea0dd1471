#include "core/Workspace.h"

namespace vendrel {

thread_local constinit Workspace* Workspace::sInUse = nullptr;

Workspace::Workspace() = default;

Workspace::~Workspace() {
  const Use use(*this);  // what a part drops may ask for another
  while (!mSlots.empty()) {
    const Slot last = std::move(mSlots.back());
    mSlots.pop_back();
  }
}

Workspace& Workspace::Process() {
  // Not destroyed at exit: objects of the host may be, and they ask for it.
  static auto* const process = new Workspace;
  return *process;
}

}  // namespace vendrel
