// Statements of Visual Basic 5 and 6.

#include <array>

#include "core/Ascii.h"
#include "text/Separators.h"
#include "text/StatementKeywords.h"

namespace vendrel {
namespace {

// First letters with which any keyword or prefix can begin: most statements begin otherwise.
constexpr std::array<bool, 256> kFirstLetters = [] {
  std::array<bool, 256> letters{};
  for (const char c : {'#', 'A', 'C', 'D', 'E', 'F', 'G', 'P', 'S', 'T'}) {
    letters[static_cast<unsigned char>(c)] = true;
    letters[static_cast<unsigned char>(LowerAscii(c))] = true;
  }
  return letters;
}();

bool IsAnyOf(std::string_view word, std::initializer_list<std::string_view> list) {
  for (const std::string_view item : list)
    if (EqualsNoCaseAscii(word, item)) return true;
  return false;
}

// First letters of the words that `ClassicKeyword` knows.
constexpr bool MayBeKeyword(char letter) {
  switch (UpperAscii(letter)) {
    case 'D':
    case 'E':
    case 'F':
    case 'P':
    case 'S':
    case 'T': return true;
    default: return false;
  }
}

// The keyword stands first, or behind an access word and "Static".
StatementType ClassicKeyword(std::string_view statement) {
  if (!MayBeKeyword(statement.front())) return {};
  StatementWords words(statement);
  std::string_view word = *words.Next();
  const bool access = IsAnyOf(word, {"PUBLIC", "PRIVATE", "FRIEND"});
  if (access || EqualsNoCaseAscii(word, "STATIC")) {
    auto next = words.Next();
    if (access && next && EqualsNoCaseAscii(*next, "STATIC")) next = words.Next();
    if (!next) return {OTHER, true};
    return KeywordType(*next, words);
  }
  if (EqualsNoCaseAscii(word, "PROPERTY")) {
    const auto next = words.Next();
    if (!next) return {OTHER, true};
    return IsAnyOf(*next, {"GET", "LET", "SET"}) ? StatementType{START_PROPERTY} : StatementType{};
  }
  if (IsAnyOf(word, {"SUB", "FUNCTION", "ENUM", "TYPE", "EVENT", "DECLARE"}))
    return KeywordType(word, words);
  return {};
}

class ClassicStatementRules final : public StatementRules {
 public:
  StatementType Classify(std::string_view statement) const override {
    if (statement.empty()) return {};
    if (!kFirstLetters[static_cast<unsigned char>(statement.front())]) return {};
    const StatementType type = ClassicKeyword(statement);
    if (type.LineType != OTHER || type.MissingWord) return type;
    return {PrefixedType(statement)};
  }
  std::string_view Trimmed(std::string_view statement) const override { return statement; }
  bool StandsInside(std::string_view text, std::size_t at, std::size_t& searched) const override {
    return WalkClosed(text, at, searched, ClosedEnd);
  }
};

constexpr ClassicStatementRules kClassicStatements;

}  // namespace

const StatementRules& ClassicStatements() { return kClassicStatements; }

}  // namespace vendrel
