#pragma once
// How source declares an element, put together from the tree.

#include <string>
#include <string_view>

#include "model/Fwd.h"

namespace vendrel {

/// "Public Function F(ByVal a As Long) As Date": a procedure as its first line stands, others from
/// their parts. As in the source, control characters in strings too; empty for what has none.
std::string SignatureText(const CodeElement& element);

/// The type of a variable with what the declaration says before it: "Collection", "New Collection".
std::string TypeWords(const Variable& variable);

/// What stands behind "Declare": Function F Lib "kernel32" (ByVal a As Long) As Long.
std::string DeclareWords(const DeclareDeclaration& declare);

/// An access as source has it: "Protected Friend" for "PROTECTED FRIEND".
std::string AccessWords(std::string_view access);

}  // namespace vendrel
