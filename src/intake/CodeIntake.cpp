// The choice of the block that receives a line: a start line opens a block, the first declaration
// the declarations section.

#include "core/Ascii.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "intake/LineIntake.h"
#include "intake/ModuleIntake.h"
#include "model/Component.h"

namespace vendrel {
namespace {

// In an open Type or Enum everything but its end, comments, blank lines and directives is a member.
bool IsMember(const Component& component, const ModuleIntake& intake, const ParsedLine& line) {
  const Block* block = component.CurrentBlock.Get();
  return intake.Reading.MemberNames && block && (block->CurrentEnum() || block->CurrentUDT()) &&
         !EndsOpenDeclaration(line);
}

// A procedure that begins in an open Type or Enum ends it.
void CloseUnended(Component& component, const ModuleIntake& intake, ParsedLine& line) {
  Block* block = component.CurrentBlock.Get();
  if (!intake.Reading.MemberNames || !block || !(block->CurrentEnum() || block->CurrentUDT()))
    return;
  LinePassage passage(*block, component, line);
  CloseOpenDeclaration(passage);
}

// The eleven start types, and what DetectNewBlocksOnAddCode allows.
bool OpensBlock(const Component& component, const ParsedLine& line) {
  return component.Options().DetectNewBlocksOnAddCode && IsStartLineType(line.LineType);
}

// No more lines come: what was kept for them is given back.
void Rest(Block& block) {
  block.RestIntake();
  if (CodeLines* lines = block.CodeLines.IfAny(); lines && !lines->Unloaded()) lines->Shrink();
}

// What the previous block holds as a pending comment goes with the procedure that follows.
void OpenProcedure(Component& component) {
  if (Block* previous = component.CurrentBlock.Get()) {
    component.CommentBuffer = std::move(previous->Intake().CommentBuffer);
    previous->Intake().CommentBuffer.clear();
    Rest(*previous);
  }
  Block* block = component.NewBlock();
  component.CurrentBlock = block;
  block->Intake().CommentBuffer = component.CommentBuffer;
}

// Statements that the documented list of declarations leaves out.
bool IsEarlyDeclaration(const ParsedLine& line) {
  switch (line.LineType) {
    case DECLARE_STATEMENT:
    case EVENT_DECLARATION:
    case COMPILER_DIRECTIVE: return true;
    case OTHER:
      return StartsWithNoCaseAscii(line.StatementPart, "implements ") ||
             StartsWithNoCaseAscii(line.StatementPart, "def");
    default: return false;
  }
}

bool OpensDeclarations(const ModuleIntake& intake, const ParsedLine& line) {
  const bool early = intake.Reading.EarlyDeclarations;
  if (!intake.ContinuationBuffer.empty() && !early) return false;
  return IsDeclarationsLineType(line.LineType, line.StatementPart) ||
         (early && IsEarlyDeclaration(line));
}

void ChooseSection(Component& component, const ModuleIntake& intake, const ParsedLine& line) {
  if (!component.CurrentBlock) component.CurrentBlock = component.NewBlock();
  Block* current = component.CurrentBlock.Get();
  if (current->BlockType() != btAttributes || component.Blocks.Count() != 1) return;
  if (!OpensDeclarations(intake, line)) return;
  if (!component.Options().DetectNewBlocksOnAddCode) return current->SetBlockType(btDeclarations);
  Rest(*current);
  component.CurrentBlock = component.NewBlock(btDeclarations);
}

void FlushContinuations(Component& component, ModuleIntake& intake) try {
  std::vector<PendingLine> pending;
  pending.swap(intake.ContinuationBuffer);
  for (PendingLine& line : pending) component.CurrentBlock.Get()->AddParsedLine(line.Line);
  pending.clear();
  intake.ContinuationBuffer.swap(pending);  // keeps the room
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(component))

}  // namespace

bool OpensAnyBlock(const Component& component, const ModuleIntake& intake, const ParsedLine& line) {
  return OpensBlock(component, line) || OpensDeclarations(intake, line);
}

void AddParsedCode(Component& component, ParsedLine& line, bool addLine) try {
  ModuleIntake& intake = component.Intake();
  const bool opens = OpensBlock(component, line) && !IsMember(component, intake, line);
  if (opens) {
    CloseUnended(component, intake, line);
    OpenProcedure(component);
  } else if (intake.ContinuationBuffer.empty() || intake.Reading.EarlyDeclarations) {
    ChooseSection(component, intake, line);
  }
  if (!intake.ContinuationBuffer.empty()) FlushContinuations(component, intake);
  if (addLine) component.CurrentBlock.Get()->AddParsedLine(line);
  if (IsStartLineType(line.LineType)) intake.Language.ProcedureBegan(component);
}
VENDREL_CONTEXT_AT(LineReached(), component, addLine, trace::Local("LineType", line.LineType))

void Component::AddCode(std::string_view Source, bool AddLine) try {
  const Workspace::Use use(Options().Workspace());
  if (Source.find_first_of("\r\n") != kNotFound) {
    if (AddLine) return AddLinesOfCode(*this, Source);
    while (!Source.empty()) AddCode(TakeLine(Source), false);
    return;
  }
  const CodeLine record =
      InitialiseCodeLine(Source, State().CurrentLanguageVersion, Options().Reading);
  ParsedLine line = ParsedLine::Of(record);
  AddParsedCode(*this, line, AddLine);
}
VENDREL_CONTEXT_AT(LineReached(), Source, AddLine, *this)

void Component::AddCode(const CodeLine& Source, bool AddLine) try {
  const Workspace::Use use(Options().Workspace());
  ParsedLine line = ParsedLine::Of(Source);
  AddParsedCode(*this, line, AddLine);
}
VENDREL_CONTEXT_AT(LineReached(), trace::Parameter("Line", Source.Text), AddLine, *this)

}  // namespace vendrel
