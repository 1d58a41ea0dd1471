#include "text/Classifier.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "core/Ascii.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "text/Separators.h"
#include "text/StatementKeywords.h"

namespace vendrel {
namespace {

enum CharClass : unsigned char { kPlain, kQuote, kApostrophe, kColon, kDigit, kBlank, kHigh };

constexpr std::array<unsigned char, 256> kClasses = [] {
  std::array<unsigned char, 256> classes{};
  classes['"'] = kQuote;
  classes['\''] = kApostrophe;
  classes[':'] = kColon;
  classes[' '] = kBlank;
  for (int c = '0'; c <= '9'; ++c) classes[static_cast<std::size_t>(c)] = kDigit;
  for (int c = 0x80; c <= 0xFF; ++c) classes[static_cast<std::size_t>(c)] = kHigh;
  return classes;
}();

// Eight characters are looked at in one step: most lines hold nothing that ends a run.
constexpr std::uint64_t kOnes = 0x0101010101010101;
constexpr std::uint64_t kHighBits = 0x8080808080808080;

std::uint64_t EightAt(std::string_view text, std::size_t at) {
  std::uint64_t eight;
  std::memcpy(&eight, text.data() + at, sizeof eight);
  return eight;
}

// High bits in the bytes that may be `c`: in each that is, and rarely in one behind it.
constexpr std::uint64_t MayBe(std::uint64_t eight, char c) {
  const std::uint64_t zero = eight ^ (kOnes * static_cast<unsigned char>(c));
  return (zero - kOnes) & ~zero;
}

// End of a run of characters that mean nothing to the scan once something but a number has been
// seen.
std::size_t PlainEnd(std::string_view text, std::size_t at, std::size_t end) {
  for (; at + 8 <= end; at += 8) {
    const std::uint64_t eight = EightAt(text, at);
    const std::uint64_t marks = eight | MayBe(eight, '"') | MayBe(eight, '\'') | MayBe(eight, ':');
    if ((marks & kHighBits) != 0) break;
  }
  while (at < end) {
    const unsigned char kind = kClasses[static_cast<unsigned char>(text[at])];
    if (kind != kPlain && kind != kDigit && kind != kBlank) break;
    ++at;
  }
  return at;
}

// Where two blanks stand together, or the last character where they do nowhere. (A search for
// each blank costs more: they are dense.)
std::size_t TwoBlanks(std::string_view text) {
  std::size_t at = 0;
  const auto here = [&] { return text[at] == ' ' && text[at + 1] == ' '; };
  while (at + 9 <= text.size()) {
    const std::size_t next = at + 8;
    if ((MayBe(EightAt(text, at), ' ') & MayBe(EightAt(text, at + 1), ' ') & kHighBits) != 0)
      for (; at < next; ++at)
        if (here()) return at;
    at = next;
  }
  while (at + 1 < text.size() && !here()) ++at;
  return at;
}

std::size_t CharLength(unsigned char lead) {
  return lead < 0xC0 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

// The low 8 bits of the first UTF-16 unit of the character at `at`: what the classic scan compares.
unsigned char LowByte(std::string_view text, std::size_t at) {
  const auto lead = static_cast<unsigned char>(text[at]);
  const std::size_t length = CharLength(lead);
  if (lead < 0xC0 || at + length > text.size()) return lead;
  std::uint32_t c = lead & (0xFFu >> (length + 1));
  for (std::size_t i = 1; i < length; ++i)
    c = (c << 6) | (static_cast<unsigned char>(text[at + i]) & 0x3F);
  if (c >= 0x10000) c = 0xD800 + ((c - 0x10000) >> 10);
  return static_cast<unsigned char>(c & 0xFF);
}

bool EndsContinued(std::string_view part) {
  return part.size() >= 2 && part[part.size() - 1] == '_' && part[part.size() - 2] == ' ';
}

// The text without its last character.
std::string_view WithoutLast(std::string_view text) {
  std::size_t at = text.size() - 1;
  while (at > 0 && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80) --at;
  return text.substr(0, at);
}

// Length of the blank that stands at `at` and is no " ": a no-break or ideographic one, or one of
// the typographic ones; 0 if none does.
std::size_t OtherBlankAt(std::string_view text, std::size_t at) {
  const std::string_view two = text.substr(at, 2), three = text.substr(at, 3);
  if (two == "\xC2\xA0") return 2;
  if (three == "\xE3\x80\x80" || three == "\xE2\x80\xAF" || three == "\xE2\x81\x9F") return 3;
  if (three.size() < 3 || !three.starts_with("\xE2\x80")) return 0;
  return static_cast<unsigned char>(three[2]) <= 0x8A ? 3 : 0;
}

bool IsRemark(std::string_view text) {
  return StartsWithNoCaseAscii(text, "REM") && (text.size() == 3 || text[3] == ' ');
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

}  // namespace

std::string JoinContinuation(std::string_view remainder, std::string_view physical) {
  std::string joined(Trim(remainder));
  joined += ' ';
  joined += Trim(physical);
  return joined;
}

std::string_view LineClassifier::WorkingCopy(std::string_view text) {
  if (std::memchr(text.data(), '\t', text.size()) == nullptr) return Trim(text);
  mWork.clear();
  for (const char c : text) {
    if (c == '\t')
      mWork.append(4, ' ');
    else
      mWork.push_back(c);
  }
  return Trim(mWork);
}

LineClassifier::Result LineClassifier::First(std::string_view text, ParsedLine& line,
                                             bool mayHoldTabs) {
  line = ParsedLine();
  line.Text = text;
  line.Unparted = mRules.EverySeparator && !PartLines;
  mState = ScanState();
  const std::string_view work = !mayHoldTabs || text.empty() ? Trim(text) : WorkingCopy(text);
  if (work.empty()) {
    line.LineType = BLANK_LINE;
    return Result::Ok;
  }
  if (mRules.RemComments && IsRemark(work)) {
    mState.What = Found::Comment;
    mState.SeenOther = true;
    mState.TextFrom = 3;
  }
  const Result result = Process(work, line);
  if (line.Continued) {
    mLogical.assign(TrimRight(line.Remainder));
    mLogicalSize = mLogical.size();
  }
  return result;
}

LineClassifier::Result LineClassifier::Next(std::string_view physical, ParsedLine& line) {
  line = ParsedLine();
  line.Text = physical;
  mLogical.resize(mLogicalSize);
  mLogical += ' ';
  for (const char c : Trim(physical)) {
    if (c == '\t')
      mLogical.append(4, ' ');
    else
      mLogical.push_back(c);
  }
  mLogical.resize(TrimRight(mLogical).size());
  const Result result = Process(mLogical, line);
  // The text is cut at the next call: the parts of this line lie in it.
  mLogicalSize = line.Continued ? TrimRight(line.Remainder).size() : mLogical.size();
  return result;
}

LineClassifier::Result LineClassifier::Process(std::string_view work, ParsedLine& line) {
  // The state is kept at the end of what a continuation leaves of the line, so that the next line
  // resumes there: the blank and the underscore are looked at, but not remembered.
  const bool mayContinue = EndsContinued(work);
  ScanState kept;
  if (mayContinue) {
    std::size_t end = TrimRight(work.substr(0, work.size() - 1)).size();
    // What a colon in front of the underscore does is known once the next line is.
    if (PartsEvery())
      while (end > 0 && (work[end - 1] == ':' || work[end - 1] == ' ')) --end;
    if (mState.What == Found::Nothing && mState.At > end) {
      // An empty line behind "_ _" leaves less than was looked at: blanks and underscores, which
      // only the end of a line number takes note of.
      mState.At = end;
      if (work.substr(0, end).find_first_not_of("0123456789 ") == std::string_view::npos)
        mState.SeenOther = false;
    }
    Scan(work, end);
    kept = mState;
  }
  Scan(work, work.size());
  if (PartsEvery() && !(mayContinue && mState.What == Found::Nothing)) FindHiddenDeclaration(work);
  Separate(work, line);
  if (line.Continued) {
    if (mState.What == Found::Nothing) mState = kept;
    // "a _'": the apostrophe itself is the character that the continuation takes away.
    if (mState.What == Found::Comment && mState.Where >= line.Remainder.size() &&
        mState.TextFrom > 0)
      mState = mBeforeComment;
    return Result::Ok;
  }
  if (mState.HasOtherBlanks) TakeOtherBlanks(line);
  if (line.LineType == BLANK_LINE) return Result::Ok;
  if (line.StatementPart.empty()) {
    line.LineType = Comment;
    return Result::Ok;
  }
  line.StatementPart = Collapsed(line.StatementPart);
  return Judge(line);
}

void LineClassifier::Scan(std::string_view text, std::size_t end) {
  ScanState& s = mState;
  while (s.What == Found::Nothing && s.At < end) {
    const auto byte = static_cast<unsigned char>(text[s.At]);
    unsigned char kind = kClasses[byte];
    if (kind == kPlain) {
      s.SeenOther = true;
      s.At = PlainEnd(text, s.At + 1, end);
      continue;
    }
    const bool seenOther = s.SeenOther;
    std::size_t next = s.At + 1;
    if (kind == kHigh) {
      next = s.At + CharLength(byte);
      const unsigned char low = mRules.WholeCharacters ? byte : LowByte(text, s.At);
      kind = kClasses[low] == kHigh ? static_cast<unsigned char>(kPlain) : kClasses[low];
      if (mRules.BracketedNames && !s.InString && OtherBlankAt(text, s.At) > 0)
        s.HasOtherBlanks = true;
    }
    if (kind == kDigit) {
      if (!s.SeenOther) s.SeenDigit = true;
    } else if (kind == kBlank) {
      if (s.SeenDigit && !s.SeenOther) {
        TakeLineNumber(text);
        if (s.Begin == 0 && MayBeginWithLabel && PartsEvery()) s.Begin = s.At + 1;
      }
    } else {
      s.SeenOther = true;
    }
    if (kind == kQuote && ScanQuote(text, next)) continue;
    if (!s.InString && kind == kApostrophe && !InBrackets(text, s.At)) {
      mBeforeComment = s;
      mBeforeComment.SeenOther = seenOther;
      s.What = Found::Comment;
      s.Where = s.At;
      s.TextFrom = next;
      return;
    }
    if (!s.InString && kind == kColon &&
        (mRules.EverySeparator ? PartsAtColon(text, s.At) : IsSeparator(text, s.At))) {
      s.What = Found::Separator;
      s.Where = s.At;
      return;
    }
    s.At = next;
  }
}

// Enters or leaves a string. True when the scan goes on elsewhere than behind the quote: two quotes
// behind a closing one are passed over together with the character behind them.
bool LineClassifier::ScanQuote(std::string_view text, std::size_t next) {
  ScanState& s = mState;
  s.InString = !s.InString;
  if (s.InString || mRules.WholeCharacters) return false;
  std::size_t at = next;
  for (int i = 0; i < 2; ++i) {
    if (at >= text.size()) return false;
    const auto byte = static_cast<unsigned char>(text[at]);
    if (kClasses[byte < 0x80 ? byte : LowByte(text, at)] != kQuote) return false;
    at += CharLength(byte);
  }
  if (at < text.size()) at += CharLength(static_cast<unsigned char>(text[at]));
  s.At = at;
  return true;
}

bool LineClassifier::IsSeparator(std::string_view text, std::size_t at) const {
  if (at + 1 >= text.size() || text[at + 1] == '=' || at == 0) return false;
  return SplitAtEveryColon || text[at - 1] == ' ';
}

// The rule of EverySeparator. Empty statements are none: a colon with another, a comment or nothing
// behind it parts nothing, and neither does one at the front.
bool LineClassifier::PartsAtColon(std::string_view text, std::size_t at) {
  if (!PartLines || at + 1 >= text.size() || text[at + 1] == '=') return false;
  const std::size_t behind = text.find_first_not_of(' ', at + 1);
  if (behind == std::string_view::npos || text[behind] == ':' || text[behind] == '\'') return false;
  if (text[behind] == '_' && behind + 1 == text.size()) return false;
  const std::size_t from = text.find_first_not_of(" :", mState.Begin);
  if (from >= at || StandsInside(text, at, mLanguage, mState.Searched)) return false;
  if (mRules.RemComments && IsRemark(text.substr(from))) return false;
  if (!MayBeginWithLabel || mState.HasLabel || !IsLabel(text.substr(from, at - from))) return true;
  mState.HasLabel = true;
  mState.Begin = at + 1;
  return false;
}

// An apostrophe in the name "[it's]" begins no comment.
bool LineClassifier::InBrackets(std::string_view text, std::size_t at) {
  if (!mRules.BracketedNames || std::memchr(text.data(), '[', at) == nullptr) return false;
  return StandsInside(text, at, mLanguage, mState.Searched);
}

void LineClassifier::TakeLineNumber(std::string_view text) const {
  if (!RaiseLineNumber) return;
  std::int64_t number = 0;
  for (const char c : text) {
    if (!IsDigitAscii(c)) break;
    number = number * 10 + (c - '0');
    if (number > 2147483637) return;  // no further number would fit
  }
  ProcessState& state = State();
  if (state.CurrentLineNumber <= number) {
    state.CurrentLineNumber = static_cast<std::int32_t>(number + 10);
  }
}

// What the scan found becomes the parts of the record.
void LineClassifier::Separate(std::string_view work, ParsedLine& line) {
  line.StatementPart = work;
  if (mState.What == Found::Separator) {
    line.StatementPart = work.substr(0, mState.Where);
    line.Remainder = work.substr(mState.Where + 1);
    line.MoreLines = true;
  } else {
    if (mState.What == Found::Comment) {
      line.StatementPart = work.substr(0, mState.Where);
      line.CommentPart = Trim(work.substr(mState.TextFrom));
    }
    if (mState.SeenDigit && !mState.SeenOther) {
      TakeLineNumber(work);
      line.StatementPart = {};
      line.LineType = BLANK_LINE;
    }
    if (EndsContinued(line.CommentPart) || EndsContinued(line.StatementPart)) {
      line.Remainder = WithoutLast(work);
      line.Continued = true;
    }
  }
  if (PartsEvery()) TrimStatement(work, line);
  if (mLanguage == lvVisualBasicDotNet && !line.StatementPart.empty() &&
      line.StatementPart.front() == '<') {
    const std::size_t end = AttributeEnd(line.StatementPart);
    line.StatementPart = TrimLeft(
        end == std::string_view::npos ? line.StatementPart : line.StatementPart.substr(end + 1));
  }
}

// "If x Then Dim k": the declaration is a statement of its own.
void LineClassifier::FindHiddenDeclaration(std::string_view work) {
  const std::size_t end = mState.What == Found::Nothing ? work.size() : mState.Where;
  if (mState.What == Found::Comment && EndsContinued(work)) return;
  const std::size_t from = work.find_first_not_of(" :", mState.Begin);
  if (from >= end) return;
  const std::string_view statement = work.substr(from, end - from);
  const std::size_t at = DeclarationBehindThen(statement, !MayBeginWithLabel);
  if (at == kNotFound) return;
  mState.What = Found::Separator;
  mState.Where = from + at - 1;
}

// Without the label or line number at the front, and without the colons of empty statements.
void LineClassifier::TrimStatement(std::string_view work, ParsedLine& line) const {
  std::string_view statement = line.StatementPart;
  if (statement.empty() || line.Continued) return;
  const std::size_t begin = static_cast<std::size_t>(statement.data() - work.data());
  if (mState.Begin > begin) {
    const std::string_view rest =
        TrimLeft(statement.substr(std::min(statement.size(), mState.Begin - begin)));
    if (rest.empty()) return;
    statement = rest;
    line.HasLabel = true;
    if (mRules.RemComments && IsRemark(statement)) {
      line.CommentPart =
          Trim(work.substr(static_cast<std::size_t>(statement.data() - work.data()) + 3));
      line.StatementPart = {};
      return;
    }
  }
  while (statement.starts_with(':')) statement = TrimLeft(statement.substr(1));
  std::string_view front = TrimRight(statement);
  if (front.ends_with(':')) {
    while (front.ends_with(':')) front = TrimRight(front.substr(0, front.size() - 1));
    if (!MayBeginWithLabel || !IsLabel(front)) statement = front;
  }
  line.StatementPart = statement;
  if (TrimRight(statement).empty() && mState.What != Found::Comment) line.LineType = BLANK_LINE;
}

// Blanks of every kind become blanks, but for those in strings.
void LineClassifier::TakeOtherBlanks(ParsedLine& line) {
  mBlanked.clear();
  bool inString = false;
  for (std::size_t i = 0; i < line.StatementPart.size();) {
    const char c = line.StatementPart[i];
    if (c == '"') inString = !inString;
    const std::size_t blank = inString ? 0 : OtherBlankAt(line.StatementPart, i);
    mBlanked.push_back(blank > 0 ? ' ' : c);
    i += blank > 0 ? blank : 1;
  }
  line.StatementPart = TrimLeft(mBlanked);
  if (!line.StatementPart.empty()) return;
  line.StatementPart = {};
  if (mState.What != Found::Comment) line.LineType = BLANK_LINE;
}

std::string_view LineClassifier::Collapsed(std::string_view statement) {
  const std::size_t run = TwoBlanks(statement);
  if (run + 1 >= statement.size()) return statement;
  mStatement.assign(statement.substr(0, run + 1));
  for (std::size_t i = run + 1; i < statement.size(); ++i) {
    if (statement[i] != ' ' || mStatement.back() != ' ') mStatement.push_back(statement[i]);
  }
  return mStatement;
}

LineClassifier::Result LineClassifier::Judge(ParsedLine& line) {
  const StatementJudgement judged = JudgeStatement(line.StatementPart, mLanguage);
  line.LineType = judged.LineType;
  if (judged.MissingWord) return Result::MissingWord;
  if (mRules.OneLineProcedures && !mRules.EverySeparator && !line.MoreLines &&
      IsStartLineType(line.LineType)) {
    SplitOneLineProcedure(line);
  }
  return Result::Ok;
}

// "Sub A(): x = 1: End Sub": the colon behind the header separates, with or without a blank.
void LineClassifier::SplitOneLineProcedure(ParsedLine& line) {
  const std::string_view statement = line.StatementPart;
  if (statement.find(':') == std::string_view::npos) return;
  int depth = 0;
  bool inString = false;
  for (std::size_t i = 0; i + 1 < statement.size(); ++i) {
    const char c = statement[i];
    if (c == '"') inString = !inString;
    if (inString) continue;
    if (c == '(') ++depth;
    if (c == ')') --depth;
    if (c != ':' || depth > 0 || statement[i + 1] == '=') continue;
    line.MoreLines = true;
    line.Remainder = statement.substr(i + 1);
    line.StatementPart = statement.substr(0, i);
    line.LineType = JudgeStatement(line.StatementPart, mLanguage).LineType;
    return;
  }
}

CodeLine ParsedLine::Record() const {
  CodeLine record;
  record.LineType = LineType;
  record.Continued = Continued;
  record.Continuation = Continuation;
  record.Text = Text;
  record.StatementPart = StatementPart;
  record.CommentPart = CommentPart;
  record.MoreLines = MoreLines;
  record.Remainder = Remainder;
  record.NotInSource = NotInSource;
  record.EventIndex = EventIndex;
  return record;
}

ParsedLine ParsedLine::Of(const CodeLine& record) {
  ParsedLine line;
  line.LineType = record.LineType;
  line.Continued = record.Continued;
  line.Continuation = record.Continuation;
  line.MoreLines = record.MoreLines;
  line.NotInSource = record.NotInSource;
  line.OwnText = true;
  line.EventIndex = record.EventIndex;
  line.Text = record.Text;
  line.StatementPart = record.StatementPart;
  line.CommentPart = record.CommentPart;
  line.Remainder = record.Remainder;
  return line;
}

CodeLine InitialiseCodeLine(std::string_view Text, LanguageVersionEnum LanguageVersion,
                            const ReadingRules& reading) try {
  LineClassifier classifier(LanguageVersion, reading);
  ParsedLine line;
  if (classifier.First(Text, line) == LineClassifier::Result::MissingWord) {
    throw VendrelError(errSubscript,
                       "the statement needs another word: " + std::string(Trim(Text)));
  }
  return line.Record();
}
VENDREL_CONTEXT(Text, LanguageVersion)

}  // namespace vendrel
