#include "project/CompilerConstants.h"

#include <optional>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "project/ScriptEngine.h"
#include "project/ScriptExpression.h"
#include "project/VBProject.h"
#include "services/TextUtility.h"
#include "text/Words.h"

namespace vendrel {
namespace {

bool EndsInSuffix(std::string_view text) {
  return !text.empty() && std::string_view("%&!#@").find(text.back()) != std::string_view::npos;
}

bool IsDateLiteral(std::string_view text) {
  return text.size() > 1 && text.front() == '#' && text.back() == '#';
}

// Every occurrence replaced, also inside longer words; nothing if there is none.
std::optional<std::string> ReplaceAnywhere(std::string_view text, std::string_view name,
                                           std::string_view by) {
  std::size_t at = FindNoCaseAscii(text, name);
  if (name.empty() || at == std::string_view::npos) return std::nullopt;
  std::string result;
  std::size_t start = 0;
  for (; at != std::string_view::npos; at = FindNoCaseAscii(text, name, start)) {
    result.append(text, start, at - start).append(by);
    start = at + name.size();
  }
  return result.append(text, start);
}

void AssignConstants(const CompilerConstants& constants, std::size_t& n, std::string& condition,
                     std::string& script) {
  for (const CompilerConstant& constant : constants) {
    ++n;
    const std::string alias = "cc" + std::to_string(n);
    auto replaced = ReplaceAnywhere(condition, constant.Name, alias);
    if (!replaced) continue;
    condition = std::move(*replaced);
    script.append(alias).append(" = ").append(constant.Value).append("\r\n");
  }
}

// The words of a condition as they stand in the script.
std::string ScriptExpressionText(std::string_view condition) {
  std::string expression;
  bool compared = false;
  for (std::string_view rest = condition; !rest.empty();) {
    std::string_view word = TakeField(rest, ' ');
    if (EqualsNoCaseAscii(word, "#if") || EqualsNoCaseAscii(word, "then") ||
        EqualsNoCaseAscii(word, "#else") || EqualsNoCaseAscii(word, "#elseif"))
      continue;
    if (word == "=") {
      compared = true;
      expression += " =";
      continue;
    }
    if (EqualsNoCaseAscii(word, "Debug"))
      word = "FZDebug";
    else if (compared && word.size() > 1 && EndsInSuffix(Trim(word)) && !IsDateLiteral(Trim(word)))
      word.remove_suffix(1);
    if (!expression.empty()) expression += ' ';
    expression += word;
  }
  return expression;
}

// A value of the complete reading in the form it takes in script text.
std::string ScriptText(const ScriptValue& value) {
  switch (value.Kind) {
    case ScriptKind::Empty:
    case ScriptKind::Null: return "0";
    case ScriptKind::String: return "\"" + ReplaceAll(value.Text, "\"", "\"\"") + "\"";
    case ScriptKind::Date: return "#" + ToText(value) + "#";
    default: return ToText(value);
  }
}

// Whole-word look-up of a constant: `--define` first, then the module, the project, what is built
// in.
class ConstantNames {
 public:
  ConstantNames(const CompilerConstants& own, const VBProject* project,
                LanguageVersionEnum language)
      : mOwn(own), mProject(project), mLanguage(language) {}

  ScriptValue operator()(std::string_view name) const {
    if (const auto text = TextOf(name)) return LiteralValue(*text);
    if (EqualsNoCaseAscii(name, "Win32") || EqualsNoCaseAscii(name, "VBA6"))
      return ScriptValue::Boolean(true);
    if (EqualsNoCaseAscii(name, "Win16")) return ScriptValue::Boolean(false);
    const bool isTold = mProject && mProject->Reading.NetConditions;  // by the project file
    if (EqualsNoCaseAscii(name, "Debug") && mLanguage == lvVisualBasicDotNet && !isTold)
      return ScriptValue::Boolean(true);
    return {};
  }

 private:
  std::optional<std::string> TextOf(std::string_view name) const {
    if (mProject)
      for (const auto& [defined, value] : mProject->Defines)
        if (EqualsNoCase(defined, name)) return value;
    if (const CompilerConstant* constant = mOwn.Item(name)) return constant->Value;
    const CompilerConstant* constant = mProject ? mProject->CompilerConstants.Item(name) : nullptr;
    if (constant) return constant->Value;
    return std::nullopt;
  }
  static ScriptValue LiteralValue(std::string_view text) {
    return EvaluateExpression(text, [](std::string_view) { return ScriptValue(); });
  }

