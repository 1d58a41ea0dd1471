#include "text/Words.h"

#include <algorithm>
#include <unordered_set>

#include "core/Ascii.h"
#include "core/CaseFold.h"

namespace vendrel {
namespace {

constexpr std::size_t kLongestName = 255;

constexpr bool IsCodeDelimiter(char c) {
  return c == '(' || c == ')' || c == ' ' || c == '.' || c == ',' || c == ';';
}

// Moves `at` behind the string literal whose opening quote it stands on.
std::size_t SkipString(std::string_view text, std::size_t at) {
  const std::size_t close = text.find('"', at + 1);
  return close == kNotFound ? text.size() : close + 1;
}

// 0-based position of the delimiter outside strings, and outside names in brackets where those are
// whole; npos if it is not there.
std::size_t FindDelimiter(std::string_view text, std::string_view delimiter, bool wholeNames) {
  if (delimiter.empty() || delimiter.front() == '"') return kNotFound;
  for (std::size_t at = 0; at < text.size();) {
    if (text[at] == '"') {
      at = SkipString(text, at);
    } else if (wholeNames && text[at] == '[' && BracketEnd(text, at) > at) {
      at = BracketEnd(text, at);
    } else if (text[at] == delimiter.front() && text.substr(at, delimiter.size()) == delimiter) {
      return at;
    } else {
      ++at;
    }
  }
  return kNotFound;
}

}  // namespace

bool SplitCursor::Next(std::string_view& piece) {
  if (mRest.empty()) return false;
  const std::size_t at =
      mIsPlain ? mRest.find(mDelimiter.front()) : FindDelimiter(mRest, mDelimiter, mWholeNames);
  if (at == kNotFound) {
    piece = mRest;
    mRest = {};
    return true;
  }
  piece = mRest.substr(0, mRemove ? at : at + mDelimiter.size());
  mRest.remove_prefix(at + mDelimiter.size());
  return true;
}

bool WordCursor::Next(std::string_view& word) {
  mRest = TrimLeft(mRest);
  if (mRest.empty()) return false;
  const std::size_t end = mWholeNames ? WordEnd(mRest) : std::min(mRest.find(' '), mRest.size());
  word = {mRest.data(), end};
  mRest.remove_prefix(end);
  return true;
}

std::size_t WordEnd(std::string_view text) {
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] == ' ') return at;
    if (const std::size_t end = text[at] == '[' ? BracketEnd(text, at) : at; end > at) at = end - 1;
  }
  return text.size();
}

std::size_t BracketEnd(std::string_view text, std::size_t at) {
  const std::size_t close = text.substr(at + 1, kLongestName + 1).find(']');
  return close == kNotFound ? at : at + close + 2;
}

std::vector<std::string_view> SplitEx(std::string_view Source, std::string_view Delimeter,
                                      bool RemoveDelimeter) {
  std::vector<std::string_view> pieces;
  SplitCursor cursor(Source, Delimeter, RemoveDelimeter);
  for (std::string_view piece; cursor.Next(piece);) pieces.push_back(piece);
  return pieces;
}

std::vector<std::string_view> SplitCode(std::string_view Source) {
  std::vector<std::string_view> tokens;
  std::size_t start = 0;
  for (std::size_t at = 0; at < Source.size();) {
    if (Source[at] == '"') {
      at = SkipString(Source, at);
    } else if (IsCodeDelimiter(Source[at])) {
      tokens.push_back(Source.substr(start, at - start));
      tokens.push_back(Source.substr(at, 1));
      start = ++at;
    } else {
      ++at;
    }
  }
  if (start < Source.size()) tokens.push_back(Source.substr(start));
  return tokens;
}

std::vector<std::string_view> TrimmedWords(std::string_view text) {
  std::vector<std::string_view> words;
  WordCursor cursor(text);
  for (std::string_view word; cursor.Next(word);) words.push_back(word);
  return words;
}

std::vector<std::string> TrimmedCollectionFromstring(std::string_view text) {
  std::vector<std::string> words;
  WordCursor cursor(text);
  for (std::string_view word; cursor.Next(word);) words.emplace_back(word);
  return words;
}

std::string_view StripQuotes(std::string_view text) {
  if (text.starts_with('"')) text.remove_prefix(1);
  if (text.ends_with('"')) text.remove_suffix(1);
  return text;
}

std::vector<std::pair<std::string, std::string>> GetParameters(std::string_view Source) {
  std::vector<std::pair<std::string, std::string>> parameters;
  std::unordered_set<std::string> seen;
  while (!Source.empty()) {
    std::string_view value = TakeField(Source, ',');
    if (value.find('=') == kNotFound) continue;
    const std::string_view name = Trim(TakeField(value, '='));
    if (seen.insert(FoldKey(name)).second) parameters.emplace_back(name, StripQuotes(Trim(value)));
  }
  return parameters;
}

}  // namespace vendrel
