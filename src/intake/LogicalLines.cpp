// From physical lines to statements: continuations joined, statements behind separators taken
// apart, branches of conditional compilation resolved.
//
// A physical line is classified the moment it comes, before anybody knows whether its statement is
// whole. What goes on is *pending*: it waits in `ContinuationBuffer` until its last line comes, and
// that one carries the statement; the pending ones are stored with it as lines that declare
// nothing. What stands behind a separator is the *remainder*: a statement of its own that has no
// line in the file (`NotInSource`), taken at once in the complete reading, and in the classic one
// only when the next physical line comes, which is lost.
//
// Everything here is views: of the module's text, or where a line had tabs of a buffer that the
// next line overwrites. Whatever must outlive its line is *held*, copied into a record.

#include "core/Ascii.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "intake/Conditions.h"
#include "intake/LineIntake.h"
#include "intake/ModuleIntake.h"
#include "model/Component.h"
#include "project/VBProject.h"

namespace vendrel {
namespace {

constexpr std::string_view kDirectiveMessage =
    "Commented by vbTrapline (Directives are parsed out as part of build)";
constexpr std::string_view kFalseBranchMessage =
    "Commented by vbTrapline (#IF or #ELSEIF statement evaluates to false)";

// The parts of lines that wait lie in a buffer of the classifier, which the later lines of the
// statement have overwritten: they are classified anew, and held.
void HoldRecords(const ModuleIntake& intake, std::vector<PendingLine>& lines) {
  LineClassifier classifier(intake.Language.Language(), intake.Reading);
  classifier.RaiseLineNumber = false;
  for (PendingLine& pending : lines) {
    ParsedLine again;
    classifier.MayBeginWithLabel = !pending.Line.NotInSource && !pending.Line.NoLabel;
    if (pending.Line.Continuation)
      classifier.Next(pending.Line.Text, again);
    else
      classifier.First(pending.Line.Text, again);
    if (pending.Held) continue;
    again.Continuation = pending.Line.Continuation;
    again.NotInSource = pending.Line.NotInSource;
    pending.Held = std::make_unique<CodeLine>(again.Record());
  }
}

// Holds the line and those continued into it, as comments that tell why.
void CommentOut(PendingLine& pending, std::string_view message) {
  if (!pending.Held) pending.Held = std::make_unique<CodeLine>(pending.Line.Record());
  CodeLine& record = *pending.Held;
  record.Text = "' " + std::string(message) + "  " + record.Text;
  if (record.LineType != COMPILER_DIRECTIVE) record.LineType = Comment;
  pending.Line = ParsedLine::Of(record);
}

void CommentOutLine(PendingLine& line, ModuleIntake& intake, std::string_view message) {
  HoldRecords(intake, intake.ContinuationBuffer);
  for (PendingLine& continued : intake.ContinuationBuffer) CommentOut(continued, message);
  CommentOut(line, message);
}

// A line in a false branch is stored and never interpreted.
void StoreIgnored(Component& component, ModuleIntake& intake, PendingLine& line) {
  Block& block = *component.CurrentBlock.Get();
  for (PendingLine& continued : intake.ContinuationBuffer) StoreLine(block, continued.Line);
  intake.ContinuationBuffer.clear();
  StoreLine(block, line.Line);
}

void TakeIgnored(Component& component, ModuleIntake& intake, PendingLine& line) {
  if (!KeepsDirectives(component, intake)) {
    CommentOutLine(
        line, intake,
        line.Line.LineType == COMPILER_DIRECTIVE ? kDirectiveMessage : kFalseBranchMessage);
  }
  StoreIgnored(component, intake, line);
}

void TakeDirective(Component& component, ModuleIntake& intake, PendingLine& line) {
  if (!KeepsDirectives(component, intake)) CommentOutLine(line, intake, kDirectiveMessage);
  AddParsedCode(component, line.Line, true);
}

// "Attribute Changed.VB_HelpID = 5" for an event of the module: true if the line is used up.
bool TakeEventHelpID(Component& component, const ModuleIntake& intake, const ParsedLine& line) try {
  std::string_view rest = line.StatementPart;
  TakeField(rest, ' ');
  const std::string_view word = Trim(TakeField(rest, ' '));
  if (!EndsWithNoCaseAscii(word, ".VB_HELPID")) return false;
  TakeField(rest, ' ');
  const std::int32_t id = NumericValue(TakeField(rest, ' '));
  EventDeclaration* event = component.EventDeclarations.Item(word.substr(0, word.size() - 10));
  if (!event) return false;
  TakeHelpContextID(component, *event, id);
  return !intake.Reading.KeepHelpAttributes;
}
VENDREL_CONTEXT_AT(LineReached(), component)

// Keeps what the next line needs of this one. The remainder of a line with tabs stands in a buffer
// that the next line overwrites, so it is held.
void Remember(ModuleIntake& intake, const ParsedLine& line) {
  intake.PreviousContinued = line.Continued;
  intake.PreviousMoreLines = line.MoreLines;
  intake.Remainder = {};
  if (!line.MoreLines) return;
  if (intake.InText(line.Remainder) || intake.InHeld(line.Remainder)) {
    intake.Remainder = line.Remainder;
    return;
  }
  auto held = std::make_shared<const std::string>(line.Remainder);
  intake.OlderRemainder = std::move(intake.HeldRemainder);
  intake.HeldRemainder = std::move(held);
  intake.Remainder = *intake.HeldRemainder;
}

void KeepPending(ModuleIntake& intake, const ParsedLine& line) {
  PendingLine pending;
  pending.Line = line;
  pending.SourceLine = intake.StatementLine;
  if (!intake.InText(line.Text)) {
    pending.Held = std::make_unique<CodeLine>(line.Record());
    pending.Line = ParsedLine::Of(*pending.Held);
  }
  intake.ContinuationBuffer.push_back(std::move(pending));
}

// The record of the previous line counts as consumed, whatever happens to this one.
void RefuseLine(ModuleIntake& intake, const ParsedLine& line) {
  intake.PreviousContinued = intake.PreviousMoreLines = false;
  throw VendrelError(errSubscript,
                     "the statement needs another word: " + std::string(Trim(line.Text)));
}

// A colon parts nothing in the header of a module, which its first declaration ends.
bool StandsInHeader(const Component& component, const ModuleIntake& intake,
                    const ParsedLine& line) {
  return component.CurrentBlock.Get()->BlockType() == btAttributes &&
         !OpensAnyBlock(component, intake, line);
}

bool InOpenDeclaration(const Component& component) {
  const Block& block = *component.CurrentBlock.Get();
  return block.CurrentEnum() || block.CurrentUDT();
}

// What a line is depends on where it stands, in few places: "a: b" in an Enum has two members and
// no label.
LineClassifier::Result ClassifyFirst(const Component& component, ModuleIntake& intake,
                                     std::string_view text, bool notInSource, ParsedLine& line) {
  LineClassifier& classifier = intake.Classifier;
  classifier.PartLines = true;
  classifier.MayBeginWithLabel = !notInSource;
  LineClassifier::Result result = classifier.First(text, line, !notInSource);
  if (!intake.Reading.EverySeparator) return result;
  if (line.MoreLines && StandsInHeader(component, intake, line)) {
    classifier.PartLines = false;
    result = classifier.First(text, line, !notInSource);
  } else if (line.HasLabel && InOpenDeclaration(component)) {
    classifier.MayBeginWithLabel = false;
    result = classifier.First(text, line, !notInSource);
    line.NoLabel = true;
  }
  return result;
}

// In an open Type or Enum a keyword alone is a member.
bool MayStandAlone(const Component& component, const ModuleIntake& intake) {
  return intake.Reading.MemberNames && InOpenDeclaration(component);
}

// What is known to hold nothing but a statement of no kind is not walked again.
void TakePlain(ModuleIntake& intake, std::string_view text, ParsedLine& line) {
  line.Text = text;
  line.StatementPart = TrimGaps(text);
  intake.StatementLine = intake.PhysicalLine;
}

void Classify(const Component& component, ModuleIntake& intake, std::string_view text,
              bool notInSource, ParsedLine& line) try {
  const bool continuation = intake.PreviousContinued;
  intake.Classifier.SplitAtEveryColon =
      intake.InOneLineProcedure && notInSource && !intake.Reading.EverySeparator;
  const LineClassifier::Result result =
      continuation ? intake.Classifier.Next(text, line)
                   : ClassifyFirst(component, intake, text, notInSource, line);
  line.Continuation = continuation;
  line.NotInSource = notInSource;
  line.EveryColon = intake.Classifier.SplitAtEveryColon;
  line.OwnText = line.EveryColon && (continuation || line.Continued);
  if (!continuation) intake.StatementLine = intake.PhysicalLine;
  if (result == LineClassifier::Result::MissingWord && !MayStandAlone(component, intake))
    RefuseLine(intake, line);
}
VENDREL_CONTEXT_AT(LineReached(), text, notInSource)

// A language may join lines by rules of its own (`JoinLine`) before anything is classified. Then
// its lines wait unclassified. Attributes in front of a declaration are lines of it, but the
// statement itself begins behind them: that is the line that its elements point at.
void KeepJoined(ModuleIntake& intake, std::string_view text, bool isStatement) {
  if (!isStatement)
    intake.StatementLine = intake.PhysicalLine + 1;
  else if (intake.ContinuationBuffer.empty())
    intake.StatementLine = intake.PhysicalLine;
  ParsedLine line;
  line.Text = line.StatementPart = text;
  line.Continued = true;
  line.Continuation = !intake.ContinuationBuffer.empty();
  KeepPending(intake, line);
}

// The last line of a statement whose lines the language has joined: what is classified is the whole
// statement in one text, at the place of its first line; what is stored is the line.
void ClassifyJoined(const Component& component, ModuleIntake& intake, std::string_view text,
                    std::string_view statement, ParsedLine& line) {
  const std::int32_t physical = intake.PhysicalLine;
  intake.PhysicalLine = intake.ContinuationBuffer.back().SourceLine;
  Classify(component, intake, statement, false, line);
  intake.PhysicalLine = physical;
  line.Text = text;
  line.Continuation = true;
}

void TakeStatement(Component& component, ModuleIntake& intake, std::string_view text,
                   bool notInSource) try {
  PendingLine pending;
  ParsedLine& line = pending.Line;
  std::string_view statement = text;
  if (!notInSource && !intake.Language.JoinLine(component, intake, text, statement))
    return KeepJoined(intake, text, !statement.empty());
  if (!notInSource && !intake.PreviousContinued && !intake.ContinuationBuffer.empty())
    ClassifyJoined(component, intake, text, statement, line);
  else if (intake.IsPlainLine && !notInSource && !intake.PreviousContinued)
    TakePlain(intake, text, line);
  else
    Classify(component, intake, text, notInSource, line);
  Remember(intake, line);
  // Nothing is decided about half a statement: not even whether it lies in a false branch, which is
  // settled for all its lines at once when the last one comes.
  if (line.Continued) {
    KeepPending(intake, line);
    return;
  }
  if (intake.Reading.OneLineProcedures) {
    if (IsStartLineType(line.LineType) && line.MoreLines) intake.InOneLineProcedure = true;
    if (!line.MoreLines) intake.InOneLineProcedure = false;
  }
  if (!intake.Conditions.Ignore()) intake.Language.SettleStatement(component, intake, line);
  // The line may be changed below (commented out), and a directive takes effect only behind itself:
  // "#Else" still belongs to the branch that it ends. So what it says is copied first.
  const LineTypeEnum type = line.LineType;
  const std::string directive =
      type == COMPILER_DIRECTIVE ? std::string(line.StatementPart) : std::string();
  if (intake.Conditions.Ignore())
    TakeIgnored(component, intake, pending);
  else if (type == COMPILER_DIRECTIVE)
    TakeDirective(component, intake, pending);
  else if (type != ATTRIBUTE_LINE || !TakeEventHelpID(component, intake, line))
    AddParsedCode(component, line, true);
  if (type == COMPILER_DIRECTIVE) UpdateConditions(component, intake, directive);
}
VENDREL_CONTEXT_AT(LineReached(), component, text, notInSource,
                   trace::Local("StatementLine", intake.StatementLine),
                   trace::Local("Pending", intake.ContinuationBuffer.size()))

bool RemainderWaits(const Component& component, const ModuleIntake& intake) {
  return intake.PreviousMoreLines && component.CurrentBlock.Get()->BlockType() != btAttributes;
}

}  // namespace

bool KeepsDirectives(const Component& component, const ModuleIntake& intake) {
  return component.Options().OutputConditionalCompilationBlocks || intake.Reading.KeepDirectives;
}

ModuleIntake& Component::BeginIntake() {
  mIntake = std::make_shared<ModuleIntake>(State().CurrentLanguageVersion, Options().Reading);
  return *mIntake;
}

void FinishLines(Component& component) {
  component.Intake().Language.Finish(component, component.Intake());
}

bool Component::Ignore() const { return mIntake && mIntake->Conditions.Ignore(); }

void Component::AddLineOfCode(std::string_view Source) try {
  const Workspace::Use use(Options().Workspace());
  ModuleIntake& intake = Intake();
  if (!CurrentBlock) CurrentBlock = NewBlock(btUnrecognised);
  if (intake.Reading.KeepLinesBehindSeparators) {
    TakeStatement(*this, intake, Source, false);
    while (RemainderWaits(*this, intake)) TakeStatement(*this, intake, intake.Remainder, true);
    return;
  }
  if (RemainderWaits(*this, intake)) {
    Report(DiagnosticCode::LostLine, {Trim(Source)});
    TakeStatement(*this, intake, intake.Remainder, true);
    return;
  }
  TakeStatement(*this, intake, Source, false);
}
VENDREL_CONTEXT_AT(LineReached(), Source, *this)

// Unlike a line of a file, one of these never waits for its turn behind a separator.
void AddLinesOfCode(Component& component, std::string_view text) {
  ModuleIntake& intake = component.Intake();
  if (!component.CurrentBlock) component.CurrentBlock = component.NewBlock(btUnrecognised);
  while (!text.empty()) {
    const std::string_view line = TakeLine(text);
    intake.PreviousMoreLines = false;
    TakeStatement(component, intake, line, false);
    while (intake.Reading.KeepLinesBehindSeparators && RemainderWaits(component, intake))
      TakeStatement(component, intake, intake.Remainder, true);
  }
  intake.PreviousMoreLines = false;
}

}  // namespace vendrel
