#include "intake/vb6/PlainLines.h"

#include <utility>

#include "intake/LineIntake.h"
#include "intake/ModuleIntake.h"
#include "model/Component.h"
#include "model/TaggedComment.h"

namespace vendrel {
namespace {

// No line waits for another one, and none is left out.
bool NothingIsOpen(const ModuleIntake& intake) {
  return !intake.PreviousContinued && !intake.PreviousMoreLines && !intake.InOneLineProcedure &&
         intake.ContinuationBuffer.empty() && !intake.Conditions.Ignore();
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

bool PlainLines::IsQuiet() const {
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
  if (!mComponent.CurrentBlock || !IsQuiet()) return;
  mBlock = mComponent.CurrentBlock.Get();
  // A blank line behind the code of a Property Set makes the module forget its last element.
  mTakesBlanks = mBlock->BlockType() != btPropertySet;
}

// A comment may be a tag.
bool PlainLines::MayTake(const PlainLine& plain) const {
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
  while (const std::optional<GlancedLine> glanced = GlanceAtLine(rest.substr(taken))) {
    const std::optional<PlainLine> plain =
        PlainLineOf(glanced->Line, glanced->Glance, mRules, mBuffer);
    mNextIsOdd = !plain || !MayTake(*plain);
    if (mNextIsOdd) break;
    ++mIntake.PhysicalLine;
    ++mComponent.LinesAlreadyRead;
    Store(glanced->Line, *plain);
    taken += glanced->Bytes;
  }
  return taken;
}

void PlainLines::Store(std::string_view text, const PlainLine& plain) {
  Block::IntakeState& state = mBlock->Intake();
  ++state.mCurrentLineIndex;
  if (!plain.Comment.empty()) KeepComment(plain.Comment);
  if (plain.Type == OTHER) state.FoundActualCodeInBlock = true;
  if (plain.Type == Comment)
    AttachCommentLine(*mBlock, mIntake, plain.Comment);
  else
    mIntake.LeadingComment.clear();
  mBlock->CodeLines->AppendPlain(text, plain.Type);
  if (IsEndLineType(plain.Type)) EndProcedure();
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
