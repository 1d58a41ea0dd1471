#pragma once
// Keywords and prefixes of statements that the languages share.

#include <optional>
#include <string_view>

#include "text/StatementRules.h"

namespace vendrel {

/// Words of a statement, cut at single blanks; asked for one after the other.
class StatementWords {
 public:
  explicit StatementWords(std::string_view statement) : mRest(statement) {}
  // In the header, and by a walk: words are shorter than a search takes to begin.
  std::optional<std::string_view> Next() {
    if (mDone) return std::nullopt;
    std::size_t end = 0;
    while (end < mRest.size() && mRest[end] != ' ') ++end;
    const std::string_view word(mRest.data(), end);
    mDone = end == mRest.size();
    if (!mDone) mRest.remove_prefix(end + 1);
    return word;
  }

 private:
  std::string_view mRest;
  bool mDone = false;
};

/// The type that a keyword gives which both languages have; the word behind it is read for "SUB"
/// alone.
StatementType KeywordType(std::string_view keyword, StatementWords& words);

/// The type of a statement that no keyword told, by how it begins; `OTHER` if no row holds.
LineTypeEnum PrefixedType(std::string_view statement);

}  // namespace vendrel
