#include "diagnostics/VendrelError.h"
#include "intake/ModuleIntake.h"

namespace vendrel {

void ConditionStack::Push(bool ignore, bool executed) {
  mEntries.push_back({ignore, executed});
  if (ignore) ++mIgnoring;
}

void ConditionStack::Pop() {
  if (mEntries.empty()) throw VendrelError(errSubscript, "no #If is open");
  if (mEntries.back().Ignored) --mIgnoring;
  mEntries.pop_back();
}

void ConditionStack::SetTopIgnores(bool value) {
  if (mEntries.empty()) throw VendrelError(errSubscript, "no #If is open");
  if (mEntries.back().Ignored != value) {
    if (value)
      ++mIgnoring;
    else
      --mIgnoring;
  }
  mEntries.back().Ignored = value;
}

void ConditionStack::SetTopExecuted(bool value) {
  if (mEntries.empty()) throw VendrelError(errSubscript, "no #If is open");
  mEntries.back().Executed = value;
}

}  // namespace vendrel
