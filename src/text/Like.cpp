#include "text/Like.h"

#include <algorithm>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "diagnostics/Context.h"

namespace vendrel {
namespace {

// The code point at `at`, which is moved behind it. Bytes that are no UTF-8 count singly.
char32_t NextCharacter(std::string_view text, std::size_t& at) {
  const auto lead = static_cast<unsigned char>(text[at++]);
  if (lead < 0xC0) return lead;
  const int trailing = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
  char32_t c = lead & (0x3F >> trailing);
  for (int i = 0; i < trailing && at < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[at]);
    if ((byte & 0xC0) != 0x80) break;
    c = (c << 6) | (byte & 0x3F);
    ++at;
  }
  return c;
}

[[noreturn]] void RaiseInvalidPattern(std::string_view pattern) {
  throw VendrelError(errInvalidPattern, pattern);
}

// Calls visit(low, high) for each character or range of a list, until it returns true.
template <typename Visitor>
bool AnyOfList(std::string_view list, Visitor visit) {
  std::size_t at = 0;
  while (at < list.size()) {
    const char32_t low = NextCharacter(list, at);
    char32_t high = low;
    if (at + 1 < list.size() && list[at] == '-') high = NextCharacter(list, ++at);
    if (visit(low, high)) return true;
  }
  return false;
}

// The inside of the list whose `[` stands at `open`; its `]` is known to exist.
std::string_view ListAt(std::string_view pattern, std::size_t open) {
  return pattern.substr(open + 1, pattern.find(']', open) - open - 1);
}

void CheckPattern(std::string_view pattern) {
  for (std::size_t at = pattern.find('['); at != kNotFound; at = pattern.find('[', at)) {
    const std::size_t close = pattern.find(']', at);
    if (close == kNotFound) RaiseInvalidPattern(pattern);
    std::string_view list = ListAt(pattern, at);
    if (list.size() > 1 && list.front() == '!') list.remove_prefix(1);
    if (AnyOfList(list, [](char32_t low, char32_t high) { return low > high; }))
      RaiseInvalidPattern(pattern);
    at = close;
  }
}

bool InList(std::string_view list, char32_t c) {
  const bool negated = list.size() > 1 && list.front() == '!';
  if (negated) list.remove_prefix(1);
  return negated !=
         AnyOfList(list, [c](char32_t low, char32_t high) { return c >= low && c <= high; });
}

// Whether the pattern element at `p`, which takes one character, takes the one at `t`; both move
// behind what they took.
bool TakeOne(std::string_view text, std::size_t& t, std::string_view pattern, std::size_t& p) {
  switch (pattern[p]) {
    case '?':
      ++p;
      NextCharacter(text, t);
      return true;
    case '#': ++p; return IsDigitAscii(text[t++]);
    case '[': {
      const std::string_view list = ListAt(pattern, p);
      p += list.size() + 2;
      return InList(list, NextCharacter(text, t));
    }
    default: return pattern[p++] == text[t++];
  }
}

// Only the last star is ever tried again: what an earlier one could take, this one can as well.
bool Match(std::string_view text, std::string_view pattern) {
  std::size_t t = 0, p = 0, retryText = kNotFound, retryPattern = 0;
  for (;;) {
    while (pattern.substr(p, 2) == "[]") p += 2;
    if (p < pattern.size() && pattern[p] == '*') {
      retryPattern = ++p;
      retryText = t;
      continue;
    }
    if (p == pattern.size() && (t == text.size() || (retryText != kNotFound && retryPattern == p)))
      return true;
    if (t < text.size() && p < pattern.size() && TakeOne(text, t, pattern, p)) continue;
    if (retryText == kNotFound || retryText >= text.size()) return false;
    NextCharacter(text, retryText);
    t = retryText;
    p = retryPattern;
  }
}

}  // namespace

bool Like(std::string_view text, std::string_view pattern) try {
  CheckPattern(pattern);
  return Match(text, pattern);
}
VENDREL_CONTEXT(text, pattern)

bool LikeNoCase(std::string_view text, std::string_view pattern) try {
  return Like(FoldKey(text), FoldKey(pattern));
}
VENDREL_CONTEXT(text, pattern)

}  // namespace vendrel
