#pragma once
// Words of VB.NET declarations.

#include <initializer_list>
#include <string_view>

#include "core/Enums.h"

namespace vendrel {

/// Whether a word is one of a list, case ignored.
bool IsWordOf(std::string_view word, std::initializer_list<std::string_view> list);

/// What a word may be, as bits; a word is looked up once for all of them.
enum NetWordKinds : unsigned {
  /// In front of the keyword or name of a declaration.
  nwModifier = 1,
  /// An operator, or a word of queries and initialisers behind which a line may end.
  nwOperator = 2,
  /// The beginning of a query: `From`, `Aggregate`.
  nwQuery = 4,
  /// `Sub` or `Function`.
  nwProcedure = 8,
  nwEnd = 16,
  nwRemark = 32,
  nwAs = 64,
  /// At the front of a statement that the intake tells apart from others, and no modifier.
  nwStatement = 128
};
/// The kinds of a word, case ignored; 0 for any that has none.
unsigned KindsOfNetWord(std::string_view word);

/// Whether a word may stand in front of the keyword or name of a declaration.
inline bool IsNetModifier(std::string_view word) { return KindsOfNetWord(word) & nwModifier; }

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
