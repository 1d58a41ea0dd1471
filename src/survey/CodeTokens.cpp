#include "survey/CodeTokens.h"

#include <algorithm>

#include "core/Ascii.h"
#include "text/Separators.h"

namespace vendrel {
namespace {

std::size_t EndOfText(std::string_view line, std::size_t at) {
  for (++at; at < line.size(); ++at)
    if (line[at] == '"') {
      if (at + 1 < line.size() && line[at + 1] == '"')
        ++at;
      else
        return at + 1;
    }
  return line.size();
}

bool IsWordOfDate(std::string_view word) {
  constexpr std::string_view months = "jan feb mar apr may jun jul aug sep oct nov dec";
  if (EqualsNoCaseAscii(word, "am") || EqualsNoCaseAscii(word, "pm")) return true;
  return word.size() >= 3 && ContainsNoCaseAscii(months, word.substr(0, 3));
}

// "1/1/2000", "1 Mar 2000", "10:30 PM"; not "1: Line Input ".
bool IsDateText(std::string_view text) {
  for (std::size_t i = 0; i < text.size();) {
    std::size_t end = i;
    while (end < text.size() && IsLetterAscii(text[end])) ++end;
    if (end == i && !IsDigitAscii(text[i]) && std::string_view("/:- ").find(text[i]) == kNotFound)
      return false;
    if (end > i && !IsWordOfDate(text.substr(i, end - i))) return false;
    i = std::max(end, i + 1);
  }
  return text.find_first_of("/:- ") != kNotFound;
}

// Behind the sign that ends a date ("#1/1/2000#"); `at` where it is the sign of a file number.
std::size_t EndOfDate(std::string_view line, std::size_t at) {
  const std::size_t end = line.find('#', at + 1);
  if (end == std::string_view::npos || at + 1 >= line.size() || !IsDigitAscii(line[at + 1]))
    return at;
  return IsDateText(line.substr(at + 1, end - at - 1)) ? end + 1 : at;
}

class CodeCutter {
 public:
  CodeCutter(std::string_view line, std::vector<CodeToken>& tokens)
      : mLine(line), mTokens(tokens) {}

  void Run() {
    while (mAt < mLine.size()) {
      if (IsGap(mLine[mAt]))
        ++mAt;
      else
        Take();
    }
  }

 private:
  void Take() {
    const char c = mLine[mAt];
    if (IsWordByte(c) || c == '[') return TakeWord();
    if (c == '"') return Add(CodeTokenKind::Text, EndOfText(mLine, mAt));
    if (c == '#')
      if (const std::size_t end = EndOfDate(mLine, mAt); end > mAt)
        return Add(CodeTokenKind::Date, end);
    const std::string_view pair = mLine.substr(mAt, 2);
    const bool isPair = pair == ":=" || pair == "<>" || pair == "<=" || pair == ">=";
    Add(CodeTokenKind::Sign, mAt + (isPair ? 2 : 1));
    if (mTokens.back().Is(":")) mIsFirst = true;
  }

  void TakeWord() {
    std::size_t end = mAt;
    if (mLine[mAt] == '[') {
      end = std::min(mLine.find(']', mAt), mLine.size() - 1) + 1;
    } else {
      while (end < mLine.size() && IsWordByte(mLine[end])) ++end;
      if (end < mLine.size() && mLine[end] == '$') ++end;
    }
    const bool isNumber = IsDigitAscii(mLine[mAt]);
    Add(isNumber ? CodeTokenKind::Number : CodeTokenKind::Word, end);
    CodeToken& token = mTokens.back();
    if (isNumber) {
      mIsFirst = token.IsFirst;  // a line number
      return;
    }
    std::transform(token.Text.begin(), token.Text.end(), token.Text.begin(),
                   [](char c) { return LowerAscii(c); });
    mIsFirst = token.Is("then") || token.Is("else");
  }

  void Add(CodeTokenKind kind, std::size_t end) {
    const bool isJoined = !mTokens.empty() && mAt == mEnd;
    mTokens.push_back({kind, std::string(mLine.substr(mAt, end - mAt)), mIsFirst, isJoined});
    mIsFirst = false;
    mAt = mEnd = end;
  }

  std::string_view mLine;
  std::vector<CodeToken>& mTokens;
  std::size_t mAt = 0;
  std::size_t mEnd = 0;
  bool mIsFirst = true;
};

}  // namespace

void CutCode(std::string_view line, std::vector<CodeToken>& tokens) {
  tokens.clear();
  CodeCutter(line, tokens).Run();
}

}  // namespace vendrel
