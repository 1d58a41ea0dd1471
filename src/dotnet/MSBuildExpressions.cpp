#include "dotnet/MSBuildExpressions.h"

#include <algorithm>
#include <charconv>
#include <vector>

#include "core/Ascii.h"
#include "core/CaseFold.h"

namespace vendrel {
namespace {

constexpr int kDeepestCondition = 64;
// A property that holds itself twice doubles with each of its lines.
constexpr std::size_t kLongestProperty = 1 << 20;

class ConditionReader {
 public:
  ConditionReader(std::string_view text, const MSBuildProperties& properties,
                  const std::function<bool(const std::string&)>& exists)
      : mText(text), mProperties(properties), mExists(exists) {}

  bool Read() {
    const bool value = Or();
    SkipBlanks();
    const bool isUnderstood = !mFailed && mAt == mText.size();
    if (!isUnderstood) mProperties.NoteNotUnderstood(mText);
    return value && isUnderstood;
  }

 private:
  bool Or() {
    bool value = And();
    while (TakeWord("or")) {
      const bool other = And();
      value = value || other;
    }
    return value;
  }
  bool And() {
    bool value = Term();
    while (TakeWord("and")) {
      const bool other = Term();
      value = value && other;
    }
    return value;
  }
  bool Term() {
    SkipBlanks();
    if (++mDepth > kDeepestCondition) return Fail();
    bool value = false;
    if (Take("!")) {
      value = !Term();
    } else if (Take("(")) {
      value = Or();
      if (!Take(")")) Fail();
    } else if (TakeWord("exists")) {
      if (!Take("(")) return Fail();
      value = mExists(Text());
      if (!Take(")")) Fail();
    } else if (TakeWord("hastrailingslash")) {
      if (!Take("(")) return Fail();
      const std::string text = Text();
      value = text.ends_with('/') || text.ends_with('\\');
      if (!Take(")")) Fail();
    } else {
      value = Comparison();
    }
    --mDepth;
    return value;
  }
  bool Comparison() {
    const std::string left = Text();
    SkipBlanks();
    if (Take("==")) return EqualsNoCase(left, Text());
    if (Take("!=")) return !EqualsNoCase(left, Text());
    if (Take("<=")) return Ordered(left, Text()) <= 0;
    if (Take(">=")) return Ordered(left, Text()) >= 0;
    if (Take("<")) return Ordered(left, Text()) < 0;
    if (Take(">")) return Ordered(left, Text()) > 0;
    return EqualsNoCaseAscii(left, "true");
  }
  // By the numbers between the dots: "4.10" is behind "4.9".
  int Ordered(std::string_view left, std::string_view right) {
    while (!left.empty() || !right.empty()) {
      const auto a = NumberIn(Trim(TakeField(left, '.')));
      const auto b = NumberIn(Trim(TakeField(right, '.')));
      if (a != b) return a < b ? -1 : 1;
    }
    return 0;
  }
  std::uint64_t NumberIn(std::string_view text) {
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) mFailed |= !text.empty();
    return number;
  }
  std::string Text() {
    SkipBlanks();
    if (mAt >= mText.size()) {
      Fail();
      return {};
    }
    std::size_t end;
    std::string_view raw;
    if (mText[mAt] == '\'') {
      end = mText.find('\'', mAt + 1);
      if (end == kNotFound) {
        Fail();
        return {};
      }
      raw = mText.substr(mAt + 1, end - mAt - 1);
      mAt = end + 1;
    } else {
      int depth = 0;
      for (end = mAt; end < mText.size(); ++end) {
        const char c = mText[end];
        if (c == '(') ++depth;
        if (c == ')' && depth-- == 0) break;
        if (depth <= 0 && (IsGap(c) || c == '=' || c == '!' || c == '<' || c == '>')) break;
      }
      raw = mText.substr(mAt, end - mAt);
      mAt = end;
      if (raw.empty()) Fail();
    }
    return mProperties.Expand(raw);
  }

  void SkipBlanks() {
    while (mAt < mText.size() && (IsGap(mText[mAt]) || mText[mAt] == '\n' || mText[mAt] == '\r'))
      ++mAt;
  }
  bool Take(std::string_view token) {
    SkipBlanks();
    if (!mText.substr(mAt).starts_with(token)) return false;
    if (token == "!" && mText.substr(mAt).starts_with("!=")) return false;
    mAt += token.size();
    return true;
  }
  bool TakeWord(std::string_view word) {
    SkipBlanks();
    if (!StartsWithNoCaseAscii(mText.substr(mAt), word)) return false;
    const std::size_t end = mAt + word.size();
    if (end < mText.size() && (IsLetterAscii(mText[end]) || IsDigitAscii(mText[end]))) return false;
    mAt = end;
    return true;
  }
  bool Fail() {
    mFailed = true;
    return false;
  }

