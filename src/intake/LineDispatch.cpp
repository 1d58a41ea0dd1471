// Stage 2: what each type of line does. One function a type of line makes the element and hangs it
// where it belongs, in this order, on which others rest: place and parent first (a failure while
// the statement is read then names them), the comments read in front of it, the statement itself,
// and last `SetLast`, so that comments behind it find it.

#include "comments/AppendDescription.h"
#include "core/Ascii.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "intake/DeclarationText.h"
#include "intake/Declarators.h"
#include "intake/LineIntake.h"
#include "intake/ModuleIntake.h"
#include "project/ModulesAhead.h"
#include "project/VBProject.h"

namespace vendrel {
namespace {

void Define(LinePassage& p) {
  PrepareLines(p.Block);
  p.Block.DefinitionLine = p.Line.StatementPart;
}

void TakeProcedure(LinePassage& p, BlockTypeEnum type) try {
  p.Block.SetBlockType(type);
  p.Block.SetSourceLine(p.Intake.StatementLine);
  p.Language.ReadSignature(p);
  Define(p);
  p.SetLast(&p.Block);
}
VENDREL_CONTEXT_AT(LineReached(), type, trace::Me(p.Block))

// These keep the name that the language gives them, in the spelling of the type of line: in the
// classic reading their statement is not read at all, so they have neither access nor parameters.
void TakeInitialiser(LinePassage& p, BlockTypeEnum type, std::string_view name) try {
  p.Block.SetBlockType(type);
  p.Block.SetSourceLine(p.Intake.StatementLine);
  if (p.Reading.InitialiseProcedures) {
    p.Language.ReadSignature(p);
    p.Block.ReturnType = {};
    Define(p);
  } else {
    p.Block.SetName(name);
  }
  p.SetLast(&p.Block);
}
VENDREL_CONTEXT_AT(LineReached(), type, name, trace::Me(p.Block))

void TakeProperty(LinePassage& p) try {
  p.Block.SetSourceLine(p.Intake.StatementLine);
  p.Language.ReadProperty(p);
  Define(p);
  p.SetLast(&p.Block);
  p.Component.AddPropertyBlockToPropertyGroup(&p.Block);
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(p.Block))

// The block still receives lines until the next one opens: comments in front of the next procedure
// come through it. `mEnded` tells the stages behind that they do not describe this one any more.
void TakeEnd(LinePassage& p) try {
  p.State.mEnded = true;
  if (p.Options.TaggedCommentsBeforeElement) {
    p.ClearLastElement = p.ClearTaggedCommentBuffer = true;
    p.Block.SetCompletelyLoaded();
  }
  if (p.Line.LineType == END_PROPERTY) p.Language.PropertyEnds(p);
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(p.Block))

void TakeVariables(LinePassage& p) try {
  if (!p.Options.LoadBlocksOnly || p.Language.DeclaresField(p)) {
    DeclaratorReader reader(p.Line.StatementPart, p.Rules());
    while (!reader.AtEnd()) {
      std::shared_ptr<Variable> variable = NewVariable(p);
      reader.Read(*variable);
      AddVariable(p, std::move(variable));
    }
  }
  p.State.FoundActualCodeInBlock = true;
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(p.Block))

void TakeConstants(LinePassage& p) try {
  ConstantReader reader(p.Line.StatementPart, p.Reading.WholeDefaults);
  while (!reader.AtEnd()) {
    auto constant = std::make_shared<Constant>();
    reader.Read(*constant);
    p.Language.SettleTypeName(constant->TypeName);
    AddConstant(p, p.Block, std::move(constant));
  }
  p.State.FoundActualCodeInBlock = true;
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(p.Block))

void TakeEnumeration(LinePassage& p) try {
  auto enumeration = std::make_shared<Enumeration>();
  enumeration->LineIndex = p.StatementIndex();
  enumeration->SetSourceLine(p.Intake.StatementLine);
  enumeration->Component = &p.Component;
  ReadEnumeration(*enumeration, p.Line.StatementPart, p.Rules());
  p.Block.CurrentEnum() = enumeration;
  p.DescribeFromBuffer(*enumeration);
  p.SetLast(enumeration.get());
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(p.Block))

void TakeStructure(LinePassage& p) try {
  auto structure = std::make_shared<UDT>();
  structure->LineIndex = p.StatementIndex();
  structure->SetSourceLine(p.Intake.StatementLine);
  structure->Component = &p.Component;
  ReadStructure(*structure, p.Line.StatementPart, p.Rules());
  p.Block.CurrentUDT() = structure;
  p.DescribeFromBuffer(*structure);
  p.SetLast(structure.get());
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(p.Block))

void TakeEvent(LinePassage& p) try {
  auto event = std::make_shared<EventDeclaration>();
  event->LineIndex = p.StatementIndex();
  event->SetSourceLine(p.Intake.StatementLine);
  event->Component = &p.Component;
  p.DescribeFromBuffer(*event);
  if (!p.Component.VMCommentBuffer.empty()) {
    AddObjectDescription(*event, p.Component.VMCommentBuffer, p.Language.Language());
    p.Component.VMCommentBuffer.clear();
  }
  p.Language.ReadEvent(*event, p.Line.StatementPart, p.Reading);
  p.SetLast(event.get());
  const std::string name = event->Name;
  p.Component.EventDeclarations.Add(std::move(event), name);
  p.Line.EventIndex = static_cast<std::int16_t>(p.Component.EventDeclarations.Count());
  p.IsEvent = true;
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(p.Block))

// One library of the project for all Declares that name it, whatever module they stand in. Of a
// name that several modules declare, the library keeps the first.
void TieToLibrary(VBProject& project, const std::shared_ptr<DeclareDeclaration>& declare,
                  bool isShared) {
  if (!project.Libraries->HasKey(declare->Library)) {
    auto library = std::make_shared<Library>();
    library->Name = declare->Library.str();
    library->SetVBProject(&project);
    project.Libraries->Add(std::move(library), declare->Library);
  }
  Library* library = project.Libraries->Item(declare->Library.view());
  if (!library) return;  // a Declare without a library name
  const bool first = !library->DeclareDeclarations.HasKey(declare->Name);
  if (first) library->DeclareDeclarations.Add(declare, declare->Name);
  if (first || isShared) declare->LibraryObject = library;
}

void TakeDeclare(LinePassage& p) try {
  auto declare = std::make_shared<DeclareDeclaration>();
  declare->LineIndex = p.StatementIndex();
  declare->SetSourceLine(p.Intake.StatementLine);
  declare->Component = &p.Component;
  ReadDeclare(*declare, p.Line.StatementPart, p.Rules());
  if (p.Reading.LeadingComments) p.DescribeFromBuffer(*declare);
  p.SetLast(declare.get());
  p.Component.Declarations.Add(declare, declare->Name);
  if (VBProject* project = p.Component.VBProject())
    ChangeProject([project, declare, isShared = p.Reading.SharedLibraries] {
      TieToLibrary(*project, declare, isShared);
    });
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(p.Block))

}  // namespace

std::shared_ptr<Variable> NewVariable(const LinePassage& p) {
  auto variable = std::make_shared<Variable>();
  // The links of the one above are mostly its own.
  if (const Variables* above = p.Block.Variables.IfAny(); above && above->Count() > 0)
    variable->StandBeside(*above->Item(above->Count()));
  variable->Parent = &p.Component;
  variable->LinkToProject(p.Block.ProjectLink());
  variable->Component = &p.Component;
  variable->LineIndex = p.StatementIndex();
  variable->SetSourceLine(p.Intake.StatementLine);
  return variable;
}

void AddVariable(LinePassage& p, std::shared_ptr<Variable> variable, bool isScoped) try {
  // Of several declarators only the first gets the comment.
  if (!p.Untagged.empty()) {
    AddObjectDescription(*variable, p.Untagged, p.Language.Language());
    p.Untagged = {};
  } else {
    p.DescribeFromBuffer(*variable);
  }
  if (variable->TypeName.empty())
    variable->TypeName = p.Language.ImplicitType(&p.Component, variable->Name);
  if (p.Component.OptionPrivate) variable->Access = "PRIVATE";
  p.SetLast(variable.get());
  const std::string name = variable->Name;
  p.ReportOddName(*variable, name, variable->TypeName);
  Block& owner = p.Language.OwnerOfVariable(p);
  const bool isOfProcedure = &owner == &p.Block && !p.Block.Name().empty();
  variable->Procedure = isOfProcedure ? &p.Block : nullptr;
  const bool standsBeside = isScoped && !owner.Name().empty() && owner.Variables->HasKey(name);
  owner.Variables->Add(std::move(variable), standsBeside ? std::string() : name);
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(p.Block))

void AddConstant(LinePassage& p, Block& owner, std::shared_ptr<Constant> constant) {
  // The links of the one above are mostly its own.
  if (const Constants* above = owner.Constants.IfAny(); above && above->Count() > 0)
    constant->StandBeside(*above->Item(above->Count()));
  constant->Component = &p.Component;
  constant->Procedure = owner.Name().empty() ? nullptr : &owner;
  constant->SetSourceLine(p.Intake.StatementLine);
  if (p.Reading.LeadingComments) p.DescribeFromBuffer(*constant);
  p.SetLast(constant.get());
  const std::string name = constant->Name;
  owner.Constants->Add(std::move(constant), name);
}

void Dispatch(LinePassage& p) {
  if (p.Language.TakeOwnStatement(p)) return;
  switch (p.Line.LineType) {
    case START_FUNCTION: return TakeProcedure(p, btFunction);
    case START_SUB: return TakeProcedure(p, btSub);
    case START_PROPERTY: return TakeProperty(p);
    case START_CLASS_INITIALISE: return TakeInitialiser(p, btClassInitialize, "Class_Initialize");
    case START_CLASS_TERMINATE: return TakeInitialiser(p, btClassTerminate, "Class_Terminate");
    case FORM_LOAD: return TakeInitialiser(p, btFormLoad, "Form_Load");
    case FORM_UNLOAD: return TakeInitialiser(p, btFormUnload, "Form_Unload");
    case START_USERCONTROL_INITIALISE:
      return TakeInitialiser(p, btUserControlInitialise, "Usercontrol_Initialize");
    case START_USERCONTROL_TERMINATE:
      return TakeInitialiser(p, btUserControlTerminate, "Usercontrol_Terminate");
    case START_USERDOCUMENT_INITIALISE:
      return TakeInitialiser(p, btUserDocumentInitialise, "Userdocument_Initialize");
    case START_USERDOCUMENT_TERMINATE:
      return TakeInitialiser(p, btUserDocumentTerminate, "Userdocument_Terminate");
    case END_FUNCTION:
    case END_SUB:
    case END_PROPERTY:
    case END_CLASS_INITIALISE:
    case END_CLASS_TERMINATE:
    case END_ENUM:
    case END_TYPE: return TakeEnd(p);
    case VAR_DECLARATION: return TakeVariables(p);
    case CONST_DECLARATION: return TakeConstants(p);
    case START_ENUM: return TakeEnumeration(p);
    case START_TYPE: return TakeStructure(p);
    case EVENT_DECLARATION: return TakeEvent(p);
    case DECLARE_STATEMENT: return TakeDeclare(p);
    case START_PROPERTY_SUBBLOCK: return;
    default: break;
  }
  if (p.Block.BlockType() == btDeclarations)
    TakeSectionStatement(p);
  else if (p.Reading.LocalStatics && p.Line.LineType == OTHER && !p.Block.Name().empty() &&
           StartsWithNoCaseAscii(p.Line.StatementPart, "STATIC "))
    TakeVariables(p);
}

}  // namespace vendrel
