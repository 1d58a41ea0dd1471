// What only VB.NET has among tokens: lines that go on by themselves, interpolated strings.

#include <algorithm>

#include "uses/Tokens.h"

namespace vendrel {

// The head of a lambda whose body stands on lines of its own: "Sub(x)", "Function(x) As T".
bool TokenScan::EndsLambdaHead() const {
  std::size_t last = Tokens.size() - 1;
  for (std::size_t at = Tokens.size(); at-- > 1 && Tokens[at].Kind == TokenKind::Word;)
    if (Tokens[at].Name == word::As) last = at - 1;
  if (Tokens[last].Mark != ')' || Tokens[last].Match < 1) return false;
  const Symbol head = Tokens[static_cast<std::size_t>(Tokens[last].Match) - 1].Name;
  return head == word::Sub || head == word::Function;
}

// A part of an interpolated string, up to the hole or quotation mark behind it: $"a {b} c".
void TokenScan::TakeInterpolated(std::size_t from) {
  std::size_t end = from;
  while (end < mText.size()) {
    const char c = mText[end];
    if (c == '"' || c == '{') {
      if (At(end + 1) != c) break;
      ++end;  // doubled: the character itself
    }
    ++end;
  }
  CountLines(end);  // a string may stand on several lines
  const bool opens = end < mText.size() && mText[end] == '{';
  Push(TokenKind::Text, mAt, std::min(opens ? end : end + 1, mText.size()));
  if (!opens) return;
  Push(TokenKind::Mark, mAt, mAt + 1);
  Tokens.back().Mark = '(';
  mOpen.push_back(static_cast<std::int32_t>(Tokens.size()) - 1);
  mHoles.push_back(mOpen.back());
}

// The end of a hole, or what its value is formatted by: then the string goes on.
bool TokenScan::TakeHoleEnd(char c) {
  if (mHoles.empty() || mOpen.empty() || mOpen.back() != mHoles.back()) return false;
  if (c == ':') mAt = std::min(mText.find_first_of("}\r\n", mAt), mText.size());
  if (At(mAt) != '}') return false;
  Push(TokenKind::Mark, mAt, mAt + 1);
  Token& token = Tokens.back();
  token.Mark = ')';
  token.Match = mOpen.back();
  Tokens[static_cast<std::size_t>(mOpen.back())].Match =
      static_cast<std::int32_t>(Tokens.size()) - 1;
  mOpen.pop_back();
  mHoles.pop_back();
  TakeInterpolated(mAt);
  return true;
}

// An XML literal where an operand is due, or the name of an axis: "root.<item>". False for a
// comparison, an attribute, and what nothing closes.
bool TokenScan::TakeXml() {
  if (!mRules.DotNet || Tokens.empty()) return false;
  const Token& before = Tokens.back();
  const bool isAxis = before.Mark == '.';
  const bool isWord = before.Kind == TokenKind::Word && !before.Bracketed;
  const bool isDue =
      before.Mark != 0 && std::string_view("=(,{&+:").find(before.Mark) != std::string_view::npos;
  const bool isDueWord = isWord && (before.Name == word::Return || before.Name == word::Select ||
                                    before.Name == word::In || before.Name == word::Yield);
  if (isAxis) {
    const std::size_t end = mText.find_first_of(">\r\n", mAt);
    if (end == std::string_view::npos || mText[end] != '>') return false;
    Push(TokenKind::Text, mAt, end + 1);
    return true;
  }
  if (!isDue && !isDueWord && before.Mark != kNamedMark) return false;
  const std::size_t end = XmlLiteralEnd(mText, mAt);
  if (end == mAt) return false;
  TakeXmlPart({mText.substr(0, end), mAt});
  return true;
}

// Up to the end of the literal or its next hole, in which code stands.
void TokenScan::TakeXmlPart(XmlWalk walk) {
  const bool isHole = walk.Next() == XmlWalk::Stop::Hole;
  const std::size_t begin = mAt, end = walk.At();
  CountLines(end);
  Push(TokenKind::Text, begin, end);
  if (!isHole) return;
  Push(TokenKind::Mark, end, end + 3);
  Tokens.back().Mark = '(';
  mOpen.push_back(static_cast<std::int32_t>(Tokens.size()) - 1);
  mXmlHoles.push_back({mOpen.back(), walk});
}

bool TokenScan::TakeXmlHoleEnd() {
  if (mXmlHoles.empty() || mOpen.empty() || mOpen.back() != mXmlHoles.back().Open ||
      At(mAt + 1) != '>')
    return false;
  XmlHole hole = mXmlHoles.back();
  mXmlHoles.pop_back();
  Push(TokenKind::Mark, mAt, mAt + 2);
  Tokens.back().Mark = ')';
  Tokens.back().Match = mOpen.back();
  Tokens[static_cast<std::size_t>(mOpen.back())].Match =
      static_cast<std::int32_t>(Tokens.size()) - 1;
  mOpen.pop_back();
  hole.Walk.GoOnAt(mAt);
  TakeXmlPart(hole.Walk);
  return true;
}

}  // namespace vendrel
