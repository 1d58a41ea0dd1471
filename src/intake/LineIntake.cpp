#include "intake/LineIntake.h"

#include <algorithm>

#include "comments/AppendDescription.h"
#include "comments/TaggedCommentRules.h"
#include "core/Ascii.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "intake/ModuleIntake.h"
#include "project/ModulesAhead.h"
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

void PrepareLines(Block& block) {
  if (block.CodeLines.IfAny()) return;
  const ModuleIntake& intake = block.Component->Intake();
  *block.CodeLines = CodeLines(intake.Text, intake.Language.Language(), intake.Reading);
}

void StoreLine(Block& block, const ParsedLine& line, std::int32_t before, std::int32_t after) {
  ModuleIntake& intake = block.Component->Intake();
  PrepareLines(block);
  block.CodeLines->AddParsed(line, before, after, intake.HeldRemainder);
  intake.LineStored = true;
}

void ReportHelpContextID(Component& component, std::int32_t id) {
  if (VBProject* project = component.VBProject())
    ChangeProject([=] { project->LoadedHelpContextID(id); });
}

LinePassage::LinePassage(vendrel::Block& block, vendrel::Component& component, ParsedLine& line)
    : Block(block),
      Component(component),
      Intake(component.Intake()),
      Language(Intake.Language),
      Reading(Intake.Reading),
      Options(component.Options()),
      Line(line),
      State(block.Intake()) {}

namespace {
// The way of a line: a stage each.
void RunStages(LinePassage& p, std::int32_t before, std::int32_t after) {
  if (!p.Line.NotInSource) ++p.State.mCurrentLineIndex;
  if (p.Line.LineType == Comment && p.Language.IsDocumentation(p.Line, p.Reading))
    return StoreLine(p.Block, p.Line, before, after);
  if (!p.Line.Continued) {
    SplitComment(p);
    if (p.State.CurrentEnum || p.State.CurrentUDT || p.Line.LineType == BLANK_LINE)
      TakeInsideDeclaration(p);
    else
      Dispatch(p);
    AttachComments(p);
  }
  if (p.Line.LineType == ATTRIBUTE_LINE && !TakeAttribute(p)) return;
  HandOverTaggedComments(p);
  StoreLine(p.Block, p.Line, before, after);
}
}  // namespace

void Block::AddParsedLine(ParsedLine& line, std::int32_t before, std::int32_t after) try {
  vendrel::Component* component = Component.Get();
  if (!component) throw VendrelError(errObjectNotSet, "the block has no component");
  LinePassage passage(*this, *component, line);
  RunStages(passage, before, after);
}
VENDREL_CONTEXT_AT(LineReached(), before, after, trace::Local("LineType", line.LineType), *this)

void ForgetUndescribable(Component& component) {
  const CodeElement* last = component.LastElement.Get();
  if (last && !IsA<Block, EnumMember, Enumeration, UDT>(last)) component.LastElement = nullptr;
}

namespace {
void ForgetLastElementUnlessDescribable(LinePassage& p, std::string_view tag) {
  if (EqualsNoCaseAscii(tag, "##ED") || EqualsNoCaseAscii(tag, "##PD")) return;
  const CodeElement* last = p.Component.LastElement.Get();
  if (p.Reading.EverySeparator && last && p.Declared(*last)) return;
  ForgetUndescribable(p.Component);
}

// An ordinary comment directly behind a tagged one continues it, where the setting says so.
void ContinueTaggedComment(LinePassage& p) {
  if (p.State.mLastTagIdentifier.empty() || !State().AutoAppendUntagged) return;
  if (p.Tagged->TagIdentifier.starts_with("##") || p.Tagged->TaggedCommentDef()) return;
  p.Tagged->TagIdentifier = p.State.mLastTagIdentifier.str();
  p.Tagged->Qualifier = p.State.mLastQualifier.str();
  p.Tagged->Text = p.Line.CommentPart;
  p.Tagged->AlwaysJoinWithWhitespace = true;
}

void TakeTaggedComment(LinePassage& p) {
  VBProject* project = p.Component.VBProject();
  if (project && !project->NewTaggedComment.Empty())
    project->FireNewTaggedComment(p.Block, *p.Tagged, p.Line.Record());
  if (p.Line.StatementPart.empty()) p.Line.LineType = TAGGED_COMMENT;
  p.State.mLastTagIdentifier = p.Tagged->TagIdentifier;
  p.State.mLastQualifier = p.Tagged->Qualifier;
}
}  // namespace