  std::string_view mText;
  std::size_t mAt = 0;
  int mDepth = 0;
  bool mFailed = false;
  const MSBuildProperties& mProperties;
  const std::function<bool(const std::string&)>& mExists;
};

std::vector<std::string_view> Segments(std::string_view path) {
  std::vector<std::string_view> segments;
  while (!path.empty()) segments.push_back(TakeField(path, '\\'));
  return segments;
}

// "*" and "?" in time proportional to the product of the lengths.
bool MatchesWild(std::string_view text, std::string_view pattern) {
  std::size_t t = 0, p = 0, star = kNotFound, mark = 0;
  while (t < text.size()) {
    if (p < pattern.size() && (pattern[p] == '?' || pattern[p] == text[t])) {
      ++t, ++p;
    } else if (p < pattern.size() && pattern[p] == '*') {
      star = p++;
      mark = t;
    } else if (star != kNotFound) {
      p = star + 1;
      t = ++mark;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == '*') ++p;
  return p == pattern.size();
}

}  // namespace

void MSBuildProperties::Set(std::string_view name, std::string value) {
  mValues[FoldKey(name)] = std::move(value);
}

const std::string& MSBuildProperties::Get(std::string_view name) const {
  static const std::string none;
  const auto found = mValues.find(FoldKey(name));
  return found == mValues.end() ? none : found->second;
}

void MSBuildProperties::NoteNotUnderstood(std::string_view expression) const {
  constexpr std::size_t kMost = 64;
  const bool isKnown =
      std::find(mNotUnderstood.begin(), mNotUnderstood.end(), expression) != mNotUnderstood.end();
  if (!isKnown && mNotUnderstood.size() < kMost) mNotUnderstood.emplace_back(expression);
}

// A name, or functions of its value one behind the other.
std::string MSBuildProperties::ValueOf(std::string_view expression) const {
  const std::size_t dot = expression.find_first_of(".([");
  if (dot == kNotFound) return Get(expression);
  std::string value = Get(expression.substr(0, dot));
  std::string_view rest = expression.substr(dot);
  while (rest.starts_with('.')) {
    const std::size_t open = rest.find('(');
    const std::size_t close = rest.find(')', open);
    if (open == kNotFound || close == kNotFound) break;
    const std::string_view function = rest.substr(1, open - 1);
    std::vector<std::string> arguments;
    for (std::string_view list = rest.substr(open + 1, close - open - 1); !list.empty();) {
      std::string_view one = Trim(TakeField(list, ','));
      if (one.size() >= 2 && (one.front() == '\'' || one.front() == '"') && one.back() == one[0])
        one = one.substr(1, one.size() - 2);
      arguments.emplace_back(one);
    }
    if (EqualsNoCaseAscii(function, "tolower"))
      value = LowerAscii(value);
    else if (EqualsNoCaseAscii(function, "toupper"))
      value = UpperAscii(value);
    else if (EqualsNoCaseAscii(function, "trim"))
      value = std::string(Trim(value));
    else if (EqualsNoCaseAscii(function, "replace") && arguments.size() == 2 &&
             !arguments[0].empty())
      value = ReplaceAll(value, arguments[0], arguments[1]);
    else
      break;
    rest.remove_prefix(close + 1);
  }
  if (rest.empty()) return value;
  NoteNotUnderstood("$(" + std::string(expression) + ")");
  return {};
}

std::string MSBuildProperties::Expand(std::string_view text) const {
  std::string result;
  while (!text.empty()) {
    const std::size_t open = text.find("$(");
    result.append(text.substr(0, open));
    if (open == kNotFound) break;
    int depth = 0;
    std::size_t close = open + 1;
    for (; close < text.size(); ++close) {
      if (text[close] == '(') ++depth;
      if (text[close] == ')' && --depth == 0) break;
    }
    if (close >= text.size()) return result.append(text.substr(open));
    result += ValueOf(Trim(text.substr(open + 2, close - open - 2)));
    text.remove_prefix(close + 1);
    if (result.size() > kLongestProperty) {
      NoteNotUnderstood("a property grows beyond " + std::to_string(kLongestProperty) + " bytes");
      return {};
    }
  }
  return result;
}

bool MSBuildCondition(std::string_view condition, const MSBuildProperties& properties,
                      const std::function<bool(const std::string&)>& exists) {
  return Trim(condition).empty() || ConditionReader(condition, properties, exists).Read();
}

bool MatchesGlob(std::string_view path, std::string_view pattern) {
  const std::string foldedPath = FoldKey(ReplaceAll(path, "/", "\\"));
  const std::string foldedPattern = FoldKey(ReplaceAll(pattern, "/", "\\"));
  const std::vector<std::string_view> names = Segments(foldedPath);
  const std::vector<std::string_view> parts = Segments(foldedPattern);
  // As "*" within a name, "**" among folders.
  std::size_t n = 0, p = 0, star = kNotFound, mark = 0;
  while (n < names.size()) {
    if (p < parts.size() && parts[p] == "**") {
      star = p++;
      mark = n;
    } else if (p < parts.size() && MatchesWild(names[n], parts[p])) {
      ++n, ++p;
    } else if (star != kNotFound) {
      p = star + 1;
      n = ++mark;
    } else {
      return false;
    }
  }
  while (p < parts.size() && parts[p] == "**") ++p;
  return p == parts.size();
}

}  // namespace vendrel
