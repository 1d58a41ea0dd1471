#pragma once
// A finding as it is told: paths as those who read it know them, its level settled.

#include <cstdint>
#include <string>

#include "survey/Rules.h"

namespace vendrel {

struct ToldFinding {
  const vendrel::Rule* Rule = nullptr;
  RuleLevel Level = RuleLevel::Warning;
  /// Path of this machine, from the root where the file lies below it; empty if none.
  std::string File;
  /// 1-based; 0 where there is none.
  std::int32_t Line = 0, Column = 0;
  std::string Text;
  /// What it is known by from one run to the next.
  std::string Fingerprint;
};

}  // namespace vendrel
