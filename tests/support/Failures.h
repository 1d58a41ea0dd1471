#pragma once
// What a piece of work raises.

#include "diagnostics/VendrelError.h"

namespace vendrel::test {

/// Number of the failure that it ends with; 0 if it ends well.
template <typename Action>
int ErrorOf(Action action) {
  try {
    action();
  } catch (const VendrelError& error) {
    return error.Number();
  }
  return 0;
}

}  // namespace vendrel::test
