#include "text/CodeText.h"

#include "core/Ascii.h"

namespace vendrel {
namespace {

bool IsWordAscii(char c) { return IsLetterAscii(c) || IsDigitAscii(c) || c == '_'; }

bool IsRemarkLine(std::string_view line) {
  return StartsWithNoCaseAscii(line, "Rem") && (line.size() == 3 || !IsWordAscii(line[3]));
}

std::string_view WithoutGaps(std::string_view text) {
  while (!text.empty() && (IsGap(text.back()) || text.back() == '\r')) text.remove_suffix(1);
  return TrimGaps(text);
}

bool GoesOn(std::string_view text) {
  return text.ends_with('_') && (text.size() == 1 || IsGap(text[text.size() - 2]));
}

// Where the comment of a line begins; the length of the line where there is none.
std::size_t CommentStart(std::string_view line) {
  if (IsRemarkLine(line)) return 0;
  if (line.find('\'') == std::string_view::npos) return line.size();
  bool quoted = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == '"') quoted = !quoted;
    if (line[i] == '\'' && !quoted) return i;
  }
  return line.size();
}

// The code of the next line, as long as it is known whether a comment goes on to it.
std::string_view TakeCode(std::string_view line, bool& inComment) {
  line = WithoutGaps(line);
  if (inComment) {
    inComment = GoesOn(line);
    return {};
  }
  const std::size_t comment = CommentStart(line);
  inComment = comment < line.size() && GoesOn(line);
  return WithoutGaps(line.substr(0, comment));
}

}  // namespace

std::string_view CodeOf(std::string_view line) {
  bool inComment = false;
  return TakeCode(line, inComment);
}

std::vector<std::int32_t> LinesWithCode(const CodeLines& lines) {
  std::vector<std::int32_t> found;
  bool inComment = false;
  for (std::int32_t i = 1; i <= lines.Count(); ++i)
    if (!TakeCode(lines.LineView(i), inComment).empty()) found.push_back(i);
  return found;
}

// False for a line without code.
bool CodeWalk::TakeLine(std::string_view& code) {
  const std::int32_t at = mNext++;
  if (mLines.NotInSource(at)) return false;
  code = TakeCode(mLines.LineView(at), mInComment);
  return !code.empty();
}

bool CodeWalk::Next() {
  const std::int32_t count = mLines.Count();
  std::string_view code;
  do {
    if (mNext > count) return false;
    mFirst = mNext;
  } while (!TakeLine(code));
  mText.assign(code);
  while (GoesOn(mText) && mNext <= count) {
    mText.pop_back();
    if (TakeLine(code)) mText.append(code);
  }
  return true;
}

}  // namespace vendrel
