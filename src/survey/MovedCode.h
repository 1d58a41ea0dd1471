#pragma once
// Procedures and modules that are in another place, or bear another name, found by their code.

#include "output/Difference.h"
#include "project/VBProject.h"

namespace vendrel {

/// Finds for what has no partner by name in the other project one of which four fifths of the
/// logical lines are the same: for modules among the modules without one, then for procedures among
/// those of any module. A procedure of another name must have at least three lines between its
/// first and its last one. Takes time linear in the lines of what has no partner by name.
ElementPartners FindMovedCode(const VBProject& before, const VBProject& after);

}  // namespace vendrel
