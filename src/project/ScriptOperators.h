#pragma once
// The operators of the script language on values, with its promotions and failures.

#include <cstdint>

#include "project/ScriptValue.h"

namespace vendrel {

/// In falling precedence; comparisons share one.
enum class ScriptOperator : std::uint8_t {
  Power,
  Negate,
  Keep,
  Multiply,
  Divide,
  IntegerDivide,
  Mod,
  Add,
  Subtract,
  Concatenate,
  Equal,
  NotEqual,
  Less,
  Greater,
  LessOrEqual,
  GreaterOrEqual,
  Is,
  Like,
  Not,
  And,
  Or,
  Xor,
  Eqv,
  Imp,
};

/// The longest text, in bytes, that an operator makes; more raises 14. A statement of the language
/// has comes near it, but constants that double each other would grow without end.
inline constexpr std::size_t kMaxScriptText = 1u << 16;

/// `-a`, `+a` or `Not a`.
ScriptValue ApplyUnary(ScriptOperator op, const ScriptValue& a);

/// `a op b`. `withLiteral`: one operand is a literal, so that a text compared with a number is
/// converted first; of two variables the number comes before the text. Raises 13 (type mismatch),
/// 6 (overflow), 11 (division by zero), 5, 91, 424 as the language does.
ScriptValue ApplyBinary(ScriptOperator op, ScriptValue a, const ScriptValue& b, bool withLiteral);

}  // namespace vendrel
