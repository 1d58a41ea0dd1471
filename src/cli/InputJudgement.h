#pragma once
// Whether what was read is what it was named as. The library reads whatever it is given; a person
// who names a picture or an empty file as a project is told.

#include <set>
#include <string>

#include "project/VBProjectGroup.h"

namespace vendrel::cli {

/// Raises an `InputError` for a file that has nothing of a project in it.
void RefuseNoProject(const std::string& path, const VBProject& project);
/// The same for a group.
void RefuseNoGroup(const std::string& path, const VBProjectGroup& group);
/// Raises an `InputError` if the one module of a loaded project could not be read. An empty one
/// can.
void RefuseUnreadModule(const std::string& path, const VBProject& project);
/// Raises an `InputError` for a path of which the system does not say whether anything is there.
void RefuseHidden(const std::string& path);

/// The modules of a loaded project that are there and could not be read: pipes, files without
/// permission, binary data.
std::set<const Component*> UnreadModules(const VBProject& project);

}  // namespace vendrel::cli
