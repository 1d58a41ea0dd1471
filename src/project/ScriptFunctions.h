#pragma once
// The functions of one argument that conditions may call.

#include <string_view>

#include "project/ScriptValue.h"

namespace vendrel {

/// A function of the language, or nullptr if none has that name (case ignored): Int, Fix, Abs, Sgn,
/// Len, CBool, CByte, CInt, CLng, CSng, CDbl, CCur, CDate, CStr, CVar.
using ScriptFunction = ScriptValue (*)(const ScriptValue& argument);
ScriptFunction FindScriptFunction(std::string_view name);

}  // namespace vendrel
