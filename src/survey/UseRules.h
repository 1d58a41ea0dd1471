#pragma once
// The rules of a check that need to know what names mean: of Visual Basic 5/6.

#include <vector>

#include "survey/Findings.h"

namespace vendrel {

/// Adds what the rules that `wanted` lets pass find in a project whose modules are loaded. Names
/// are bound once, and only where one of the rules is wanted.
void FindByUses(VBProject& project, const RuleFilter& wanted, std::vector<Finding>& found);

}  // namespace vendrel
