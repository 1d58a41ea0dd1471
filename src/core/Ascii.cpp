#include "core/Ascii.h"

#include <cstring>

namespace vendrel {

std::size_t FindNoCaseAscii(std::string_view text, std::string_view sought, std::size_t start) {
  if (sought.empty()) return start <= text.size() ? start : std::string_view::npos;
  const char first = UpperAscii(sought.front());
  for (std::size_t i = start; i + sought.size() <= text.size(); ++i) {
    if (UpperAscii(text[i]) != first) continue;
    if (EqualsNoCaseAscii(text.substr(i, sought.size()), sought)) return i;
  }
  return std::string_view::npos;
}

std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to) {
  std::string result;
  std::size_t start = 0;
  while (!from.empty()) {
    const std::size_t at = text.find(from, start);
    if (at == std::string_view::npos) break;
    result.append(text, start, at - start).append(to);
    start = at + from.size();
  }
  result.append(text, start);
  return result;
}

}  // namespace vendrel