void SplitComment(LinePassage& p) try {
  if (p.Line.CommentPart.empty()) {
    p.State.mLastTagIdentifier = {};
    p.State.mLastQualifier = {};
    return;
  }
  p.Tagged = std::make_shared<TaggedComment>();
  p.Tagged->LineIndex = p.State.mCurrentLineIndex;
  p.Tagged->SourceLine = p.Intake.PhysicalLine;
  p.Tagged->Initialise(p.Line.CommentPart);
  p.Block.SetLastTaggedComment(p.Tagged);
  ForgetLastElementUnlessDescribable(p, p.Tagged->TagIdentifier);
  ContinueTaggedComment(p);
  if (!p.Tagged->TaggedCommentDef() && p.Tagged->TagIdentifier != "##") {
    p.Untagged = p.Line.CommentPart;
    if (p.Untagged.starts_with("##")) ReportMistypedTag(p.Untagged);
    // As a part of the text; one that continues another differs from what stands there.
    if (!p.Tagged->AlwaysJoinWithWhitespace)
      p.Block.SetLastComment(p.Line.CommentPart, p.Tagged->LineIndex, p.Tagged->SourceLine);
    p.Tagged.reset();
  } else {
    TakeTaggedComment(p);
  }
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(p.Block))

void HandOverTaggedComments(LinePassage& p) try {
  if (p.Options.TaggedCommentsBeforeElement) OfferTaggedComments(p.Component, p.Block);
  if (p.Tagged) {
    const SharedText& tag = p.Tagged->TagIdentifier;
    const bool atOnce = !p.Line.StatementPart.empty() || !p.Options.TaggedCommentsBeforeElement ||
                        (p.Block.Name().empty() &&
                         (EqualsNoCaseAscii(tag, "##ED") || EqualsNoCaseAscii(tag, "##PD")));
    if (atOnce)
      p.Block.ApplyTaggedComment(p.Tagged);
    else
      p.Block.HandleTaggedComment(p.Tagged);
  }
  if (p.ClearLastElement) p.Component.LastElement = nullptr;
  if (p.ClearTaggedCommentBuffer && p.Component.TaggedCommentBuffer.IfAny())
    p.Component.TaggedCommentBuffer.Renew();
  p.State.mEnumOpen = p.State.CurrentEnum != nullptr;
  p.State.mUDTOpen = p.State.CurrentUDT != nullptr;
  p.State.mEventLast = p.IsEvent || p.FoundEventComment || (p.State.mEventLast && p.Line.Continued);
  if (p.Line.LineType != Comment && p.Line.LineType != TAGGED_COMMENT)
    p.Component.VMCommentBuffer.clear();
}
VENDREL_CONTEXT_AT(LineReached(), trace::Me(p.Block))

// Elements point at the first physical line of their statement.
std::int32_t LinePassage::StatementIndex() const {
  if (!Line.Continuation) return State.mCurrentLineIndex;
  const std::int32_t continuations =
      Block.CodeLines.IfAny() ? Block.CodeLines->ContinuationCount() : 0;
  return State.mCurrentLineIndex - (continuations + 1);
}

void LinePassage::DescribeFromBuffer(CodeElement& element) {
  if (State.CommentBuffer.empty()) return;
  AddObjectDescription(element, State.CommentBuffer, Language.Language());
  State.CommentBuffer.clear();
}

bool LinePassage::Declared(const CodeElement& element) const {
  return Line.NotInSource && Line.LineType == OTHER && IsA<Variable>(&element) &&
         element.SourceLine() == Intake.StatementLine;
}

void LinePassage::ReportOddName(const CodeElement& element, std::string_view name,
                                std::string_view type) const {
  if (!Reading.EverySeparator) return;
  const auto isOdd = [](char c) {
    return c == '(' || c == ')' || c == '[' || c == ']' || c == ':' || c == ',';
  };
  const bool odd = name.empty() || IsDigitAscii(name.front()) ||
                   std::any_of(name.begin(), name.end(), isOdd) || type.ends_with(':');
  if (odd) Report(DiagnosticCode::OddName, {element.ClassName(), name});
}

}  // namespace vendrel
