#pragma once
// What a call raises.

#include <functional>
#include <string>

#include "diagnostics/VendrelError.h"

namespace vendrel::test {

/// The number of the error that the call raises; 0 if it raises none.
inline int Raised(const std::function<void()>& call, std::string* text = nullptr) {
  try {
    call();
  } catch (const VendrelError& error) {
    if (text) *text = error.Text();
    return error.Number();
  }
  return 0;
}

}  // namespace vendrel::test
