#include "text/Classifier.h"

#include <algorithm>

#include "core/Ascii.h"
#include "text/Blanks.h"
#include "text/Separators.h"

namespace vendrel {
namespace {

bool EndsContinued(std::string_view part) {
  return part.size() >= 2 && part[part.size() - 1] == '_' && part[part.size() - 2] == ' ';
}

// Whether a line is one statement from end to end, as most are: it holds nothing that could end
// one, and neither a number in front nor a continuation behind. Then there is nothing to scan.
bool IsWholeStatement(std::string_view work, const HeldBytes& held, const ScanRules& rules) {
  if (work.back() == '_' || IsDigitAscii(work.front()) || held.Mark) return false;
  return !rules.PartsEvery() || DeclarationBehindThen(work, !rules.MayBeginWithLabel) == kNotFound;
}

// A remainder holds no tabs. It is looked at up to its first separator alone: a line may have as
// many remainders as characters.
HeldBytes BytesOfRemainder(std::string_view remainder) {
  HeldBytes held;
  held.TwoBlanks = true;
  held.Mark = FirstMark(remainder) < remainder.size();
  return held;
}

// The text without its last character.
std::string_view WithoutLast(std::string_view text) {
  std::size_t at = text.size() - 1;
  while (at > 0 && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80) --at;
  return text.substr(0, at);
}

}  // namespace

std::string JoinContinuation(std::string_view remainder, std::string_view physical) {
  std::string joined(Trim(remainder));
  joined += ' ';
  joined += Trim(physical);
  return joined;
}

// The text without outer blanks, each of its tabs as four blanks.
std::string_view LineClassifier::WorkingCopy(std::string_view text) {
  mWork.clear();
  for (const char c : text) {
    if (c == '\t')
      mWork.append(4, ' ');
    else
      mWork.push_back(c);
  }
  return Trim(mWork);
}

LineClassifier::Result LineClassifier::First(std::string_view text, ParsedLine& line,
                                             bool mayHoldTabs) {
  line = ParsedLine();
  line.Text = text;
  line.Unparted = Reading.EverySeparator && !PartLines;
  mState = ScanState();
  std::string_view work = Trim(text);
  HeldBytes held = mayHoldTabs ? BytesHeldBy(work) : BytesOfRemainder(work);
  if (held.Tab) {
    work = WorkingCopy(text);
    held = BytesHeldBy(work);
  }
  if (work.empty()) {
    line.LineType = BLANK_LINE;
    return Result::Ok;
  }
  if (Reading.RemComments && IsRemark(work)) {
    mState.What = ScanState::Found::Comment;
    mState.SeenOther = true;
    mState.TextFrom = 3;
  }
  if (mState.What == ScanState::Found::Nothing && IsWholeStatement(work, held, *this)) {
    const std::string_view trimmed = Statements->Trimmed(work);
    line.StatementPart = held.TwoBlanks ? Collapsed(trimmed, mStatement) : trimmed;
    if (!line.StatementPart.empty()) return Classify(line);
  }
  const Result result = Process(work, line);
  if (line.Continued) {
    mLogical.assign(TrimRight(line.Remainder));
    mLogicalSize = mLogical.size();
  }
  return result;
}

LineClassifier::Result LineClassifier::Next(std::string_view physical, ParsedLine& line) {
  line = ParsedLine();
  line.Text = physical;
  mLogical.resize(mLogicalSize);
  mLogical += ' ';
  for (const char c : Trim(physical)) {
    if (c == '\t')
      mLogical.append(4, ' ');
    else
      mLogical.push_back(c);
  }
  mLogical.resize(TrimRight(mLogical).size());
  const Result result = Process(mLogical, line);
  // The text is cut at the next call: the parts of this line lie in it.
  mLogicalSize = line.Continued ? TrimRight(line.Remainder).size() : mLogical.size();
  return result;
}

LineClassifier::Result LineClassifier::Process(std::string_view work, ParsedLine& line) {
  // The state is kept at the end of what a continuation leaves of the line, so that the next line
  // resumes there: the blank and the underscore are looked at, but not remembered.
  const bool mayContinue = EndsContinued(work);
  ScanState kept;
  if (mayContinue) {
    std::size_t end = TrimRight(work.substr(0, work.size() - 1)).size();
    // What a colon in front of the underscore does is known once the next line is.
    if (PartsEvery())
      while (end > 0 && (work[end - 1] == ':' || work[end - 1] == ' ')) --end;
    if (mState.What == ScanState::Found::Nothing && mState.At > end) {
      // An empty line behind "_ _" leaves less than was looked at: blanks and underscores, which
      // only the end of a line number takes note of.
      mState.At = end;
      if (work.substr(0, end).find_first_not_of("0123456789 ") == std::string_view::npos)
        mState.SeenOther = false;
    }
    ScanLine(work, end, *this, mState, mBeforeComment);
    kept = mState;
  }
  ScanLine(work, work.size(), *this, mState, mBeforeComment);
  if (PartsEvery() && !(mayContinue && mState.What == ScanState::Found::Nothing))
    FindHiddenDeclaration(work);
  Separate(work, line);
  if (line.Continued) {
    if (mState.What == ScanState::Found::Nothing) mState = kept;
    // "a _'": the apostrophe itself is the character that the continuation takes away.
    if (mState.What == ScanState::Found::Comment && mState.Where >= line.Remainder.size() &&
        mState.TextFrom > 0)
      mState = mBeforeComment;
    return Result::Ok;
  }
  if (mState.HasOtherBlanks) TakeOtherBlanks(line);
  if (line.LineType == BLANK_LINE) return Result::Ok;
  if (line.StatementPart.empty()) {
    line.LineType = Comment;
    return Result::Ok;
  }
  line.StatementPart = Collapsed(line.StatementPart, mStatement);
  return Classify(line);
}

// What the scan found becomes the parts of the record.
void LineClassifier::Separate(std::string_view work, ParsedLine& line) {
  line.StatementPart = work;
  if (mState.What == ScanState::Found::Separator) {
    line.StatementPart = work.substr(0, mState.Where);
    line.Remainder = work.substr(mState.Where + 1);
    line.MoreLines = true;
  } else {
    if (mState.What == ScanState::Found::Comment) {
      line.StatementPart = work.substr(0, mState.Where);
      line.CommentPart = Trim(work.substr(mState.TextFrom));
    }
    if (mState.OnlyNumber()) {
      TakeLineNumber(work, *this);
      line.StatementPart = {};
      line.LineType = BLANK_LINE;
    }
    if (EndsContinued(line.CommentPart) || EndsContinued(line.StatementPart)) {
      line.Remainder = WithoutLast(work);
      line.Continued = true;
    }
  }
  if (PartsEvery()) TrimStatement(work, line);
  line.StatementPart = Statements->Trimmed(line.StatementPart);
}

// "If x Then Dim k": the declaration is a statement of its own.
void LineClassifier::FindHiddenDeclaration(std::string_view work) {
  const std::size_t end = mState.What == ScanState::Found::Nothing ? work.size() : mState.Where;
  if (mState.What == ScanState::Found::Comment && EndsContinued(work)) return;
  const std::size_t from = work.find_first_not_of(" :", mState.Begin);
  if (from >= end) return;
  const std::string_view statement = work.substr(from, end - from);
  const std::size_t at = DeclarationBehindThen(statement, !MayBeginWithLabel);
  if (at == kNotFound) return;
  mState.What = ScanState::Found::Separator;
  mState.Where = from + at - 1;
}

// Without the label or line number at the front, and without the colons of empty statements.
void LineClassifier::TrimStatement(std::string_view work, ParsedLine& line) const {
  std::string_view statement = line.StatementPart;
  if (statement.empty() || line.Continued) return;
  const std::size_t begin = static_cast<std::size_t>(statement.data() - work.data());
  if (mState.Begin > begin) {
    const std::string_view rest =
        TrimLeft(statement.substr(std::min(statement.size(), mState.Begin - begin)));
    if (rest.empty()) return;
    statement = rest;
    line.HasLabel = true;
    if (Reading.RemComments && IsRemark(statement)) {
      line.CommentPart =
          Trim(work.substr(static_cast<std::size_t>(statement.data() - work.data()) + 3));
      line.StatementPart = {};
      return;
    }
  }
  while (statement.starts_with(':')) statement = TrimLeft(statement.substr(1));
  std::string_view front = TrimRight(statement);
  if (front.ends_with(':')) {
    while (front.ends_with(':')) front = TrimRight(front.substr(0, front.size() - 1));
    if (!MayBeginWithLabel || !IsLabel(front)) statement = front;
  }
  line.StatementPart = statement;
  if (TrimRight(statement).empty() && mState.What != ScanState::Found::Comment)
    line.LineType = BLANK_LINE;
}

void LineClassifier::TakeOtherBlanks(ParsedLine& line) {
  line.StatementPart = WithPlainBlanks(line.StatementPart, mBlanked);
  if (!line.StatementPart.empty()) return;
  line.StatementPart = {};
  if (mState.What != ScanState::Found::Comment) line.LineType = BLANK_LINE;
}

LineClassifier::Result LineClassifier::Classify(ParsedLine& line) {
  const StatementType type = Statements->Classify(line.StatementPart);
  line.LineType = type.LineType;
  if (type.MissingWord) return Result::MissingWord;
  if (Reading.OneLineProcedures && !Reading.EverySeparator && !line.MoreLines &&
      IsStartLineType(line.LineType)) {
    SplitOneLineProcedure(line);
  }
  return Result::Ok;
}

// "Sub A(): x = 1: End Sub": the colon behind the header separates, with or without a blank.
void LineClassifier::SplitOneLineProcedure(ParsedLine& line) {
  const std::string_view statement = line.StatementPart;
  if (statement.find(':') == std::string_view::npos) return;
  int depth = 0;
  bool inString = false;
  for (std::size_t i = 0; i + 1 < statement.size(); ++i) {
    const char c = statement[i];
    if (c == '"') inString = !inString;
    if (inString) continue;
    if (c == '(') ++depth;
    if (c == ')') --depth;
    if (c != ':' || depth > 0 || statement[i + 1] == '=') continue;
    line.MoreLines = true;
    line.Remainder = statement.substr(i + 1);
    line.StatementPart = statement.substr(0, i);
    line.LineType = Statements->Classify(line.StatementPart).LineType;
    return;
  }
}

}  // namespace vendrel
