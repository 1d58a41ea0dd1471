#include "core/ObjectRegistry.h"

#include <unordered_map>

#include "core/CaseFold.h"
#include "core/Workspace.h"

namespace vendrel {
namespace {
struct RegisteredObjects {
  std::unordered_map<std::string, std::any> Entries;
};

auto& Entries() { return InUse<RegisteredObjects>().Entries; }
}  // namespace

void ObjectRegistry::Store(std::string_view progId, std::any factory) {
  Entries()[FoldKey(progId)] = std::move(factory);
}

const std::any* ObjectRegistry::Find(std::string_view progId) {
  const auto found = Entries().find(FoldKey(progId));
  return found == Entries().end() ? nullptr : &found->second;
}

}  // namespace vendrel
