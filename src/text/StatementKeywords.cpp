#include "text/StatementKeywords.h"

#include <array>
#include <bit>
#include <cstdint>
#include <optional>

#include "core/Ascii.h"
#include "text/CodeLine.h"
#include "text/Keywords.h"

namespace vendrel {
namespace {

struct WordType {
  std::string_view Word;
  LineTypeEnum Type;
};

// Procedure names that have a type of their own, parentheses included: the token is compared whole.
constexpr WordType kSubNames[] = {
    {"CLASS_INITIALIZE()", START_CLASS_INITIALISE},
    {"ADDININSTANCE_INITIALIZE()", START_CLASS_INITIALISE},
    {"DATAENVIRONMENT_INITIALIZE()", START_CLASS_INITIALISE},
    {"DATAREPORT_INITIALIZE()", START_CLASS_INITIALISE},
    {"DHTMLPAGE_INITIALIZE()", START_CLASS_INITIALISE},
    {"CLASS_TERMINATE()", START_CLASS_TERMINATE},
    {"ADDININSTANCE_TERMINATE()", START_CLASS_TERMINATE},
    {"DATAENVIRONMENT_TERMINATE()", START_CLASS_TERMINATE},
    {"DATAREPORT_TERMINATE()", START_CLASS_TERMINATE},
    {"DHTMLPAGE_TERMINATE()", START_CLASS_TERMINATE},
    {"FORM_LOAD()", FORM_LOAD},
    {"USERCONTROL_INITIALIZE()", START_USERCONTROL_INITIALISE},
    {"USERCONTROL_TERMINATE()", START_USERCONTROL_TERMINATE},
    {"USERDOCUMENT_INITIALIZE()", START_USERDOCUMENT_INITIALISE},
    {"USERDOCUMENT_TERMINATE()", START_USERDOCUMENT_TERMINATE},
};

constexpr WordType kOpeningKeywords[] = {
    {"FUNCTION", START_FUNCTION}, {"PROPERTY", START_PROPERTY}, {"ENUM", START_ENUM},
    {"TYPE", START_TYPE},         {"EVENT", EVENT_DECLARATION}, {"DECLARE", DECLARE_STATEMENT},
};

constexpr WordType kDotNetKeywords[] = {
    {"GET", START_PROPERTY_SUBBLOCK}, {"SET", START_PROPERTY_SUBBLOCK},
    {"NAMESPACE", START_NAMESPACE},   {"CLASS", START_CLASS},
    {"STRUCTURE", START_STRUCTURE},   {"INTERFACE", START_INTERFACE},
    {"INHERITS", INHERITS_STATEMENT}, {"IMPLEMENTS", IMPLEMENTS_STATEMENT},
    {"IMPORTS", IMPORTS_STATEMENT},
};

constexpr std::string_view kDotNetWalk[] = {
    "CLASS",    "INTERFACE", "STRUCTURE", "NAMESPACE", "GET",     "SUB",      "PROPERTY",
    "FUNCTION", "ENUM",      "EVENT",     "DECLARE",   "IMPORTS", "INHERITS", "IMPLEMENTS",
};

enum class In { Both, DotNet };
struct PrefixType {
  std::string_view Prefix;
  LineTypeEnum Type;
  In Language = In::Both;
};

// The first row that holds decides; the rows from "END SET" on belong to VB.NET.
constexpr PrefixType kPrefixes[] = {
    {"#", COMPILER_DIRECTIVE},
    {"END SUB", END_SUB},
    {"END FUNCTION", END_FUNCTION},
    {"END PROPERTY", END_PROPERTY},
    {"PUBLIC DECLARE FUNCTION", DECLARE_FUNCTION},
    {"DECLARE FUNCTION", DECLARE_FUNCTION},
    {"PUBLIC DECLARE SUB", DECLARE_SUB},
    {"DECLARE SUB", DECLARE_SUB},
    {"PRIVATE DECLARE SUB", DECLARE_SUB},
    {"CONST ", CONST_DECLARATION},
    {"GLOBAL CONST ", CONST_DECLARATION},
    {"PRIVATE CONST ", CONST_DECLARATION},
    {"PUBLIC CONST ", CONST_DECLARATION},
    {"PRIVATE ", VAR_DECLARATION},
    {"PUBLIC ", VAR_DECLARATION},
    {"GLOBAL ", VAR_DECLARATION},
    {"DIM ", VAR_DECLARATION},
    {"FRIEND ", VAR_DECLARATION, In::DotNet},
    {"PROTECTED FRIEND ", VAR_DECLARATION, In::DotNet},
    {"SELECT CASE", SELECT_CASE_LINE},
    {"CASE ", CASE_LINE},
    {"END SELECT", END_SELECT_LINE},
    {"ATTRIBUTE ", ATTRIBUTE_LINE},
    {"EXIT SUB", EXIT_LINE},
    {"EXIT FUNCTION", EXIT_LINE},
    {"EXIT PROPERTY", EXIT_LINE},
    {"END TYPE", END_TYPE},
    {"END ENUM", END_ENUM},
    {"END SET", END_PROPERTY_SUBBLOCK, In::DotNet},
    {"END GET", END_PROPERTY_SUBBLOCK, In::DotNet},
    {"END NAMESPACE", END_NAMESPACE, In::DotNet},
    {"END CLASS", END_CLASS, In::DotNet},
    {"PROTECTED ", VAR_DECLARATION, In::DotNet},
};

// First letters with which any keyword or prefix above can begin: most statements begin otherwise.
constexpr std::array<bool, 256> kFirstLetters = [] {
  std::array<bool, 256> letters{};
  for (const char c : {'#', 'A', 'C', 'D', 'E', 'F', 'G', 'P', 'S', 'T'}) {
    letters[static_cast<unsigned char>(c)] = true;
    letters[static_cast<unsigned char>(LowerAscii(c))] = true;
  }
  return letters;
}();

// Words of a statement, cut at single blanks; asked for one after the other.
class Words {
 public:
  explicit Words(std::string_view statement) : mRest(statement) {}
  std::optional<std::string_view> Next() {
    if (mDone) return std::nullopt;
    const std::size_t blank = mRest.find(' ');
    const std::string_view word = mRest.substr(0, blank);
    if (blank == std::string_view::npos)
      mDone = true;
    else
      mRest.remove_prefix(blank + 1);
    return word;
  }

