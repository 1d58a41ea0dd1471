#include "text/Separators.h"

#include <initializer_list>

#include "core/Ascii.h"
#include "text/Words.h"

namespace vendrel {
namespace {

bool IsOneOf(std::string_view word, std::initializer_list<std::string_view> list) {
  for (const std::string_view item : list)
    if (EqualsNoCaseAscii(word, item)) return true;
  return false;
}

bool IsMonth(std::string_view word) {
  return IsOneOf(
      word, {"JAN",  "JANUARY",   "FEB",  "FEBRUARY", "MAR",  "MARCH",    "APR",    "APRIL",
             "MAY",  "JUN",       "JUNE", "JUL",      "JULY", "AUG",      "AUGUST", "SEP",
             "SEPT", "SEPTEMBER", "OCT",  "OCTOBER",  "NOV",  "NOVEMBER", "DEC",    "DECEMBER"});
}

// Most statements hold none of the words anywhere, which is quicker to see than their words.
bool HoldsDeclaringWord(std::string_view statement) {
  return ContainsNoCaseAscii(statement, "DIM") || ContainsNoCaseAscii(statement, "STATIC") ||
         ContainsNoCaseAscii(statement, "CONST");
}

}  // namespace

std::size_t StringEnd(std::string_view text, std::size_t at) {
  const std::size_t close = text.find('"', at + 1);
  return close == kNotFound ? text.size() : close + 1;
}

std::size_t ClosedEnd(std::string_view text, std::size_t at) {
  switch (text[at]) {
    case '"': return StringEnd(text, at);
    case '[': return BracketEnd(text, at);
    case '#': return DateEnd(text, at);
    default: return at;
  }
}

std::size_t DateEnd(std::string_view text, std::size_t at) {
  const std::size_t close = text.find('#', at + 1);
  if (close == kNotFound) return at;
  bool anyDigit = false;
  for (std::size_t i = at + 1; i < close; ++i) {
    const char c = text[i];
    if (IsDigitAscii(c)) {
      anyDigit = true;
    } else if (IsLetterAscii(c)) {
      const std::size_t from = i;
      while (i + 1 < close && IsLetterAscii(text[i + 1])) ++i;
      const std::string_view word = text.substr(from, i + 1 - from);
      if (!IsOneOf(word, {"AM", "PM"}) && !IsMonth(word)) return at;
    } else if (std::string_view(" /-:,").find(c) == kNotFound) {
      return at;
    }
  }
  return anyDigit ? close + 1 : at;
}

bool IsLabel(std::string_view text) {
  text = TrimRight(text);
  if (text.empty()) return false;
  for (const char c : text)
    if (!IsWordByte(c)) return false;
  if (IsDigitAscii(text.front())) return text.find_first_not_of("0123456789") == kNotFound;
  // Words that are statements of their own, and so no names.
  return !IsOneOf(text, {"ELSE", "DO", "LOOP", "WEND", "NEXT", "RETURN", "STOP", "END", "RESUME",
                         "CLOSE", "RESET", "PRINT", "TRY", "FINALLY", "GET", "SET"});
}

namespace {

// Letters with which what is looked at begins: most statements begin otherwise.
bool MayHoldDeclaration(std::string_view statement, bool isRemainder) {
  if (statement.empty()) return false;
  const char first = UpperAscii(statement.front());
  return first == 'I' || first == 'E' ||
         (isRemainder && (first == 'D' || first == 'S' || first == 'C'));
}

}  // namespace

std::size_t DeclarationBehindThen(std::string_view statement, bool isRemainder) {
  if (!MayHoldDeclaration(statement, isRemainder)) return kNotFound;
  const auto begins = [&](std::string_view word) { return StartsWithNoCaseAscii(statement, word); };
  const bool declares = isRemainder && (begins("DIM ") || begins("STATIC ") || begins("CONST "));
  if (!declares && !begins("IF ") && !begins("ELSEIF ") && !begins("ELSE ")) return kNotFound;
  if (EndsWithNoCaseAscii(TrimRight(statement), " THEN")) return kNotFound;
  if (!declares && !HoldsDeclaringWord(statement)) return kNotFound;
  bool behind = false;
  for (std::size_t at = 0; at < statement.size();) {
    if (statement[at] == '"') {
      at = StringEnd(statement, at);
      behind = false;
      continue;
    }
    if (statement[at] == ' ') {
      ++at;
      continue;
    }
    std::size_t end = at;
    while (end < statement.size() && statement[end] != ' ' && statement[end] != '"') ++end;
    const std::string_view word = statement.substr(at, end - at);
    if (behind && IsOneOf(word, {"DIM", "STATIC", "CONST"})) return at;
    if (declares && EqualsNoCaseAscii(word, "ELSE")) return at;
    behind = IsOneOf(word, {"THEN", "ELSE"});
    at = end;
  }
  return kNotFound;
}

}  // namespace vendrel
