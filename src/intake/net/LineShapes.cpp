// Most lines of a file are whole statements, and a walk by classes of bytes tells. It agrees with
// the walk over tokens (`NetStatementScan`) wherever it says so. Words in the middle of a line are
// looked at only where their first letter makes them suspect.

#include "intake/net/LineShapes.h"

#include <array>

#include "core/Ascii.h"
#include "intake/net/NetWords.h"

namespace vendrel {
namespace {

enum class Mark : std::uint8_t {
  Word,
  High,   // a byte of a character beyond ASCII: a word, too
  Query,  // the letter with which one may begin
  Blank,
  Operand,  // what is no character of the language, too
  Operator,
  Point,
  Ampersand,
  Open,
  Close,
  Quote,
  Apostrophe,
  Less,
  Colon,
  Unclear,
};

constexpr std::array<Mark, 256> kMarks = [] {
  std::array<Mark, 256> marks{};
  const auto set = [&](std::string_view bytes, Mark mark) {
    for (const char c : bytes) marks[static_cast<unsigned char>(c)] = mark;
  };
  marks.fill(Mark::Operand);
  for (int c = 0; c < 256; ++c) {
    if (IsLetterAscii(static_cast<char>(c)) || IsDigitAscii(static_cast<char>(c)))
      marks[static_cast<std::size_t>(c)] = Mark::Word;
    if (c >= 0x80) marks[static_cast<std::size_t>(c)] = Mark::High;
  }
  set("_", Mark::Word);
  set("AaFf", Mark::Query);
  set(" \t", Mark::Blank);
  set("=+-*/\\^>,", Mark::Operator);
  set(".", Mark::Point);
  set("&", Mark::Ampersand);
  set("({", Mark::Open);
  set(")}", Mark::Close);
  set("\"", Mark::Quote);
  set("'", Mark::Apostrophe);
  set("<", Mark::Less);
  set(":", Mark::Colon);
  set("[", Mark::Unclear);
  set("\xE2", Mark::Unclear);  // may begin an apostrophe of typography
  return marks;
}();

constexpr Mark MarkOf(char c) { return kMarks[static_cast<unsigned char>(c)]; }
constexpr bool IsWordMark(Mark mark) { return mark <= Mark::Query; }

// "<" in front of one of these may begin an XML literal.
constexpr bool MayBeginTag(char c) {
  return IsWordMark(MarkOf(c)) || c == '/' || c == '!' || c == '?' || c == '%';
}

bool IsAny(std::string_view word, std::string_view a, std::string_view b) {
  return EqualsNoCaseAscii(word, a) || EqualsNoCaseAscii(word, b);
}

// Whether a statement that begins with the word is of no kind, as far as the word tells. Behind
// "Then" and "Else" a declaration may stand.
bool IsOfNoKind(std::string_view word, std::string_view statement) {
  if (word.empty()) return true;
  if (IsDigitAscii(word.front())) return false;  // the number of a line
  if (KindsOfNetWord(word) & (nwModifier | nwEnd | nwStatement)) return false;
  if (!IsAny(word, "IF", "ELSEIF") && !EqualsNoCaseAscii(word, "ELSE")) return true;
  return word.size() == statement.size() || EndsWithNoCaseAscii(statement, " THEN");
}

// The walk over one line without its outer blanks. Each step is called from one place, so that the
// state stays in registers.
class CodeWalk {
 public:
  explicit CodeWalk(std::string_view line) : mLine(line) {}

  NetLineShape Shape() {
    if (!Walk()) return NetLineShape::Unclear;
    if (mIsRemark) return NetLineShape::Bare;
    if (mDepth > 0 || mJoins) return NetLineShape::Unclear;
    // A word at the front is none that joins, "With" for one.
    const bool endsInWord = mWordEnd == mCodeEnd && mWord > 0 && !mIsMember;
    if (endsInWord && (KindsOfNetWord(Word()) & nwOperator)) return NetLineShape::Unclear;
    return IsPlain() ? NetLineShape::Plain : NetLineShape::Whole;
  }

