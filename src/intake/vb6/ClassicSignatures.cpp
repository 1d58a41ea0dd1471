// Name, type and modifiers of a procedure from its start line.

#include "intake/vb6/ClassicSignatures.h"

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "intake/LineIntake.h"
#include "intake/ModuleIntake.h"
#include "intake/ProcedureSources.h"
#include "text/Identifiers.h"
#include "text/StartLine.h"
#include "text/Words.h"

namespace vendrel {
namespace {

// The name of a start line with its suffix; a name in brackets is whole.
std::string_view NameOf(std::string_view statement, bool wholeNames) {
  const std::string_view head = statement.substr(0, statement.find('('));
  const std::size_t open = wholeNames ? head.find('[') : std::string_view::npos;
  const bool isType = FindNoCaseAscii(head, " as ") < open;
  const std::size_t end = open < head.size() && !isType ? BracketEnd(statement, open) : 0;
  if (end <= open || end == 0) return GetName(statement);
  const std::string_view suffix = statement.substr(end, 1);
  return statement.substr(open, end - open + (TypeFromName(suffix).empty() ? 0 : 1));
}

// Types of names and of what stands behind them.
SharedText TypeOf(std::string_view type, bool wholeNames) {
  if (!wholeNames || type.find('[') == std::string_view::npos) return type;
  return TypeWithoutBrackets(type);
}

ReturnTypeText TakeReturnType(LinePassage& p) {
  const ReturnTypeText type =
      GetReturnType(p.Line.StatementPart, lvVisualBasic5or6, p.Reading.ReturnTypes);
  p.Block.ReturnType = TypeOf(type.ReturnType, p.Reading.BracketedNames);
  if (type.IsArray) p.Block.ReturnTypeIsArray = true;
  return type;
}

void NameAndType(LinePassage& p) {
  std::string_view name = NameOf(p.Line.StatementPart, p.Reading.BracketedNames);
  const std::string_view suffix = TypeFromName(name);
  if (!suffix.empty()) {
    p.Block.ReturnType = suffix;
    name = Trim(name);
    name.remove_suffix(1);
  }
  if (p.Reading.BracketedNames) name = WithoutBrackets(name);
  p.Block.SetName(name);
  if (p.Block.ReturnType.empty()) p.Block.ReturnType = p.Component.DefaultType(p.Block.Name());
  p.Block.Interface = InterfaceOfName(p.Component, p.Block.Name(), p.Reading.UnderscoredSources);
  if (p.Block.Name() == "NewEnum") p.Component.SetIsCollection(true);
}

void TakeGetType(LinePassage& p) {
  const std::string_view statement = p.Line.StatementPart;
  const SharedText suffixType = TypeFromName(NameOf(statement, p.Reading.BracketedNames));
  TakeReturnType(p);
  if (p.Block.ReturnType.empty() && p.Reading.ReturnTypes) p.Block.ReturnType = suffixType;
  if (p.Block.ReturnType.empty()) p.Block.ReturnType = p.Component.DefaultType(p.Block.Name());
  if (StartsWithNoCaseAscii(TrimLeft(statement), "Default "))
    p.Component.DefaultMemberName = p.Block.Name();
}

}  // namespace

void ReadClassicSignature(LinePassage& p) try {
  const ReturnTypeText type = TakeReturnType(p);
  NameAndType(p);
  if (!type.TakesDefault) p.Block.ReturnType = {};
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(p.Block))

void ReadClassicProperty(LinePassage& p) try {
  const std::string_view statement = p.Line.StatementPart;
  NameAndType(p);
  if (ContainsNoCaseAscii(statement, "PROPERTY GET")) {
    p.Block.SetBlockType(btPropertyGet);
    TakeGetType(p);
  } else if (ContainsNoCaseAscii(statement, "PROPERTY LET")) {
    p.Block.SetBlockType(btPropertyLet);
  } else if (ContainsNoCaseAscii(statement, "PROPERTY SET")) {
    p.Block.SetBlockType(btPropertySet);
  }
  // A first judgement; the start line settles the access later.
  p.Block.IsFriend = !p.Component.OptionPrivate && statement.starts_with("FRIEND ");
  p.Block.Access =
      !p.Component.OptionPrivate && (statement.starts_with("PUBLIC ") || p.Block.IsFriend)
          ? "PUBLIC"
          : "PRIVATE";
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(p.Block))

// An absent keyword counts as position 0, in front of the name: documented, and kept.
void JudgeStatic(LinePassage& p) {
  const std::string_view statement = p.Line.StatementPart;
  if (p.Reading.KeywordStatic) {
    std::string_view rest = statement;
    const std::string_view first = TakeField(rest, ' ');
    p.Block.IsStatic =
        EqualsNoCaseAscii(first, "STATIC") || EqualsNoCaseAscii(TakeField(rest, ' '), "STATIC");
    return;
  }
  const std::size_t name = p.Block.Name().empty() ? statement.npos : statement.find(p.Block.Name());
  const std::size_t keyword = FindNoCaseAscii(statement, "STATIC");
  const std::size_t namePosition = name == statement.npos ? 0 : name + 1;
  const std::size_t keywordPosition = keyword == statement.npos ? 0 : keyword + 1;
  if (keywordPosition < namePosition) p.Block.IsStatic = true;
}

void SettleAccess(LinePassage& p) {
  if (p.Component.OptionPrivate) {
    p.Block.Access = "PRIVATE";
  } else if (StartsWithNoCaseAscii(p.Line.StatementPart, "PRIVATE")) {
    p.Block.Access = "PRIVATE";
  } else if (StartsWithNoCaseAscii(p.Line.StatementPart, "FRIEND")) {
    p.Block.Access = "FRIEND";
    p.Block.IsFriend = true;
  } else {
    p.Block.Access = "PUBLIC";
  }
}

}  // namespace vendrel
