#pragma once
// Words of VB.NET declarations.

#include <initializer_list>
#include <string_view>

#include "core/Enums.h"

namespace vendrel {

/// Whether a word is one of a list, case ignored.
bool IsWordOf(std::string_view word, std::initializer_list<std::string_view> list);

/// Whether a word may stand in front of the keyword or name of a declaration.
bool IsNetModifier(std::string_view word);

/// The words of a statement behind its attributes, each a plain identifier; a name in brackets is
/// one with them. Empty at the end and where something else stands.
class NetWords {
 public:
  explicit NetWords(std::string_view statement);
  std::string_view Next();
  /// What follows the words so far, without blanks in front.
  std::string_view Rest() const;

 private:
  std::string_view mRest;
};

/// What a statement is, by its keyword and not by any word that stands in it. `known` is what the
/// classifier found, and stays where no declaration, member or end of one is seen.
LineTypeEnum NetTypeOf(std::string_view statement, LineTypeEnum known);

}  // namespace vendrel
