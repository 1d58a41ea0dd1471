#pragma once
// The tokens of a logical line: physical lines joined by continuations, comments left out.

#include <cstdint>
#include <string_view>
#include <vector>

#include "text/net/XmlLiterals.h"
#include "uses/Symbols.h"

namespace vendrel {

enum class TokenKind : std::uint8_t { Word, Number, Text, Date, Mark };

struct Token {
  std::uint32_t Begin = 0;  ///< bytes of the text of the module
  std::uint32_t End = 0;
  Symbol Name = word::None;  ///< of a word
  std::uint32_t Line = 0;    ///< physical, from 1
  std::int32_t Match = -1;   ///< of a parenthesis its counterpart; -1 where there is none
  TokenKind Kind = TokenKind::Mark;
  char Mark = 0;           ///< of a mark; `kNamedMark` is ":="
  char Suffix = 0;         ///< type character of a word
  bool GapBefore = false;  ///< a blank or continuation stands in front
  bool Bracketed = false;
  bool Answered = false;  ///< has its record, or needs none
};

inline constexpr char kNamedMark = 'N';

/// How lines are read where languages differ.
struct TokenRules {
  bool DotNet = false;
};

/// Walks the code of a module line by line.
class TokenScan {
 public:
  TokenScan(Symbols& symbols, std::string_view text, TokenRules rules)
      : mSymbols(symbols), mText(text), mRules(rules) {}

  /// Goes behind the header: version, controls, attributes.
  void SkipHeader();
  /// Reads the next logical line with tokens, or directive. False at the end of the text.
  bool Next();

  /// Valid until the next call.
  std::vector<Token> Tokens;
  /// Whether a colon stands between statements, or behind a label.
  bool HasColons = false;
  /// The line is a directive, `Directive` its text; then there are no tokens.
  bool IsDirective = false;
  std::string_view Directive;

  std::string_view Text() const { return mText; }
  std::string_view TextOf(const Token& token) const {
    return mText.substr(token.Begin, token.End - token.Begin);
  }
  /// First byte of the physical line on which a token stands.
  std::size_t LineStart(std::uint32_t line) const { return mLineStarts[line - mFirstLine]; }

 private:
  void BeginLine();
  void EndLine();
  bool TakeContinuation();
  bool GoesOn();
  bool EndsLambdaHead() const;
  void TakeComment();
  bool TakeDirective();
  void TakeWord();
  void TakeBracketed();
  void TakeNumber();
  void TakeText();
  void CountLines(std::size_t end);
  void TakeInterpolated(std::size_t from);
  bool TakeHoleEnd(char c);
  bool TakeXml();
  void TakeXmlPart(XmlWalk walk);
  bool TakeXmlHoleEnd();
  bool TakeDate();
  void TakeMark();
  Token& Push(TokenKind kind, std::size_t begin, std::size_t end);
  bool StartsStatement() const;
  std::string_view PhysicalLine() const;
  char At(std::size_t at) const { return at < mText.size() ? mText[at] : '\0'; }

  Symbols& mSymbols;
  std::string_view mText;
  TokenRules mRules;
  std::size_t mAt = 0;
  std::uint32_t mLine = 1;
  std::uint32_t mFirstLine = 1;
  bool mGap = true;
  std::vector<std::size_t> mLineStarts;
  std::vector<std::int32_t> mOpen;
  std::vector<std::int32_t> mHoles;  // of them those of interpolated strings
  struct XmlHole {
    std::int32_t Open;
    XmlWalk Walk;
  };
  std::vector<XmlHole> mXmlHoles;  // and those of XML literals
};

}  // namespace vendrel
