#pragma once
// One element as the commands that look for names show it.

#include <ostream>
#include <string>

#include "cli/Report.h"
#include "model/CodeElement.h"
#include "output/Describe.h"

namespace vendrel::cli {

/// How the source declares an element, on one line: "Public Function F(ByVal a As Long) As Date".
/// Nothing is left to write out in it (`ShownSource`).
std::string SignatureOf(const CodeElement& element);

/// The type of a variable with what the declaration says before it: "Collection", "New Collection".
std::string TypeWords(const Variable& variable);

/// What stands behind "Declare": Function F Lib "kernel32" (ByVal a As Long) As Long.
std::string DeclareWords(const DeclareDeclaration& declare);

/// An access as source has it: "Protected Friend" for "PROTECTED FRIEND".
std::string AccessWords(std::string_view access);

/// Windows form of the file in which a module stands: its own, or the library that it was read
/// from.
std::string FileOf(const Component& component);

/// "file:line" of an element; of one without a line of its own that of what it belongs to.
std::string PlaceOf(const CodeElement& element, ShownPaths& paths);

}  // namespace vendrel::cli
