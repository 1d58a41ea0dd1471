#pragma once
// --set Name=Value: the options of a project by name.

#include <string>
#include <string_view>
#include <vector>

#include "cli/Options.h"
#include "project/VBProject.h"

namespace vendrel::cli {

/// Names of the options of a project that --set takes, in order.
std::vector<std::string_view> ProjectOptionNames();

/// Sets an option of the project, or a flag of its reading. Raises a usage error for a name that is
/// none and for a value of another type.
void SetProjectOption(VBProject& project, const NamedValue& setting);

/// Reading, settings and constants of the shared options, put into a project before it is loaded.
void ApplyToProject(const CommonOptions& options, VBProject& project);

}  // namespace vendrel::cli
