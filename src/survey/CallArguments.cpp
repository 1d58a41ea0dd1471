#include "survey/CallArguments.h"

#include "core/Ascii.h"

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

// Whether the name, with what it is qualified by, is the first of its statement.
bool IsStatement(std::string_view text, std::size_t name) {
  std::size_t at = name;
  while (at > 0 && (IsLetterAscii(text[at - 1]) || IsDigitAscii(text[at - 1]) ||
                    text[at - 1] == '_' || text[at - 1] == '.' || text[at - 1] == '!'))
    --at;
  const std::string_view before = TrimGaps(text.substr(0, at));
  if (before.empty() || before.ends_with(':')) return true;
  for (const std::string_view word : {"Then", "Else"})
    if (before.size() >= word.size() && IsWordAt(before, before.size() - word.size(), word))
      return true;
  return false;
}

}  // namespace

std::optional<int> CountArguments(std::string_view statement, std::size_t name,
                                  std::size_t behind) {
  // What stands behind the bracket of an element of an array or of a call is not followed back.
  if (name > 1 && statement[name - 1] == '.' && statement[name - 2] == ')') return std::nullopt;
  const std::size_t at = SkipGaps(statement, behind);
  const bool hasBracket = at < statement.size() && statement[at] == '(';
  if (!IsStatement(statement, name)) {
    if (!hasBracket) return 0;
    return ArgumentWalk(statement, at + 1, true).Run();
  }
  // "Post (a), b": the bracket is one of the first argument.
  return ArgumentWalk(statement, at, false).Run();
}

}  // namespace vendrel
