// Stage 2: what each type of line does.

#include "comments/Descriptions.h"
#include "core/Ascii.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "intake/Declarators.h"
#include "intake/LineIntake.h"
#include "intake/ModuleIntake.h"
#include "project/NetResolver.h"
#include "project/VBProject.h"
#include "text/Names.h"

namespace vendrel {

void LineIntake::Dispatch() {
  switch (mLine.LineType) {
    case START_FUNCTION: return TakeProcedure(btFunction);
    case START_SUB: return TakeProcedure(btSub);
    case START_PROPERTY: return TakeProperty();
    case START_CLASS_INITIALISE: return TakeInitialiser(btClassInitialize, "Class_Initialize");
    case START_CLASS_TERMINATE: return TakeInitialiser(btClassTerminate, "Class_Terminate");
    case FORM_LOAD: return TakeInitialiser(btFormLoad, "Form_Load");
    case FORM_UNLOAD: return TakeInitialiser(btFormUnload, "Form_Unload");
    case START_USERCONTROL_INITIALISE:
      return TakeInitialiser(btUserControlInitialise, "Usercontrol_Initialize");
    case START_USERCONTROL_TERMINATE:
      return TakeInitialiser(btUserControlTerminate, "Usercontrol_Terminate");
    case START_USERDOCUMENT_INITIALISE:
      return TakeInitialiser(btUserDocumentInitialise, "Userdocument_Initialize");
    case START_USERDOCUMENT_TERMINATE:
      return TakeInitialiser(btUserDocumentTerminate, "Userdocument_Terminate");
    case END_FUNCTION:
    case END_SUB:
    case END_PROPERTY:
    case END_CLASS_INITIALISE:
    case END_CLASS_TERMINATE:
    case END_ENUM:
    case END_TYPE: return TakeEnd();
    case VAR_DECLARATION: return TakeVariables();
    case CONST_DECLARATION: return TakeConstants();
    case START_ENUM: return TakeEnumeration();
    case START_TYPE: return TakeStructure();
    case EVENT_DECLARATION: return TakeEvent();
    case DECLARE_STATEMENT: return TakeDeclare();
    case INHERITS_STATEMENT: return TakeInherits();
    case IMPORTS_STATEMENT: return TakeImports();
    case START_PROPERTY_SUBBLOCK: return;
    default: break;
  }
  if (mBlock.BlockType() == btDeclarations)
    TakeSectionStatement();
  else if (mIntake.Reading.LocalStatics && mLine.LineType == OTHER && !mBlock.Name().empty() &&
           StartsWithNoCaseAscii(mLine.StatementPart, "STATIC "))
    TakeVariables();
}

void LineIntake::TakeProcedure(BlockTypeEnum type) try {
  mBlock.SetBlockType(type);
  mBlock.SetSourceLine(mIntake.StatementLine);
  ReadSignature();
  mBlock.DefinitionLine = mLine.StatementPart;
  SetLast(&mBlock);
}
VENDREL_CONTEXT_AT(LineReached(), type, trace::Me(mBlock))

void LineIntake::TakeInitialiser(BlockTypeEnum type, std::string_view name) try {
  mBlock.SetBlockType(type);
  mBlock.SetSourceLine(mIntake.StatementLine);
  if (mIntake.Reading.InitialiseProcedures) {
    ReadSignature();
    mBlock.ReturnType = {};
    mBlock.DefinitionLine = mLine.StatementPart;
  } else {
    mBlock.SetName(name);
  }
  SetLast(&mBlock);
}
VENDREL_CONTEXT_AT(LineReached(), type, name, trace::Me(mBlock))

void LineIntake::TakeEnd() try {
  mState.mEnded = true;
  if (mOptions.TaggedCommentsBeforeElement) {
    mClearLastElement = mClearTaggedCommentBuffer = true;
    mBlock.SetCompletelyLoaded();
  }
  if (mLine.LineType == END_PROPERTY && IsDotNet()) TakeDotNetPropertyEnd();
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(mBlock))

// The one Property statement of VB.NET stands for a get and a set.
void LineIntake::TakeDotNetPropertyEnd() {
  if (mBlock.PropertyType == ptRead) {
    mBlock.SetBlockType(btPropertyGet);
  } else if (mBlock.PropertyType == ptReadWrite) {
    auto setter = std::make_shared<Block>();
    setter->Component = &mComponent;
    setter->SetVBProject(mBlock.Project());
    setter->SetName(mBlock.Name());
    setter->Access = mBlock.Access;
    setter->PropertyType = mBlock.PropertyType;
    setter->SetBlockType(btPropertySet);
    mComponent.AddPropertyBlockToPropertyGroup(setter.get());
    mBlock.SetSetter(std::move(setter));
  } else {
    mBlock.SetBlockType(btPropertySet);
  }
}

void LineIntake::TakeVariables() try {
  const bool module = mBlock.BlockType() == btDeclarations ||
                      (IsDotNet() && (mBlock.Name().empty() || mBlock.CompletelyLoaded()));
  if (!mOptions.LoadBlocksOnly || module) {
    DeclaratorReader reader(mLine.StatementPart, mIntake.Reading);
    while (!reader.AtEnd()) {
      auto variable = std::make_shared<Variable>();
      variable->Parent = &mComponent;
      variable->SetVBProject(mBlock.Project());
      variable->Component = &mComponent;
      variable->LineIndex = AdjustedLineIndex();
      variable->SetSourceLine(mIntake.StatementLine);
      reader.Read(*variable);
      AddVariable(std::move(variable));
    }
  }
  mState.FoundActualCodeInBlock = true;
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(mBlock))

void LineIntake::AddVariable(std::shared_ptr<Variable> variable) try {
  // Of several declarators only the first gets the comment.
  if (!mUntagged.empty()) {
    AddObjectDescription(*variable, mUntagged);
    mUntagged = {};
  } else {
    DescribeFromBuffer(*variable);
  }
  if (variable->TypeName.empty())
    variable->TypeName =
        IsDotNet() ? std::string_view("System.Object") : mComponent.DefaultType(variable->Name);
  if (mComponent.OptionPrivate) variable->Access = "PRIVATE";
  SetLast(variable.get());
  const std::string name = variable->Name;
  TellOddName(*variable, name, variable->TypeName);
  if (IsDotNet() && !mBlock.Name().empty() && mBlock.CompletelyLoaded())
    mComponent.BlockOfType(btDeclarations, true)->Variables->Add(std::move(variable), name);
  else {
    if (!mBlock.Name().empty()) variable->Procedure = &mBlock;
    mBlock.Variables->Add(std::move(variable), name);
  }
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(mBlock))

// What the complete reading gives no more; should a line bring it about, it is told.
void LineIntake::TellOddName(const CodeElement& element, std::string_view name,
                             std::string_view type) const {
  if (!mIntake.Reading.EverySeparator) return;
  const bool odd = name.empty() || IsDigitAscii(name.front()) ||
                   name.find_first_of("()[]:,") != std::string_view::npos || type.ends_with(':');
  if (odd) Tell(DiagnosticCode::OddName, {element.ClassName(), name});
}

void LineIntake::TakeConstants() try {
  ConstantReader reader(mLine.StatementPart, mIntake.Reading.WholeDefaults);
  while (!reader.AtEnd()) {
    auto constant = std::make_shared<Constant>();
    constant->Component = &mComponent;
    if (!mBlock.Name().empty()) constant->Procedure = &mBlock;
    constant->SetSourceLine(mIntake.StatementLine);
    reader.Read(*constant);
    if (IsDotNet()) constant->TypeName = DotNetType(constant->TypeName);
    if (mIntake.Reading.LeadingComments) DescribeFromBuffer(*constant);
    SetLast(constant.get());
    const std::string name = constant->Name;
    mBlock.Constants->Add(std::move(constant), name);
  }
  mState.FoundActualCodeInBlock = true;
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(mBlock))

void LineIntake::TakeEnumeration() try {
  auto enumeration = std::make_shared<Enumeration>();
  enumeration->LineIndex = AdjustedLineIndex();
  enumeration->SetSourceLine(mIntake.StatementLine);
  enumeration->Component = &mComponent;
  enumeration->Initialise(mLine.StatementPart);
  mBlock.CurrentEnum() = enumeration;
  DescribeFromBuffer(*enumeration);
  SetLast(enumeration.get());
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(mBlock))

void LineIntake::TakeStructure() try {
  auto structure = std::make_shared<UDT>();
  structure->LineIndex = AdjustedLineIndex();
  structure->SetSourceLine(mIntake.StatementLine);
  structure->Component = &mComponent;
  structure->Initialise(mLine.StatementPart);
  mBlock.CurrentUDT() = structure;
  DescribeFromBuffer(*structure);
  SetLast(structure.get());
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(mBlock))

void LineIntake::TakeEvent() try {
  auto event = std::make_shared<EventDeclaration>();
  event->LineIndex = AdjustedLineIndex();
  event->SetSourceLine(mIntake.StatementLine);
  event->Component = &mComponent;
  DescribeFromBuffer(*event);
  if (!mComponent.VMCommentBuffer.empty()) {
    AddObjectDescription(*event, mComponent.VMCommentBuffer);
    mComponent.VMCommentBuffer.clear();
  }
  event->Initialise(mLine.StatementPart);
  SetLast(event.get());
  const std::string name = event->Name;
  mComponent.EventDeclarations.Add(std::move(event), name);
  mLine.EventIndex = static_cast<std::int16_t>(mComponent.EventDeclarations.Count());
  mIsEvent = true;
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(mBlock))

void LineIntake::TakeDeclare() try {
  auto declare = std::make_shared<DeclareDeclaration>();
  declare->LineIndex = AdjustedLineIndex();
  declare->SetSourceLine(mIntake.StatementLine);
  declare->Component = &mComponent;
  declare->InitialiseFrom(mLine.StatementPart);
  if (mIntake.Reading.LeadingComments) DescribeFromBuffer(*declare);
  SetLast(declare.get());
  mComponent.Declarations.Add(declare, declare->Name);
  VBProject* project = mComponent.VBProject();
  if (!project) return;
  if (!project->Libraries->HasKey(declare->Library)) {
    auto library = std::make_shared<Library>();
    library->Name = declare->Library.str();
    library->SetVBProject(project);
    project->Libraries->Add(std::move(library), declare->Library);
  }
  Library* library = project->Libraries->Item(declare->Library.view());
  if (!library) return;  // a Declare without a library name
  const bool first = !library->DeclareDeclarations.HasKey(declare->Name);
  if (first) library->DeclareDeclarations.Add(declare, declare->Name);
  if (first || mIntake.Reading.SharedLibraries) declare->LibraryObject = library;
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(mBlock))

void LineIntake::TakeInherits() try {
  std::string_view rest = mLine.StatementPart;
  TakeField(rest, ' ');
  rest = Trim(rest);
  if (!mComponent.IsInterface || rest.find(',') == std::string_view::npos) {
    mComponent.InheritsFrom = rest;
    return;
  }
  while (!rest.empty()) mComponent.netCreateImplementedInterface(Trim(TakeField(rest, ',')));
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(mBlock))

void LineIntake::TakeImports() try {
  std::string_view rest = mLine.StatementPart;
  TakeField(rest, ' ');
  VBProject* project = mComponent.VBProject();
  if (NetResolver* resolver = project ? project->NetResolver() : nullptr)
    resolver->addnamespace(TakeField(rest, ' '));
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(mBlock))

}  // namespace vendrel
