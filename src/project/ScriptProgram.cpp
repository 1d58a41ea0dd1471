#include "project/ScriptProgram.h"

#include <utility>

#include "core/CaseFold.h"
#include "diagnostics/Context.h"

namespace vendrel {

/// Cuts the text into statements.
class ScriptProgramCompiler {
 public:
  explicit ScriptProgramCompiler(std::string_view text)
      : mLexer(text, ScriptDialect::VBScript), mToken(mLexer.Next(true)) {}

  void Compile() {
    for (;; EndStatement()) {
      while (mToken.Kind == ScriptTokenKind::EndOfStatement) Advance();
      if (mToken.Kind == ScriptTokenKind::End) break;
      TakeStatement();
    }
    if (mOpen) throw VendrelError(errScriptEnd);
  }

  ScriptProgram::Statements Globals;
  ScriptProgram::Functions Functions;

 private:
  void Advance() { mToken = mLexer.Next(true); }

  void EndStatement() {
    const bool ended =
        mToken.Kind == ScriptTokenKind::EndOfStatement || mToken.Kind == ScriptTokenKind::End;
    if (!ended) throw VendrelError(errScriptEndOfStatement);
  }

  void TakeStatement() {
    if (mToken.IsWord("FUNCTION")) return TakeFunction();
    if (mToken.IsWord("END")) return TakeEndFunction();
    if (mToken.Kind != ScriptTokenKind::Name) throw VendrelError(errScriptSyntax);
    std::string name = FoldKey(mToken.Text);
    Advance();
    if (!mToken.IsSymbol("=")) throw VendrelError(errScriptSyntax);
    Advance();
    ScriptProgram::Statements& target = mOpen ? *mOpen : Globals;
    target.push_back({std::move(name), ScriptExpression::Compile(mLexer, mToken)});
  }

  // A later function of the same name takes the place of the earlier one.
  void TakeFunction() {
    Advance();
    if (mOpen || mToken.Kind != ScriptTokenKind::Name) throw VendrelError(errScriptSyntax);
    mOpen = &(Functions[FoldKey(mToken.Text)] = {});
    Advance();
    if (mToken.Kind != ScriptTokenKind::Open) return;
    Advance();
    if (mToken.Kind != ScriptTokenKind::Close) throw VendrelError(errScriptParenthesis);
    Advance();
  }

  void TakeEndFunction() {
    Advance();
    if (!mOpen || !mToken.IsWord("FUNCTION")) throw VendrelError(errScriptSyntax);
    mOpen = nullptr;
    Advance();
  }

  ScriptLexer mLexer;
  ScriptToken mToken;
  ScriptProgram::Statements* mOpen = nullptr;  // body of the function being read
};

ScriptValue ScriptProgram::ValueOf(std::string_view name, const Variables* locals) const {
  const std::string key = FoldKey(name);
  if (locals) {
    const auto local = locals->find(key);
    if (local != locals->end()) return local->second;
  }
  const auto global = mVariables.find(key);
  if (global != mVariables.end()) return global->second;
  // Calling one function from another would need a depth that the input sets.
  if (mFunctions.contains(key)) throw VendrelError(errTypeMismatch, name);
  const std::size_t dot = name.find('.');
  if (dot != std::string_view::npos) throw VendrelError(errObjectRequired, name.substr(0, dot));
  return {};
}

void ScriptProgram::Assign(const Assignment& statement, Variables* locals) try {
  ScriptValue value =
      statement.Value.Run([&](std::string_view name) { return ValueOf(name, locals); });
  if (value.Kind == ScriptKind::Nothing) throw VendrelError(errObjectNotSet);
  const bool isLocal =
      locals && (locals->contains(statement.Name) || !mVariables.contains(statement.Name));
  (isLocal ? *locals : mVariables)[statement.Name] = std::move(value);
}
VENDREL_CONTEXT(trace::Parameter("statement", statement.Name))

void ScriptProgram::AddCode(std::string_view text) try {
  ScriptProgramCompiler compiler(text);
  compiler.Compile();
  for (auto& [name, statements] : compiler.Functions) mFunctions[name] = std::move(statements);
  for (const Assignment& statement : compiler.Globals) Assign(statement, nullptr);
}
VENDREL_CONTEXT(text)

ScriptValue ScriptProgram::Run(std::string_view function) try {
  const std::string key = FoldKey(function);
  const auto found = mFunctions.find(key);
  if (found == mFunctions.end()) throw VendrelError(errTypeMismatch, function);
  Variables locals;
  locals[key] = {};
  for (const Assignment& statement : found->second) Assign(statement, &locals);
  return std::move(locals[key]);
}
VENDREL_CONTEXT(function)

}  // namespace vendrel
