// Statements of VB.NET.

#include "core/Ascii.h"
#include "text/Separators.h"
#include "text/StatementKeywords.h"
#include "text/net/DeclarationWords.h"
#include "text/net/XmlLiterals.h"

namespace vendrel {
namespace {

struct NetWordType {
  std::string_view Word;
  LineTypeEnum Type;
};

constexpr NetWordType kNetKeywords[] = {
    {"GET", START_PROPERTY_SUBBLOCK}, {"SET", START_PROPERTY_SUBBLOCK},
    {"NAMESPACE", START_NAMESPACE},   {"CLASS", START_CLASS},
    {"STRUCTURE", START_STRUCTURE},   {"INTERFACE", START_INTERFACE},
    {"INHERITS", INHERITS_STATEMENT}, {"IMPLEMENTS", IMPLEMENTS_STATEMENT},
    {"IMPORTS", IMPORTS_STATEMENT},
};

constexpr std::string_view kNetWalk[] = {
    "CLASS",    "INTERFACE", "STRUCTURE", "NAMESPACE", "GET",     "SUB",      "PROPERTY",
    "FUNCTION", "ENUM",      "EVENT",     "DECLARE",   "IMPORTS", "INHERITS", "IMPLEMENTS",
};

// What VB.NET adds to the prefixes; no other prefix begins with these words.
constexpr NetWordType kNetPrefixes[] = {
    {"FRIEND ", VAR_DECLARATION},       {"PROTECTED FRIEND ", VAR_DECLARATION},
    {"END SET", END_PROPERTY_SUBBLOCK}, {"END GET", END_PROPERTY_SUBBLOCK},
    {"END NAMESPACE", END_NAMESPACE},   {"END CLASS", END_CLASS},
    {"PROTECTED ", VAR_DECLARATION},
};

// "Type" is no keyword of VB.NET; of its own ones the walk below tells where they count.
StatementType NetKeywordType(std::string_view keyword, StatementWords& words) {
  const StatementType type = KeywordType(keyword, words);
  if (type.LineType != OTHER || type.MissingWord) return type;
  for (const NetWordType& row : kNetKeywords)
    if (EqualsNoCaseAscii(keyword, row.Word)) return {row.Type};
  return {};
}

// The first word of the list that stands anywhere in the statement.
StatementType NetKeyword(std::string_view statement) {
  if (!MatchesDotNetStatement(statement)) return {};
  StatementWords words(statement);
  while (const auto word = words.Next()) {
    if (StartsWithNoCaseAscii(*word, "SET(")) return {START_PROPERTY_SUBBLOCK};
    for (const std::string_view keyword : kNetWalk)
      if (EqualsNoCaseAscii(*word, keyword)) return NetKeywordType(*word, words);
  }
  return {};
}

LineTypeEnum NetPrefixedType(std::string_view statement) {
  const LineTypeEnum type = PrefixedType(statement);
  if (type != OTHER || std::string_view("FPE").find(UpperAscii(statement.front())) == kNotFound)
    return type;
  for (const NetWordType& row : kNetPrefixes)
    if (StartsWithNoCaseAscii(statement, row.Word)) return row.Type;
  return OTHER;
}

// First ">" outside of strings, in front of any comment; npos if there is none.
std::size_t AttributeEnd(std::string_view text) {
  bool inString = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '"') inString = !inString;
    if (inString) continue;
    if (text[i] == '\'') break;
    if (text[i] == '>') return i;
  }
  return std::string_view::npos;
}

// Behind what begins at `at` and holds no separators; `at` if nothing of the kind begins there.
std::size_t NetClosedEnd(std::string_view text, std::size_t at) {
  switch (text[at]) {
    case '$':
      return at + 1 < text.size() && text[at + 1] == '"' ? InterpolatedEnd(text, at + 1) : at;
    case '<': return XmlEnd(text, at);
    case '@': return XmlNameEnd(text, at);
    default: return ClosedEnd(text, at);
  }
}

class NetStatementRules final : public StatementRules {
 public:
  StatementType Classify(std::string_view statement) const override {
    if (statement.empty()) return {};
    const StatementType type = NetKeyword(statement);
    if (type.LineType != OTHER || type.MissingWord) return type;
    return {NetPrefixedType(statement)};
  }
  // Without an attribute in front of it.
  std::string_view Trimmed(std::string_view statement) const override {
    if (!statement.starts_with('<')) return statement;
    const std::size_t end = AttributeEnd(statement);
    return TrimLeft(end == std::string_view::npos ? statement : statement.substr(end + 1));
  }
  bool StandsInside(std::string_view text, std::size_t at, std::size_t& searched) const override {
    return WalkClosed(text, at, searched, NetClosedEnd);
  }
};

constexpr NetStatementRules kNetStatements;

}  // namespace

const StatementRules& NetStatements() { return kNetStatements; }

}  // namespace vendrel
