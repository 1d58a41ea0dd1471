#include "intake/net/StartLineText.h"

#include <string>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "intake/DeclarationText.h"
#include "intake/ProcedureSources.h"
#include "intake/net/NetDeclarations.h"
#include "intake/net/NetModifiers.h"
#include "model/Component.h"
#include "model/Namespace.h"
#include "text/Identifiers.h"
#include "text/Masking.h"
#include "text/StartLine.h"
#include "text/Words.h"

namespace vendrel {
namespace {

// A declaration cut at its parameter list.
struct StartLineParts {
  std::string_view Prefix;
  std::string_view Parameters;
  std::string_view Suffix;
};

StartLineParts CutStartLine(std::string_view s) {
  StartLineParts parts;
  const std::size_t open = InStrEx(1, s, "(");
  if (open == 0) {
    const std::size_t as = FindNoCaseAscii(s, " AS ");
    parts.Prefix = as == std::string_view::npos ? s : Trim(s.substr(0, as));
    if (as != std::string_view::npos) parts.Suffix = Trim(s.substr(as));
    return parts;
  }
  parts.Prefix = s.substr(0, open - 1);
  std::size_t close = s.rfind(')');
  const bool arrayEnd = s.ends_with("()") || s.ends_with("(,)");
  if (arrayEnd && open + 1 < s.size()) {
    const std::size_t before = s.substr(0, s.size() - 1).rfind(')');
    if (before != std::string_view::npos) close = before;
  }
  if (close == std::string_view::npos || close < open) return parts;
  parts.Parameters = s.substr(open, close - open);
  parts.Suffix = Trim(s.substr(close + 1));
  return parts;
}

// The name: the last word of the prefix; a type suffix is cut and told.
std::string_view TakeName(std::string_view prefix, std::string_view& suffixType) {
  std::string_view name, word;
  SplitCursor words(prefix, " ", true);
  while (words.Next(word)) name = word;
  suffixType = TypeFromName(name);
  if (!suffixType.empty()) name.remove_suffix(1);
  return name;
}

struct SuffixWords {
  std::string_view Type;
  bool IsArray = false;
  std::string_view ImplementsName;
};

SuffixWords ReadSuffix(std::string_view suffix) {
  SuffixWords result;
  SplitCursor words(suffix, " ", true);
  std::string_view word;
  bool typeNext = false, implementsNext = false;
  while (words.Next(word)) {
    if (typeNext) {
      result.Type = word;
      typeNext = false;
    } else if (EqualsNoCaseAscii(word, "AS")) {
      typeNext = true;
    } else if (EqualsNoCaseAscii(word, "IMPLEMENTS")) {
      implementsNext = true;
    } else if (implementsNext) {
      result.ImplementsName = word;
    }
  }
  return result;
}

// "Integer()" names an array.
void CutArray(SuffixWords& words) {
  if (NetLanguage().CutArrayMark(words.Type)) words.IsArray = true;
}

// The list parser expects its parentheses.
void LoadParameters(Parameters& parameters, Component* component, std::string_view list,
                    CodeElement* parent, const ReadingRules& reading) {
  parameters.Component = component;
  if (list.empty()) return;
  ReadParameters(parameters, "(" + std::string(list) + ")", parent, true, {NetLanguage(), reading});
}

void SettleBlock(Block& o, const ReadingRules& reading) {
  Component* component = o.Component.Get();
  if (o.Access.empty()) o.Access = component && component->OptionPrivate ? "PRIVATE" : "PUBLIC";
  const bool returns = o.BlockType() == btPropertyGet || o.BlockType() == btFunction;
  if (o.ReturnType.empty() && returns) o.ReturnType = "System.Object";
  if (component) {
    const std::string_view interface =
        InterfaceOfName(*component, o.Name(), reading.UnderscoredSources);
    if (!interface.empty()) o.Interface = interface;
  }
  if (EqualsNoCaseAscii(o.Name(), "New")) {
    o.IsConstructor = true;
    o.SetName("_ctor");
  }
  o.ReturnType = DotNetType(o.ReturnType);
}

}  // namespace

void ParseStartLine(std::string_view Text, Block& o, const ReadingRules& reading) try {
  if (reading.NetMembers) return ReadNetMember(Text, o);
  const std::string line = StripAttributes(Text);
  const StartLineParts parts = CutStartLine(line);
  o.Access = {};
  const std::string base = o.Component ? o.Component->InheritsFrom.str() : std::string();
  if (!parts.Prefix.empty()) {
    std::string_view suffixType;
    o.SetName(TakeName(parts.Prefix, suffixType));
    if (!suffixType.empty()) o.ReturnType = suffixType;
    SplitCursor words(parts.Prefix, " ", true);
    std::string_view word;
    while (words.Next(word))
      if (!TakeCommonModifier(o, word, base)) TakeBlockModifier(o, word);
  }
  LoadParameters(*o.Parameters, o.Component.Get(), parts.Parameters, &o, reading);
  SuffixWords suffix = ReadSuffix(parts.Suffix);
  if (!suffix.ImplementsName.empty()) o.SetImplementsName(suffix.ImplementsName);
  if (!suffix.Type.empty()) {
    CutArray(suffix);
    o.ReturnType = suffix.Type;
    if (suffix.IsArray) o.ReturnTypeIsArray = true;
  }
  SettleBlock(o, reading);
}
VENDREL_CONTEXT_AT(LineReached(), Text, o)

void ParseStartLine(std::string_view Text, Variable& o) try {
  const std::string line = StripAttributes(Text);
  const StartLineParts parts = CutStartLine(line);
  o.Access = {};
  const auto* owner = As<Component>(o.Parent.Get());
  const std::string base = owner ? owner->InheritsFrom.str() : std::string();
  if (!parts.Prefix.empty()) {
    std::string_view suffixType;
    o.Name = TakeName(parts.Prefix, suffixType);
    if (!suffixType.empty()) o.TypeName = suffixType;
    SplitCursor words(parts.Prefix, " ", true);
    std::string_view word;
    while (words.Next(word)) TakeCommonModifier(o, word, base);
  }
  SuffixWords suffix = ReadSuffix(parts.Suffix);
  if (!suffix.Type.empty()) {
    CutArray(suffix);
    o.TypeName = suffix.Type;
    if (suffix.IsArray) o.IsArray = true;
  }
  if (o.Access.empty()) o.Access = "PUBLIC";
}
VENDREL_CONTEXT_AT(LineReached(), Text, o)

void ParseStartLine(std::string_view Text, EventDeclaration& o, const ReadingRules& reading) try {
  if (reading.NetMembers) return ReadNetEvent(Text, o);
  const std::string line = StripAttributes(Text);
  const StartLineParts parts = CutStartLine(line);
  const std::string base = o.Component ? o.Component->InheritsFrom.str() : std::string();
  if (!parts.Prefix.empty()) {
    std::string_view suffixType;
    o.Name = TakeName(parts.Prefix, suffixType);
    SplitCursor words(parts.Prefix, " ", true);
    std::string_view word;
    while (words.Next(word))
      if (!TakeCommonModifier(o, word, base) && EqualsNoCaseAscii(word, "NOTOVERRIDABLE"))
        o.IsSealed = true;
  }
  LoadParameters(*o.Parameters, o.Component.Get(), parts.Parameters, &o, reading);
  const SuffixWords suffix = ReadSuffix(parts.Suffix);
  if (!suffix.Type.empty()) o.DelegateName = suffix.Type;
}
VENDREL_CONTEXT_AT(LineReached(), Text, o)

}  // namespace vendrel
