#include "project/TypeResolver.h"

namespace vendrel {

bool TypeResolver::AddTypeLibByID(std::string_view classId, std::int32_t major, std::int32_t minor,
                                  std::int32_t locale) {
  Libraries.push_back({std::string(classId), major, minor, locale, {}});
  return false;
}

void TypeResolver::AddTypeLibByPath(std::string_view path) {
  // The path belongs to the library whose id was offered just before.
  if (Libraries.empty() || !Libraries.back().Path.empty()) Libraries.emplace_back();
  Libraries.back().Path = path;
}

}  // namespace vendrel
