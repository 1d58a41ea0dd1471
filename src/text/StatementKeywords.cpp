#include "text/StatementKeywords.h"

#include <array>
#include <bit>
#include <cstdint>

#include "core/Ascii.h"
#include "text/CodeLine.h"

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

// The first row that holds decides.
constexpr WordType kPrefixes[] = {
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
    {"SELECT CASE", SELECT_CASE_LINE},
    {"CASE ", CASE_LINE},
    {"END SELECT", END_SELECT_LINE},
    {"ATTRIBUTE ", ATTRIBUTE_LINE},
    {"EXIT SUB", EXIT_LINE},
    {"EXIT FUNCTION", EXIT_LINE},
    {"EXIT PROPERTY", EXIT_LINE},
    {"END TYPE", END_TYPE},
    {"END ENUM", END_ENUM},
};

// For each letter the rows whose first, or second, letter it is, as bits: the order of the rows
// stays. Both together leave few rows, and none for most statements. "#" has any second letter.
static_assert(std::size(kPrefixes) <= 64);
using RowsOfLetter = std::array<std::uint64_t, 256>;
constexpr RowsOfLetter RowsWithLetterAt(std::size_t place) {
  RowsOfLetter rows{};
  for (std::size_t i = 0; i < std::size(kPrefixes); ++i) {
    const std::string_view word = kPrefixes[i].Word;
    for (std::size_t c = 0; c < rows.size(); ++c)
      if (word.size() <= place || UpperAscii(static_cast<char>(c)) == word[place])
        rows[c] |= std::uint64_t{1} << i;
  }
  return rows;
}
constexpr RowsOfLetter kRowsOfFirst = RowsWithLetterAt(0);
constexpr RowsOfLetter kRowsOfSecond = RowsWithLetterAt(1);

LineTypeEnum SubType(std::string_view name) {
  for (const WordType& row : kSubNames)
    if (EqualsNoCaseAscii(name, row.Word)) return row.Type;
  return StartsWithNoCaseAscii(name, "FORM_UNLOAD(") ? FORM_UNLOAD : START_SUB;
}

}  // namespace

StatementType KeywordType(std::string_view keyword, StatementWords& words) {
  if (EqualsNoCaseAscii(keyword, "SUB")) {
    const auto name = words.Next();
    return name ? StatementType{SubType(*name)} : StatementType{OTHER, true};
  }
  for (const WordType& row : kOpeningKeywords)
    if (EqualsNoCaseAscii(keyword, row.Word)) return {row.Type};
  return {};
}

LineTypeEnum PrefixedType(std::string_view statement) {
  const char second = statement.size() > 1 ? statement[1] : '\0';
  std::uint64_t rows = kRowsOfFirst[static_cast<unsigned char>(statement.front())] &
                       kRowsOfSecond[static_cast<unsigned char>(second)];
  for (; rows != 0; rows &= rows - 1) {
    const WordType& row = kPrefixes[std::countr_zero(rows)];
    if (StartsWithNoCaseAscii(statement, row.Word)) return row.Type;
  }
  return OTHER;
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
