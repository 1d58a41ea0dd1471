#include "intake/net/NetWords.h"

#include <algorithm>

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
  return text.substr(std::min(text.find_first_not_of(" \t"), text.size()));
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

bool IsNetModifier(std::string_view word) {
  return IsWordOf(word, {"PUBLIC",      "PRIVATE",        "PROTECTED",    "FRIEND",
                         "SHADOWS",     "SHARED",         "OVERLOADS",    "OVERRIDES",
                         "OVERRIDABLE", "NOTOVERRIDABLE", "MUSTOVERRIDE", "MUSTINHERIT",
                         "PARTIAL",     "NOTINHERITABLE", "DEFAULT",      "READONLY",
                         "WRITEONLY",   "STATIC",         "DIM",          "CONST",
                         "WITHEVENTS",  "ASYNC",          "ITERATOR",     "WIDENING",
                         "NARROWING",   "CUSTOM",         "DELEGATE",     "GLOBAL"});
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
