#include "intake/net/NetLineScan.h"

#include <algorithm>

#include "core/Ascii.h"
#include "intake/net/NetWords.h"
#include "text/Separators.h"
#include "text/Words.h"
#include "text/net/XmlLiterals.h"

namespace vendrel {
namespace {

// A literal or name with its type character: "1&" is no concatenation.
bool IsTypeCharacter(std::string_view line, std::size_t at) {
  return at > 0 && line[at] == '&' && (IsWordByte(line[at - 1]));
}

}  // namespace

void NetStatementScan::LineScan::Run() {
  while (At < Line.size()) {
    const char c = Line[At];
    if (IsGap(c)) {
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
  if (word == "_" && ends && (begin == 0 || IsGap(Line[begin - 1]))) {
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

}  // namespace vendrel
