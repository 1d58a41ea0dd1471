#pragma once
// What people call an element that is known by its description alone.

#include <cstdint>
#include <string_view>

#include "output/Describe.h"

namespace vendrel {

/// "procedure", "property", "module", "local-variable", as in lists of names; of what has no
/// qualified name "reference", "tagged-comment" and so on. A block without a name is
/// "declarations", "attributes" or "lines".
std::string_view KindWord(ElementRef element);

/// The 1-based line of its file on which a section of a module begins; 0 for every other element,
/// and where procedures stand before the section.
std::int32_t LineOfSection(ElementRef element);

/// A procedure, of a property too; no section of a module.
bool IsProcedure(ElementRef element);

}  // namespace vendrel
