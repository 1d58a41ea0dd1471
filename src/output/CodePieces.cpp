#include "output/CodePieces.h"

#include <algorithm>
#include <array>
#include <utility>

#include "core/Ascii.h"
#include "text/Keywords.h"

namespace vendrel {
namespace {

// What stands between the last piece and a coloured one is a plain piece; then the coloured one
// waits for the next call. `take` moves on by a word and gives a coloured piece, or an empty one.
template <typename Take>
bool NextPiece(std::string_view line, std::size_t& at, std::size_t& shown, CodePiece& waiting,
               CodePiece& piece, Take take) {
  CodePiece found = std::exchange(waiting, {});
  while (found.Text.empty() && at < line.size()) found = take();
  const std::size_t end =
      found.Text.empty() ? line.size() : static_cast<std::size_t>(found.Text.data() - line.data());
  if (shown < end) {
    piece = {CodePart::Plain, line.substr(shown, end - shown)};
    shown = end;
    waiting = found;
    return true;
  }
  piece = found;
  shown = end + found.Text.size();
  return !found.Text.empty();
}

std::size_t EndOr(std::size_t position, std::string_view line) {
  return position == kNotFound ? line.size() : position + 1;
}

bool IsNameCharacter(char c) {
  return IsLetterAscii(c) || (c >= '0' && c <= '9') || c == '_' || static_cast<signed char>(c) < 0;
}

// Words that are coloured where every word is looked at, beside those of `IsKeyword`.
constexpr std::array<std::string_view, 10> kFurtherKeywords{
    "ADDRESSOF", "BYREF", "EMPTY", "FRIEND", "MOD", "NULL", "PRESERVE", "STEP", "TYPEOF", "UNTIL"};

bool IsWordOfLanguage(std::string_view word) {
  std::size_t length = 0;
  if (IsKeyword(word, length)) return length == word.size();
  return std::any_of(kFurtherKeywords.begin(), kFurtherKeywords.end(),
                     [&](std::string_view known) { return EqualsNoCaseAscii(known, word); });
}

}  // namespace

bool WordPieces::Next(CodePiece& piece) {
  return NextPiece(mLine, mAt, mShown, mWaiting, piece, [this] { return TakeWord(); });
}

CodePiece WordPieces::TakeWord() {
  if (!mBehindString && mLine[mAt] == '\'') {
    const std::size_t from = std::exchange(mAt, mLine.size());
    return {CodePart::Comment, mLine.substr(from)};
  }
  std::size_t end = mAt;
  while (end < mLine.size() && mLine[end] != ' ' && mLine[end] != '"') ++end;
  if (end < mLine.size() && mLine[end] == '"') {
    mAt = EndOr(mLine.find('"', end + 1), mLine);
    mBehindString = true;
    return {CodePart::String, mLine.substr(end, mAt - end)};
  }
  const std::string_view word = mLine.substr(mAt, end - mAt);
  mAt = std::min(end + 1, mLine.size());
  if (std::exchange(mBehindString, false)) return {};
  std::size_t length = 0;
  if (!IsKeyword(word, length)) return {};
  // "<" and ">" have been replaced by their HTML names when words are judged, and "&" ends none.
  if (length < word.size() && (word[length] == '<' || word[length] == '>')) return {};
  return {CodePart::Keyword, word.substr(0, length)};
}

bool TokenPieces::Next(CodePiece& piece) {
  return NextPiece(mLine, mAt, mShown, mWaiting, piece, [this] { return TakeToken(); });
}

CodePiece TokenPieces::TakeToken() {
  const char c = mLine[mAt];
  if (mCommentGoesOn || c == '\'') return TakeComment(mAt);
  if (c == '"') return TakeString();
  if (IsNameCharacter(c)) return TakeName();
  SkipOther();
  return {};
}

CodePiece TokenPieces::TakeComment(std::size_t from) {
  mAt = mLine.size();
  const std::string_view comment = mLine.substr(from);
  const std::size_t size = comment.size();
  mCommentGoesOn = size > 1 && comment[size - 1] == '_' &&
                   (comment[size - 2] == ' ' || comment[size - 2] == '\t');
  return {CodePart::Comment, comment};
}

CodePiece TokenPieces::TakeString() {
  const std::size_t from = mAt;
  do {
    mAt = EndOr(mLine.find('"', mAt + 1), mLine);
  } while (mAt < mLine.size() && mLine[mAt] == '"');
  mAtStatement = false;
  return {CodePart::String, mLine.substr(from, mAt - from)};
}

CodePiece TokenPieces::TakeName() {
  const std::size_t from = mAt;
  while (mAt < mLine.size() && IsNameCharacter(mLine[mAt])) ++mAt;
  const std::string_view word = mLine.substr(from, mAt - from);
  if (!IsLetterAscii(word.front())) return {};  // a number: what follows may still be a statement
  const bool isFirst = std::exchange(mAtStatement, false);
  if (isFirst && EqualsNoCaseAscii(word, "Rem")) return TakeComment(from);
  const char before = from == 0 ? ' ' : mLine[from - 1];
  const std::string_view behind = mLine.substr(mAt);
  const bool isName = before == '.' || before == '!' || before == '&' || behind.starts_with('$') ||
                      behind.starts_with(":=");
  if (isName || !IsWordOfLanguage(word)) return {};
  return {CodePart::Keyword, word};
}

void TokenPieces::SkipOther() {
  const char c = mLine[mAt];
  if (c == ':')
    mAtStatement = true;
  else if (c != ' ' && c != '\t')
    mAtStatement = false;
  const std::size_t close = c == '[' ? mLine.find(']', mAt) : kNotFound;
  mAt = close == kNotFound ? mAt + 1 : close + 1;
}

}  // namespace vendrel
