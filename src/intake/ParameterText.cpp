// The text of parameter lists.

#include <algorithm>
#include <array>

#include "core/Ascii.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "intake/DeclarationText.h"
#include "model/Component.h"
#include "model/Parameter.h"
#include "text/Identifiers.h"
#include "text/Masking.h"
#include "text/StartLine.h"
#include "text/StopBytes.h"
#include "text/Words.h"

namespace vendrel {
namespace {

// What one parameter's words have told so far.
struct ParameterWords {
  Parameter& Target;
  std::string_view Name;
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

// Each length has one word, or two: most words are names and types, which differ in that already.
bool ParameterWords::TakeModifier(std::string_view word) {
  const auto is = [&](std::string_view keyword) { return EqualsNoCaseAscii(word, keyword); };
  switch (word.size()) {
    case 1:
      if (word != "=") return false;
      return EqualFound = true;
    case 2:
      if (!is("AS")) return false;
      return AsFound = true;
    case 5: {
      const bool isByRef = is("BYREF");
      if (!isByRef && !is("BYVAL")) return false;
      Target.IsByRef = isByRef;
      return true;
    }
    case 8:
      if (!is("OPTIONAL")) return false;
      Target.IsOptional = true;
      return true;
    case 10:
      if (!is("PARAMARRAY")) return false;
      Target.IsParamArray = Target.IsOptional = true;
      return true;
    default: return false;
  }
}

void ParameterWords::Take(std::string_view word) {
  if (TakeModifier(word)) return;
  if (AsFound) {
    AsFound = false;
    if (CutEnd(word, "()")) Target.IsArray = true;
    Target.VariableType = word;
  } else if (!EqualFound) {
    const std::string_view type = TypeFromName(word);
    Target.VariableType = type;
    if (!type.empty()) {
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
  if (text.find('=') == std::string_view::npos) return {};
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
  // Most lists hold neither a string nor a parenthesis.
  const std::string_view upToNext = text.substr(start + 1, text.find(')', start) - start - 1);
  if (start + 1 + upToNext.size() < text.size() && upToNext.find('(') == upToNext.npos &&
      upToNext.find('"') == upToNext.npos) {
    list = Trim(upToNext);
    return true;
  }
  static constexpr StopBytes kStops("\"()");
  bool inString = false;
  int depth = 0;
  for (std::size_t i = start; i < text.size(); i = kStops.Next(text, i + 1)) {
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

// The words of a text that holds nothing else and single blanks between them, as that of most
// parameters does.
class PlainWords {
 public:
  // False where there is something else, or more than a parameter mostly has.
  bool Cut(std::string_view text) {
    static constexpr StopBytes kStops(" \"[=()");
    for (std::size_t from = 0; mCount < mWords.size();) {
      const std::size_t end = kStops.Next(text, from);
      if (end == from || (end < text.size() && text[end] != ' ')) return false;
      mWords[mCount++] = text.substr(from, end - from);
      if (end == text.size()) return true;
      from = end + 1;
    }
    return false;
  }
  const std::string_view* begin() const { return mWords.data(); }
  const std::string_view* end() const { return mWords.data() + mCount; }

 private:
  std::array<std::string_view, 8> mWords;
  std::size_t mCount = 0;
};

void ReadParameter(Parameter& o, std::string_view Text, const SourceRules& rules) {
  ParameterWords words{o, {}};
  if (rules.Language.ParametersAreByRef()) o.IsByRef = true;
  std::string_view text = Trim(Text);
  if (text.empty()) return;
  const bool wholeNames = rules.Reading.BracketedNames;
  if (PlainWords plain; plain.Cut(text)) {
    for (const std::string_view word : plain) words.Take(word);
  } else {
    const std::string_view wholeDefault =
        rules.Reading.WholeDefaults ? CutDefault(text) : std::string_view();
    SplitCursor cursor(text, " ", true, wholeNames);
    std::string_view word;
    for (bool searchOn = true; searchOn && cursor.Next(word);) {
      if (rules.Language.CutArrayMark(word))
        o.IsArray = true;
      else if (CutEnd(word, ")"))
        searchOn = false;
      word = Trim(word);
      if (!word.empty() || !words.EqualFound) words.Take(word);
    }
    if (!wholeDefault.empty()) o.DefaultValue = wholeDefault;
  }
  if (o.VariableType.empty())
    o.ImplicitType = true;
  else if (wholeNames && o.VariableType.view().find('[') != std::string_view::npos)
    o.VariableType = TypeWithoutBrackets(o.VariableType.view());
  if (!o.VariableType.empty()) rules.Language.SettleTypeName(o.VariableType);
  std::string_view name = words.Name;
  if (name.starts_with('[') && name.ends_with(']') && name.size() >= 2)
    name = name.substr(1, name.size() - 2);
  o.SetName(name);
}

const ProjectOptions* OptionsOf(const Component* component) {
  return component ? &component->Options() : nullptr;
}

}  // namespace

void Parameter::Load(std::string_view Text) try {
  ReadParameter(*this, Text, SourceRules::InForce(OptionsOf(OwnComponent())));
}
VENDREL_CONTEXT_AT(LineReached(), Text, *this)

void Parameters::Load(std::string_view Text, CodeElement* Parent) try {
  const SourceRules rules = SourceRules::InForce(OptionsOf(Component.Get()));
  const CodeLine line = InitialiseCodeLine(Text, rules.Language.Language(), rules.Reading);
  const bool addKey = line.LineType != DECLARE_STATEMENT && line.LineType != EVENT_DECLARATION;
  ReadParameters(*this, line.StatementPart, Parent, addKey, rules);
}
VENDREL_CONTEXT_AT(LineReached(), Text)

void ReadParameters(Parameters& list, std::string_view statement, CodeElement* parent, bool addKey,
                    const SourceRules& rules) try {
  const bool wholeNames = rules.Reading.BracketedNames;
  const std::string spaced = wholeNames ? SpacedOut(statement) : std::string();
  if (!spaced.empty()) statement = spaced;
  std::string_view text;
  const bool found = rules.Reading.ReturnTypes ? FindClosedList(Trim(statement), text)
                                               : FindList(Trim(statement), text);
  if (!found || text.empty()) return;
  list.Reserve(list.Count() + 1 +
               static_cast<std::size_t>(std::count(text.begin(), text.end(), ',')));
  SplitCursor cursor(text, ",", true, wholeNames);
  std::string_view piece;
  while (cursor.Next(piece)) {
    piece = Trim(piece);
    if (piece.empty()) continue;
    auto parameter = std::make_shared<Parameter>();
    parameter->Parent = parent;
    if (parent) parameter->SetSourceLine(parent->SourceLine());
    ReadParameter(*parameter, piece, rules);
    if (parameter->VariableType.empty()) {
      parameter->VariableType =
          rules.Language.ImplicitType(list.Component.Get(), parameter->Name());
      rules.Language.SettleTypeName(parameter->VariableType);
    }
    const std::string_view name = parameter->Name();
    if (!name.empty()) list.AddIfFree(parameter, addKey ? name : std::string_view());
  }
}
VENDREL_CONTEXT_AT(LineReached(), statement, parent, addKey)

}  // namespace vendrel
