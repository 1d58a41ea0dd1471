#pragma once
// Whether the names of a documentation file lead to elements, and back.

#include <string>
#include <vector>

#include "project/VBProject.h"

namespace vendrel {

/// The files of documentation of an assembly, whatever the case of their names: the one beside it,
/// then those in folders of languages (`en/Name.xml`), English first. Empty if there is none.
std::vector<std::string> DocumentationBeside(const std::string& nativePath);

/// The names of types and members in documentation files, each once, in their order; those of
/// namespaces and of what the compiler did not find are left out. Raises 53 or 75.
std::vector<std::string> DocumentedNames(const std::vector<std::string>& nativePaths);

/// What became of the names.
struct DocumentationCheck {
  std::size_t Names = 0;
  std::size_t Found = 0;
  /// Names without an element.
  std::vector<std::string> Missing;
  /// Names that were found by a part of them only, with that of the element behind " -> ".
  std::vector<std::string> Loose;
  /// Names whose element has another one, with that behind " -> ".
  std::vector<std::string> Different;
};
DocumentationCheck CheckDocumentation(VBProject& project, const std::vector<std::string>& names);

}  // namespace vendrel
