#include "intake/net/NetStatementScan.h"

#include <algorithm>

#include "core/Ascii.h"
#include "intake/net/NetWords.h"
#include "text/Separators.h"
#include "text/Words.h"
#include "text/net/XmlLiterals.h"

namespace vendrel {
namespace {

bool IsGapByte(char c) { return c == ' ' || c == '\t'; }

// Words that may begin a line of a query.
bool IsQueryWord(std::string_view word) {
  return IsWordOf(word, {"FROM", "AGGREGATE", "WHERE", "SELECT", "ORDER", "GROUP", "JOIN", "LET",
                         "SKIP", "TAKE", "DISTINCT", "INTO", "ON", "EQUALS"});
}

// A literal or name with its type character: "1&" is no concatenation.
bool IsTypeCharacter(std::string_view line, std::size_t at) {
  return at > 0 && line[at] == '&' && (IsWordByte(line[at - 1]));
}

}  // namespace

// A line on its way through its tokens.
struct NetStatementScan::LineScan {
  NetStatementScan& S;
  std::string_view Line;
  std::size_t At = 0;
  std::size_t CodeEnd = 0;  // behind the code of the line
  bool Explicit = false;    // the line ends in " _"
  bool First = true;        // no token of the line yet
  // The header of a lambda that the line may end with.
  int LambdaDepth = 0;  // of the parenthesis that opens its list; 0: none
  bool LambdaClosed = false;
  bool LambdaType = false;
  bool LambdaWord = false;
  std::string_view Previous = {};  // the word before
  bool NoBracket = false;

