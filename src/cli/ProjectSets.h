#pragma once
// Paths that stand for several projects: a group, or a folder.

#include <functional>
#include <memory>
#include <string>

#include "cli/Session.h"
#include "project/VBProjectGroup.h"

namespace vendrel::cli {

/// Loads a group and its members, each by the options of a single load, so that a project looks
/// alike alone and in its group. What could not be loaded is in the diagnostics of the group.
std::shared_ptr<VBProjectGroup> LoadGroup(const std::string& path, const CommonOptions& options,
                                          const Streams& streams,
                                          LoadDepth depth = LoadDepth::Modules,
                                          const std::function<void(VBProject&)>& prepare = {});

/// The project files in and below a folder, in the order of their paths. A folder on the way that
/// cannot be read is told to `told`; raises an `InputError` if this one cannot.
std::vector<FileSystemObject> ProjectFilesBelow(const std::string& path, Diagnostics& told);

/// Loads one of several projects, as `LoadInput` does. One that cannot be read is told to `told`
/// and gives null: the rest is done all the same.
std::shared_ptr<VBProject> LoadOneOf(const std::string& path, const CommonOptions& options,
                                     const Streams& streams, Diagnostics& told,
                                     LoadDepth depth = LoadDepth::Modules,
                                     const std::function<void(VBProject&)>& prepare = {});

/// Calls `visit` for each project behind a path: the one project or module; the members of a group,
/// which know each other; or each project file in and below a folder, which is freed before the
/// next one is read. `prepare` gets each before its modules are read. Reports their diagnostics and
/// gives the exit code: 0, 1 if one of several could not be read, or 3 for warnings under --strict.
/// Raises a `ToolError` where nothing can be read.
int ForEachProject(const std::string& path, const CommonOptions& options, const Streams& streams,
                   const std::function<void(VBProject&)>& visit,
                   LoadDepth depth = LoadDepth::Modules,
                   const std::function<void(VBProject&)>& prepare = {});

/// Reports the diagnostics of a group and of its members; gives the exit code.
int ReportGroup(const VBProjectGroup& group, const CommonOptions& options, std::ostream& err);

/// Reports the diagnostics of a list that belongs to no project, as `ReportDiagnostics` does; the
/// exit code is 1 where something could not be read.
int ReportList(const Diagnostics& list, const CommonOptions& options, std::ostream& err);

}  // namespace vendrel::cli
