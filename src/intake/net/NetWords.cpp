#include "intake/net/NetWords.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>

#include "core/Ascii.h"
#include "text/Separators.h"
#include "text/Words.h"

namespace vendrel {
namespace {

struct KeywordType {
  std::string_view Word;
  LineTypeEnum Type;
};

constexpr KeywordType kKeywords[] = {
    {"SUB", START_SUB},
    {"FUNCTION", START_FUNCTION},
    {"OPERATOR", START_FUNCTION},
    {"PROPERTY", START_PROPERTY},
    {"EVENT", EVENT_DECLARATION},
    {"GET", START_PROPERTY_SUBBLOCK},
    {"SET", START_PROPERTY_SUBBLOCK},
    {"CLASS", START_CLASS},
    {"STRUCTURE", START_STRUCTURE},
    {"INTERFACE", START_INTERFACE},
    {"NAMESPACE", START_NAMESPACE},
    {"ENUM", START_ENUM},
    {"DECLARE", DECLARE_STATEMENT},
};

constexpr KeywordType kEnds[] = {
    {"SUB", END_SUB},
    {"FUNCTION", END_FUNCTION},
    {"OPERATOR", END_FUNCTION},
    {"PROPERTY", END_PROPERTY},
    {"GET", END_PROPERTY_SUBBLOCK},
    {"SET", END_PROPERTY_SUBBLOCK},
    {"ADDHANDLER", END_PROPERTY_SUBBLOCK},
    {"REMOVEHANDLER", END_PROPERTY_SUBBLOCK},
    {"RAISEEVENT", END_PROPERTY_SUBBLOCK},
    {"CLASS", END_CLASS},
    {"NAMESPACE", END_NAMESPACE},
    {"ENUM", END_ENUM},
    {"SELECT", END_SELECT_LINE},
};

struct WordKinds {
  std::string_view Word;
  unsigned Kinds;
};

// By their first letters.
constexpr WordKinds kKinds[] = {
    {"AGGREGATE", nwQuery},
    {"AND", nwOperator},
    {"ANDALSO", nwOperator},
    {"AS", nwAs},
    {"ASYNC", nwModifier},
    {"BY", nwOperator},
    {"CASE", nwStatement},
    {"CLASS", nwStatement},
    {"CONST", nwModifier},
    {"CUSTOM", nwModifier},
    {"DECLARE", nwStatement},
    {"DEFAULT", nwModifier},
    {"DELEGATE", nwModifier},
    {"DIM", nwModifier},
    {"END", nwEnd},
    {"ENUM", nwStatement},
    {"EQUALS", nwOperator},
    {"EVENT", nwStatement},
    {"EXIT", nwStatement},
    {"FRIEND", nwModifier},
    {"FROM", nwOperator | nwQuery},
    {"FUNCTION", nwProcedure | nwStatement},
    {"GET", nwStatement},
    {"GLOBAL", nwModifier},
    {"IMPLEMENTS", nwStatement},
    {"IMPORTS", nwStatement},
    {"IN", nwOperator},
    {"INHERITS", nwStatement},
    {"INTERFACE", nwStatement},
    {"INTO", nwOperator},
    {"IS", nwOperator},
    {"ISNOT", nwOperator},
    {"ITERATOR", nwModifier},
    {"JOIN", nwOperator},
    {"LET", nwOperator},
    {"LIKE", nwOperator},
    {"MOD", nwOperator},
    {"MODULE", nwStatement},
    {"MUSTINHERIT", nwModifier},
    {"MUSTOVERRIDE", nwModifier},
    {"NAMESPACE", nwStatement},
    {"NARROWING", nwModifier},
    {"NOT", nwOperator},
    {"NOTINHERITABLE", nwModifier},
    {"NOTOVERRIDABLE", nwModifier},
    {"OF", nwOperator},
    {"OPERATOR", nwStatement},
    {"OR", nwOperator},
    {"ORELSE", nwOperator},
    {"OVERLOADS", nwModifier},
    {"OVERRIDABLE", nwModifier},
    {"OVERRIDES", nwModifier},
    {"PARTIAL", nwModifier},
    {"PRIVATE", nwModifier},
    {"PROPERTY", nwStatement},
    {"PROTECTED", nwModifier},
    {"PUBLIC", nwModifier},
    {"READONLY", nwModifier},
    {"REM", nwRemark},
    {"SELECT", nwStatement},
    {"SET", nwStatement},
    {"SHADOWS", nwModifier},
    {"SHARED", nwModifier},
    {"STATIC", nwModifier},
    {"STRUCTURE", nwStatement},
    {"SUB", nwProcedure | nwStatement},
    {"WHERE", nwOperator},
    {"WIDENING", nwModifier},
    {"WITH", nwOperator},
    {"WITHEVENTS", nwModifier},
    {"WRITEONLY", nwModifier},
    {"XOR", nwOperator},
};

// Where the words of each letter begin; behind the last letter, the end.
constexpr std::array<std::uint8_t, 27> kFirstOfLetter = [] {
  std::array<std::uint8_t, 27> first{};
  std::size_t at = 0;
  for (std::size_t letter = 0; letter < 26; ++letter) {
    first[letter] = static_cast<std::uint8_t>(at);
    while (at < std::size(kKinds) && kKinds[at].Word.front() == static_cast<char>('A' + letter))
      ++at;
  }
  first[26] = static_cast<std::uint8_t>(at);
  return first;
}();
static_assert(kFirstOfLetter[26] == std::size(kKinds));

// The lengths of the words of each letter, as bits: most words are told apart by theirs.
constexpr std::array<std::uint32_t, 26> kLengthsOfLetter = [] {
  std::array<std::uint32_t, 26> lengths{};
  for (const WordKinds& row : kKinds)
    lengths[static_cast<std::size_t>(row.Word.front() - 'A')] |= 1u << row.Word.size();
  return lengths;
}();

LineTypeEnum TypeIn(const KeywordType* from, const KeywordType* to, std::string_view word) {
  for (; from != to; ++from)
    if (EqualsNoCaseAscii(from->Word, word)) return from->Type;
  return OTHER;
}

// Behind the attributes at the front; all of it where one is not closed.
std::string_view BehindAttributes(std::string_view text) {
  while (text.starts_with('<')) {
    int depth = 0;
    std::size_t at = 1;
    for (; at < text.size(); ++at) {
      const char c = text[at];
      if (c == '"') at = StringEnd(text, at) - 1;
      if (c == '(') ++depth;
      if (c == ')') --depth;
      if (c == '>' && depth <= 0) break;
    }
    if (at >= text.size()) return text;
    text = TrimLeft(text.substr(at + 1));
  }
  return text;
}

std::string_view WithoutGaps(std::string_view text) {
  while (!text.empty() && IsGap(text.front())) text.remove_prefix(1);
  return text;
}

bool IsKept(LineTypeEnum type) {
  switch (type) {
    case Comment:
    case TAGGED_COMMENT:
    case BLANK_LINE:
    case COMPILER_DIRECTIVE:
    case SELECT_CASE_LINE:
    case CASE_LINE:
    case EXIT_LINE: return true;
    default: return false;
  }
}

}  // namespace

bool IsWordOf(std::string_view word, std::initializer_list<std::string_view> list) {
  return std::any_of(list.begin(), list.end(),
                     [&](std::string_view item) { return EqualsNoCaseAscii(word, item); });
}

unsigned KindsOfNetWord(std::string_view word) {
  if (word.empty() || !IsLetterAscii(word.front())) return 0;
  const auto letter = static_cast<std::size_t>((word.front() | 0x20) - 'a');
  if (word.size() > 31 || !(kLengthsOfLetter[letter] >> word.size() & 1)) return 0;
  for (std::size_t i = kFirstOfLetter[letter]; i < kFirstOfLetter[letter + 1]; ++i)
    if (EqualsNoCaseAscii(kKinds[i].Word, word)) return kKinds[i].Kinds;
  return 0;
}

NetWords::NetWords(std::string_view statement) : mRest(BehindAttributes(WithoutGaps(statement))) {}

std::string_view NetWords::Next() {
  std::size_t end = 0;
  if (mRest.starts_with('['))
    end = BracketEnd(mRest, 0);
  else
    while (end < mRest.size() && IsWordByte(mRest[end])) ++end;
  const std::string_view word = mRest.substr(0, end);
  mRest = WithoutGaps(mRest.substr(end));
  return word;
}

std::string_view NetWords::Rest() const { return mRest; }

LineTypeEnum NetTypeOf(std::string_view statement, LineTypeEnum known) {
  if (IsKept(known)) return known;
  NetWords words(statement);
  std::string_view word = words.Next();
  if (EqualsNoCaseAscii(word, "END")) {
    const LineTypeEnum end = TypeIn(std::begin(kEnds), std::end(kEnds), words.Next());
    return words.Rest().empty() ? end : OTHER;
  }
  if (EqualsNoCaseAscii(word, "INHERITS")) return INHERITS_STATEMENT;
  if (EqualsNoCaseAscii(word, "IMPLEMENTS")) return IMPLEMENTS_STATEMENT;
  if (EqualsNoCaseAscii(word, "IMPORTS")) return IMPORTS_STATEMENT;
  bool modified = false, constant = false;
  while (IsNetModifier(word)) {
    // Some are no keywords: "Custom = 5", "Async.Start()".
    const std::string_view rest = words.Rest();
    if (rest.empty() || (!IsWordByte(rest.front()) && rest.front() != '[')) return OTHER;
    modified = true;
    constant |= EqualsNoCaseAscii(word, "CONST");
    word = words.Next();
  }
  if (word.empty()) return OTHER;
  const LineTypeEnum type = TypeIn(std::begin(kKeywords), std::end(kKeywords), word);
  if (type == OTHER) {
    if (!modified || EqualsNoCaseAscii(word, "MODULE")) return OTHER;
    return constant ? CONST_DECLARATION : VAR_DECLARATION;
  }
  // "Sub(x)" is a lambda; a name or operator follows a procedure.
  const std::string_view rest = words.Rest();
  if ((type == START_SUB || type == START_FUNCTION) && rest.starts_with('(')) return OTHER;
  if (type == START_PROPERTY_SUBBLOCK && !rest.empty() && !rest.starts_with('(')) return OTHER;
  if (rest.empty() && type != START_PROPERTY_SUBBLOCK) return OTHER;
  return type;
}

}  // namespace vendrel
