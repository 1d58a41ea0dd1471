#pragma once
// Whether the names of a documentation file lead to elements, and back.

#include <string>
#include <vector>

#include "project/VBProject.h"

namespace vendrel {

/// The file of documentation beside an assembly, whatever the case of its name; empty if none.
std::string DocumentationBeside(const std::string& nativePath);

/// The names of types and members in a documentation file, each once, in their order; those of
/// namespaces and of what its compiler did not find are left out. Raises 53 or 75.
std::vector<std::string> DocumentedNames(const std::string& nativePath);

/// What became of the names.
struct DocumentationCheck {
  std::size_t Names = 0;
  std::size_t Found = 0;
  /// Names without an element.
  std::vector<std::string> Missing;
  /// Names whose element has another one, with that behind " -> ".
  std::vector<std::string> Different;
};
DocumentationCheck CheckDocumentation(const VBProject& project,
                                      const std::vector<std::string>& names);

}  // namespace vendrel
