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

// What the first word of a statement may be.
enum class FirstWord : std::uint8_t { Other, Access, Static, Property, Opening };

// Each length has few words.
FirstWord FirstWordOf(std::string_view word) {
  const auto is = [&](std::string_view keyword) { return EqualsNoCaseAscii(word, keyword); };
  switch (word.size()) {
    case 3: return is("SUB") ? FirstWord::Opening : FirstWord::Other;
    case 4: return is("ENUM") || is("TYPE") ? FirstWord::Opening : FirstWord::Other;
    case 5: return is("EVENT") ? FirstWord::Opening : FirstWord::Other;
    case 6:
      if (is("PUBLIC") || is("FRIEND")) return FirstWord::Access;
      return is("STATIC") ? FirstWord::Static : FirstWord::Other;
    case 7:
      if (is("PRIVATE")) return FirstWord::Access;
      return is("DECLARE") ? FirstWord::Opening : FirstWord::Other;
    case 8:
      if (is("PROPERTY")) return FirstWord::Property;
      return is("FUNCTION") ? FirstWord::Opening : FirstWord::Other;
    default: return FirstWord::Other;
  }
}

bool IsPropertyWord(std::string_view word) {
  const auto is = [&](std::string_view keyword) { return EqualsNoCaseAscii(word, keyword); };
  return word.size() == 3 && (is("GET") || is("LET") || is("SET"));
}

// The keyword stands first, or behind an access word and "Static".
StatementType ClassicKeyword(std::string_view statement) {
  StatementWords words(statement);
  const std::string_view word = *words.Next();
  const FirstWord first = FirstWordOf(word);
  if (first == FirstWord::Other) return {};
  if (first == FirstWord::Opening) return KeywordType(word, words);
  auto next = words.Next();
  if (first == FirstWord::Access && next && EqualsNoCaseAscii(*next, "STATIC")) next = words.Next();
  if (!next) return {OTHER, true};
  if (first != FirstWord::Property) return KeywordType(*next, words);
  return IsPropertyWord(*next) ? StatementType{START_PROPERTY} : StatementType{};
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
