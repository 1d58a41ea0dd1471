#include "intake/LineIntake.h"

#include "comments/Descriptions.h"
#include "comments/TaggedCommentRules.h"
#include "core/Ascii.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "intake/ModuleIntake.h"
#include "project/VBProject.h"

namespace vendrel {

void Block::AddLine(std::string_view Line, std::int32_t Before, std::int32_t After) try {
  const CodeLine record =
      InitialiseCodeLine(Line, State().CurrentLanguageVersion, Options().Reading);
  ParsedLine line = ParsedLine::Of(record);
  AddParsedLine(line, Before, After);
}
VENDREL_CONTEXT_AT(LineReached(), Line, Before, After, *this)

void Block::AddLine(const CodeLine& Line, std::int32_t Before, std::int32_t After) try {
  ParsedLine line = ParsedLine::Of(Line);
  AddParsedLine(line, Before, After);
}
VENDREL_CONTEXT_AT(LineReached(), trace::Parameter("Line", Line.Text), Before, After, *this)

void Block::AddParsedLine(ParsedLine& line, std::int32_t before, std::int32_t after) try {
  vendrel::Component* component = Component.Get();
  if (!component) throw VendrelError(errObjectNotSet, "the block has no component");
  LineIntake(*this, *component, line).Run(before, after);
}
VENDREL_CONTEXT_AT(LineReached(), before, after, trace::Local("LineType", line.LineType), *this)

void StoreLine(Block& block, const ParsedLine& line, std::int32_t before, std::int32_t after) {
  ModuleIntake& intake = block.Component->Intake();
  if (!block.CodeLines.IfAny())
    *block.CodeLines = CodeLines(intake.Text, intake.Language, intake.Reading);
  block.CodeLines->AddParsed(line, before, after, intake.HeldRemainder);
  intake.LineStored = true;
}

void ReportHelpContextID(Component& component, std::int32_t id) {
  if (VBProject* project = component.VBProject()) project->LoadedHelpContextID(id);
}

LineIntake::LineIntake(Block& block, Component& component, ParsedLine& line)
    : mBlock(block),
      mComponent(component),
      mIntake(component.Intake()),
      mOptions(component.Options()),
      mLine(line),
      mState(block.Intake()),
      mDotNet(State().CurrentLanguageVersion == lvVisualBasicDotNet) {}

void LineIntake::Run(std::int32_t before, std::int32_t after) {
  if (!mLine.NotInSource) ++mState.mCurrentLineIndex;
  if (!mLine.Continued) {
    SplitComment();
    if (mBlock.CurrentEnum() || mBlock.CurrentUDT() || mLine.LineType == BLANK_LINE)
      TakeInsideDeclaration();
    else
      Dispatch();
    AttachComments();
  }
  if (mLine.LineType == ATTRIBUTE_LINE && !TakeAttribute()) return;
  HandOverTaggedComments();
  StoreLine(mBlock, mLine, before, after);
}

void LineIntake::SplitComment() try {
  if (mLine.CommentPart.empty()) {
    mState.mLastTagIdentifier = {};
    mState.mLastQualifier = {};
    return;
  }
  mComment = std::make_shared<TaggedComment>();
  mComment->LineIndex = mState.mCurrentLineIndex;
  mComment->SourceLine = mIntake.PhysicalLine;
  mComment->Initialise(mLine.CommentPart);
  mState.LastTaggedComment = mComment;
  ForgetLastElementUnlessDescribable(mComment->TagIdentifier);
  ContinueTaggedComment();
  if (!mComment->TaggedCommentDef() && mComment->TagIdentifier != "##") {
    mUntagged = mLine.CommentPart;
    if (mUntagged.starts_with("##")) TellMistypedTag(mUntagged);
    mComment.reset();
  } else {
    TakeTaggedComment();
  }
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(mBlock))

// Only blocks, enumerations, their members and structures take a comment that follows them.
void LineIntake::ForgetLastElementUnlessDescribable(std::string_view tag) {
  const CodeElement* last = mComponent.LastElement.Get();
  if (!last || EqualsNoCaseAscii(tag, "##ED") || EqualsNoCaseAscii(tag, "##PD")) return;
  if (mIntake.Reading.EverySeparator && IsDeclaredOnThisLine(*last)) return;
  if (IsA<Block, EnumMember, Enumeration, UDT>(last)) return;
  mComponent.LastElement = nullptr;
}

// "Dim x As Long: x = 5 ' the count": the comment of the line is about what it declares.
bool LineIntake::IsDeclaredOnThisLine(const CodeElement& element) const {
  return mLine.NotInSource && mLine.LineType == OTHER && IsA<Variable>(&element) &&
         element.SourceLine() == mIntake.StatementLine;
}

// An ordinary comment directly behind a tagged one continues it, where the setting says so.
void LineIntake::ContinueTaggedComment() {
  if (mState.mLastTagIdentifier.empty() || !State().AutoAppendUntagged) return;
  if (mComment->TagIdentifier.starts_with("##") || mComment->TaggedCommentDef()) return;
  mComment->TagIdentifier = mState.mLastTagIdentifier.str();
  mComment->Qualifier = mState.mLastQualifier.str();
  mComment->Text = mLine.CommentPart;
  mComment->AlwaysJoinWithWhitespace = true;
}

void LineIntake::TakeTaggedComment() {
  VBProject* project = mComponent.VBProject();
  if (project && !project->NewTaggedComment.Empty())
    project->FireNewTaggedComment(mBlock, *mComment, mLine.Record());
  if (mLine.StatementPart.empty()) mLine.LineType = TAGGED_COMMENT;
  mState.mLastTagIdentifier = mComment->TagIdentifier;
  mState.mLastQualifier = mComment->Qualifier;
}

void LineIntake::HandOverTaggedComments() try {
  if (mOptions.TaggedCommentsBeforeElement) OfferTaggedComments(mComponent, mBlock);
  if (mComment) {
    const std::string& tag = mComment->TagIdentifier;
    const bool atOnce = !mLine.StatementPart.empty() || !mOptions.TaggedCommentsBeforeElement ||
                        (mBlock.Name().empty() &&
                         (EqualsNoCaseAscii(tag, "##ED") || EqualsNoCaseAscii(tag, "##PD")));
    if (atOnce)
      mBlock.ApplyTaggedComment(mComment);
    else
      mBlock.HandleTaggedComment(mComment);
  }
  if (mClearLastElement) mComponent.LastElement = nullptr;
  if (mClearTaggedCommentBuffer && mComponent.TaggedCommentBuffer.IfAny())
    mComponent.TaggedCommentBuffer.Renew();
  mState.mEnumOpen = mBlock.CurrentEnum() != nullptr;
  mState.mUDTOpen = mBlock.CurrentUDT() != nullptr;
  mState.mEventLast = mIsEvent || mFoundEventComment || (mState.mEventLast && mLine.Continued);
  if (mLine.LineType != Comment && mLine.LineType != TAGGED_COMMENT)
    mComponent.VMCommentBuffer.clear();
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(mBlock))

// Elements point at the first physical line of their statement.
std::int32_t LineIntake::AdjustedLineIndex() const {
  if (!mLine.Continuation) return mState.mCurrentLineIndex;
  const std::int32_t continuations =
      mBlock.CodeLines.IfAny() ? mBlock.CodeLines->ContinuationCount() : 0;
  return mState.mCurrentLineIndex - (continuations + 1);
}

}  // namespace vendrel
