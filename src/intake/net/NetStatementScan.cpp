#include "intake/net/NetStatementScan.h"

#include <algorithm>

#include "core/Ascii.h"
#include "intake/net/NetLineScan.h"
#include "intake/net/NetWords.h"
#include "text/Separators.h"
#include "text/Words.h"

namespace vendrel {
namespace {

// Words that may begin a line of a query.
bool IsQueryWord(std::string_view word) {
  return IsWordOf(word, {"FROM", "AGGREGATE", "WHERE", "SELECT", "ORDER", "GROUP", "JOIN", "LET",
                         "SKIP", "TAKE", "DISTINCT", "INTO", "ON", "EQUALS"});
}

// Whether a line may belong to the member in front of it.
bool MayBeJoined(std::string_view line) {
  switch (line.front()) {
    case 'H':
    case 'h': return StartsWithNoCaseAscii(line, "HANDLES");
    case 'I':
    case 'i': return StartsWithNoCaseAscii(line, "IMPLEMENTS");
    default: return false;
  }
}

}  // namespace

void NetStatementScan::Begin() {
  mText.clear();
  mDepth = 0;
  mLast = Token::None;
  mOnlyModifiers = mOnlyAttributes = true;
  mAnyAttribute = mInAttribute = mEndsLambda = mInQuery = false;
  mAttributeDepth = 0;
}

bool NetStatementScan::Feed(std::string_view line, std::string_view next) {
  LineScan scan{*this, line};
  scan.Run();
  if (!mText.empty()) mText += ' ';
  if (scan.Explicit) {
    mText.append(Trim(line.substr(0, scan.CodeEnd)));
    return true;
  }
  bool goesOn = mInAttribute || mDepth > 0 || mLast == Token::Operator || mLast == Token::Open;
  if (mOnlyAttributes && mAnyAttribute) goesOn = true;
  if (scan.LambdaClosed) {
    mLambdas.push_back(mDepth);
    goesOn = false;
  }
  const std::string_view code = Trim(line.substr(0, scan.CodeEnd));
  mText.append(code);
  if (!goesOn && !scan.LambdaClosed) goesOn = IsJoinedBy(next);
  if (!goesOn) {
    const std::string_view comment = line.substr(scan.CodeEnd);
    mText.append(code.empty() ? Trim(comment) : TrimRight(comment));
  }
  return goesOn;
}

bool NetStatementScan::TakeWhole(std::string_view next) {
  while (!next.empty() && IsGap(next.front())) next.remove_prefix(1);
  if (InLambda() || (!next.empty() && MayBeJoined(next))) return false;
  mEndsLambda = false;
  return true;
}

// Whether a line that follows a complete one belongs to it all the same, by the word at its front:
// a query operator behind a query, Handles or Implements behind the first line of a member.
bool NetStatementScan::IsJoinedBy(std::string_view next) const {
  const std::size_t first = next.find_first_not_of(" \t");
  if (first == kNotFound) return false;
  const char letter = UpperAscii(next[first]);
  if (!mInQuery && letter != 'H' && letter != 'I') return false;
  NetWords words(next);
  const std::string_view word = words.Next();
  if (word.empty()) return false;
  const std::string_view rest = words.Rest();
  if (IsWordOf(word, {"HANDLES", "IMPLEMENTS"})) {
    if (rest.empty() || !(IsWordByte(rest.front()) || rest.front() == '[')) return false;
    switch (NetTypeOf(mText, OTHER)) {
      case START_SUB:
      case START_FUNCTION:
      case START_PROPERTY:
      case EVENT_DECLARATION: return true;
      default: return false;
    }
  }
  if (!mInQuery || !IsQueryWord(word)) return false;
  // A statement may begin with a name like these: "Skip = 1", "Take.Off()", "Select Case x".
  const char behind = word.data() + word.size() < next.data() + next.size() ? word.end()[0] : ' ';
  const bool isApart = IsGap(behind) || behind == '\'';
  NetWords second(rest);
  return isApart && !rest.starts_with('=') && !EqualsNoCaseAscii(second.Next(), "CASE");
}

bool NetStatementScan::Refuses(std::string_view line) const {
  NetWords words(line);
  std::string_view word = words.Next();
  if (line.substr(std::min(line.find_first_not_of(" \t"), line.size())).starts_with('#'))
    return true;
  if (mOnlyAttributes && mAnyAttribute) return EqualsNoCaseAscii(word, "END");
  if (EqualsNoCaseAscii(word, "END"))
    return IsWordOf(words.Next(),
                    {"SUB", "FUNCTION", "PROPERTY", "GET", "SET", "OPERATOR", "EVENT", "CLASS",
                     "MODULE", "STRUCTURE", "INTERFACE", "ENUM", "NAMESPACE"});
  if (mOnlyModifiers) return false;
  if (IsWordOf(word, {"PUBLIC", "PRIVATE", "PROTECTED", "FRIEND"})) return true;
  while (IsNetModifier(word)) word = words.Next();
  if (!IsWordOf(word, {"SUB", "FUNCTION", "PROPERTY", "CLASS", "MODULE", "STRUCTURE", "INTERFACE",
                       "ENUM", "NAMESPACE"}))
    return false;
  return !words.Next().empty();
}

}  // namespace vendrel
