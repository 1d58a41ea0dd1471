#include "text/Separators.h"

#include <initializer_list>

#include "core/Ascii.h"
#include "text/Words.h"

namespace vendrel {
namespace {

// Tags of one literal that are matched; a line of a literal of many lines holds fewer.
constexpr int kMostTags = 64;

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

bool IsWordByte(char c) {
  return IsLetterAscii(c) || IsDigitAscii(c) || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}

// Behind the string whose opening quote stands at `at`.
std::size_t StringEnd(std::string_view text, std::size_t at) {
  const std::size_t close = text.find('"', at + 1);
  return close == kNotFound ? text.size() : close + 1;
}

// Behind an interpolated string, of which `at` is the opening quote: holes hold code, and so
// strings of their own.
std::size_t InterpolatedEnd(std::string_view text, std::size_t at) {
  int holes = 0;
  for (std::size_t i = at + 1; i < text.size(); ++i) {
    const char c = text[i];
    const bool doubled = i + 1 < text.size() && text[i + 1] == c;
    if (c == '"') {
      if (holes > 0)
        i = StringEnd(text, i) - 1;
      else if (doubled)
        ++i;
      else
        return i + 1;
    } else if (c == '{') {
      if (holes == 0 && doubled)
        ++i;
      else
        ++holes;
    } else if (c == '}' && holes > 0) {
      --holes;
    }
  }
  return text.size();
}

// Behind the ">" of the tag that begins at `at`; quoted values may hold one.
std::size_t TagEnd(std::string_view text, std::size_t at) {
  char quote = 0;
  for (std::size_t i = at + 1; i < text.size(); ++i) {
    const char c = text[i];
    if (quote != 0)
      quote = c == quote ? '\0' : quote;
    else if (c == '"' || c == '\'')
      quote = c;
    else if (c == '>')
      return i + 1;
  }
  return text.size();
}

// Behind the XML literal whose "<" stands at `at`; `at` if it is a comparison. What nothing closes
// reaches to the end of the line, but for an attribute: that ends with its tag.
std::size_t XmlEnd(std::string_view text, std::size_t at) {
  if (at + 1 >= text.size()) return at;
  const char first = text[at + 1];
  if (!IsLetterAscii(first) && std::string_view("_/!?%").find(first) == kNotFound) return at;
  const std::string_view before = TrimRight(text.substr(0, at));
  // What is open at the end of the line goes on in the next, which may be joined to it.
  const std::size_t firstEnd = TagEnd(text, at);
  const std::size_t firstTag = text[firstEnd - 1] == '>' ? firstEnd : kNotFound;
  if (before.ends_with('.')) return firstTag;
  int depth = 0;
  std::size_t tag = at;
  for (int tags = 0; tags < kMostTags && tag + 1 < text.size(); ++tags) {
    const std::size_t end = TagEnd(text, tag);
    const char second = text[tag + 1];
    if (second == '/')
      --depth;
    else if (text[end - 2] != '/' && std::string_view("!?%").find(second) == kNotFound)
      ++depth;
    if (depth <= 0) return end;
    tag = text.find('<', end);
    if (tag == kNotFound) break;
  }
  const bool attribute =
      before.empty() || before.ends_with('(') || before.ends_with(',') || before.ends_with('>');
  return attribute ? firstTag : kNotFound;
}

// Behind "@ns:name" of an XML attribute axis; `at` if it is none.
std::size_t XmlNameEnd(std::string_view text, std::size_t at) {
  if (at == 0 || text[at - 1] != '.') return at;
  std::size_t end = at + 1;
  while (end < text.size() && (IsWordByte(text[end]) || text[end] == ':' || text[end] == '-'))
    ++end;
  return end;
}

// Behind what begins at `at` and holds no separators; `at` if nothing of the kind begins there.
std::size_t ClosedEnd(std::string_view text, std::size_t at, LanguageVersionEnum language) {
  const bool dotNet = language == lvVisualBasicDotNet;
  switch (text[at]) {
    case '"': return StringEnd(text, at);
    case '[': return BracketEnd(text, at);
    case '#': return DateEnd(text, at);
    case '$':
      return dotNet && at + 1 < text.size() && text[at + 1] == '"' ? InterpolatedEnd(text, at + 1)
                                                                   : at;
    case '<': return dotNet ? XmlEnd(text, at) : at;
    case '@': return dotNet ? XmlNameEnd(text, at) : at;
    default: return at;
  }
}

}  // namespace

bool StandsInside(std::string_view text, std::size_t at, LanguageVersionEnum language,
                  std::size_t& searched) {
  while (searched < at) {
    const std::size_t end = ClosedEnd(text, searched, language);
    searched = end > searched ? end : searched + 1;
  }
  return searched > at;
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

std::size_t DeclarationBehindThen(std::string_view statement, bool isRemainder) {
  const auto begins = [&](std::string_view word) { return StartsWithNoCaseAscii(statement, word); };
  const bool declares = isRemainder && (begins("DIM ") || begins("STATIC ") || begins("CONST "));
  if (!declares && !begins("IF ") && !begins("ELSEIF ") && !begins("ELSE ")) return kNotFound;
  if (EndsWithNoCaseAscii(TrimRight(statement), " THEN")) return kNotFound;
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
