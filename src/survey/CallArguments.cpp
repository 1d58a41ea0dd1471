#include "survey/CallArguments.h"

#include "core/Ascii.h"
#include "text/Separators.h"

namespace vendrel {
namespace {

bool IsWordAt(std::string_view text, std::size_t at, std::string_view word) {
  const auto isByteOfWord = [&](std::size_t i) {
    return i < text.size() && (IsLetterAscii(text[i]) || IsDigitAscii(text[i]) || text[i] == '_');
  };
  return EqualsNoCaseAscii(text.substr(at, word.size()), word) && !isByteOfWord(at + word.size()) &&
         (at == 0 || !isByteOfWord(at - 1));
}

std::size_t SkipGaps(std::string_view text, std::size_t at) {
  while (at < text.size() && (IsGap(text[at]) || text[at] == '\r' || text[at] == '\n' ||
                              (text[at] == '_' && at + 1 < text.size() &&
                               (text[at + 1] == '\r' || text[at + 1] == '\n'))))
    ++at;
  return at;
}

// Walks a list of arguments from `at` to its end: the bracket that closes it, or what ends the
// statement. Gives their number; nothing where no end is found.
class ArgumentWalk {
 public:
  ArgumentWalk(std::string_view text, std::size_t at, bool inBrackets)
      : mText(text), mAt(at), mInBrackets(inBrackets) {}

  std::optional<int> Run() {
    int commas = 0, depth = 0;
    bool isEmpty = true;
    for (; mAt < mText.size(); ++mAt) {
      const char c = mText[mAt];
      if (c == '"') {
        mAt = mText.find('"', mAt + 1);
        if (mAt == kNotFound) return std::nullopt;
        isEmpty = false;
        continue;
      }
      if (depth == 0 && IsEnd(c)) return isEmpty && commas == 0 ? 0 : commas + 1;
      if (c == '(') ++depth;
      if (c == ')' && --depth < 0) return std::nullopt;
      if (c == ',' && depth == 0) ++commas;
      if (SkipGaps(mText, mAt) == mAt && c != ',') isEmpty = false;
    }
    if (mInBrackets) return std::nullopt;
    return isEmpty && commas == 0 ? 0 : commas + 1;
  }
  std::size_t At() const { return mAt; }

 private:
  bool IsEnd(char c) const {
    if (mInBrackets) return c == ')';
    if (c == '\'') return true;
    if (c == ':') return mAt + 1 >= mText.size() || mText[mAt + 1] != '=';
    return IsWordAt(mText, mAt, "Else");
  }

  std::string_view mText;
  std::size_t mAt;
  bool mInBrackets;
};

bool IsChainByte(char c) { return IsWordByte(c) || c == '.' || c == '!'; }

// Where what a name is qualified by begins, brackets with their content included:
// "Forms(i).Size" of "If Forms(i).Size".
std::size_t StartOfChain(std::string_view text, std::size_t at) {
  while (at > 0) {
    if (IsChainByte(text[at - 1])) {
      --at;
      continue;
    }
    if (text[at - 1] != ')' || at >= text.size() || text[at] != '.') break;
    int depth = 0;
    do {
      --at;
      if (text[at] == ')') ++depth;
      if (text[at] == '(') --depth;
    } while (at > 0 && depth > 0);
  }
  return at;
}

bool IsLineNumber(std::string_view text) {
  return text.find_first_not_of("0123456789") == std::string_view::npos;
}

// Without blanks and a line that goes on at its end.
std::string_view WithoutContinuation(std::string_view text) {
  const std::size_t end = text.find_last_not_of(" \t\r\n");
  if (end == std::string_view::npos) return {};
  const bool goesOn =
      end + 1 < text.size() && text.find('\n', end) != std::string_view::npos && text[end] == '_';
  return TrimGaps(text.substr(0, goesOn ? end : end + 1));
}

// Whether the name, with what it is qualified by, is the first of its statement.
bool IsStatement(std::string_view text, std::size_t name) {
  const std::string_view before = WithoutContinuation(text.substr(0, StartOfChain(text, name)));
  if (IsLineNumber(before) || before.ends_with(':')) return true;
  for (const std::string_view word : {"Then", "Else"})
    if (before.size() >= word.size() && IsWordAt(before, before.size() - word.size(), word))
      return true;
  return false;
}

// Whether the bracket is closed in front of a further member: "Item(1).Show".
bool IsChained(std::string_view text, std::size_t bracket) {
  ArgumentWalk walk(text, bracket + 1, true);
  return walk.Run() && walk.At() + 1 < text.size() &&
         (text[walk.At() + 1] == '.' || text[walk.At() + 1] == '(');
}

}  // namespace

std::optional<int> CountArguments(std::string_view statement, std::size_t name,
                                  std::size_t behind) {
  const std::size_t at = SkipGaps(statement, behind);
  const bool hasBracket = at < statement.size() && statement[at] == '(';
  if (IsStatement(statement, name) && !(hasBracket && at == behind && IsChained(statement, at)))
    // "Post (a), b": the bracket is one of the first argument.
    return ArgumentWalk(statement, at, false).Run();
  if (!hasBracket) return 0;
  return ArgumentWalk(statement, at + 1, true).Run();
}

}  // namespace vendrel
