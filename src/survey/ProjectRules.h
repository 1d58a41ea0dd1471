#pragma once
// The rules that one loaded project is held against.

#include <vector>

#include "survey/Findings.h"

namespace vendrel {

/// Adds what the rules that `wanted` lets pass find in a project whose modules are loaded. Those
/// that nobody read are left out.
void FindInProject(const VBProject& project, const RuleFilter& wanted, std::vector<Finding>& found);

}  // namespace vendrel
