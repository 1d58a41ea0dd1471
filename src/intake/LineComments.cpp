// Stage 3: where an untagged comment goes, and what a start line settles once it is dispatched.

#include "comments/AppendDescription.h"
#include "core/Ascii.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "intake/LineIntake.h"
#include "intake/ModuleIntake.h"
#include "intake/ProcedureSources.h"
#include "model/Namespace.h"
#include "project/VBProject.h"

namespace vendrel {
namespace {

// A blank line detaches pending comments from what follows; the first one of the declarations ends
// the header of the module.
void AttachAtBlankLine(LinePassage& p) {
  p.Intake.LeadingComment.clear();
  const BlockTypeEnum type = p.Block.BlockType();
  if (type == btDeclarations && !p.State.mFoundItem) {
    p.DescribeFromBuffer(p.Component);
    p.SetLast(&p.Component);
    p.ClearLastElement = true;
  } else if (p.Block.IsMethod() || type == btPropertyGet || type == btPropertyLet ||
             (type == btPropertySet && !p.State.FoundActualCodeInBlock)) {
    p.DescribeFromBuffer(p.Block);
  } else {
    p.SetLast(nullptr);
    p.State.CommentBuffer.clear();
  }
}

// Joins a comment line to a buffer: a line that ends in " _" goes on in the next.
void JoinComment(std::string& buffer, std::string_view text) {
  if (buffer.ends_with(" _"))
    buffer.pop_back();
  else if (!buffer.empty())
    buffer += "<crlf>";
  buffer += Trim(text);
}

}  // namespace

void AttachCommentLine(Block& block, ModuleIntake& intake, std::string_view comment) {
  Block::IntakeState& state = block.Intake();
  if (block.Name().empty()) {
    JoinComment(state.CommentBuffer, comment);
  } else if (intake.Reading.LeadingComments && state.mEnded) {
    JoinComment(intake.LeadingComment, comment);
  } else if (!state.FoundActualCodeInBlock) {
    AddObjectDescription(block, Trim(comment), intake.Language.Language());
  }
}

namespace {

void FindEventSource(LinePassage& p) {
  if (!p.Block.Interface.empty()) return;
  CodeElement* source =
      EventSourceOfName(p.Component, p.Block.Name(), p.Reading.UnderscoredSources);
  if (!source) return;
  p.Block.IsEventProcedure = true;
  p.Block.EventSource = source;
}

void AttachAtStatement(LinePassage& p) {
  const bool declarations = p.Block.BlockType() == btDeclarations;
  const LineTypeEnum type = p.Line.LineType;
  if (type == OTHER && !declarations) p.State.FoundActualCodeInBlock = true;
  CodeElement* last = p.Component.LastElement.Get();
  if (p.Reading.EverySeparator && !p.Untagged.empty() && last && p.Declared(*last))
    AddObjectDescription(*last, p.Untagged, p.Language.Language());
  if (declarations && (type == VAR_DECLARATION || type == CONST_DECLARATION))
    p.State.mFoundItem = true;
  if (IsStartLineType(type)) {
    p.Language.ProcedureBegins(p);
    FindEventSource(p);
    p.DescribeFromBuffer(p.Block);
    if (!p.Intake.LeadingComment.empty())
      AddObjectDescription(p.Block, p.Intake.LeadingComment, p.Language.Language());
  } else if (type == VAR_DECLARATION && !p.State.CommentBuffer.empty() &&
             p.Block.Variables.IfAny() && p.Block.Variables->Count() > 0 &&
             p.Options.UnTaggedVariables) {
    p.DescribeFromBuffer(*p.Block.Variables->Item(p.Block.Variables->Count()));
  }
  if (type != ATTRIBUTE_LINE && type != TAGGED_COMMENT) p.Intake.LeadingComment.clear();
  if (type != ATTRIBUTE_LINE) p.State.CommentBuffer.clear();
}

void AttachModuleComment(LinePassage& p) {
  if (p.Component.VMCommentBuffer.empty()) return;
  switch (p.Line.LineType) {
    case START_FUNCTION:
    case START_SUB:
    case START_PROPERTY:
    case START_CLASS_INITIALISE:
    case START_CLASS_TERMINATE:
      AddObjectDescription(p.Block, p.Component.VMCommentBuffer, p.Language.Language());
      break;
    case VAR_DECLARATION:
      if (!p.Block.Variables.IfAny() || p.Block.Variables->Count() == 0) return;
      AddObjectDescription(*p.Block.Variables->Item(p.Block.Variables->Count()),
                           p.Component.VMCommentBuffer, p.Language.Language());
      break;
    default: return;
  }
  p.Component.VMCommentBuffer.clear();
}

// The type of a property that is set comes from its last parameter.
void SettlePropertyType(LinePassage& p) {
  if (p.Block.BlockType() != btPropertyLet && p.Block.BlockType() != btPropertySet) return;
  if (!p.Block.Parameters.IfAny() || p.Block.Parameters->Count() == 0) return;
  const Parameter& last = *p.Block.Parameters->Item(p.Block.Parameters->Count());
  p.Block.ReturnType =
      last.ImplicitType ? p.Language.ImplicitType(&p.Component, p.Block.Name()) : last.VariableType;
}

void FinishStartLine(LinePassage& p) try {
  const LineTypeEnum type = p.Line.LineType;
  const bool plain = type == START_FUNCTION || type == START_SUB || type == START_PROPERTY;
  if (!plain && !(p.Reading.InitialiseProcedures && IsStartLineType(type))) return;
  p.Language.SettleProcedure(p);
  SettlePropertyType(p);
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(p.Block))

}  // namespace

void AttachComments(LinePassage& p) {
  if (p.Line.LineType == BLANK_LINE)
    AttachAtBlankLine(p);
  else if (p.Line.LineType == Comment)
    AttachCommentLine(p.Block, p.Intake, p.Untagged);
  else
    AttachAtStatement(p);
  AttachModuleComment(p);
  FinishStartLine(p);
}

}  // namespace vendrel
