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

}  // namespace vendrel
