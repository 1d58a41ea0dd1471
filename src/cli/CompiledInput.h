#pragma once
// Inputs that are no source: assemblies, type libraries, and what a loader of somebody else reads.

#include <string>

#include "cli/Options.h"
#include "project/VBProject.h"

namespace vendrel::cli {

/// Whether an input stands for what --custom names.
bool IsCustomInput(const std::string& path);

/// Turns "--custom PROGID=DATA" into an input of its own, so that commands need not know of it.
void TakeCustomInput(std::vector<std::string>& arguments);

/// Fills a project from an assembly, a type library or by a loader. Raises a `ToolError` that says
/// in one word what else the file is.
void FillFromCompiled(VBProject& project, const std::string& path, const CommonOptions& options);

}  // namespace vendrel::cli
