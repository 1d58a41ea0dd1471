#pragma once
// What people call projects, modules and references, whatever language they are in.

#include <string>
#include <string_view>

#include "project/VBProject.h"

namespace vendrel {

/// "EXE", "ActiveX DLL", "VB.NET program", "assembly", "type library" ...; empty where the project
/// file does not tell.
std::string_view KindOfProject(const VBProject& project);

/// "class module", "form"; of VB.NET "class", "interface", "structure", "enumeration", "module".
std::string_view KindWordOf(const Component& component);

/// The name of a reference; of VB.NET, where the reference has none, that of the assembly or
/// package.
std::string ReferenceNameOf(const Reference& reference);

/// Whether a reference names a file that is not there. One to an assembly of the runtime or to a
/// package names none.
bool IsWithoutFile(const Reference& reference);

/// Whether a member stands in the source of its type: neither inherited nor made by a compiler.
inline bool IsOwnMember(const Block& block) {
  return block.Implemented || block.InheritedFrom().empty();
}

}  // namespace vendrel
