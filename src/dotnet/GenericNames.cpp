#include "dotnet/GenericNames.h"

namespace vendrel {

std::string DefinitionOf(std::string_view name) {
  std::string result;
  int depth = 0, count = 0;
  for (const char c : name) {
    if (c == '{' && depth++ == 0) count = 1;
    if (c == ',' && depth == 1) ++count;
    if (depth == 0) result += c;
    if (c == '}' && depth > 0 && --depth == 0) result += "`" + std::to_string(count);
  }
  return result;
}

std::vector<std::string_view> ArgumentsOf(std::string_view name) {
  std::vector<std::string_view> types;
  const std::size_t open = name.find('(');
  if (open == std::string_view::npos) return types;
  int depth = 0;
  std::size_t begin = open + 1;
  for (std::size_t at = begin; at < name.size(); ++at) {
    const char c = name[at];
    if ((c == ',' || c == ')') && depth == 0) {
      types.push_back(name.substr(begin, at - begin));
      begin = at + 1;
      if (c == ')') break;
    }
    if (c == '{' || c == '[' || c == '(') ++depth;
    if (c == '}' || c == ']' || c == ')') --depth;
  }
  return types;
}

}  // namespace vendrel
