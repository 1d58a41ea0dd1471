// Lines inside an open Enum or Type statement, and blank lines.

#include <string>

#include "core/Ascii.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
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

void LineIntake::TakeInsideDeclaration() {
  if (mIntake.Reading.MemberNames && !IsDotNet() && mLine.LineType != BLANK_LINE)
    return TakeInsideByName();
  if (mLine.LineType == END_TYPE && mState.mUDTOpen) return CloseStructure();
  if (mLine.LineType == END_ENUM && mState.mEnumOpen) return CloseEnumeration();
  if (mLine.StatementPart.empty() || mLine.LineType == BLANK_LINE ||
      mLine.StatementPart.front() == '#')
    return;
  TakeMember();
  mLine.LineType = OTHER;
}

// A member may have any name, also that of a statement.
void LineIntake::TakeInsideByName() {
  switch (mLine.LineType) {
    case END_TYPE:
    case END_ENUM:
      if ((mLine.LineType == END_TYPE) != mState.mUDTOpen) return CloseOpenDeclaration();
      return mState.mUDTOpen ? CloseStructure() : CloseEnumeration();
    case Comment:
    case TAGGED_COMMENT:
    case COMPILER_DIRECTIVE: return;
    default: break;
  }
  if (mLine.StatementPart.empty() || IsAttributeOfMember(mLine) ||
      IsRemarkStatement(mLine.StatementPart))
    return;
  if (EndsOpenDeclaration(mLine)) {
    CloseOpenDeclaration();
    return Dispatch();
  }
  TakeMember();
  mLine.LineType = OTHER;
}

// What has no end of its own ends here, and is told.
void LineIntake::CloseOpenDeclaration() {
  if (mBlock.CurrentUDT()) {
    Tell(DiagnosticCode::UnendedDeclaration, {"Type", mBlock.CurrentUDT()->Name});
    CloseStructure();
  } else if (mBlock.CurrentEnum()) {
    Tell(DiagnosticCode::UnendedDeclaration, {"Enum", mBlock.CurrentEnum()->Name});
    CloseEnumeration();
  }
  mState.mUDTOpen = mState.mEnumOpen = false;
}

void LineIntake::TakeMember() try {
  std::string source(mLine.StatementPart);
  source.append(" '").append(mUntagged);
  if (mBlock.CurrentEnum() && mState.mEnumOpen) {
    const std::shared_ptr<EnumMember> member = mBlock.CurrentEnum()->AddMember(source);
    member->SetSourceLine(mIntake.StatementLine);
    const std::size_t count = mBlock.CurrentEnum()->Members().Count();
    SetLast(mBlock.CurrentEnum()->Members().Item(count));
  } else if (mBlock.CurrentUDT() && mState.mUDTOpen) {
    const std::shared_ptr<Variable> member = mBlock.CurrentUDT()->AddMember(source);
    member->SetSourceLine(mIntake.StatementLine);
    TellOddName(*member, member->Name, member->TypeName);
    SetLast(mBlock.CurrentUDT()->Members.Item(mBlock.CurrentUDT()->Members.Count()));
  }
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(mBlock))

void LineIntake::CloseStructure() try {
  const std::shared_ptr<UDT> structure = std::move(mBlock.CurrentUDT());
  mBlock.CurrentUDT().reset();
  if (mOptions.BuildTypeCache && !IsDotNet()) {
    mComponent.TypeCache.Add(structure->Name, tcLocalModuleUDT);
    if (VBProject* project = mComponent.VBProject())
      project->TypeCache.Add(structure->Name, tcLocalProjectUDT, mComponent.Name);
  }
  mComponent.UDTs.Add(structure, structure->Name);
  if (mOptions.TaggedCommentsBeforeElement) SetLast(nullptr);
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(mBlock))

void LineIntake::CloseEnumeration() try {
  const std::shared_ptr<Enumeration> enumeration = std::move(mBlock.CurrentEnum());
  mBlock.CurrentEnum().reset();
  if (mOptions.BuildTypeCache) {
    mComponent.TypeCache.Add(enumeration->Name, tcLocalModuleEnum);
    VBProject* project = mComponent.VBProject();
    if (project && !IsDotNet())
      project->TypeCache.Add(enumeration->Name, tcLocalProjectEnum, mComponent.Name);
  }
  mComponent.Enumerations.Add(enumeration, enumeration->Name);
  if (mOptions.TaggedCommentsBeforeElement) SetLast(nullptr);
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(mBlock))

}  // namespace vendrel
