#pragma once
#include <string_view>

#include "model/Fwd.h"

namespace vendrel {

/// Whether a text is a number as the language reads it.
bool IsNumericText(std::string_view text);

/// Gives every enumeration member of the project its number: implicit ones counted on, expressions
/// over constants and members evaluated. The text as written stays in `ValueAsWritten`.
void ComputeEnumerationValues(VBProject& project);

}  // namespace vendrel
