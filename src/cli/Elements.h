#pragma once
// One element as the commands that look for names show it.

#include <ostream>
#include <string>

#include "cli/Report.h"
#include "model/CodeElement.h"
#include "names/NamePattern.h"
#include "output/Describe.h"
#include "output/Places.h"
#include "output/SignatureText.h"

namespace vendrel::cli {

/// How the source declares an element, on one line: "Public Function F(ByVal a As Long) As Date".
/// Nothing is left to write out in it (`ShownSource`).
std::string SignatureOf(const CodeElement& element);

/// Windows form of the file in which a module stands: its own, or the library that it was read
/// from.
std::string FileOf(const Component& component);
/// The same of a place: of VB.NET that of the part of a type in which it lies.
std::string FileOf(const SourcePlace& place);

/// What the command line asks for by name. Raises a `ToolError` for a pattern that is none.
NamePattern WantedName(const std::string& name);

/// "file:line" of an element; of one without a line of its own that of what it belongs to.
std::string PlaceOf(const CodeElement& element, ShownPaths& paths);

}  // namespace vendrel::cli
