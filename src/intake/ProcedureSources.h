#pragma once
// What a procedure answers to by its name: the control, variable or module whose event it handles,
// or the interface whose member it is.

#include <string_view>

#include "model/Component.h"

namespace vendrel {

/// The implemented interface that begins a procedure's name, as written there; empty if none. The
/// part before the first "_" counts, or with `longest` the longest part before any "_" that is the
/// name of a control, `WithEvents` variable or interface.
std::string_view InterfaceOfName(Component& component, std::string_view name, bool longest);

/// The module, control or `WithEvents` variable that begins a procedure's name, in the same way;
/// null if none.
CodeElement* EventSourceOfName(Component& component, std::string_view name, bool longest);

}  // namespace vendrel
