#pragma once
// Every element of a project that has a qualified name.

#include <functional>
#include <string_view>

#include "model/Component.h"
#include "project/VBProject.h"

namespace vendrel {

/// What an element is called in lists and in options: "procedure", "local-variable", "type-member".
/// Empty for a class that has no qualified name here.
std::string_view KindOf(const CodeElement& element);

/// All words that `KindOf` gives, in the order of a walk.
const std::vector<std::string_view>& AllKinds();

/// Calls `visit` for the project, its libraries, its modules, and module by module for what each
/// declares and holds: controls, constants, variables, enumerations, types, events, Declares,
/// interfaces, and procedures with their parameters, constants and variables. A property comes
/// once, as the block that stands for it, followed by the parameters and variables of all its
/// procedures. Walks what is loaded; loads nothing.
void ForEachNamedElement(VBProject& project, const std::function<void(CodeElement&)>& visit);

/// The same for one module.
void ForEachNamedElement(Component& component, const std::function<void(CodeElement&)>& visit);

}  // namespace vendrel
