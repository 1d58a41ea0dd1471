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

std::size_t XmlNameEnd(std::string_view text, std::size_t at) {
  if (at == 0 || text[at - 1] != '.') return at;
  std::size_t end = at + 1;
  while (end < text.size() && (IsWordByte(text[end]) || text[end] == ':' || text[end] == '-'))
    ++end;
  return end;
}

}  // namespace vendrel
