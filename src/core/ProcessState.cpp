#include "core/ProcessState.h"

namespace vendrel {
namespace {
ProcessState::AutoAppendReader gAutoAppendReader = nullptr;
}

ProcessState& ProcessState::Get() {
  static ProcessState state;
  return state;
}

void ProcessState::Reset() {
  const std::int32_t living = mInstanceIncrement;  // objects do not die with a reset
  *this = ProcessState();
  mInstanceIncrement = living;
  if (gAutoAppendReader) AutoAppendUntagged = gAutoAppendReader();
}

void ProcessState::SetAutoAppendReader(AutoAppendReader reader) { gAutoAppendReader = reader; }

}  // namespace vendrel
