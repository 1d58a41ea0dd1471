#pragma once
// Whether the qualified names of a project lead back to their elements.

#include <string>
#include <vector>

#include "project/VBProject.h"

namespace vendrel {

/// How a qualified name relates to its element.
enum class NameState {
  /// `GetObjectByName` gives the element.
  Leads,
  /// It gives another element of that name, which stands before it.
  Clashes,
  /// It leads nowhere, or to something of another name: the format cannot express the element.
  Lost
};

/// What `project` finds under the qualified name of an element of its group.
NameState StateOfName(VBProject& project, const CodeElement& element);
/// The same where its qualified name is known.
NameState StateOfName(VBProject& project, const CodeElement& element, const std::string& name);

/// A name that does not lead back, with the kind of its element.
struct UnsureName {
  std::string QualifiedName;
  std::string_view Kind;
  NameState State;
};

/// All names of the loaded modules that do not lead back, in the order of the walk.
std::vector<UnsureName> UnsureNames(VBProject& project);

}  // namespace vendrel
