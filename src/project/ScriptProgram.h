#pragma once
// A script as the system writes it: assignments, and functions without parameters that hold
// assignments. Apart from expressions it knows nothing of the language.

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "project/ScriptExpression.h"

namespace vendrel {

/// Code of one module with its variables. Names compare without regard to case.
class ScriptProgram {
 public:
  /// Compiles `text` as a whole, then runs its statements outside functions in their order. A text
  /// that does not compile raises an error of the 1002 family and changes nothing; a statement that
  /// fails raises its run-time error, and those behind it do not run.
  void AddCode(std::string_view text);

  /// Runs a function and gives what was assigned to its name (Empty if nothing was). Its other
  /// assignments reach variables outside only if these exist. Raises 13 for an unknown function,
  /// and the run-time errors of its expressions.
  ScriptValue Run(std::string_view function);

 private:
  friend class ScriptProgramCompiler;
  using Variables = std::unordered_map<std::string, ScriptValue>;

  struct Assignment {
    std::string Name;  // folded
    ScriptExpression Value;
  };
  using Statements = std::vector<Assignment>;
  using Functions = std::unordered_map<std::string, Statements>;

  ScriptValue ValueOf(std::string_view name, const Variables* locals) const;
  void Assign(const Assignment& statement, Variables* locals);

  Functions mFunctions;
  Variables mVariables;
};

}  // namespace vendrel
