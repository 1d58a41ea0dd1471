// Stage 4: what an Attribute line says about the module, the block or one of its elements.

#include "core/Ascii.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "intake/LineIntake.h"
#include "intake/ModuleIntake.h"

namespace vendrel {
namespace {

// The n-th blank-separated word, 1-based; raises 9 when there are fewer.
std::string_view Word(std::string_view statement, int n) {
  std::string_view rest = statement;
  for (int i = 1; i < n; ++i) {
    if (rest.find(' ') == std::string_view::npos)
      throw VendrelError(errSubscript, "too few words: " + std::string(statement));
    TakeField(rest, ' ');
  }
  return TakeField(rest, ' ');
}

// The element an attribute belongs to: the text from character 11 up to the first ".".
std::string_view Subject(std::string_view statement) {
  if (statement.size() <= 10) return {};
  const std::string_view behind = statement.substr(10);
  return behind.substr(0, behind.find('.'));
}

bool IsBlockHelpID(std::string_view statement, std::string_view name) {
  constexpr std::string_view kAttribute = "ATTRIBUTE ";
  constexpr std::string_view kSuffix = ".VB_HELPID";
  if (!StartsWithNoCaseAscii(statement, kAttribute)) return false;
  const std::string_view behind = statement.substr(kAttribute.size());
  return StartsWithNoCaseAscii(behind, name) &&
         StartsWithNoCaseAscii(behind.substr(name.size()), kSuffix);
}

// Which attributes a statement names, wherever in it: its descriptions are long, so that it is
// searched once for what their names have in common.
struct NamedAttributes {
  bool VarHelpID = false;
  bool IsExposed = false;
  bool IsHidden = false;
};

NamedAttributes AttributesNamedIn(std::string_view statement) {
  constexpr std::string_view kInCommon = "VB_";
  const auto stands = [&](std::size_t at, std::string_view before, std::string_view name) {
    return at >= before.size() &&
           StartsWithNoCaseAscii(statement.substr(at - before.size()), before) &&
           StartsWithNoCaseAscii(statement.substr(at), name);
  };
  NamedAttributes named;
  for (std::size_t at = FindNoCaseAscii(statement, kInCommon); at != kNotFound;
       at = FindNoCaseAscii(statement, kInCommon, at + kInCommon.size())) {
    const std::size_t behind = at + kInCommon.size();
    switch (behind < statement.size() ? UpperAscii(statement[behind]) : '\0') {
      case 'V': named.VarHelpID |= stands(at, ".", "VB_VARHELPID"); break;
      case 'E': named.IsExposed |= stands(at, "ATTRIBUTE ", "VB_EXPOSED = TRUE"); break;
      case 'M': named.IsHidden |= stands(at, ".", "VB_MEMBERFLAGS = \"40\""); break;
      default: break;
    }
  }
  return named;
}

bool TakeHelpIDs(LinePassage& p, std::string_view statement, const NamedAttributes& named) try {
  const auto valueBehindEquals = [&] {
    const std::size_t equals = statement.find('=');
    return equals == std::string_view::npos ? 0 : NumericValue(statement.substr(equals + 1));
  };
  if (StartsWithNoCaseAscii(statement, "ATTRIBUTE VB_HELPID")) {
    TakeHelpContextID(p.Component, p.Component, valueBehindEquals());
    return true;
  }
  if (IsBlockHelpID(statement, p.Block.Name())) {
    TakeHelpContextID(p.Component, p.Block, valueBehindEquals());
    return true;
  }
  if (!named.VarHelpID) return false;
  std::string_view name = Word(statement, 2);
  name = TakeField(name, '.');
  Variable* variable = p.Block.Variables.IfAny() ? p.Block.Variables->Item(name) : nullptr;
  if (variable) TakeHelpContextID(p.Component, *variable, NumericValue(Word(statement, 4)));
  return true;
}
VENDREL_CONTEXT_AT(LineReached(), statement, trace::Me(p.Block))

// What makes a member the default one of its class, or one that walks a collection.
void TakeMemberId(LinePassage& p, std::string_view statement) {
  constexpr std::string_view kIs = "USERMEMID = ";
  bool isDefault = false, isWalk = false;
  for (std::size_t at = FindNoCaseAscii(statement, kIs); at != kNotFound;
       at = FindNoCaseAscii(statement, kIs, at + 1)) {
    const std::string_view id = statement.substr(at + kIs.size());
    isDefault |= id.starts_with("0");
    isWalk |= id.starts_with("-4");
  }
  if (isDefault)
    p.Component.DefaultMemberName = Subject(statement);
  else if (isWalk)
    p.Component.SetIsCollection(true);
}

void TakeFlags(LinePassage& p, std::string_view statement, const NamedAttributes& named) {
  if (named.IsExposed) {
    p.Component.Access = "PUBLIC";
  } else if (named.IsHidden) {
    const std::string_view subject = Subject(statement);
    if (EqualsNoCase(subject, p.Block.Name()))
      p.Block.IsHiddenMember = true;
    else if (Variable* variable =
                 p.Block.Variables.IfAny() ? p.Block.Variables->Item(subject) : nullptr)
      variable->IsHiddenMember = true;
    else if (EventDeclaration* event = p.Component.EventDeclarations.Item(subject))
      event->IsHiddenMember = true;
    else if (Enumeration* enumeration = p.Component.Enumerations.Item(subject))
      enumeration->IsHiddenMember = true;
    else if (UDT* structure = p.Component.UDTs.Item(subject))
      structure->IsHiddenMember = true;
  } else {
    TakeMemberId(p, statement);
  }
}

}  // namespace

bool TakeAttribute(LinePassage& p) try {
  const std::string_view statement = p.Line.StatementPart;
  const std::size_t events = p.Component.EventDeclarations.Count();
  if (p.State.mEventLast && events > 0 &&
      ContainsNoCaseAscii(statement, p.Component.EventDeclarations.Item(events)->Name))
    p.FoundEventComment = true;
  if (p.Block.BlockType() == btUnrecognised) p.Block.SetBlockType(btAttributes);
  const NamedAttributes named = AttributesNamedIn(statement);
  if (TakeHelpIDs(p, statement, named)) {
    if (!p.Reading.KeepHelpAttributes) return false;
  } else {
    TakeFlags(p, statement, named);
  }
  PrepareLines(p.Block);
  p.Block.AddAttribute(p.Line.Text);
  if (statement == "Attribute VB_Exposed = True") p.Component.Access = "PUBLIC";
  return true;
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(p.Block))

}  // namespace vendrel