  const CompilerConstants& mOwn;
  const VBProject* mProject;
  LanguageVersionEnum mLanguage;
};

const ReadingRules& RulesOf(const VBProject* project) {
  return project ? project->Reading : ReadingRules::Classic();
}

// A `#Const` value by the documented rules: a literal, or else a string.
std::string ConstantText(std::string_view written) {
  std::string value(written);
  if (value.size() > 2 && StartsWithNoCaseAscii(value, "&h")) {
    const auto number = NumberFromText(value);
    if (number) value = ToText(ScriptValue::Whole(*number));
  }
  const std::string_view trimmed = Trim(value);
  const bool date = IsDateLiteral(trimmed);
  if (EndsInSuffix(trimmed) && !date) value = trimmed.substr(0, trimmed.size() - 1);
  if (date || NumberFromText(value)) return value;
  return "\"" + std::string(StripQuotes(value)) + "\"";
}

// "#If x = 1 Then" without its directive words.
std::string_view ConditionOf(std::string_view statement) {
  statement = Trim(statement);
  if (StartsWithNoCaseAscii(statement, "#elseif"))
    statement.remove_prefix(7);
  else if (StartsWithNoCaseAscii(statement, "#if"))
    statement.remove_prefix(3);
  statement = Trim(statement);
  if (EndsWithNoCaseAscii(statement, " then") || EndsWithNoCaseAscii(statement, ")then"))
    statement.remove_suffix(4);
  return Trim(statement);
}

}  // namespace

void CompilerConstants::AddFromProjectLine(std::string_view Source, const VBProject* project) try {
  while (!Source.empty()) {
    const std::string_view piece = Trim(TakeField(Source, ':'));
    if (!piece.empty()) AddFromDeclaration(piece, project);
  }
}
VENDREL_CONTEXT_AT(LineReached(), Source)

void CompilerConstants::AddFromDeclaration(std::string_view Source, const VBProject* project) try {
  std::string_view rest = Trim(Source);
  if (StartsWithNoCaseAscii(rest, "#CONST")) rest = Trim(rest.substr(6));
  const bool expressions = RulesOf(project).ConstantExpressions;
  const std::string_view name = Trim(TakeField(rest, '='));
  const std::string_view written = Trim(expressions ? rest : TakeField(rest, '='));
  if (name.empty() || HasKey(name)) return;
  auto constant = std::make_shared<CompilerConstant>();
  constant->Name = name;
  if (expressions && !written.empty()) {
    try {
      constant->Value = ScriptText(EvaluateExpression(
          written, ConstantNames(*this, project, State().CurrentLanguageVersion)));
    } catch (const VendrelError& error) {
      Report(DiagnosticCode::ConditionFailed, {Trim(Source), error.Text()});
      constant->Value = ConstantText(written);
    }
  } else {
    constant->Value = ConstantText(written);
  }
  Add(constant, name);
}
VENDREL_CONTEXT_AT(LineReached(), Source, project)

std::string CompilerConstants::EvaluationScript(std::string_view Source,
                                                const VBProject* project) const {
  std::string condition(Trim(Source));
  std::string script;
  std::size_t n = 0;
  if (project) AssignConstants(project->CompilerConstants, n, condition, script);
  ++n;  // the loop over the project's constants leaves its counter one beyond their count
  AssignConstants(*this, n, condition, script);
  if (State().CurrentLanguageVersion == lvVisualBasicDotNet) script = "FZDebug = True\r\n";
  script += "Function Evaluate()\r\nEvaluate = (";
  script += ScriptExpressionText(condition);
  script += ")\r\nEnd Function\r\n";
  return script;
}

bool CompilerConstants::Evaluate(std::string_view Source, const VBProject* project) const try {
  if (RulesOf(project).ConstantExpressions) {
    try {
      return ToBoolean(EvaluateExpression(
          ConditionOf(Source), ConstantNames(*this, project, State().CurrentLanguageVersion)));
    } catch (const VendrelError& error) {
      Report(DiagnosticCode::ConditionFailed, {Trim(Source), error.Text()});
      return false;
    }
  }
  const std::string text = Eval(EvaluationScript(Source, project), "Evaluate");
  if (text.empty()) return false;
  try {
    return ToBoolean(ScriptValue::String(text));
  } catch (const VendrelError&) {
    return false;  // a text that is no truth value
  }
}
VENDREL_CONTEXT_AT(LineReached(), Source, project)

}  // namespace vendrel
