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

}  // namespace vendrel
