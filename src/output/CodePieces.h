#pragma once
// A line of source cut into pieces of one colour. The pieces are views, and together they are the
// line.

#include <string_view>

namespace vendrel {

enum class CodePart { Plain, Keyword, Comment, String };

struct CodePiece {
  CodePart Part = CodePart::Plain;
  std::string_view Text;
};

/// Walks a line word by word, as the documented colouring does: a keyword and the apostrophe of a
/// comment are seen at the start of a word only, and in a word with a string nothing else is. A
/// string that is not closed ends with the line. The line comes without leading blanks.
class WordPieces {
 public:
  explicit WordPieces(std::string_view line) : mLine(line) {}
  /// The next piece, never empty; false at the end.
  bool Next(CodePiece& piece);

 private:
  CodePiece TakeWord();

  std::string_view mLine;
  std::size_t mAt = 0;
  std::size_t mShown = 0;
  CodePiece mWaiting;
  bool mBehindString = false;
};

/// Walks a line by the words of the language wherever they stand: "ByVal" behind a parenthesis, a
/// comment right behind code, a `Rem`, doubled quotes. Names behind a dot, in brackets or of an
/// argument are no keywords.
class TokenPieces {
 public:
  /// `commentGoesOn` says whether the comment of the line before is continued, and is set for the
  /// next one.
  TokenPieces(std::string_view line, bool& commentGoesOn)
      : mLine(line), mCommentGoesOn(commentGoesOn) {}
  /// The next piece, never empty; false at the end.
  bool Next(CodePiece& piece);

 private:
  CodePiece TakeToken();
  CodePiece TakeComment(std::size_t from);
  CodePiece TakeString();
  CodePiece TakeName();
  void SkipOther();

  std::string_view mLine;
  bool& mCommentGoesOn;
  std::size_t mAt = 0;
  std::size_t mShown = 0;
  CodePiece mWaiting;
  bool mAtStatement = true;
};

}  // namespace vendrel
