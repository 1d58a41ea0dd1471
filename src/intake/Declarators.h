#pragma once
// The declarators of one statement, read from left to right by a cursor: a list of any length is
// walked once.

#include <string>
#include <string_view>

#include "intake/LanguageRules.h"
#include "model/Declarations.h"
#include "model/Variable.h"

namespace vendrel {

/// Non-empty words of a statement, cut at blanks. In the complete reading a comma outside of
/// parentheses and strings ends a word too ("a,b" is two).
class DeclaratorWords {
 public:
  DeclaratorWords(std::string_view statement, bool cutAtCommas, bool wholeNames);
  /// The next word without taking it; empty at the end.
  std::string_view Peek() const { return mNext; }
  std::string_view Take();
  bool AtEnd() const { return mNext.empty(); }
  /// Everything from the next word on.
  std::string_view Rest() const { return mRest; }

 private:
  void Advance();
  std::string_view mRest;
  std::string_view mNext;
  bool mCutAtCommas;
  bool mWholeNames;
};

/// The variables of a `Dim`, `Public`, `Private`, `Global`, `Static` or field statement.
class DeclaratorReader {
 public:
  /// A member of a Type or Enum may have the name of a modifier (`MemberNames`).
  DeclaratorReader(std::string_view statement, const SourceRules& rules, bool isMember = false);
  bool AtEnd() const { return mWords.AtEnd(); }
  /// Reads the next declarator into a fresh variable.
  void Read(Variable& variable);
  /// The statement of the declarators not read yet: its keyword and the rest.
  std::string Remainder() const;

 private:
  bool ReadName(Variable& variable, std::string_view name);
  void ReadBehindName(Variable& variable);
  bool TakeSubscriptWord(std::string_view word);
  bool TakeTypeWord(Variable& variable, std::string_view word);
  bool TakeOtherWord(Variable& variable, std::string_view word);
  bool TakeLength(Variable& variable);

  const LanguageRules& mLanguage;
  std::string mSpaced;
  DeclaratorWords mWords;
  std::string_view mKeyword;
  std::string mSubscript;
  bool mWholeLists;
  bool mWholeNames;
  bool mPlainName;
  bool mInSubscript = false;
  bool mFoundAs = false;
  bool mFoundType = false;
};

/// The constants of a `Const` statement.
class ConstantReader {
 public:
  ConstantReader(std::string_view statement, bool wholeLists);
  bool AtEnd() const { return mAtEnd; }
  void Read(Constant& constant);
  /// The statement of the constants not read yet; empty at the end.
  std::string Remainder() const;

 private:
  std::string_view HeadWord() const;
  bool TakeHeading(std::string_view word);
  void ReadHead(Constant& constant);
  void ReadValue(Constant& constant);

  std::string_view mRest;
  std::string mHeading;
  std::string mName;
  SharedText mAccess = "PRIVATE";
  bool mAtEnd = false;
  bool mWholeLists;
};

}  // namespace vendrel
