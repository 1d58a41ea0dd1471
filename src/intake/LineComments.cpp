// Stage 3: where an untagged comment goes, and what a start line settles once it is dispatched.

#include "comments/Descriptions.h"
#include "core/Ascii.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "intake/LineIntake.h"
#include "intake/ModuleIntake.h"
#include "intake/ProcedureSources.h"
#include "model/Namespace.h"
#include "project/VBProject.h"

namespace vendrel {

void LineIntake::AttachComments() {
  if (mLine.LineType == BLANK_LINE)
    AttachAtBlankLine();
  else if (mLine.LineType == Comment)
    AttachCommentLine();
  else
    AttachAtStatement();
  AttachModuleComment();
  FinishStartLine();
}

void LineIntake::DescribeFromBuffer(CodeElement& element) {
  if (mState.CommentBuffer.empty()) return;
  AddObjectDescription(element, mState.CommentBuffer);
  mState.CommentBuffer.clear();
}

// A blank line detaches pending comments from what follows; the first one of the declarations ends
// the header of the module.
void LineIntake::AttachAtBlankLine() {
  mIntake.LeadingComment.clear();
  const BlockTypeEnum type = mBlock.BlockType();
  if (type == btDeclarations && !mState.mFoundItem) {
    DescribeFromBuffer(mComponent);
    SetLast(&mComponent);
    mClearLastElement = true;
  } else if (mBlock.IsMethod() || type == btPropertyGet || type == btPropertyLet ||
             (type == btPropertySet && !mState.FoundActualCodeInBlock)) {
    DescribeFromBuffer(mBlock);
  } else {
    SetLast(nullptr);
    mState.CommentBuffer.clear();
  }
}

namespace {
// Joins a comment line to a buffer: a line that ends in " _" goes on in the next.
void JoinComment(std::string& buffer, std::string_view text) {
  if (buffer.ends_with(" _"))
    buffer.pop_back();
  else if (!buffer.empty())
    buffer += "<crlf>";
  buffer += Trim(text);
}
}  // namespace

void LineIntake::AttachCommentLine() {
  if (mBlock.Name().empty()) {
    JoinComment(mState.CommentBuffer, mUntagged);
  } else if (mIntake.Reading.LeadingComments && mState.mEnded) {
    JoinComment(mIntake.LeadingComment, mUntagged);
  } else if (!mState.FoundActualCodeInBlock) {
    AddObjectDescription(mBlock, Trim(mUntagged));
  }
}

void LineIntake::AttachAtStatement() {
  const bool declarations = mBlock.BlockType() == btDeclarations;
  const LineTypeEnum type = mLine.LineType;
  if (type == OTHER && !declarations) mState.FoundActualCodeInBlock = true;
  CodeElement* last = mComponent.LastElement.Get();
  if (mIntake.Reading.EverySeparator && !mUntagged.empty() && last && IsDeclaredOnThisLine(*last))
    AddObjectDescription(*last, mUntagged);
  if (declarations && (type == VAR_DECLARATION || type == CONST_DECLARATION))
    mState.mFoundItem = true;
  if (IsStartLineType(type)) {
    AddDelegate();
    FindEventSource();
    DescribeFromBuffer(mBlock);
    if (!mIntake.LeadingComment.empty()) AddObjectDescription(mBlock, mIntake.LeadingComment);
    JudgeStatic();
  } else if (type == VAR_DECLARATION && !mState.CommentBuffer.empty() && mBlock.Variables.IfAny() &&
             mBlock.Variables->Count() > 0 && mOptions.UnTaggedVariables) {
    DescribeFromBuffer(*mBlock.Variables->Item(mBlock.Variables->Count()));
  }
  if (type != ATTRIBUTE_LINE && type != TAGGED_COMMENT) mIntake.LeadingComment.clear();
  if (type != ATTRIBUTE_LINE) mState.CommentBuffer.clear();
}

void LineIntake::AttachModuleComment() {
  if (mComponent.VMCommentBuffer.empty()) return;
  switch (mLine.LineType) {
    case START_FUNCTION:
    case START_SUB:
    case START_PROPERTY:
    case START_CLASS_INITIALISE:
    case START_CLASS_TERMINATE: AddObjectDescription(mBlock, mComponent.VMCommentBuffer); break;
    case VAR_DECLARATION:
      if (!mBlock.Variables.IfAny() || mBlock.Variables->Count() == 0) return;
      AddObjectDescription(*mBlock.Variables->Item(mBlock.Variables->Count()),
                           mComponent.VMCommentBuffer);
      break;
    default: return;
  }
  mComponent.VMCommentBuffer.clear();
}

// A delegate is no member of its class.
void LineIntake::AddDelegate() try {
  if (!IsDotNet() || !mBlock.IsDelegate()) return;
  Blocks& blocks = mComponent.Blocks;
  if (blocks.Count() == 0 || blocks.Last() != &mBlock) return;
  const std::shared_ptr<Block> self = blocks.Share(blocks.Count());
  if (Namespace* space = mComponent.Namespace.Get()) space->Delegates.Add(self, mBlock.Name());
  mIntake.DetachedBlock = self;
  blocks.Remove(blocks.Count());
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(mBlock))

void LineIntake::FindEventSource() {
  if (!mBlock.Interface.empty()) return;
  CodeElement* source =
      EventSourceOfName(mComponent, mBlock.Name(), mIntake.Reading.UnderscoredSources);
  if (!source) return;
  mBlock.IsEventProcedure = true;
  mBlock.EventSource = source;
}

// An absent keyword counts as position 0, in front of the name: documented, and kept.
void LineIntake::JudgeStatic() {
  if (IsDotNet()) return;
  const std::string_view statement = mLine.StatementPart;
  if (mIntake.Reading.KeywordStatic) {
    std::string_view rest = statement;
    const std::string_view first = TakeField(rest, ' ');
    mBlock.IsStatic =
        EqualsNoCaseAscii(first, "STATIC") || EqualsNoCaseAscii(TakeField(rest, ' '), "STATIC");
    return;
  }
  const std::size_t name = mBlock.Name().empty() ? statement.npos : statement.find(mBlock.Name());
  const std::size_t keyword = FindNoCaseAscii(statement, "STATIC");
  const std::size_t namePosition = name == statement.npos ? 0 : name + 1;
  const std::size_t keywordPosition = keyword == statement.npos ? 0 : keyword + 1;
  if (keywordPosition < namePosition) mBlock.IsStatic = true;
}

void LineIntake::FinishStartLine() try {
  const LineTypeEnum type = mLine.LineType;
  const bool plain = type == START_FUNCTION || type == START_SUB || type == START_PROPERTY;
  if (!plain && !(mIntake.Reading.InitialiseProcedures && IsStartLineType(type))) return;
  if (IsDotNet()) {
    if (mComponent.IsInterface || mBlock.IsAbstract) mClearLastElement = true;
  } else {
    mBlock.Parameters.Renew();
    mBlock.Parameters->Component = &mComponent;
    mBlock.Parameters->LoadStatement(mLine.StatementPart, &mBlock, true);
    SettleAccess();
  }
  SettlePropertyType();
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(mBlock))

void LineIntake::SettleAccess() {
  if (mComponent.OptionPrivate) {
    mBlock.Access = "PRIVATE";
  } else if (StartsWithNoCaseAscii(mLine.StatementPart, "PRIVATE")) {
    mBlock.Access = "PRIVATE";
  } else if (StartsWithNoCaseAscii(mLine.StatementPart, "FRIEND")) {
    mBlock.Access = "FRIEND";
    mBlock.IsFriend = true;
  } else {
    mBlock.Access = "PUBLIC";
  }
}

// The type of a property that is set comes from its last parameter.
void LineIntake::SettlePropertyType() {
  if (mBlock.BlockType() != btPropertyLet && mBlock.BlockType() != btPropertySet) return;
  if (!mBlock.Parameters.IfAny() || mBlock.Parameters->Count() == 0) return;
  const Parameter& last = *mBlock.Parameters->Item(mBlock.Parameters->Count());
  if (!last.ImplicitType)
    mBlock.ReturnType = last.VariableType;
  else
    mBlock.ReturnType =
        IsDotNet() ? std::string_view("System.Object") : mComponent.DefaultType(mBlock.Name());
}

}  // namespace vendrel
