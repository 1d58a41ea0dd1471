#pragma once
// Expressions of the script language: compiled to postfix code with an explicit stack, so that the
// depth of parentheses is bounded by memory only, and run against any source of names.

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "project/ScriptLexer.h"
#include "project/ScriptOperators.h"
#include "project/ScriptValue.h"

namespace vendrel {

/// Gives the value of a name (as written, dots between its parts, without brackets or suffix):
/// Empty for one that is not defined, or an exception where that is an error.
using ScriptNames = std::function<ScriptValue(std::string_view name)>;

/// A compiled expression.
class ScriptExpression {
 public:
  /// Compiles from `token` (already read, with an operand due) up to the first token that cannot
  /// belong to the expression, which is left in `token`. Raises an error of the 1002 family.
  static ScriptExpression Compile(ScriptLexer& lexer, ScriptToken& token);

  /// The value. Raises the run-time errors of the operators; 13 for a call of an unknown function.
  ScriptValue Run(const ScriptNames& names) const;

 private:
  friend class ScriptExpressionCompiler;
  struct Step {
    enum class Action : std::uint8_t { Push, Load, Unary, Binary, Call };
    Action Do;
    ScriptOperator Operator = ScriptOperator::Add;
    std::uint32_t Index = 0;      // of the literal or the name
    std::uint32_t Arguments = 0;  // of a call
  };
  struct Operand;
  void RunCall(const Step& step, std::vector<Operand>& stack) const;

  std::vector<Step> mSteps;
  std::vector<ScriptValue> mLiterals;
  std::vector<std::string> mNames;
  bool mAllLiteral = false;
};

/// The name that is all of an expression, with dots between its parts; nothing for any other one.
/// Raises an error of the 1002 family for what is no token.
std::optional<std::string_view> LoneName(std::string_view expression);

/// Value of one constant expression of Visual Basic (type suffixes, Like; no statement around it).
/// Names are asked of `names`; an empty function makes every name Empty. Raises an error of the
/// 1002 family for what is no expression, and the run-time errors of `ScriptExpression::Run`.
ScriptValue EvaluateExpression(std::string_view expression, const ScriptNames& names);

}  // namespace vendrel
