#pragma once
// Projects whose uses are looked at together.

#include <vector>

#include "project/VBProject.h"

namespace vendrel::cli {

/// All projects of the group that the project is the first of; the project alone where it is in
/// none; nothing for the others of a group, which were looked at with its first.
std::vector<VBProject*> ProjectsTogether(VBProject& project);

/// Raises a `ToolError` for a compiled library, which has no statements.
void RefuseWithoutStatements(const VBProject& project);

}  // namespace vendrel::cli
