#include "text/net/XmlLiterals.h"

#include "core/Ascii.h"
#include "text/Separators.h"

namespace vendrel {
namespace {

// Tags of one literal that are matched; a line of a literal of many lines holds fewer.
constexpr int kMostTags = 64;

// Behind the ">" of the tag that begins at `at`; quoted values may hold one.
std::size_t TagEnd(std::string_view text, std::size_t at) {
  char quote = 0;
  for (std::size_t i = at + 1; i < text.size(); ++i) {
    const char c = text[i];
    if (quote != 0)
      quote = c == quote ? '\0' : quote;
    else if (c == '"' || c == '\'')
      quote = c;
    else if (c == '>')
      return i + 1;
  }
  return text.size();
}

// Whether a literal ends with the tag that it begins with: "<Out> ByRef x" is none.
bool EndsAsItBegins(std::string_view literal) {
  if (!literal.ends_with('>') || literal.ends_with("/>") || literal.ends_with("-->") ||
      literal.ends_with("]]>") || literal.starts_with("<?"))
    return true;
  const std::string_view end = literal.substr(literal.rfind("</") + 2);
  const std::string_view name = TrimRight(end.substr(0, end.size() - 1));
  return literal.substr(1).starts_with(name);
}

}  // namespace

std::size_t InterpolatedEnd(std::string_view text, std::size_t at) {
  int holes = 0;
  for (std::size_t i = at + 1; i < text.size(); ++i) {
    const char c = text[i];
    const bool doubled = i + 1 < text.size() && text[i + 1] == c;
    if (c == '"') {
      if (holes > 0)
        i = StringEnd(text, i) - 1;
      else if (doubled)
        ++i;
      else
        return i + 1;
    } else if (c == '{') {
      if (holes == 0 && doubled)
        ++i;
      else
        ++holes;
    } else if (c == '}' && holes > 0) {
      --holes;
    }
  }
  return text.size();
}

std::size_t XmlEnd(std::string_view text, std::size_t at) {
  if (at + 1 >= text.size()) return at;
  const char first = text[at + 1];
  if (!IsLetterAscii(first) && std::string_view("_/!?%").find(first) == kNotFound) return at;
  const std::string_view before = TrimRight(text.substr(0, at));
  // What is open at the end of the line goes on in the next, which may be joined to it.
  const std::size_t firstEnd = TagEnd(text, at);
  const std::size_t firstTag = text[firstEnd - 1] == '>' ? firstEnd : kNotFound;
  if (before.ends_with('.')) return firstTag;
  int depth = 0;
  std::size_t tag = at;
  for (int tags = 0; tags < kMostTags && tag + 1 < text.size(); ++tags) {
    const std::size_t end = TagEnd(text, tag);
    const char second = text[tag + 1];
    if (second == '/')
      --depth;
    else if (text[end - 2] != '/' && std::string_view("!?%").find(second) == kNotFound)
      ++depth;
    if (depth <= 0) return end;
    tag = text.find('<', end);
    if (tag == kNotFound) break;
  }
  const bool attribute =
      before.empty() || before.ends_with('(') || before.ends_with(',') || before.ends_with('>');
  return attribute ? firstTag : kNotFound;
}

bool XmlWalk::Skip(std::string_view upTo) {
  const std::size_t end = mText.find(upTo, mAt);
  mAt = end == kNotFound ? mText.size() : end + upTo.size();
  return end != kNotFound;
}

// What begins with "<", outside of tags. False where nothing closes it.
bool XmlWalk::TakeMark() {
  const std::string_view rest = mText.substr(mAt);
  if (rest.starts_with("<!--")) return Skip("-->");
  if (rest.starts_with("<![CDATA[")) return Skip("]]>");
  if (rest.starts_with("<?") || rest.starts_with("<!")) return Skip(">");
  if (rest.starts_with("</")) {
    --mDepth;
    return Skip(">");
  }
  mInTag = true;
  ++mDepth;
  ++mAt;
  return true;
}

XmlWalk::Stop XmlWalk::Next() {
  while (mAt < mText.size()) {
    const char c = mText[mAt];
    if (mQuote == 0 && mText.substr(mAt).starts_with("<%=")) return Stop::Hole;
    if (mInTag) {
      ++mAt;
      if (mQuote != 0 || c == '"' || c == '\'') {
        mQuote = mQuote == 0 ? c : mQuote == c ? '\0' : mQuote;
      } else if (c == '>') {
        mInTag = false;
        if (mText[mAt - 2] == '/') --mDepth;
        if (mDepth <= 0) return Stop::End;
      }
    } else if (c == '<') {
      const bool isProlog =
          mText.substr(mAt).starts_with("<?") || mText.substr(mAt).starts_with("<!D");
      if (!TakeMark()) return Stop::Unclosed;
      if (!mInTag && mDepth <= 0 && !isProlog) return Stop::End;
    } else {
      ++mAt;
    }
  }
  return Stop::Unclosed;
}

std::size_t XmlLiteralEnd(std::string_view text, std::size_t at) {
  constexpr std::size_t kLongest = std::size_t{64} << 10;
  const char first = at + 1 < text.size() ? text[at + 1] : '\0';
  if (!IsLetterAscii(first) && first != '_' && first != '!' && first != '?') return at;
  XmlWalk walk(text.substr(0, at + kLongest), at);
  for (;;) {
    switch (walk.Next()) {
      case XmlWalk::Stop::End:
        return EndsAsItBegins(text.substr(at, walk.At() - at)) ? walk.At() : at;
      case XmlWalk::Stop::Unclosed: return at;
      case XmlWalk::Stop::Hole: break;
    }
    // Literals within a hole have holes of their own.
    std::size_t open = walk.At();
    for (int holes = 0;;) {
      const std::size_t mark = text.find('%', open);
      if (mark == kNotFound || mark > at + kLongest) return at;
      open = mark + 1;
      if (text.substr(mark - 1, 3) == "<%=") ++holes;
      if (text.substr(mark, 2) == "%>" && --holes == 0) break;
    }
    walk.GoOnAt(open + 1);
  }
}

std::size_t XmlNameEnd(std::string_view text, std::size_t at) {
  if (at == 0 || text[at - 1] != '.') return at;
  std::size_t end = at + 1;
  while (end < text.size() && (IsWordByte(text[end]) || text[end] == ':' || text[end] == '-'))
    ++end;
  return end;
}

}  // namespace vendrel
