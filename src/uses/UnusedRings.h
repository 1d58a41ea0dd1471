#pragma once
// Which unused elements use each other in a ring, so that each has a user and all are dead.

#include <vector>

#include "uses/Reach.h"

namespace vendrel {

class UnusedRings {
 public:
  /// Of a reach that has been swept.
  explicit UnusedRings(const Reach& reach);
  /// Whether a chain of uses leads from an unused element to others and back to it.
  bool IsInRing(const CodeElement& element) const;

 private:
  const Reach& mReach;
  std::vector<bool> mInRing;  // by node
};

}  // namespace vendrel
