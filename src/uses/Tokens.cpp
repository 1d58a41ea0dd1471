#include "uses/Tokens.h"

#include <algorithm>
#include <array>

#include "core/Ascii.h"
#include "text/Separators.h"

namespace vendrel {
namespace {

enum CharacterClass : std::uint8_t { kOther, kLetter, kDigit, kBlank, kLineEnd };

constexpr std::array<std::uint8_t, 256> MakeClasses() {
  std::array<std::uint8_t, 256> classes{};
  for (int c = 0; c < 256; ++c) {
    const char character = static_cast<char>(c);
    if (c >= 0x80 || c == '_' || IsLetterAscii(character)) classes[c] = kLetter;
    if (IsDigitAscii(character)) classes[c] = kDigit;
    if (c == ' ' || c == '\t' || c == '\f' || c == '\v') classes[c] = kBlank;
    if (c == '\n' || c == '\r') classes[c] = kLineEnd;
  }
  return classes;
}
constexpr auto kClasses = MakeClasses();

CharacterClass ClassOf(char c) {
  return static_cast<CharacterClass>(kClasses[static_cast<unsigned char>(c)]);
}
bool IsNameByte(char c) { return ClassOf(c) == kLetter || ClassOf(c) == kDigit; }

// A blank beyond ASCII that editors leave in code: no-break space.
bool IsWideBlank(std::string_view text, std::size_t at) { return text.substr(at, 2) == "\xC2\xA0"; }

bool IsHexDigit(char c) {
  return IsDigitAscii(c) || (UpperAscii(c) >= 'A' && UpperAscii(c) <= 'F');
}

}  // namespace

std::string_view TokenScan::PhysicalLine() const {
  std::size_t end = mAt;
  while (end < mText.size() && ClassOf(mText[end]) != kLineEnd) ++end;
  return mText.substr(mAt, end - mAt);
}

void TokenScan::EndLine() {
  if (At(mAt) == '\r' && At(mAt + 1) == '\n') ++mAt;
  if (mAt < mText.size()) ++mAt;
  ++mLine;
}

void TokenScan::SkipHeader() {
  int depth = 0;
  bool isHeader = StartsWithNoCaseAscii(TrimGaps(PhysicalLine()), "VERSION ");
  while (mAt < mText.size()) {
    const std::string_view line = PhysicalLine();
    const std::string_view words = TrimGaps(line);
    const auto begins = [&](std::string_view word) { return StartsWithNoCaseAscii(words, word); };
    if (isHeader && (begins("BEGIN ") || begins("BEGINPROPERTY ") || words.size() == 5) &&
        begins("BEGIN")) {
      ++depth;
    } else if (depth > 0) {
      if (EqualsNoCaseAscii(words, "END") || begins("ENDPROPERTY")) --depth;
    } else if (!begins("ATTRIBUTE ") && !words.empty() &&
               !(isHeader && (begins("VERSION ") || begins("OBJECT ") || begins("OBJECT=")))) {
      return;
    } else if (begins("ATTRIBUTE ")) {
      isHeader = false;
    }
    mAt += line.size();
    EndLine();
  }
}

void TokenScan::BeginLine() {
  Tokens.clear();
  mOpen.clear();
  mHoles.clear();
  mXmlHoles.clear();
  mLineStarts.clear();
  mLineStarts.push_back(mAt);
  mFirstLine = mLine;
  IsDirective = false;
  HasColons = false;
  mGap = true;
}

bool TokenScan::Next() {
  while (mAt < mText.size()) {
    BeginLine();
    if (TakeDirective()) return true;
    bool open = true;
    while (open && mAt < mText.size()) {
      const char c = mText[mAt];
      switch (ClassOf(c)) {
        case kBlank:
          ++mAt;
          mGap = true;
          break;
        case kLineEnd:
          EndLine();
          open = mRules.DotNet && GoesOn();
          if (open) mLineStarts.push_back(mAt);
          mGap = true;
          break;
        case kDigit: TakeNumber(); break;
        case kLetter:
          if (c == '_' && TakeContinuation()) break;
          if (IsWideBlank(mText, mAt)) {
            mAt += 2;
            mGap = true;
            break;
          }
          TakeWord();
          break;
        case kOther:
          if (c == '\'')
            TakeComment();
          else if (c == '"')
            TakeText();
          else if (c == '[')
            TakeBracketed();
          else if (c == '.' && IsDigitAscii(At(mAt + 1)) &&
                   (mGap || Tokens.empty() || Tokens.back().Kind == TokenKind::Mark) &&
                   !(Tokens.size() && Tokens.back().Mark == ')' && !mGap))
            TakeNumber();
          else if (!(c == '#' && TakeDate()) && !(c == '<' && TakeXml()) &&
                   !(c == '%' && TakeXmlHoleEnd()))
            TakeMark();
          break;
      }
    }
    if (!Tokens.empty()) return true;
  }
  return false;
}

bool TokenScan::TakeDirective() {
  std::size_t at = mAt;
  while (ClassOf(At(at)) == kBlank) ++at;
  if (At(at) != '#' || !IsLetterAscii(At(at + 1))) return false;
  IsDirective = true;
  Directive = PhysicalLine();
  mAt += Directive.size();
  EndLine();
  const std::size_t comment = Directive.find('\'');
  Directive = TrimGaps(Directive.substr(0, comment));
  return true;
}

// An underscore behind a blank and in front of the end of the line.
bool TokenScan::TakeContinuation() {
  if (!mGap) return false;
  std::size_t at = mAt + 1;
  while (ClassOf(At(at)) == kBlank) ++at;
  if (at < mText.size() && ClassOf(mText[at]) != kLineEnd) return false;
  mAt = at;
  EndLine();
  mLineStarts.push_back(mAt);
  return true;
}

// VB.NET: whether the statement goes on in the line that begins here, without an underscore.
bool TokenScan::GoesOn() {
  if (Tokens.empty()) return false;
  if (EndsLambdaHead()) return false;
  const Token& last = Tokens.back();
  if (last.Kind == TokenKind::Mark &&
      std::string_view(",.({=+-*/\\^&<>").find(last.Mark) != std::string_view::npos)
    return true;
  switch (last.Kind == TokenKind::Word ? last.Name : Symbol{word::None}) {
    case word::And:
    case word::Or:
    case word::Xor:
    case word::AndAlso:
    case word::OrElse:
    case word::Mod:
    case word::Is:
    case word::IsNot:
    case word::Like:
    case word::In:
    case word::Of: return true;
    default: break;
  }
  if (!mOpen.empty()) return mOpen.size() < 200;
  std::size_t at = mAt;
  while (ClassOf(At(at)) == kBlank) ++at;
  if (At(at) == ')' || At(at) == '}') return true;
  if (ClassOf(At(at)) != kLetter) return false;
  const auto opensQuery = [](const Token& token) {
    return token.Name == word::From || token.Name == word::Aggregate;
  };
  if (std::none_of(Tokens.begin(), Tokens.end(), opensQuery)) return false;
  std::size_t end = at;
  while (IsNameByte(At(end))) ++end;
  switch (mSymbols.Of(mText.substr(at, end - at))) {
    case word::Where:
    case word::Select:
    case word::Order:
    case word::Group:
    case word::Join:
    case word::From:
    case word::Let:
    case word::Into:
    case word::Skip:
    case word::Take:
    case word::Distinct: return true;
    default: return false;
  }
}

// A comment, with the lines that its underscore joins to it.
void TokenScan::TakeComment() {
  for (;;) {
    const std::string_view line = PhysicalLine();
    mAt += line.size();
    const std::string_view words = mRules.DotNet ? std::string_view() : line;
    if (!words.ends_with(" _") && !words.ends_with("\t_")) return;
    if (mAt >= mText.size()) return;
    EndLine();
    mLineStarts.push_back(mAt);
  }
}

Token& TokenScan::Push(TokenKind kind, std::size_t begin, std::size_t end) {
  Token token;
  token.Begin = static_cast<std::uint32_t>(begin);
  token.End = static_cast<std::uint32_t>(end);
  token.Line = mLine;
  token.Kind = kind;
  token.GapBefore = mGap;
  mGap = false;
  mAt = end;
  Tokens.push_back(token);
  return Tokens.back();
}

bool TokenScan::StartsStatement() const {
  return Tokens.empty() || (Tokens.back().Kind == TokenKind::Mark && Tokens.back().Mark == ':') ||
         Tokens.back().Name == word::Then || Tokens.back().Name == word::Else ||
         (Tokens.size() == 1 && Tokens.back().Kind == TokenKind::Number);
}

void TokenScan::TakeWord() {
  const std::size_t begin = mAt;
  const auto [symbol, size] = mSymbols.OfFront(mText.substr(begin));
  std::size_t end = begin + size;
  if (symbol == word::Rem && StartsStatement()) return TakeComment();
  char suffix = 0;
  if (const char c = At(end);
      c == '$' || c == '%' || c == '@' || c == '#' || c == '&' || c == '!') {
    const char next = At(end + 1);
    const bool named = IsNameByte(next) || next == '[' || next == '"';
    if (c == '$' || c == '%' || c == '@' || (!named && !(c == '&' && next == '('))) suffix = c;
    if (c == '#' && IsDigitAscii(next)) suffix = 0;
  }
  if (suffix) ++end;
  Token& token = Push(TokenKind::Word, begin, end);
  token.Name = symbol;
  token.Suffix = suffix;
}

void TokenScan::TakeBracketed() {
  const std::size_t close = mText.find_first_of("]\r\n", mAt);
  if (close == std::string_view::npos || mText[close] != ']') return TakeMark();
  const std::string_view name = mText.substr(mAt + 1, close - mAt - 1);
  Token& token = Push(TokenKind::Word, mAt, close + 1);
  token.Name = mSymbols.Of(name);
  token.Bracketed = true;
}

void TokenScan::TakeNumber() {
  std::size_t end = mAt;
  while (IsDigitAscii(At(end))) ++end;
  if (At(end) == '.' && (IsDigitAscii(At(end + 1)) || !IsNameByte(At(end + 1)))) {
    ++end;
    while (IsDigitAscii(At(end))) ++end;
  }
  if (const char e = UpperAscii(At(end)); e == 'E' || e == 'D') {
    std::size_t digits = end + 1;
    if (At(digits) == '+' || At(digits) == '-') ++digits;
    if (IsDigitAscii(At(digits))) {
      end = digits;
      while (IsDigitAscii(At(end))) ++end;
    }
  }
  if (const char c = At(end); c == '#' || c == '!' || c == '@' || c == '%' || c == '&') ++end;
  if (mRules.DotNet)
    while (IsNameByte(At(end))) ++end;
  Push(TokenKind::Number, mAt, end == mAt ? mAt + 1 : end);
}

// Of VB.NET a string may stand on several lines.
void TokenScan::TakeText() {
  std::size_t end = mAt + 1;
  for (;;) {
    if (mRules.DotNet)
      end = std::min(mText.find('"', end), mText.size());
    else
      while (end < mText.size() && mText[end] != '"' && ClassOf(mText[end]) != kLineEnd) ++end;
    if (end >= mText.size()) {
      if (mRules.DotNet) end = mAt + PhysicalLine().size();  // it has no end
      break;
    }
    if (mText[end] != '"') break;
    ++end;
    if (At(end) != '"') break;
    ++end;
  }
  if (mRules.DotNet && (At(end) == 'c' || At(end) == 'C')) ++end;
  CountLines(end);
  Push(TokenKind::Text, mAt, end);
}

// Lines that begin inside of the token that ends there.
void TokenScan::CountLines(std::size_t end) {
  const std::string_view taken = mText.substr(mAt, end - mAt);
  for (std::size_t at = 0; (at = taken.find('\n', at)) != std::string_view::npos;) {
    ++mLine;
    mLineStarts.push_back(mAt + ++at);
  }
}

bool TokenScan::TakeDate() {
  const std::string_view line = PhysicalLine();
  const std::size_t end = DateEnd(line, 0);
  if (end == 0) return false;
  Push(TokenKind::Date, mAt, mAt + end);
  return true;
}

void TokenScan::TakeMark() {
  const char c = mText[mAt];
  if (c == '&') {  // &HFF, &O17
    const char base = UpperAscii(At(mAt + 1));
    if ((base == 'H' && IsHexDigit(At(mAt + 2))) || (base == 'O' && IsDigitAscii(At(mAt + 2)))) {
      std::size_t end = mAt + 2;
      while (IsHexDigit(At(end))) ++end;
      if (!IsNameByte(At(end))) {
        if (At(end) == '&' || At(end) == '%') ++end;
        Push(TokenKind::Number, mAt, end);
        return;
      }
    }
  }
  if (c == ':' && At(mAt + 1) == '=') {
    Push(TokenKind::Mark, mAt, mAt + 2).Mark = kNamedMark;
    return;
  }
  if (mRules.DotNet && c == '$' && At(mAt + 1) == '"') return TakeInterpolated(mAt + 2);
  if (mRules.DotNet && (c == '}' || c == ':') && TakeHoleEnd(c)) return;
  if (mRules.DotNet && c == '?') {  // of a nullable type, or in front of a dot
    ++mAt;
    return;
  }
  Token& token = Push(TokenKind::Mark, mAt, mAt + 1);
  token.Mark = c;
  if (c == ':') HasColons = true;
  const auto index = static_cast<std::int32_t>(Tokens.size()) - 1;
  if (c == '(' || (mRules.DotNet && c == '{')) {
    mOpen.push_back(index);
  } else if ((c == ')' || (mRules.DotNet && c == '}')) && !mOpen.empty()) {
    token.Match = mOpen.back();
    Tokens[static_cast<std::size_t>(mOpen.back())].Match = index;
    mOpen.pop_back();
  }
}

}  // namespace vendrel