 private:
  std::string_view mRest;
  bool mDone = false;
};

bool IsAnyOf(std::string_view word, std::initializer_list<std::string_view> list) {
  for (const std::string_view item : list)
    if (EqualsNoCaseAscii(word, item)) return true;
  return false;
}

LineTypeEnum SubType(std::string_view name) {
  for (const WordType& row : kSubNames)
    if (EqualsNoCaseAscii(name, row.Word)) return row.Type;
  return StartsWithNoCaseAscii(name, "FORM_UNLOAD(") ? FORM_UNLOAD : START_SUB;
}

// The type that a keyword gives; the word behind it is read for "SUB" alone.
StatementJudgement KeywordType(std::string_view keyword, Words& words, bool dotNet) {
  if (EqualsNoCaseAscii(keyword, "SUB")) {
    const auto name = words.Next();
    return name ? StatementJudgement{SubType(*name)} : StatementJudgement{OTHER, true};
  }
  for (const WordType& row : kOpeningKeywords)
    if (EqualsNoCaseAscii(keyword, row.Word) && !(dotNet && row.Type == START_TYPE))
      return {row.Type};
  if (!dotNet) return {};
  for (const WordType& row : kDotNetKeywords)
    if (EqualsNoCaseAscii(keyword, row.Word)) return {row.Type};
  return {};
}

// The keyword stands first, or behind an access word and "Static".
StatementJudgement JudgeClassicKeyword(std::string_view statement) {
  Words words(statement);
  std::string_view word = *words.Next();
  const bool access = IsAnyOf(word, {"PUBLIC", "PRIVATE", "FRIEND"});
  if (access || EqualsNoCaseAscii(word, "STATIC")) {
    auto next = words.Next();
    if (access && next && EqualsNoCaseAscii(*next, "STATIC")) next = words.Next();
    if (!next) return {OTHER, true};
    return KeywordType(*next, words, false);
  }
  if (EqualsNoCaseAscii(word, "PROPERTY")) {
    const auto next = words.Next();
    if (!next) return {OTHER, true};
    return IsAnyOf(*next, {"GET", "LET", "SET"}) ? StatementJudgement{START_PROPERTY}
                                                 : StatementJudgement{};
  }
  if (IsAnyOf(word, {"SUB", "FUNCTION", "ENUM", "TYPE", "EVENT", "DECLARE"}))
    return KeywordType(word, words, false);
  return {};
}

StatementJudgement JudgeDotNetKeyword(std::string_view statement) {
  if (!MatchesDotNetStatement(statement)) return {};
  Words words(statement);
  while (const auto word = words.Next()) {
    if (StartsWithNoCaseAscii(*word, "SET(")) return {START_PROPERTY_SUBBLOCK};
    for (const std::string_view keyword : kDotNetWalk)
      if (EqualsNoCaseAscii(*word, keyword)) return KeywordType(*word, words, true);
  }
  return {};
}

// For each first letter the rows that begin with it, as bits: the order of the rows stays.
static_assert(std::size(kPrefixes) <= 64);
constexpr std::array<std::uint64_t, 128> kRowsOfLetter = [] {
  std::array<std::uint64_t, 128> rows{};
  for (std::size_t i = 0; i < std::size(kPrefixes); ++i)
    rows[static_cast<unsigned char>(kPrefixes[i].Prefix.front())] |= std::uint64_t{1} << i;
  return rows;
}();

LineTypeEnum PrefixedType(std::string_view statement, bool dotNet) {
  const auto first = static_cast<unsigned char>(UpperAscii(statement.front()));
  if (first >= kRowsOfLetter.size()) return OTHER;
  for (std::uint64_t rows = kRowsOfLetter[first]; rows != 0; rows &= rows - 1) {
    const PrefixType& row = kPrefixes[std::countr_zero(rows)];
    if (row.Language == In::DotNet && !dotNet) continue;
    if (StartsWithNoCaseAscii(statement, row.Prefix)) return row.Type;
  }
  return OTHER;
}

}  // namespace

StatementJudgement JudgeStatement(std::string_view statement, LanguageVersionEnum language) {
  if (statement.empty()) return {};
  const bool dotNet = language == lvVisualBasicDotNet;
  if (!dotNet && !kFirstLetters[static_cast<unsigned char>(statement.front())]) return {};
  const StatementJudgement judged =
      dotNet ? JudgeDotNetKeyword(statement) : JudgeClassicKeyword(statement);
  if (judged.LineType != OTHER || judged.MissingWord) return judged;
  return {PrefixedType(statement, dotNet)};
}

bool IsDeclarationsLineType(LineTypeEnum LineType, std::string_view StatementPart) {
  switch (LineType) {
    case VAR_DECLARATION:
    case Comment:
    case DECLARE_FUNCTION:
    case DECLARE_SUB:
    case CONST_DECLARATION:
    case START_ENUM:
    case START_TYPE: return true;
    case OTHER: return StartsWithNoCaseAscii(Trim(StatementPart), "option ");
    default: return false;
  }
}

std::string_view LineTypeName(LineTypeEnum LineType) {
  const EnumName* name = FindName(NamesOf(LineType), LineType);
  return name ? name->Name : std::string_view();
}

}  // namespace vendrel
