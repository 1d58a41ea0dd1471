#include "core/ProcessState.h"

#include "core/Workspace.h"

namespace vendrel {

ProcessState& ProcessState::Get() { return State(); }

void ProcessState::Reset() {
  const std::int32_t living = mInstanceIncrement;  // objects do not die with a reset
  const AutoAppendReader reader = mAutoAppendReader;
  *this = ProcessState();
  mInstanceIncrement = living;
  mAutoAppendReader = reader;
  if (reader) AutoAppendUntagged = reader();
}

}  // namespace vendrel
