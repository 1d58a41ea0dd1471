// The text of parameter lists.

#include "core/Ascii.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "model/Component.h"
#include "model/Parameter.h"
#include "text/Masking.h"
#include "text/Names.h"
#include "text/StartLine.h"
#include "text/Words.h"

namespace vendrel {
namespace {

// What one parameter's words have told so far.
struct ParameterWords {
  Parameter& Target;
  std::string Name;
  bool DotNet;
  bool AsFound = false;
  bool EqualFound = false;

  void Take(std::string_view word);
  bool TakeModifier(std::string_view word);
};

bool CutEnd(std::string_view& word, std::string_view end) {
  if (!word.ends_with(end)) return false;
  word.remove_suffix(end.size());
  return true;
}

bool ParameterWords::TakeModifier(std::string_view word) {
  const auto is = [&](std::string_view keyword) { return EqualsNoCaseAscii(word, keyword); };
  if (is("OPTIONAL")) {
    Target.IsOptional = true;
  } else if (is("BYVAL")) {
    Target.IsByRef = false;
  } else if (is("BYREF")) {
    Target.IsByRef = true;
  } else if (is("PARAMARRAY")) {
    Target.IsParamArray = Target.IsOptional = true;
  } else if (is("AS")) {
    AsFound = true;
  } else if (word == "=") {
    EqualFound = true;
  } else {
    return false;
  }
  return true;
}

void ParameterWords::Take(std::string_view word) {
  if (TakeModifier(word)) return;
  if (AsFound) {
    AsFound = false;
    if (CutEnd(word, "()")) Target.IsArray = true;
    Target.VariableType = word;
  } else if (!EqualFound) {
    Target.VariableType = TypeFromName(word);
    if (!Target.VariableType.empty()) {
      word = Trim(word);
      word.remove_suffix(1);
    }
    Name = word;
  } else {
    Target.DefaultValue = word;
  }
}

// The default value of a parameter: what stands behind the first "=" outside of strings.
std::string_view CutDefault(std::string_view& text) {
  bool inString = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '"') inString = !inString;
    if (inString || text[i] != '=') continue;
    const std::string_view value = Trim(text.substr(i + 1));
    text = TrimRight(text.substr(0, i));
    return value;
  }
  return {};
}

// First and last parenthesis of a parameter list; false if there is none.
bool FindList(std::string_view text, std::string_view& list) {
  const std::size_t start = text.find('(');
  std::size_t finish = text.rfind(')');
  if (start == std::string_view::npos || finish == std::string_view::npos) return false;
  const bool arrayMark = text.ends_with("()") || text.ends_with("(,)");
  if (finish + 1 == text.size() && finish != start + 1 && arrayMark) {
    const std::size_t before = text.substr(0, text.size() - 1).rfind(')');
    if (before == std::string_view::npos) return false;
    finish = before;
  }
  if (finish <= start) return false;
  list = Trim(text.substr(start + 1, finish - start - 1));
  return true;
}

// The list up to the parenthesis that closes the first one; nothing if none opens.
bool FindClosedList(std::string_view text, std::string_view& list) {
  const std::size_t start = text.find('(');
  if (start == std::string_view::npos) return false;
  bool inString = false;
  int depth = 0;
  for (std::size_t i = start; i < text.size(); ++i) {
    if (text[i] == '"') inString = !inString;
    if (inString) continue;
    if (text[i] == '(') ++depth;
    if (text[i] == ')' && --depth == 0) {
      list = Trim(text.substr(start + 1, i - start - 1));
      return true;
    }
  }
  return FindList(text, list);
}

}  // namespace

void Parameter::Load(std::string_view Text) try {
  const ProcessState& state = State();
  ParameterWords words{*this, {}, state.CurrentLanguageVersion == lvVisualBasicDotNet};
  if (!words.DotNet) IsByRef = true;
  std::string_view text = Trim(Text);
  if (text.empty()) return;
  const std::string_view wholeDefault =
      state.CurrentReading.WholeDefaults ? CutDefault(text) : std::string_view();
  const bool wholeNames = state.CurrentReading.BracketedNames;
  SplitCursor cursor(text, " ", true, wholeNames);
  std::string_view word;
  for (bool searchOn = true; searchOn && cursor.Next(word);) {
    if (CutEnd(word, "()") || (words.DotNet && CutEnd(word, "(,)")))
      IsArray = true;
    else if (CutEnd(word, ")"))
      searchOn = false;
    word = Trim(word);
    if (!word.empty() || !words.EqualFound) words.Take(word);
  }
  if (!wholeDefault.empty()) DefaultValue = wholeDefault;
  if (VariableType.empty())
    ImplicitType = true;
  else if (wholeNames && VariableType.view().find('[') != std::string_view::npos)
    VariableType = TypeWithoutBrackets(VariableType.view());
  if (!VariableType.empty() && words.DotNet) VariableType = DotNetType(VariableType);
  std::string_view name = words.Name;
  if (name.starts_with('[') && name.ends_with(']') && name.size() >= 2)
    name = name.substr(1, name.size() - 2);
  SetName(name);
}
VENDREL_CONTEXT_AT(LineReached(), Text, *this)

void Parameters::Load(std::string_view Text, CodeElement* Parent) try {
  const ProcessState& state = State();
  const CodeLine line =
      InitialiseCodeLine(Text, state.CurrentLanguageVersion, state.CurrentReading);
  const bool addKey = line.LineType != DECLARE_STATEMENT && line.LineType != EVENT_DECLARATION;
  LoadStatement(line.StatementPart, Parent, addKey);
}
VENDREL_CONTEXT_AT(LineReached(), Text)

void Parameters::LoadStatement(std::string_view statement, CodeElement* parent, bool addKey) try {
  const ProcessState& state = State();
  const bool dotNet = state.CurrentLanguageVersion == lvVisualBasicDotNet;
  const bool wholeNames = state.CurrentReading.BracketedNames;
  const std::string spaced = wholeNames ? SpacedOut(statement) : std::string();
  if (!spaced.empty()) statement = spaced;
  std::string_view list;
  const bool found = state.CurrentReading.ReturnTypes ? FindClosedList(Trim(statement), list)
                                                      : FindList(Trim(statement), list);
  if (!found || list.empty()) return;
  vendrel::Component* component = Component.Get();
  SplitCursor cursor(list, ",", true, wholeNames);
  std::string_view piece;
  while (cursor.Next(piece)) {
    piece = Trim(piece);
    if (piece.empty()) continue;
    auto parameter = std::make_shared<Parameter>();
    parameter->Parent = parent;
    if (parent) parameter->SetSourceLine(parent->SourceLine());
    parameter->Load(piece);
    if (parameter->VariableType.empty()) {
      if (dotNet)
        parameter->VariableType = "System.Object";
      else if (component)
        parameter->VariableType = component->DefaultType(parameter->Name());
    }
    if (dotNet) parameter->VariableType = DotNetType(parameter->VariableType);
    const std::string name = parameter->Name();
    if (name.empty() || HasKey(name)) continue;
    Add(std::move(parameter), addKey ? std::string_view(name) : std::string_view());
  }
}
VENDREL_CONTEXT_AT(LineReached(), statement, parent, addKey)

}  // namespace vendrel
