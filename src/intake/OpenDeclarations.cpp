// Lines inside an open Enum or Type statement, and blank lines.

#include <string>

#include "core/Ascii.h"
#include "diagnostics/Diagnostic.h"
#include "diagnostics/VendrelError.h"
#include "intake/LineIntake.h"
#include "intake/ModuleIntake.h"
#include "project/VBProject.h"

namespace vendrel {

void LineIntake::TakeInsideDeclaration() {
  if (mLine.LineType == END_TYPE && mState.mUDTOpen) return CloseStructure();
  if (mLine.LineType == END_ENUM && mState.mEnumOpen) return CloseEnumeration();
  if (mLine.StatementPart.empty() || mLine.LineType == BLANK_LINE ||
      mLine.StatementPart.front() == '#')
    return;
  TakeMember();
  mLine.LineType = OTHER;
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
    SetLast(mBlock.CurrentUDT()->Members.Item(mBlock.CurrentUDT()->Members.Count()));
  }
} catch (VendrelError& failure) {
  failure.AddContext("LineIntake.TakeMember", "OpenDeclarations", LineReached()).Of(mBlock);
  throw;
}

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
} catch (VendrelError& failure) {
  failure.AddContext("LineIntake.CloseStructure", "OpenDeclarations", LineReached()).Of(mBlock);
  throw;
}

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
} catch (VendrelError& failure) {
  failure.AddContext("LineIntake.CloseEnumeration", "OpenDeclarations", LineReached()).Of(mBlock);
  throw;
}

}  // namespace vendrel
