#pragma once
#include <string_view>

#include "core/ReadingRules.h"
#include "model/Fwd.h"

namespace vendrel {

/// Parses a declaration with modifiers, parameters, type and implemented member into an element:
/// the way VB.NET members are read.
void ParseStartLine(std::string_view Text, Block& o, const ReadingRules& reading);
void ParseStartLine(std::string_view Text, Variable& o);
void ParseStartLine(std::string_view Text, EventDeclaration& o, const ReadingRules& reading);

}  // namespace vendrel
