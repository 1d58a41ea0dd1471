#include "project/ScriptLexer.h"

#include <charconv>

#include "core/Ascii.h"
#include "diagnostics/VendrelError.h"
#include "project/ScriptDate.h"

namespace vendrel {
namespace {

// Words that cannot be names.
constexpr std::string_view kReserved[] = {
    "AND",     "AS",   "BYREF",    "BYVAL",  "CALL",   "CASE",    "CONST",  "DIM",   "DO",
    "EACH",    "ELSE", "ELSEIF",   "EMPTY",  "END",    "ENUM",    "EQV",    "EVENT", "EXIT",
    "FALSE",   "FOR",  "FUNCTION", "GET",    "GOTO",   "IF",      "IMP",    "IN",    "IS",
    "LET",     "LIKE", "LOOP",     "LSET",   "ME",     "MOD",     "NEW",    "NEXT",  "NOT",
    "NOTHING", "NULL", "ON",       "OPTION", "OR",     "PRIVATE", "PUBLIC", "REDIM", "REM",
    "RESUME",  "RSET", "SELECT",   "SET",    "STATIC", "STOP",    "SUB",    "THEN",  "TO",
    "TRUE",    "TYPE", "UNTIL",    "WEND",   "WHILE",  "WITH",    "XOR"};

// A usual name of a constant in Visual Basic.
constexpr std::string_view kReservedInScriptOnly = "DEBUG";

bool IsReserved(std::string_view word, ScriptDialect dialect) {
  if (dialect == ScriptDialect::VBScript && EqualsNoCaseAscii(word, kReservedInScriptOnly))
    return true;
  for (const std::string_view reserved : kReserved)
    if (EqualsNoCaseAscii(reserved, word)) return true;
  return false;
}

// Letters of other scripts are bytes beyond ASCII.
bool IsNameStart(char c) { return IsLetterAscii(c) || static_cast<unsigned char>(c) >= 0x80; }
bool IsNamePart(char c) { return IsNameStart(c) || IsDigitAscii(c) || c == '_'; }
bool IsSuffix(char c) { return std::string_view("%&!#@").find(c) != kNotFound; }

std::size_t NameLength(std::string_view text) {
  std::size_t length = 0;
  while (length < text.size() && IsNamePart(text[length])) ++length;
  return length;
}

std::size_t DigitCount(std::string_view text, std::size_t from) {
  std::size_t count = 0;
  while (from + count < text.size() && IsDigitAscii(text[from + count])) ++count;
  return count;
}

std::optional<ScriptValue> ConstantOf(std::string_view word) {
  if (EqualsNoCaseAscii(word, "TRUE")) return ScriptValue::Boolean(true);
  if (EqualsNoCaseAscii(word, "FALSE")) return ScriptValue::Boolean(false);
  if (EqualsNoCaseAscii(word, "EMPTY")) return ScriptValue();
  if (EqualsNoCaseAscii(word, "NULL")) return ScriptValue::Null();
  if (EqualsNoCaseAscii(word, "NOTHING")) return ScriptValue::Nothing();
  return std::nullopt;
}

ScriptToken Literal(ScriptValue value) {
  ScriptToken token;
  token.Kind = ScriptTokenKind::Literal;
  token.Value = std::move(value);
  return token;
}

}  // namespace

bool ScriptToken::IsWord(std::string_view word) const {
  return Kind == ScriptTokenKind::Word && EqualsNoCaseAscii(Text, word);
}

ScriptToken ScriptLexer::Take(ScriptTokenKind kind, std::size_t length) {
  ScriptToken token;
  token.Kind = kind;
  token.Text = mRest.substr(0, length);
  mRest.remove_prefix(length);
  return token;
}

// A line that ends in a blank and "_" goes on with the next one.
void ScriptLexer::SkipBlanks() {
  while (!mRest.empty()) {
    if (mRest.front() == ' ' || mRest.front() == '\t') {
      mRest.remove_prefix(1);
      continue;
    }
    const std::size_t behind = mRest.front() == '_' ? mRest.find_first_not_of(" \t", 1) : kNotFound;
    if (behind == kNotFound || (mRest[behind] != '\r' && mRest[behind] != '\n')) return;
    mRest.remove_prefix(mRest.substr(behind).starts_with("\r\n") ? behind + 2 : behind + 1);
  }
}

ScriptToken ScriptLexer::Next(bool operandDue) {
  SkipBlanks();
  if (mRest.empty()) return {};
  const char c = mRest.front();
  switch (c) {
    case '\r':
    case '\n':
    case ':': return Take(ScriptTokenKind::EndOfStatement, 1);
    case '\'': return TakeComment();
    case '(': return Take(ScriptTokenKind::Open, 1);
    case ')': return Take(ScriptTokenKind::Close, 1);
    case ',': return Take(ScriptTokenKind::Comma, 1);
    case '"': return TakeString();
    case '[': return TakeBracketedName();
    default: break;
  }
  const bool underscored = c == '_' && mDialect == ScriptDialect::VisualBasic && mRest.size() > 1 &&
                           IsNamePart(mRest[1]);
  if (IsNameStart(c) || underscored) return TakeWord();
  if (IsDigitAscii(c) || (c == '.' && DigitCount(mRest, 1) > 0)) return TakeNumber();
  if (operandDue && c == '#') return TakeDate();
  if (operandDue && c == '&') return TakeRadixNumber();
  return TakeSymbol();
}

ScriptToken ScriptLexer::TakeComment() {
  return Take(ScriptTokenKind::EndOfStatement, std::min(mRest.find_first_of("\r\n"), mRest.size()));
}

ScriptToken ScriptLexer::TakeWord() {
  std::size_t length = NameLength(mRest);
  const std::string_view word = mRest.substr(0, length);
  if (EqualsNoCaseAscii(word, "REM")) return TakeComment();
  if (auto constant = ConstantOf(word)) {
    mRest.remove_prefix(length);
    return Literal(std::move(*constant));
  }
  if (IsReserved(word, mDialect)) return Take(ScriptTokenKind::Word, length);
  while (length + 1 < mRest.size() && mRest[length] == '.' && IsNameStart(mRest[length + 1]))
    length += 1 + NameLength(mRest.substr(length + 1));
  ScriptToken name = Take(ScriptTokenKind::Name, length);
  const bool suffixed = !mRest.empty() && (IsSuffix(mRest.front()) || mRest.front() == '$');
  if (mDialect == ScriptDialect::VisualBasic && suffixed) mRest.remove_prefix(1);
  return name;
}

ScriptToken ScriptLexer::TakeBracketedName() {
  const std::size_t close = mRest.find_first_of("]\r\n");
  if (close == kNotFound || mRest[close] != ']') throw VendrelError(errScriptBracket);
  ScriptToken token = Take(ScriptTokenKind::Name, close + 1);
  token.Text = token.Text.substr(1, close - 1);
  return token;
}

ScriptToken ScriptLexer::TakeString() {
  std::string text;
  for (std::size_t at = 1;;) {
    const std::size_t stop = mRest.find_first_of("\"\r\n", at);
    if (stop == kNotFound || mRest[stop] != '"') throw VendrelError(errScriptString);
    text.append(mRest, at, stop - at);
    at = stop + 1;
    if (at < mRest.size() && mRest[at] == '"') {
      text.push_back('"');
      ++at;
      continue;
    }
    mRest.remove_prefix(at);
    return Literal(ScriptValue::String(std::move(text)));
  }
}

ScriptToken ScriptLexer::TakeDate() {
  const std::size_t close = mRest.find_first_of("#\r\n", 1);
  if (close == kNotFound || mRest[close] != '#') throw VendrelError(errScriptSyntax);
  const auto date = DateFromText(mRest.substr(1, close - 1));
  if (!date) throw VendrelError(errScriptSyntax);
  mRest.remove_prefix(close + 1);
  return Literal(ScriptValue::Date(*date));
}

ScriptToken ScriptLexer::TakeNumber() {
  std::size_t length = DigitCount(mRest, 0);
  const bool pointed = length < mRest.size() && mRest[length] == '.';
  if (pointed) length += 1 + DigitCount(mRest, length + 1);
  const char letter = length < mRest.size() ? UpperAscii(mRest[length]) : '\0';
  std::string digits(mRest.substr(0, length));
  bool scaled = letter == 'E' || (letter == 'D' && mDialect == ScriptDialect::VisualBasic);
  if (scaled) {
    std::size_t at = length + 1;
    const bool sign = at < mRest.size() && (mRest[at] == '+' || mRest[at] == '-');
    const bool negative = sign && mRest[at] == '-';
    if (sign) ++at;
    const std::size_t count = DigitCount(mRest, at);
    scaled = count > 0;
    if (scaled) digits.append(negative ? "E-" : "E").append(mRest, at, count);
    if (scaled) length = at + count;
  }
  double number = 0;
  const auto parsed = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (parsed.ec != std::errc()) throw VendrelError(errScriptNumber);
  mRest.remove_prefix(length);
  return Literal(WithSuffix(number, !pointed && !scaled));
}

// The value of a decimal literal: the smallest kind that holds it, or the one its suffix names.
ScriptValue ScriptLexer::WithSuffix(double number, bool whole) {
  const char c = mRest.empty() || mDialect == ScriptDialect::VBScript ? '\0' : mRest.front();
  if (c == '\0' || !IsSuffix(c))
    return whole ? ScriptValue::Whole(number) : ScriptValue::Double(number);
  mRest.remove_prefix(1);
  if (c != '%' && c != '&') return ScriptValue::Double(number);
  const ScriptKind kind = c == '%' ? ScriptKind::Integer : ScriptKind::Long;
  ScriptValue value = ScriptValue::Whole(RoundToEven(number), kind);
  if (value.Kind != kind) throw VendrelError(errOverflow);
  return value;
}

// "&H" and "&O" with their digits; up to 16 bits signed in 16, up to 32 in 32. A "&" behind makes
// it a Long.
ScriptToken ScriptLexer::TakeRadixNumber() {
  const char letter = mRest.size() > 1 ? UpperAscii(mRest[1]) : '\0';
  const int base = letter == 'H' ? 16 : letter == 'O' || IsDigitAscii(letter) ? 8 : 0;
  if (base == 0) throw VendrelError(errScriptSyntax);
  const char* const first = mRest.data() + (IsDigitAscii(letter) ? 1 : 2);
  std::uint32_t bits = 0;
  const auto [last, error] = std::from_chars(first, mRest.data() + mRest.size(), bits, base);
  if (error == std::errc::result_out_of_range) throw VendrelError(errScriptNumber);
  if (error != std::errc()) throw VendrelError(errScriptSyntax);
  mRest.remove_prefix(static_cast<std::size_t>(last - mRest.data()));
  const bool isLong = mRest.starts_with('&');
  if (isLong || (mDialect == ScriptDialect::VisualBasic && mRest.starts_with('%')))
    mRest.remove_prefix(1);
  if (bits <= 0xFFFF && !isLong)
    return Literal({ScriptKind::Integer, static_cast<double>(static_cast<std::int16_t>(bits)), {}});
  return Literal({ScriptKind::Long, static_cast<double>(static_cast<std::int32_t>(bits)), {}});
}

ScriptToken ScriptLexer::TakeSymbol() {
  constexpr std::string_view pairs[] = {"<=", ">=", "<>", "=<", "=>", "><"};
  for (const std::string_view pair : pairs)
    if (mRest.starts_with(pair)) return Take(ScriptTokenKind::Symbol, 2);
  if (std::string_view("^*/\\+-&=<>").find(mRest.front()) == kNotFound)
    throw VendrelError(errScriptCharacter);
  return Take(ScriptTokenKind::Symbol, 1);
}

}  // namespace vendrel
