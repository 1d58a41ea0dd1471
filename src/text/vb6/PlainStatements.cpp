#include "text/vb6/PlainStatements.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>

#include "core/Ascii.h"
#include "text/Blanks.h"
#include "text/Separators.h"
#include "text/StatementKeywords.h"

namespace vendrel {
namespace {

// ---- Where a statement ends --------------------------------------------------------------------

// Whether a place that is asked for behind the last one lies in a string.
class StringWalk {
 public:
  explicit StringWalk(std::string_view text) : mText(text) {}
  bool Covers(std::size_t at) {
    const auto begin = mText.begin();
    mQuotes += std::count(begin + mDone, begin + static_cast<std::ptrdiff_t>(at), '"');
    mDone = static_cast<std::ptrdiff_t>(at);
    return mQuotes % 2 != 0;
  }

 private:
  std::string_view mText;
  std::ptrdiff_t mDone = 0, mQuotes = 0;
};

// What a mark is: nothing of import, the end of the statement, or what may mean something else.
// Where characters are not read whole, quotes do not simply pair.
enum class MarkKind : std::uint8_t { Nothing, End, Unclear };

template <typename InString>
MarkKind KindOfMark(std::string_view text, std::size_t at, const ClassifierRules& rules,
                    InString inString) {
  const auto byte = static_cast<unsigned char>(text[at]);
  // The last three begin the blanks of other kinds, among much else.
  if (!rules.WholeCharacters || byte == 0xC2 || byte == 0xE2 || byte == 0xE3)
    return MarkKind::Unclear;
  const bool isArgument = byte == ':' && at + 1 < text.size() && text[at + 1] == '=';
  if (byte >= 0x80 || isArgument || inString(at)) return MarkKind::Nothing;
  const bool isUnclear = byte == ':' || text.find('[') < at;  // "[it's]"
  return isUnclear ? MarkKind::Unclear : MarkKind::End;
}

// The apostrophe that ends a statement, or the size of the text; nothing where that is not clear.
std::optional<std::size_t> StatementEnd(std::string_view text, const ClassifierRules& rules) {
  StringWalk strings(text);
  for (std::size_t at = FirstMark(text, 0); at < text.size(); at = FirstMark(text, at + 1)) {
    const MarkKind kind =
        KindOfMark(text, at, rules, [&](std::size_t place) { return strings.Covers(place); });
    if (kind == MarkKind::Unclear) return std::nullopt;
    if (kind == MarkKind::End) return at;
  }
  return text.size();
}

// The same for the line that a glance took in, whose last place is known.
std::optional<std::size_t> StatementEnd(std::string_view line, const LineGlance& glance,
                                        const ClassifierRules& rules) {
  for (std::uint64_t marks = glance.Marks & PlacesBelow(line.size()); marks != 0;
       marks &= marks - 1) {
    const auto at = static_cast<std::size_t>(std::countr_zero(marks));
    const MarkKind kind = KindOfMark(line, at, rules, [&](std::size_t place) {
      return std::popcount(glance.Quotes & PlacesBelow(place)) % 2 != 0;
    });
    if (kind == MarkKind::Unclear) return std::nullopt;
    if (kind == MarkKind::End) return at;
  }
  return line.size();
}

// ---- How a statement begins --------------------------------------------------------------------

// What the first byte of a statement tells.
enum class Front : std::uint8_t {
  Plain,        // no word with this letter is anything but the beginning of a plain statement
  Keyword,      // a word of the language may stand there
  Conditional,  // an If, which may hide a declaration
  Unclear,      // a line number, a directive
};

constexpr std::array<Front, 256> kFronts = [] {
  std::array<Front, 256> fronts{};
  const auto set = [&](char letter, Front front) {
    fronts[static_cast<unsigned char>(letter)] = front;
    fronts[static_cast<unsigned char>(LowerAscii(letter))] = front;
  };
  for (const char c : {'A', 'C', 'D', 'E', 'F', 'G', 'P', 'S', 'T', 'R'}) set(c, Front::Keyword);
  set('I', Front::Conditional);
  for (char c = '0'; c <= '9'; ++c) set(c, Front::Unclear);
  set('#', Front::Unclear);
  return fronts;
}();

// What the first word of a statement tells, where it tells anything.
enum class Telling : std::uint8_t { Nothing, Else, End, Branch, Unclear };

struct TellingWord {
  std::string_view Word;
  Telling Tells;
};

// The words that the classifier has a type for, or a reading a use; in order.
constexpr TellingWord kTelling[] = {
    {"ATTRIBUTE", Telling::Unclear}, {"CASE", Telling::Branch},    {"CONST", Telling::Unclear},
    {"DECLARE", Telling::Unclear},   {"DIM", Telling::Unclear},    {"ELSE", Telling::Else},
    {"ELSEIF", Telling::Else},       {"END", Telling::End},        {"ENUM", Telling::Unclear},
    {"EVENT", Telling::Unclear},     {"EXIT", Telling::Branch},    {"FRIEND", Telling::Unclear},
    {"FUNCTION", Telling::Unclear},  {"GLOBAL", Telling::Unclear}, {"PRIVATE", Telling::Unclear},
    {"PROPERTY", Telling::Unclear},  {"PUBLIC", Telling::Unclear}, {"REM", Telling::Unclear},
    {"SELECT", Telling::Branch},     {"STATIC", Telling::Unclear}, {"SUB", Telling::Unclear},
    {"TYPE", Telling::Unclear},
};

// A bit for each length that a telling word with that first letter has.
constexpr std::array<std::uint16_t, 32> kTellingLengths = [] {
  std::array<std::uint16_t, 32> lengths{};
  for (const TellingWord& telling : kTelling)
    lengths[static_cast<unsigned char>(telling.Word.front()) & 31] |=
        static_cast<std::uint16_t>(1u << telling.Word.size());
  return lengths;
}();

// Where the telling words with a first letter begin in their list.
static_assert(std::ranges::is_sorted(kTelling, {}, &TellingWord::Word));
constexpr std::array<std::uint8_t, 33> kTellingFrom = [] {
  std::array<std::uint8_t, 33> from{};
  for (std::size_t letter = 0; letter < from.size(); ++letter)
    for (const TellingWord& telling : kTelling)
      if ((static_cast<unsigned char>(telling.Word.front()) & 31u) < letter) ++from[letter];
  return from;
}();

Telling WhatTells(std::string_view word) {
  if (word.size() > 15) return Telling::Nothing;
  const std::size_t letter = static_cast<unsigned char>(word.front()) & 31;
  if ((kTellingLengths[letter] >> word.size() & 1) == 0) return Telling::Nothing;
  for (std::size_t i = kTellingFrom[letter]; i < kTellingFrom[letter + 1]; ++i)
    if (EqualsNoCaseAscii(word, kTelling[i].Word)) return kTelling[i].Tells;
  return Telling::Nothing;
}

// ---- Statements --------------------------------------------------------------------------------

// Without blanks and tabs at either end: the classifier makes blanks of tabs.
std::string_view Inner(std::string_view line) {
  std::size_t from = 0, end = line.size();
  while (from + 8 <= end && EightAt(line, from) == kOnes * ' ') from += 8;
  while (from < end && IsGap(line[from])) ++from;
  while (end > from && IsGap(line[end - 1])) --end;
  return line.substr(from, end - from);
}

bool HidesDeclaration(std::string_view statement) {
  return DeclarationBehindThen(statement, false) != kNotFound;
}

// By a walk: words are shorter than a search takes to begin.
std::string_view FirstWord(std::string_view statement) {
  std::size_t end = 0;
  while (end < statement.size() && statement[end] != ' ') ++end;
  return statement.substr(0, end);
}

// "End If", "End With", "Else" and the stand-alone "End" mean nothing to the classifier.
bool IsPlainEnd(std::string_view behind) {
  return StartsWithNoCaseAscii(behind, "IF") || StartsWithNoCaseAscii(behind, "WITH");
}

// What ends a procedure, leaves it or branches has a type; what opens one goes the long way.
std::optional<LineTypeEnum> BranchType(std::string_view statement, std::string& buffer) {
  const LineTypeEnum type = PrefixedType(Collapsed(statement, buffer));  // no keyword tells them
  switch (type) {
    case OTHER:
    case SELECT_CASE_LINE:
    case CASE_LINE:
    case END_SELECT_LINE:
    case EXIT_LINE:
    case END_SUB:
    case END_FUNCTION:
    case END_PROPERTY: return type;
    default: return std::nullopt;
  }
}

std::optional<LineTypeEnum> TellingType(std::string_view word, std::string_view statement,
                                        std::string& buffer) {
  const std::string_view behind = statement.substr(word.size());
  switch (WhatTells(word)) {
    case Telling::Nothing: return OTHER;
    case Telling::Unclear: return std::nullopt;
    case Telling::Else:
      if (HidesDeclaration(statement)) return std::nullopt;
      return OTHER;
    case Telling::End:
      if (behind.empty() || IsPlainEnd(TrimLeft(behind))) return OTHER;
      break;
    case Telling::Branch: break;
  }
  return BranchType(statement, buffer);
}

std::optional<LineTypeEnum> StatementLineType(std::string_view statement, std::string& buffer) {
  switch (kFronts[static_cast<unsigned char>(statement.front())]) {
    case Front::Unclear: return std::nullopt;
    case Front::Plain: return OTHER;
    case Front::Conditional:
      if (HidesDeclaration(statement)) return std::nullopt;
      return OTHER;
    case Front::Keyword: break;
  }
  return TellingType(FirstWord(statement), statement, buffer);
}

// A comment goes on in the next line behind an underscore, and its tabs are blanks.
std::optional<std::string_view> CommentText(std::string_view behind) {
  const std::string_view comment = Trim(behind);
  if (comment.find('\t') != kNotFound) return std::nullopt;
  return comment;
}

// A line without outer gaps, by where its statement ends. `holdsTab` tells of the statement, which
// has no outer gaps either.
std::optional<PlainLine> PlainLineIn(std::string_view inner, std::size_t end,
                                     std::string_view statement, bool holdsTab,
                                     std::string& buffer) {
  PlainLine plain{Comment, {}};
  if (end < inner.size()) {
    const std::optional<std::string_view> comment = CommentText(inner.substr(end + 1));
    if (!comment) return std::nullopt;
    plain.Comment = *comment;
  }
  if (end == 0) return plain;
  // A tab inside counts as four blanks: whoever compares words would have to know.
  if (statement.back() == '_' || holdsTab) return std::nullopt;
  // A blank in front of the comment counts: "Case '" is a Case.
  if (statement.size() < end && inner[statement.size()] == ' ')
    statement = inner.substr(0, statement.size() + 1);
  else if (statement.size() < end && statement.find(' ') == kNotFound)
    return std::nullopt;
  const std::optional<LineTypeEnum> type = StatementLineType(statement, buffer);
  if (!type) return std::nullopt;
  plain.Type = *type;
  return plain;
}

}  // namespace

std::optional<PlainLine> PlainLineOf(std::string_view line, const ClassifierRules& rules,
                                     std::string& buffer) {
  const std::string_view inner = Inner(line);
  if (inner.empty()) return PlainLine{BLANK_LINE, {}};
  if (inner.back() == '_') return std::nullopt;  // a continuation, or the end of a name
  const std::optional<std::size_t> end =
      inner.front() == '\'' ? std::optional<std::size_t>(0) : StatementEnd(inner, rules);
  if (!end) return std::nullopt;
  const std::string_view statement = Inner(inner.substr(0, *end));
  return PlainLineIn(inner, *end, statement, statement.find('\t') != kNotFound, buffer);
}

std::optional<PlainLine> PlainLineOf(std::string_view line, const LineGlance& glance,
                                     const ClassifierRules& rules, std::string& buffer) {
  const std::uint64_t solid = ~glance.Gaps & PlacesBelow(line.size());
  if (solid == 0) return PlainLine{BLANK_LINE, {}};
  const auto behind = [](std::uint64_t places) {
    return static_cast<std::size_t>(64 - std::countl_zero(places));
  };
  const auto from = static_cast<std::size_t>(std::countr_zero(solid));
  const std::string_view upToGaps = line.substr(0, behind(solid));
  if (upToGaps.back() == '_') return std::nullopt;
  const std::optional<std::size_t> end = upToGaps[from] == '\''
                                             ? std::optional<std::size_t>(from)
                                             : StatementEnd(upToGaps, glance, rules);
  if (!end) return std::nullopt;
  const std::uint64_t statement = solid & PlacesBelow(*end);
  const std::size_t statementEnd = statement == 0 ? from : behind(statement);
  const std::uint64_t tabs = glance.Tabs & PlacesBelow(statementEnd) & ~PlacesBelow(from);
  return PlainLineIn(upToGaps.substr(from), *end - from, upToGaps.substr(from, statementEnd - from),
                     tabs != 0, buffer);
}

}  // namespace vendrel
