// Name, type and modifiers of a procedure from its start line.

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "intake/LineIntake.h"
#include "intake/ModuleIntake.h"
#include "intake/ProcedureSources.h"
#include "intake/StartLineText.h"
#include "text/Names.h"
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

}  // namespace

void LineIntake::ReadSignature() try {
  if (IsDotNet()) {
    ParseStartLine(mLine.StatementPart, mBlock);
    return;
  }
  const ReturnTypeText type =
      GetReturnType(mLine.StatementPart, mIntake.Language, mIntake.Reading.ReturnTypes);
  mBlock.ReturnType = TypeOf(type.ReturnType, mIntake.Reading.BracketedNames);
  if (type.IsArray) mBlock.ReturnTypeIsArray = true;
  NameAndType();
  if (!type.TakesDefault) mBlock.ReturnType = {};
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(mBlock))

void LineIntake::NameAndType() {
  std::string_view name = NameOf(mLine.StatementPart, mIntake.Reading.BracketedNames);
  const std::string_view suffix = TypeFromName(name);
  if (!suffix.empty()) {
    mBlock.ReturnType = suffix;
    name = Trim(name);
    name.remove_suffix(1);
  }
  if (mIntake.Reading.BracketedNames) name = WithoutBrackets(name);
  mBlock.SetName(name);
  if (mBlock.ReturnType.empty()) mBlock.ReturnType = mComponent.DefaultType(mBlock.Name());
  mBlock.Interface = InterfaceOfName(mComponent, mBlock.Name(), mIntake.Reading.UnderscoredSources);
  if (mBlock.Name() == "NewEnum") {
    mComponent.SetIsCollection(true);
  } else if (IsDotNet() && mBlock.Name() == "New") {
    mBlock.IsConstructor = true;
    mBlock.SetName("_ctor");
  }
  if (IsDotNet()) mBlock.ReturnType = DotNetType(mBlock.ReturnType);
}

void LineIntake::TakeProperty() try {
  mBlock.SetSourceLine(mIntake.StatementLine);
  const std::string_view statement = mLine.StatementPart;
  const bool complete = mIntake.Reading.ReturnTypes;
  if (!IsDotNet()) NameAndType();
  if (IsDotNet() || ContainsNoCaseAscii(statement, "PROPERTY GET")) {
    mBlock.SetBlockType(btPropertyGet);
    if (IsDotNet()) {
      mBlock.PropertyType = ptReadWrite;
      ParseStartLine(statement, mBlock);
    } else {
      const SharedText suffixType = TypeFromName(NameOf(statement, mIntake.Reading.BracketedNames));
      const ReturnTypeText type = GetReturnType(statement, mIntake.Language, complete);
      mBlock.ReturnType = TypeOf(type.ReturnType, mIntake.Reading.BracketedNames);
      if (type.IsArray) mBlock.ReturnTypeIsArray = true;
      if (mBlock.ReturnType.empty() && complete) mBlock.ReturnType = suffixType;
      if (mBlock.ReturnType.empty()) mBlock.ReturnType = mComponent.DefaultType(mBlock.Name());
    }
    if (StartsWithNoCaseAscii(TrimLeft(statement), "Default "))
      mComponent.DefaultMemberName = mBlock.Name();
  } else if (ContainsNoCaseAscii(statement, "PROPERTY LET")) {
    mBlock.SetBlockType(btPropertyLet);
  } else if (ContainsNoCaseAscii(statement, "PROPERTY SET")) {
    mBlock.SetBlockType(btPropertySet);
  }
  if (!IsDotNet()) {
    // A first judgement; the start line settles the access below.
    mBlock.IsFriend = !mComponent.OptionPrivate && statement.starts_with("FRIEND ");
    mBlock.Access =
        !mComponent.OptionPrivate && (statement.starts_with("PUBLIC ") || mBlock.IsFriend)
            ? "PUBLIC"
            : "PRIVATE";
  }
  mBlock.DefinitionLine = statement;
  SetLast(&mBlock);
  mComponent.AddPropertyBlockToPropertyGroup(&mBlock);
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(mBlock))

}  // namespace vendrel