 private:
  bool Walk() {
    for (; mAt < mLine.size(); ++mAt) {
      const Mark mark = MarkOf(mLine[mAt]);
      if (mark == Mark::Blank) {
        mAnyRun |= mLine[mAt] == '\t' || MarkOf(mLine[mAt + 1]) == Mark::Blank;
        continue;
      }
      if (mAt == 0 && !IsWordMark(mark) && mark != Mark::Point) return false;
      if (mark == Mark::Apostrophe) return mIsCommented = true;
      if (IsWordMark(mark)) {
        if (!TakeWord(mark)) return false;
        if (mIsRemark) return true;
      } else if (!TakeMark(mark)) {
        return false;
      }
      mCodeEnd = mAt + 1;
    }
    return true;
  }

  // Leaves `mAt` on its last byte.
  bool TakeWord(Mark first) {
    mIsMember = mAt > 0 && mLine[mAt - 1] == '.';
    mWord = mAt;
    mAnyHigh |= first == Mark::High;
    while (++mAt < mLine.size()) {
      const Mark mark = MarkOf(mLine[mAt]);
      if (!IsWordMark(mark)) {
        if (mark == Mark::Unclear) return false;
        break;
      }
      mAnyHigh |= mark == Mark::High;
    }
    mWordEnd = mAt--;
    mJoins = false;
    if (mLine[mAt] == '_' && mWord == mAt) return false;
    if (mWord == 0) mIsRemark = EqualsNoCaseAscii(Word(), "REM");
    return first != Mark::Query || !IsAny(Word(), "FROM", "AGGREGATE");
  }

  bool TakeMark(Mark mark) {
    mJoins = false;
    switch (mark) {
      case Mark::Operator:
      case Mark::Point: mJoins = true; return true;
      case Mark::Ampersand: mJoins = !IsWordMark(MarkOf(mLine[mAt - 1])); return true;
      case Mark::Open:
        ++mDepth;
        mJoins = true;
        return mWordEnd != mCodeEnd || !IsAny(Word(), "SUB", "FUNCTION");
      case Mark::Close: mDepth -= mDepth > 0; return true;
      case Mark::Quote: return mLine[mAt - 1] != '$' && TakeText();
      case Mark::Less: return mJoins = !MayBeTag();
      case Mark::Colon: return mJoins = ++mAt < mLine.size() && mLine[mAt] == '=';
      case Mark::Unclear: return false;
      default: return true;
    }
  }

  bool TakeText() {
    const std::size_t close = mLine.find('"', mAt + 1);
    if (close == kNotFound) return false;
    const std::string_view text = mLine.substr(mAt, close - mAt);
    mAnyRun |= text.find('\t') != kNotFound || text.find("  ") != kNotFound;
    mAt = close;
    return true;
  }

  // An XML literal; behind modifiers alone an attribute.
  bool MayBeTag() const {
    if (mAt + 1 < mLine.size() && MayBeginTag(mLine[mAt + 1])) return true;
    return KindsOfNetWord(FirstWord()) & (nwModifier | nwEnd);
  }

  bool IsPlain() const {
    return !mIsCommented && !mAnyHigh && !mAnyRun && IsOfNoKind(FirstWord(), mLine);
  }

  std::string_view Word() const { return mLine.substr(mWord, mWordEnd - mWord); }
  std::string_view FirstWord() const {
    std::size_t end = 0;
    while (end < mLine.size() && IsWordMark(MarkOf(mLine[end]))) ++end;
    return mLine.substr(0, end);
  }

  std::string_view mLine;
  std::size_t mAt = 0;
  std::size_t mCodeEnd = 0;             // behind the last token
  std::size_t mWord = 0, mWordEnd = 0;  // the last word
  int mDepth = 0;
  bool mJoins = false;     // the last token is an operator, or opens
  bool mIsMember = false;  // the last word stands behind a point
  bool mAnyRun = false;    // of blanks, or a tab
  bool mAnyHigh = false, mIsCommented = false, mIsRemark = false;
};

}  // namespace

NetLineShape ShapeOfNetLine(std::string_view line) {
  line = TrimGaps(line);
  if (line.empty() || line.front() == '\'' || line.front() == '#') return NetLineShape::Bare;
  return CodeWalk(line).Shape();
}

}  // namespace vendrel
