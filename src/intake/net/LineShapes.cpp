// Most lines of a file are whole statements, and a walk over the few bytes that matter tells. It
// agrees with the walk over tokens (`NetStatementScan`) wherever it says so.

#include "intake/net/LineShapes.h"

#include <array>
#include <string>

#include "core/Ascii.h"
#include "intake/net/NetWords.h"
#include "text/Blanks.h"
#include "text/Separators.h"

namespace vendrel {
namespace {

// What a byte may mean; all that are not named mean nothing by themselves.
enum class Mark : std::uint8_t {
  None,
  High,       // of a character beyond ASCII
  From,       // the last letter of "From"
  Aggregate,  // the second one of "Aggregate"
  Underscore,
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
  for (std::size_t c = 0x80; c < marks.size(); ++c) marks[c] = Mark::High;
  set("Mm", Mark::From);
  set("Gg", Mark::Aggregate);
  set("_", Mark::Underscore);
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

// Apart, so that nothing but the place is kept from byte to byte.
std::size_t NextMark(std::string_view line, std::size_t at) {
  while (at < line.size() && MarkOf(line[at]) == Mark::None) ++at;
  return at;
}

// "<" in front of one of these may begin an XML literal.
constexpr bool MayBeginTag(char c) {
  return IsWordByte(c) || c == '/' || c == '!' || c == '?' || c == '%';
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

// The walk over one line without its outer blanks. Of the tokens only the last one is looked at,
// and what stands in front of a parenthesis.
class CodeWalk {
 public:
  explicit CodeWalk(std::string_view line) : mLine(line), mCodeEnd(line.size()) {
    std::size_t end = 0;
    while (end < line.size() && IsWordByte(line[end])) ++end;
    mFirst = line.substr(0, end);
  }

  NetLineShape Shape() {
    if (!IsWordByte(mLine.front()) && mLine.front() != '.') return NetLineShape::Unclear;
    if (EqualsNoCaseAscii(mFirst, "REM")) return NetLineShape::Bare;
    if (!Walk() || mDepth > 0 || Joins()) return NetLineShape::Unclear;
    return IsPlain() ? NetLineShape::Plain : NetLineShape::Whole;
  }

 private:
  bool Walk() {
    for (; (mAt = NextMark(mLine, mAt)) < mLine.size(); ++mAt) {
      const Mark mark = MarkOf(mLine[mAt]);
      if (mark == Mark::Apostrophe) {
        mIsCommented = true;
        mCodeEnd = mAt;
        return true;
      }
      if (!TakeMark(mark)) return false;
    }
    return true;
  }

  bool TakeMark(Mark mark) {
    switch (mark) {
      case Mark::High: return mAnyHigh = true;
      case Mark::From: return !IsWordAt(mAt - 3, "FROM");
      case Mark::Aggregate: return !IsWordAt(mAt - 1, "AGGREGATE");
      case Mark::Underscore: return !IsWordAt(mAt, "_");
      case Mark::Open: ++mDepth; return !IsAny(WordBefore(mAt), "SUB", "FUNCTION");
      case Mark::Close: mDepth -= mDepth > 0; return true;
      case Mark::Quote: return mLine[mAt - 1] != '$' && TakeText();
      case Mark::Less: return !MayBeTag();
      case Mark::Colon: return mAt + 1 < mLine.size() && mLine[mAt + 1] == '=';
      default: return false;
    }
  }

  bool TakeText() {
    const std::size_t close = mLine.find('"', mAt + 1);
    if (close == kNotFound) return false;
    mAt = close;
    return true;
  }

  // An XML literal; behind modifiers alone an attribute.
  bool MayBeTag() const {
    if (mAt + 1 < mLine.size() && MayBeginTag(mLine[mAt + 1])) return true;
    return KindsOfNetWord(mFirst) & (nwModifier | nwEnd);
  }

  // Whether the line goes on behind its last token. A word at the front is none that joins, "With"
  // for one; behind a point it is a name.
  bool Joins() const {
    const std::string_view code = TrimGapsRight(mLine.substr(0, mCodeEnd));
    const char last = code.back();
    if (last == '&') return code.size() < 2 || !IsWordByte(code[code.size() - 2]);
    if (!IsWordByte(last)) return std::string_view("=+-*/\\^<>,.({").find(last) != kNotFound;
    const std::string_view word = WordBefore(code.size());
    const auto begin = static_cast<std::size_t>(word.data() - mLine.data());
    return begin > 0 && mLine[begin - 1] != '.' && (KindsOfNetWord(word) & nwOperator);
  }

  bool IsPlain() const {
    if (mIsCommented || mAnyHigh || !IsOfNoKind(mFirst, mLine)) return false;
    std::string collapsed;
    return mLine.find('\t') == kNotFound && Collapsed(mLine, collapsed).size() == mLine.size();
  }

  static std::string_view TrimGapsRight(std::string_view text) {
    while (IsGap(text.back())) text.remove_suffix(1);
    return text;
  }

  bool IsWordAt(std::size_t at, std::string_view word) const {
    if (at >= mLine.size() || !EqualsNoCaseAscii(mLine.substr(at, word.size()), word)) return false;
    const std::size_t end = at + word.size();
    return (at == 0 || !IsWordByte(mLine[at - 1])) &&
           (end >= mLine.size() || !IsWordByte(mLine[end]));
  }

  // The word that ends in front of `end`, blanks between; empty where none does.
  std::string_view WordBefore(std::size_t end) const {
    while (end > 0 && IsGap(mLine[end - 1])) --end;
    std::size_t begin = end;
    while (begin > 0 && IsWordByte(mLine[begin - 1])) --begin;
    return mLine.substr(begin, end - begin);
  }

  std::string_view mLine, mFirst;
  std::size_t mAt = 0;
  std::size_t mCodeEnd;
  int mDepth = 0;
  bool mAnyHigh = false, mIsCommented = false;
};

}  // namespace

NetLineShape ShapeOfNetLine(std::string_view line) {
  line = TrimGaps(line);
  if (line.empty() || line.front() == '\'' || line.front() == '#') return NetLineShape::Bare;
  return CodeWalk(line).Shape();
}

}  // namespace vendrel
