#pragma once
// A line of source cut into what a reader tells apart. The colouring of pages: all words of the
// language, numbers, dates and directives too, which the documented colouring leaves plain.

#include <cstdint>
#include <string>
#include <string_view>

namespace vendrel::site {

enum class TokenKind : std::uint8_t {
  Space,
  Keyword,
  Name,
  Number,
  String,
  Date,
  Comment,
  Directive,
  Other
};

struct SourceToken {
  TokenKind Kind = TokenKind::Other;
  std::string_view Text;
};

/// What a line hands on to the next one.
struct TokenState {
  /// A classic comment that ends with " _" goes on.
  bool CommentGoesOn = false;
  /// A string of VB.NET is still open.
  bool InString = false;
};

/// Walks a line; the tokens are views, and together they are the line.
class SourceTokens {
 public:
  SourceTokens(std::string_view line, bool isNet, TokenState& state)
      : mLine(line), mIsNet(isNet), mState(state) {}
  bool Next(SourceToken& token);

 private:
  SourceToken Take(TokenKind kind, std::size_t end);
  SourceToken TakeString(std::size_t from);
  SourceToken TakeWord();
  SourceToken TakeNumber();
  SourceToken TakeHash();
  SourceToken TakeComment();

  std::string_view mLine;
  bool mIsNet;
  TokenState& mState;
  std::size_t mAt = 0;
  bool mAtStatement = true;
  /// The token in front was ".", "!" or a name in brackets.
  bool mBehindDot = false;
};

/// Appends a text as a page colours that kind of token. Names in scripts that run from right to
/// left are isolated: what stands between two of them keeps its place.
void AppendColoured(std::string& html, TokenKind kind, std::string_view text);
/// A name without colour, in the same way.
void AppendCodeName(std::string& html, std::string_view name);

/// Whether a word belongs to the language, case ignored.
bool IsLanguageWord(std::string_view word, bool isNet);
/// The word as the language writes it: "Public" for "PUBLIC". What is no such word stays.
std::string_view AsWritten(std::string_view word, bool isNet);

}  // namespace vendrel::site
