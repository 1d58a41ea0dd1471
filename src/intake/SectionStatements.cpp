// Statements of the declarations section that are told by their first letters: Option, Def...,
// Implements.

#include "comments/Descriptions.h"
#include "core/Ascii.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "intake/LineIntake.h"
#include "intake/ModuleIntake.h"
#include "text/Names.h"
#include "text/Words.h"

namespace vendrel {
namespace {

constexpr std::string_view kDefStatements =
    "DefBoolDefByteDefIntDefLngDefCurDefSngDefDblDefDecDefDateDefStrDefObjDefVar";

// "A-C" becomes "A:C", a single letter "L" becomes "L:L".
std::string LetterRange(std::string_view item) {
  if (item.size() == 1) return std::string(item).append(":").append(item);
  return ReplaceAll(item, "-", ":");
}

std::vector<std::string> TakeRanges(std::vector<DefaultTypeEntry>& entries, std::string_view name) {
  for (std::size_t i = 0; i < entries.size(); ++i) {
    if (!EqualsNoCaseAscii(entries[i].Name, name)) continue;
    std::vector<std::string> ranges = std::move(entries[i].Ranges);
    entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(i));
    return ranges;
  }
  return {};
}

}  // namespace

void LineIntake::TakeSectionStatement() try {
  if (StartsWithNoCaseAscii(mLine.StatementPart, "option"))
    TakeOption(mLine.StatementPart);
  else if (StartsWithNoCaseAscii(mLine.StatementPart, "def"))
    TakeDefType();
  else if (StartsWithNoCaseAscii(mLine.StatementPart, "implements "))
    TakeImplements();
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(mBlock))

void LineIntake::TakeOption(std::string_view statement) {
  const auto behind = [&](std::size_t position) {
    return statement.size() >= position ? Trim(statement.substr(position - 1)) : std::string_view();
  };
  if (StartsWithNoCaseAscii(statement, "option explicit")) mComponent.OptionExplicit = true;
  if (StartsWithNoCaseAscii(statement, "option compare")) mComponent.OptionCompare = behind(15);
  if (StartsWithNoCaseAscii(statement, "option base"))
    mComponent.OptionBase = NumericValue(behind(12));
  if (StartsWithNoCaseAscii(statement, "option private")) mComponent.OptionPrivate = true;
  // A comment directly above the options heads the module.
  if (mIntake.Reading.LeadingComments && !mState.mFoundItem && !mState.CommentBuffer.empty()) {
    AddObjectDescription(mComponent, mState.CommentBuffer);
    mState.CommentBuffer.clear();
  }
}

void LineIntake::TakeDefType() {
  std::string_view rest = Trim(mLine.StatementPart);
  std::string_view word = TakeField(rest, ' ');
  if (word.size() != 6 && word.size() != 7) return;
  std::string_view letterRanges;
  if (kDefStatements.find(word) != std::string_view::npos) {
    letterRanges = Trim(rest);
    word.remove_prefix(3);
  }
  std::vector<DefaultTypeEntry>& entries = mComponent.DefaultTypes();
  DefaultTypeEntry entry{std::string(word), TakeRanges(entries, word)};
  while (!letterRanges.empty()) {
    const std::string_view item = Trim(TakeField(letterRanges, ','));
    if (!item.empty()) entry.Ranges.push_back(LetterRange(item));
  }
  entries.push_back(std::move(entry));
}

void LineIntake::TakeImplements() try {
  std::string_view rest = mLine.StatementPart;
  TakeField(rest, ' ');
  std::string_view name = TakeField(rest, ' ');
  std::string unbracketed;
  if (mIntake.Reading.BracketedNames && name.find('[') != std::string_view::npos) {
    rest = mLine.StatementPart.substr(
        static_cast<std::size_t>(name.data() - mLine.StatementPart.data()));
    name = unbracketed = TypeWithoutBrackets(rest.substr(0, WordEnd(rest)));
  }
  if (!IsDotNet() && name.find('.') != std::string_view::npos)
    name.remove_prefix(name.find('.') + 1);
  if (mComponent.Interfaces.HasKey(name)) return;
  auto interface = std::make_shared<Interface>();
  interface->Name = name;
  interface->LineIndex = AdjustedLineIndex();
  interface->SetSourceLine(mIntake.StatementLine);
  interface->Component = &mComponent;
  if (mIntake.Reading.LeadingComments) DescribeFromBuffer(*interface);
  SetLast(interface.get());
  mComponent.Interfaces.Add(interface, name);
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(mBlock))

}  // namespace vendrel
