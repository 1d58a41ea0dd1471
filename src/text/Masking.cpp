#include "text/Masking.h"

#include "core/Ascii.h"

namespace vendrel {
namespace {

std::size_t Find(std::string_view text, std::string_view sought, std::size_t start, bool noCase) {
  return noCase ? FindNoCaseAscii(text, sought, start) : text.find(sought, start);
}

// 0-based position outside strings and comment. `sought` holds neither quote nor apostrophe, so a
// match cannot cross the border of a string.
std::size_t FindInCode(std::string_view source, std::string_view sought, std::size_t start,
                       bool noCase) {
  const char first = UpperAscii(sought.front());
  for (std::size_t i = 0; i + sought.size() <= source.size(); ++i) {
    const char c = source[i];
    if (c == '"') {
      i = source.find('"', i + 1);
      if (i == kNotFound) return kNotFound;
    } else if (c == '\'') {
      return kNotFound;
    } else if (i >= start && UpperAscii(c) == first) {
      const std::string_view here = source.substr(i, sought.size());
      if (noCase ? EqualsNoCaseAscii(here, sought) : here == sought) return i;
    }
  }
  return kNotFound;
}

}  // namespace

std::string Template(std::string_view source) {
  std::string masked(source);
  bool inString = false;
  for (std::size_t i = 0; i < masked.size(); ++i) {
    if (masked[i] == '"') {
      inString = !inString;
    } else if (inString) {
      masked[i] = '_';
    } else if (masked[i] == '\'') {
      masked.replace(i + 1, kNotFound, masked.size() - i - 1, '_');
      break;
    }
  }
  return masked;
}

std::size_t InStrEx(std::size_t start, std::string_view source, std::string_view sought,
                    bool compareNoCase) {
  const std::size_t first = start == 0 ? 0 : start - 1;
  if (first >= source.size()) return 0;
  if (sought.empty()) return first + 1;
  // What can stand in the mask itself is looked for there; everything else needs no copy.
  const std::size_t found = sought.find_first_of("\"'_") == kNotFound
                                ? FindInCode(source, sought, first, compareNoCase)
                                : Find(Template(source), sought, first, compareNoCase);
  return found == kNotFound ? 0 : found + 1;
}

std::string StripAttributes(std::string_view text) {
  std::string kept;
  // Both brackets stand outside strings, so cutting a span leaves the quotes behind it as they
  // were.
  for (;;) {
    const std::size_t open = InStrEx(1, text, "<");
    const std::size_t close = open == 0 ? 0 : InStrEx(1, text, ">");
    if (close <= open) break;
    kept.append(text, 0, open - 1);
    text.remove_prefix(close);
  }
  return kept.append(text);
}

std::string StripTags(std::string_view text) {
  std::string kept;
  for (;;) {
    const std::size_t open = text.find('<');
    const std::size_t close = open == kNotFound ? kNotFound : text.find('>', open);
    if (close == kNotFound) break;
    kept.append(text, 0, open);
    text.remove_prefix(close + 1);
  }
  return kept.append(text);
}

}  // namespace vendrel
