#include "intake/vb6/PlainLines.h"

#include <utility>

#include "intake/LineIntake.h"
#include "intake/ModuleIntake.h"
#include "model/Component.h"
#include "model/TaggedComment.h"

namespace vendrel {
namespace {

// No line waits for another one.
bool NothingIsOpen(const ModuleIntake& intake) {
  return !intake.PreviousContinued && !intake.PreviousMoreLines && !intake.InOneLineProcedure &&
         intake.ContinuationBuffer.empty();
}

// No comment waits for its element, but for those directly above the next line.
bool NoCommentWaits(const Component& component, const Block::IntakeState& state) {
  const TaggedComments* waiting = component.TaggedCommentBuffer.IfAny();
  return component.VMCommentBuffer.empty() && (!waiting || waiting->Count() == 0) &&
         state.CommentBuffer.empty() && state.mLastTagIdentifier.empty() &&
         state.mLastQualifier.empty();
}

}  // namespace

PlainLines::PlainLines(Component& component, ModuleIntake& intake)
    : mComponent(component), mIntake(intake), mRules(intake.Reading) {}

// In a false branch lines are stored as they are, whatever block they stand in.
bool PlainLines::LiesInFalseBranch() const {
  return mIntake.Conditions.Ignore() && KeepsDirectives(mComponent, mIntake) &&
         NothingIsOpen(mIntake) && mComponent.CurrentBlock.Get()->CodeLines.IfAny();
}

bool PlainLines::IsQuiet() const {
  if (mIntake.Conditions.Ignore()) return false;
  Block& block = *mComponent.CurrentBlock.Get();
  if (block.Name().empty() || !(block.IsMethod() || block.IsPropertyType())) return false;
  const Block::IntakeState& state = block.Intake();
  return NothingIsOpen(mIntake) && NoCommentWaits(mComponent, state) && !state.CurrentEnum &&
         !state.CurrentUDT && !state.mEnumOpen && !state.mUDTOpen && !state.mEventLast &&
         block.CodeLines.IfAny();
}

void PlainLines::Look() {
  if (mBlock != mComponent.CurrentBlock.Get()) Settle();
  mBlock = nullptr;
  if (!mIntake.TakesPlainLines || mIntake.Language.Language() != lvVisualBasic5or6) return;
  if (!mComponent.CurrentBlock) return;
  mIsLeftOut = LiesInFalseBranch();
  if (!mIsLeftOut && !IsQuiet()) return;
  mBlock = mComponent.CurrentBlock.Get();
  // A blank line behind the code of a Property Set makes the module forget its last element.
  mTakesBlanks = mBlock->BlockType() != btPropertySet;
}

// A comment may be a tag.
bool PlainLines::MayTake(const PlainLine& plain) const {
  if (mIsLeftOut) return true;
  return !plain.Comment.starts_with("##") && (plain.Type != BLANK_LINE || mTakesBlanks);
}

bool PlainLines::Take(std::string_view text) {
  if (!mBlock || std::exchange(mNextIsOdd, false)) return false;
  const std::optional<PlainLine> plain = PlainLineOf(text, mRules, mBuffer);
  if (!plain || !MayTake(*plain)) return false;
  Store(text, *plain);
  return true;
}

std::size_t PlainLines::TakeRun(std::string_view rest, const LineEnds& ends) {
  if (!mBlock || !ends.AreAlike()) return 0;
  std::size_t taken = 0;
  GlancedLine glanced;
  while (GlanceAtLine(rest.substr(taken), glanced)) {
    const std::optional<PlainLine> plain =
        PlainLineOf(glanced.Line, glanced.Glance, mRules, mBuffer);
    mNextIsOdd = !plain || !MayTake(*plain);
    if (mNextIsOdd) break;
    ++mIntake.PhysicalLine;
    ++mComponent.LinesAlreadyRead;
    Store(glanced.Line, *plain);
    taken += glanced.Bytes;
  }
  return taken;
}

void PlainLines::Store(std::string_view text, const PlainLine& plain) {
  if (!mIsLeftOut) TakeNote(plain);
  mBlock->CodeLines->AppendPlain(text, plain.Type);
  if (!mIsLeftOut && IsEndLineType(plain.Type)) EndProcedure();
}

// What the stages would note of the line.
void PlainLines::TakeNote(const PlainLine& plain) {
  Block::IntakeState& state = mBlock->Intake();
  ++state.mCurrentLineIndex;
  if (!plain.Comment.empty()) KeepComment(plain.Comment);
  if (plain.Type == OTHER) state.FoundActualCodeInBlock = true;
  if (plain.Type == Comment)
    AttachCommentLine(*mBlock, mIntake, plain.Comment);
  else
    mIntake.LeadingComment.clear();
}

void PlainLines::KeepComment(std::string_view comment) {
  mCommented = mBlock;
  mComment = comment;
  mCommentIndex = mBlock->Intake().mCurrentLineIndex;
  mCommentLine = mIntake.PhysicalLine;
  ForgetUndescribable(mComponent);
}

// No comment waits that would now be dropped.
void PlainLines::EndProcedure() {
  mBlock->Intake().mEnded = true;
  if (!mComponent.Options().TaggedCommentsBeforeElement) return;
  mComponent.LastElement = nullptr;
  mBlock->SetCompletelyLoaded();
}

// A comment that has come the long way since is the last one.
void PlainLines::Settle() {
  if (!mCommented) return;
  Block& block = *std::exchange(mCommented, nullptr);
  if (block.LastCommentIndex() <= mCommentIndex)
    block.SetLastComment(mComment, mCommentIndex, mCommentLine);
}

}  // namespace vendrel
