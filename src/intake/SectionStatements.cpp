// Statements of the declarations section that are told by their first letters: Option, Def...,
// Implements.

#include "comments/AppendDescription.h"
#include "core/Ascii.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "intake/LineIntake.h"
#include "intake/ModuleIntake.h"
#include "text/Identifiers.h"
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

void TakeOption(LinePassage& p, std::string_view statement) {
  const auto behind = [&](std::size_t position) {
    return statement.size() >= position ? Trim(statement.substr(position - 1)) : std::string_view();
  };
  if (StartsWithNoCaseAscii(statement, "option explicit")) p.Component.OptionExplicit = true;
  if (StartsWithNoCaseAscii(statement, "option compare")) p.Component.OptionCompare = behind(15);
  if (StartsWithNoCaseAscii(statement, "option base"))
    p.Component.OptionBase = NumericValue(behind(12));
  if (StartsWithNoCaseAscii(statement, "option private")) p.Component.OptionPrivate = true;
  // A comment directly above the options heads the module.
  if (p.Reading.LeadingComments && !p.State.mFoundItem && !p.State.CommentBuffer.empty()) {
    AddObjectDescription(p.Component, p.State.CommentBuffer, p.Language.Language());
    p.State.CommentBuffer.clear();
  }
}

void TakeDefType(LinePassage& p) {
  std::string_view rest = Trim(p.Line.StatementPart);
  std::string_view word = TakeField(rest, ' ');
  if (word.size() != 6 && word.size() != 7) return;
  std::string_view letterRanges;
  if (kDefStatements.find(word) != std::string_view::npos) {
    letterRanges = Trim(rest);
    word.remove_prefix(3);
  }
  std::vector<DefaultTypeEntry>& entries = p.Component.DefaultTypes();
  DefaultTypeEntry entry{std::string(word), TakeRanges(entries, word)};
  while (!letterRanges.empty()) {
    const std::string_view item = Trim(TakeField(letterRanges, ','));
    if (!item.empty()) entry.Ranges.push_back(LetterRange(item));
  }
  entries.push_back(std::move(entry));
}

void TakeImplements(LinePassage& p) try {
  std::string_view rest = p.Line.StatementPart;
  TakeField(rest, ' ');
  std::string_view name = TakeField(rest, ' ');
  std::string unbracketed;
  if (p.Reading.BracketedNames && name.find('[') != std::string_view::npos) {
    rest = p.Line.StatementPart.substr(
        static_cast<std::size_t>(name.data() - p.Line.StatementPart.data()));
    name = unbracketed = TypeWithoutBrackets(rest.substr(0, WordEnd(rest)));
  }
  name = p.Language.InterfaceName(name);
  AddInterface(p, name);
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(p.Block))

}  // namespace

void AddInterface(LinePassage& p, std::string_view name) {
  if (p.Component.Interfaces.HasKey(name)) return;
  auto interface = std::make_shared<Interface>();
  interface->Name = name;
  interface->LineIndex = p.StatementIndex();
  interface->SetSourceLine(p.Intake.StatementLine);
  interface->Component = &p.Component;
  if (p.Reading.LeadingComments) p.DescribeFromBuffer(*interface);
  p.SetLast(interface.get());
  p.Component.Interfaces.Add(interface, name);
}

void TakeSectionStatement(LinePassage& p) try {
  if (StartsWithNoCaseAscii(p.Line.StatementPart, "option"))
    TakeOption(p, p.Line.StatementPart);
  else if (StartsWithNoCaseAscii(p.Line.StatementPart, "def"))
    TakeDefType(p);
  else if (StartsWithNoCaseAscii(p.Line.StatementPart, "implements "))
    TakeImplements(p);
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(p.Block))

}  // namespace vendrel
