#pragma once
// What the classifier asks of a language: everything else about a line is the same in both.

#include <cstddef>
#include <string_view>

#include "core/Enums.h"

namespace vendrel {

/// What a statement is.
struct StatementType {
  LineTypeEnum LineType = OTHER;
  /// A keyword stands where another word must follow, and none does.
  bool MissingWord = false;
};

/// The statements of a language: one object each, chosen once a module. Asked once a statement or
/// once a colon, never once a character.
class StatementRules {
 public:
  static const StatementRules& Of(LanguageVersionEnum language);

  /// The type of a statement whose runs of blanks are collapsed, from its first words and prefixes
  /// in a fixed order: a later test only runs when every earlier one failed. ASCII case is ignored.
  virtual StatementType Classify(std::string_view statement) const = 0;
  /// A statement without what stands in front of it and says nothing of its type.
  virtual std::string_view Trimmed(std::string_view statement) const = 0;
  /// Whether the character at `at`, which stands outside of strings, is part of what holds no
  /// separators: a name in brackets, a date literal, or what else the language has of the kind.
  /// `searched` begins as 0 and remembers how far the line has been walked.
  virtual bool StandsInside(std::string_view text, std::size_t at, std::size_t& searched) const = 0;

 protected:
  StatementRules() = default;
  ~StatementRules() = default;
};

/// The two languages.
const StatementRules& ClassicStatements();
const StatementRules& NetStatements();

inline const StatementRules& StatementRules::Of(LanguageVersionEnum language) {
  return language == lvVisualBasicDotNet ? NetStatements() : ClassicStatements();
}

}  // namespace vendrel
