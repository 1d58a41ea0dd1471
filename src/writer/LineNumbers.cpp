#include "writer/LineNumbers.h"

#include <algorithm>

#include "core/Ascii.h"
#include "core/NumericText.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "project/EnumerationValues.h"
#include "project/VBProject.h"
#include "services/TextUtility.h"

namespace vendrel {
namespace {

constexpr std::size_t kNumberWidth = 6;
constexpr std::string_view kNumberingTag = "fvbOutputLineNumbers";

bool IsWordByte(char c) {
  return IsLetterAscii(c) || IsDigitAscii(c) || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}

std::string_view SkipSpace(std::string_view text) {
  const std::size_t at = text.find_first_not_of(" \t");
  return at == std::string_view::npos ? std::string_view() : text.substr(at);
}

std::string_view FirstWord(std::string_view text) {
  text = SkipSpace(text);
  return text.substr(0, text.find_first_of(" \t"));
}

bool HasOwnNumber(std::string_view text) {
  const std::string_view word = FirstWord(text);
  // No number begins with a letter, and nearly every line does.
  return !word.empty() && !IsLetterAscii(word.front()) && IsNumericText(word);
}

// "Done:" or "100:" at the start of a line; ":=" belongs to an argument.
bool BeginsWithLabel(std::string_view text) {
  text = SkipSpace(text);
  std::size_t length = 0;
  while (length < text.size() && IsWordByte(text[length])) ++length;
  return length > 0 && length < text.size() && text[length] == ':' &&
         (length + 1 == text.size() || text[length + 1] != '=');
}

bool SaysNothing(LineTypeEnum type) {
  return type == Comment || type == BLANK_LINE || type == ATTRIBUTE_LINE;
}

}  // namespace

LineNumbers::LineNumbers(const CodeLines& lines, bool numberable)
    : mLines(lines),
      mNumberable(numberable),
      mLineInterval(State().LineNumberInterval),
      mLineCount(mLineInterval),
      mContinued(lines.Count() > 0 && lines.Continued(1)) {}

std::string_view LineNumbers::Before(std::int32_t index) try {
  const bool eligible = IsEligible(index);
  SpellNumber();
  if (eligible) return Print(index);
  const bool alone =
      mLines.IsStartLine(index) || mLines.IsEndLine(index) || mLineType == BLANK_LINE;
  return alone ? std::string_view() : Spacer();
}
VENDREL_CONTEXT(index, trace::Local("Number", State().CurrentLineNumber))

void LineNumbers::Pass(std::int32_t index) {
  if (!mNumberable || mLines.Continued(index)) return;
  const LineTypeEnum type = mLines.LineType(index);
  TrackProcedure(type);
  if (type == SELECT_CASE_LINE) mSelects.push_back({});
  if (type == CASE_LINE) TakeCase();
  if (type == END_SELECT_LINE) TakeEndSelect();
}

// Decided on the first physical line of a statement; its other lines are not eligible.
bool LineNumbers::IsEligible(std::int32_t index) {
  if (mContinued) {
    if (!mLines.Continued(index)) mContinued = false;
    if (mNumberable && !mContinued) TrackProcedure(mLines.LineType(index));
    return false;
  }
  const bool eligible = BeginsEligible(index);
  if (mLines.Continued(index))
    mContinued = true;
  else if (mNumberable)
    TrackProcedure(mLines.LineType(index));
  return eligible;
}

bool LineNumbers::BeginsEligible(std::int32_t index) {
  mLineType = StatementType(index);
  bool eligible = false;
  switch (mLineType) {
    case OTHER: eligible = !SaysNothing(mLines.LineType(index)); break;
    case SELECT_CASE_LINE:
      if (!mNumberable) mSelects.clear();
      mSelects.push_back({});
      eligible = true;
      break;
    case CASE_LINE: eligible = TakeCase(); break;
    case END_SELECT_LINE: eligible = TakeEndSelect(); break;
    default: break;
  }
  return eligible && (!mNumberable || MayStandBefore(index));
}

// Where the compiler takes no number: inside a statement, before a label, outside procedures.
bool LineNumbers::MayStandBefore(std::int32_t index) {
  return mInProcedure && !mLines.Continuation(index) && !BeginsWithLabel(mLines.LineView(index));
}

// Nothing may stand between a Select and its first Case.
bool LineNumbers::TakeCase() {
  if (mSelects.empty()) {
    mSelects.resize(mNumberable ? 0 : 1, {false, true});
    return !mNumberable;
  }
  Select& select = mSelects.back();
  const bool eligible = !select.AtFirstCase;
  select = {false, true};
  return eligible;
}

bool LineNumbers::TakeEndSelect() {
  if (mSelects.empty()) return false;
  const bool eligible = mSelects.back().CaseSeen;
  if (mNumberable)
    mSelects.pop_back();
  else
    mSelects.back().AtFirstCase = false;  // that a Case was seen stays known
  return eligible;
}

// A statement has the type of its last physical line. One with others behind separators has, in the
// classic reading, that of the last such line of the whole block.
LineTypeEnum LineNumbers::StatementType(std::int32_t index) {
  const std::int32_t count = mLines.Count();
  if (mLines.Continued(index)) {
    for (std::int32_t i = index + 1; i <= count; ++i)
      if (!mLines.Continued(i)) return mLines.LineType(i);
    return Comment;
  }
  if (!mNumberable && index < count && mLines.NotInSource(index + 1)) return LastTypeNotInSource();
  return mLines.LineType(index);
}

LineTypeEnum LineNumbers::LastTypeNotInSource() {
  if (mLastNotInSource < 0) {
    mLastNotInSource = mLines.Count();
    while (!mLines.NotInSource(mLastNotInSource)) --mLastNotInSource;
  }
  return mLines.LineType(mLastNotInSource);
}

void LineNumbers::TrackProcedure(LineTypeEnum type) {
  if (IsStartLineType(type)) mInProcedure = true;
  if (IsEndLineType(type)) mInProcedure = false;
}

// The number advances also where it is not printed.
std::string_view LineNumbers::Print(std::int32_t index) {
  if (HasOwnNumber(mLines.LineView(index))) return Spacer();
  if (mLineInterval == 0)
    throw VendrelError(errDivisionByZero, "the interval of line numbers is 0");
  const bool printed = mLineCount % mLineInterval == 0;
  ++mLineCount;
  State().CurrentLineNumber += State().LineNumberIncrement;
  return printed ? std::string_view(mNumber) : std::string_view();
}

std::string_view LineNumbers::Spacer() {
  mBlanks.assign(mNumber.size(), ' ');
  return mBlanks;
}

void LineNumbers::SpellNumber() {
  const std::int32_t number = State().CurrentLineNumber;
  if (number == mSpelled && !mNumber.empty()) return;
  mSpelled = number;
  mNumber = std::to_string(number);
  if (mNumber.size() > kNumberWidth - 1)
    mNumber.push_back(' ');
  else
    mNumber.resize(kNumberWidth, ' ');
}

// The count never runs backward.
std::int32_t BeginNumbering(VBProject& project) {
  std::int32_t first = 0;
  project.AddLineNumbers = false;
  for (const auto& [name, value] : project.Tags) {
    if (!EqualsNoCaseAscii(name, kNumberingTag)) continue;
    ProcessState& state = State();
    first = std::max(state.CurrentLineNumber, NumericValue(TextUtility::LeftPart(value)));
    state.CurrentLineNumber = first;
    const std::string steps = TextUtility::RightPart(value);
    const bool hasInterval = steps.find('.') != std::string::npos;
    state.LineNumberIncrement = NumericValue(TextUtility::Field(steps, ".", 1));
    state.LineNumberInterval = hasInterval ? NumericValue(TextUtility::Field(steps, ".", 2)) : 1;
    project.AddLineNumbers = true;
  }
  return first;
}

}  // namespace vendrel
