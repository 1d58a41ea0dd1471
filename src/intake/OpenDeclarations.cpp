// Lines inside an open Enum or Type statement, and blank lines.

#include <string>

#include "core/Ascii.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "intake/DeclarationText.h"
#include "intake/LineIntake.h"
#include "intake/ModuleIntake.h"
#include "project/VBProject.h"

namespace vendrel {

namespace {

bool IsAnyOf(std::string_view word, std::initializer_list<std::string_view> list) {
  for (const std::string_view item : list)
    if (EqualsNoCaseAscii(word, item)) return true;
  return false;
}

bool IsRemarkStatement(std::string_view statement) {
  return StartsWithNoCaseAscii(statement, "REM") && (statement.size() == 3 || statement[3] == ' ');
}

// "Attribute Colour.VB_HelpID = 5" is no member of the name.
bool IsAttributeOfMember(const ParsedLine& line) {
  return line.LineType == ATTRIBUTE_LINE && ContainsNoCaseAscii(line.StatementPart, ".VB_");
}

void TakeMember(LinePassage& p) try {
  std::string source(p.Line.StatementPart);
  source.append(" '").append(p.Untagged);
  if (p.Block.CurrentEnum() && p.State.mEnumOpen) {
    const std::shared_ptr<EnumMember> member =
        AddEnumMember(*p.Block.CurrentEnum(), source, p.Rules());
    member->SetSourceLine(p.Intake.StatementLine);
    const std::size_t count = p.Block.CurrentEnum()->Members().Count();
    p.SetLast(p.Block.CurrentEnum()->Members().Item(count));
  } else if (p.Block.CurrentUDT() && p.State.mUDTOpen) {
    const std::shared_ptr<Variable> member =
        AddStructureMember(*p.Block.CurrentUDT(), source, p.Rules());
    member->SetSourceLine(p.Intake.StatementLine);
    p.ReportOddName(*member, member->Name, member->TypeName);
    p.SetLast(p.Block.CurrentUDT()->Members.Item(p.Block.CurrentUDT()->Members.Count()));
  }
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(p.Block))

void CloseStructure(LinePassage& p) try {
  const std::shared_ptr<UDT> structure = std::move(p.Block.CurrentUDT());
  p.Block.CurrentUDT().reset();
  if (p.Options.BuildTypeCache) p.Language.CacheStructure(p.Component, *structure);
  p.Component.UDTs.Add(structure, structure->Name);
  if (p.Options.TaggedCommentsBeforeElement) p.SetLast(nullptr);
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(p.Block))

void CloseEnumeration(LinePassage& p) try {
  const std::shared_ptr<Enumeration> enumeration = std::move(p.Block.CurrentEnum());
  p.Block.CurrentEnum().reset();
  if (p.Options.BuildTypeCache) p.Language.CacheEnumeration(p.Component, *enumeration);
  p.Component.Enumerations.Add(enumeration, enumeration->Name);
  if (p.Options.TaggedCommentsBeforeElement) p.SetLast(nullptr);
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(p.Block))

}  // namespace

bool EndsOpenDeclaration(const ParsedLine& line) {
  switch (line.LineType) {
    case END_SUB:
    case END_FUNCTION:
    case END_PROPERTY: return true;
    default: break;
  }
  std::string_view rest = line.StatementPart;
  std::string_view word = TakeField(rest, ' ');
  if (!IsAnyOf(word, {"PUBLIC", "PRIVATE", "FRIEND", "STATIC"})) return false;
  word = TakeField(rest, ' ');
  if (EqualsNoCaseAscii(word, "STATIC")) word = TakeField(rest, ' ');
  return IsAnyOf(word, {"SUB", "FUNCTION", "PROPERTY"});
}

// What has no end of its own ends here, and is told.
void CloseOpenDeclaration(LinePassage& p) {
  if (p.Block.CurrentUDT()) {
    Report(DiagnosticCode::UnendedDeclaration, {"Type", p.Block.CurrentUDT()->Name});
    CloseStructure(p);
  } else if (p.Block.CurrentEnum()) {
    Report(DiagnosticCode::UnendedDeclaration, {"Enum", p.Block.CurrentEnum()->Name});
    CloseEnumeration(p);
  }
  p.State.mUDTOpen = p.State.mEnumOpen = false;
}

namespace {
// A member may have any name, also that of a statement.
void TakeInsideByName(LinePassage& p) {
  switch (p.Line.LineType) {
    case END_TYPE:
    case END_ENUM:
      if ((p.Line.LineType == END_TYPE) != p.State.mUDTOpen) return CloseOpenDeclaration(p);
      return p.State.mUDTOpen ? CloseStructure(p) : CloseEnumeration(p);
    case Comment:
    case TAGGED_COMMENT:
    case COMPILER_DIRECTIVE: return;
    default: break;
  }
  if (p.Line.StatementPart.empty() || IsAttributeOfMember(p.Line) ||
      IsRemarkStatement(p.Line.StatementPart))
    return;
  if (EndsOpenDeclaration(p.Line)) {
    CloseOpenDeclaration(p);
    return Dispatch(p);
  }
  TakeMember(p);
  p.Line.LineType = OTHER;
}
}  // namespace

void TakeInsideDeclaration(LinePassage& p) {
  if (p.Reading.MemberNames && p.Language.HasPlainMemberNames() && p.Line.LineType != BLANK_LINE)
    return TakeInsideByName(p);
  if (p.Line.LineType == END_TYPE && p.State.mUDTOpen) return CloseStructure(p);
  if (p.Line.LineType == END_ENUM && p.State.mEnumOpen) return CloseEnumeration(p);
  if (p.Line.StatementPart.empty() || p.Line.LineType == BLANK_LINE ||
      p.Line.StatementPart.front() == '#')
    return;
  TakeMember(p);
  p.Line.LineType = OTHER;
}

}  // namespace vendrel