  void Run();
  bool TakeAttribute(char c);
  void TakeWord();
  void TakeMark(char c);
  void Note(Token token, bool inType = false);
};

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

void NetStatementScan::LineScan::Run() {
  while (At < Line.size()) {
    const char c = Line[At];
    if (IsGapByte(c)) {
      ++At;
      continue;
    }
    if (c == '\'' || Line.substr(At).starts_with("\xE2\x80\x98") ||
        Line.substr(At).starts_with("\xE2\x80\x99"))
      return;
    if (S.mInAttribute && TakeAttribute(c)) continue;
    if (IsWordByte(c) || c == '[') {
      TakeWord();
      if (At > Line.size()) return;  // a remark or an underscore: the code ends in front of it
      First = false;
      CodeEnd = At;
      continue;
    }
    if (c == '#' && First && S.mLast == Token::None && S.mOnlyAttributes) {
      CodeEnd = Line.size();
      At = Line.size();
      return;
    }
    TakeMark(c);
    First = false;
    CodeEnd = At;
  }
}

// Attributes stand apart from the tokens of their statement. False for what is read as code.
bool NetStatementScan::LineScan::TakeAttribute(char c) {
  if (c == '"') return false;
  if (c == '(') ++S.mAttributeDepth;
  if (c == ')') --S.mAttributeDepth;
  if (c == '>' && S.mAttributeDepth <= 0) S.mInAttribute = false;
  CodeEnd = ++At;
  return true;
}

void NetStatementScan::LineScan::Note(Token token, bool inType) {
  S.mLast = token;
  if (LambdaClosed && !inType) LambdaClosed = LambdaType = false;
}

void NetStatementScan::LineScan::TakeWord() {
  const std::size_t begin = At;
  if (Line[At] == '[') {
    if (!NoBracket) At = BracketEnd(Line, At);
    NoBracket = At == begin;  // looked for up to the end of the line, once
    if (NoBracket) ++At;
  } else {
    while (At < Line.size() && IsWordByte(Line[At])) ++At;
  }
  const std::string_view word = Line.substr(begin, At - begin);
  const std::size_t next = std::min(Line.find_first_not_of(" \t", At), Line.size());
  const bool ends = next == Line.size() || Line[next] == '\'';
  if (word == "_" && ends && (begin == 0 || IsGapByte(Line[begin - 1]))) {
    Explicit = true;
    At = Line.size() + 1;
    return;
  }
  const unsigned kinds = KindsOfNetWord(word);
  if ((kinds & nwRemark) && S.mLast == Token::None && S.mOnlyModifiers) {
    At = Line.size() + 1;
    return;
  }
  const bool isProcedure = kinds & nwProcedure;
  if (isProcedure && S.InLambda() && EqualsNoCaseAscii(Previous, "END") && S.mOnlyModifiers) {
    S.mDepth = S.mLambdas.back();
    S.mLambdas.pop_back();
    S.mEndsLambda = true;
  }
  if (isProcedure && next < Line.size() && Line[next] == '(') LambdaWord = true;
  S.mOnlyAttributes = false;
  if (!(kinds & (nwModifier | nwEnd))) S.mOnlyModifiers = false;
  const bool asType = LambdaClosed && (LambdaType || (kinds & nwAs));
  if (asType) LambdaType = true;
  const bool isName = Previous == ".";
  // Where an operand is due: "= From c In", "(Aggregate c In".
  if ((kinds & nwQuery) && !isName && S.mLast != Token::Operand && next < Line.size() &&
      IsWordByte(Line[next]))
    S.mInQuery = true;
  Note(!isName && (kinds & nwOperator) && !S.mOnlyModifiers ? Token::Operator : Token::Operand,
       asType);
  // "With" and its kin begin statements of their own.
  if (S.mLast == Token::Operator && begin == Line.find_first_not_of(" \t"))
    S.mLast = Token::Operand;
  Previous = word;
}

void NetStatementScan::LineScan::TakeMark(char c) {
  const auto skipTo = [&](std::size_t end) {
    At = std::min(end, Line.size());
    Note(Token::Operand);
  };
  const bool before = S.mLast != Token::Operand;  // an operand may begin here
  Previous = Line.substr(At, 1);
  switch (c) {
    case '"':
      S.mOnlyAttributes = S.mOnlyAttributes && S.mInAttribute;
      if (At > 0 && Line[At - 1] == '$') return skipTo(InterpolatedEnd(Line, At));
      return skipTo(StringEnd(Line, At));
    case '<': {
      if (S.mOnlyModifiers && S.mDepth == 0) {
        S.mInAttribute = S.mAnyAttribute = true;
        S.mAttributeDepth = 0;
        ++At;
        // "<Assembly: ...>" stands for itself.
        const std::string_view inside = TrimLeft(Line.substr(At));
        if (StartsWithNoCaseAscii(inside, "assembly:") || StartsWithNoCaseAscii(inside, "module:"))
          S.mOnlyAttributes = false;
        return;
      }
      const std::size_t end = before ? XmlEnd(Line, At) : At;
      if (end != At) return skipTo(end);
      break;
    }
    case '#':
      if (const std::size_t end = before ? DateEnd(Line, At) : At; end != At) return skipTo(end);
      ++At;
      return Note(Token::Operand);
    case '(':
    case '{':
      ++S.mDepth;
      if (LambdaWord && LambdaDepth == 0) LambdaDepth = S.mDepth;
      LambdaWord = false;
      ++At;
      return Note(Token::Open, LambdaType);
    case ')':
    case '}':
      if (S.mDepth > 0) --S.mDepth;
      ++At;
      if (LambdaType && S.mDepth >= LambdaDepth) return Note(Token::Operand, true);
      Note(Token::Operand);
      if (LambdaDepth > 0 && S.mDepth == LambdaDepth - 1) {
        LambdaClosed = true;
        LambdaType = false;
        LambdaDepth = 0;
      }
      return;
    case ':':
      ++At;
      if (At < Line.size() && Line[At] == '=') {
        ++At;
        return Note(Token::Operator);
      }
      S.mOnlyModifiers = true;
      LambdaClosed = false;
      S.mLast = Token::None;
      return;
    case ',':
      ++At;
      S.mOnlyModifiers = false;
      return Note(Token::Operator);
    case '.': ++At; return Note(Token::Operator, LambdaType);
    case '&':
      if (IsTypeCharacter(Line, At)) {
        ++At;
        return Note(Token::Operand);
      }
      break;
    case '=':
    case '+':
    case '-':
    case '*':
    case '/':
    case '\\':
    case '^':
    case '>': break;
    default:  // "?", "!", "%", "@", "$" and what is no character of the language
      ++At;
      return Note(Token::Operand, LambdaType);
  }
  S.mOnlyModifiers = S.mOnlyAttributes = false;
  ++At;
  Note(Token::Operator);
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
  const bool isApart = IsGapByte(behind) || behind == '\'';
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
