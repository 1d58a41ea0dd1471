#include "site/Relations.h"

#include "core/Ascii.h"
#include "core/CaseFold.h"

namespace vendrel::site {
namespace {

template <typename Key, typename Item>
std::span<const Item> ListedIn(const std::unordered_map<Key, std::vector<Item>>& lists, Key key) {
  const auto found = lists.find(key);
  if (found == lists.end()) return {};
  return found->second;
}

// "IPostable" and "Post": what a procedure says that it implements.
std::pair<std::string, std::string> ImplementedName(const Block& block) {
  std::string name = block.ImplementsName().str();
  if (!name.empty()) {
    name = name.substr(0, name.find_first_of(",("));
    const std::size_t dot = name.rfind('.');
    if (dot != kNotFound) return {name.substr(0, dot), name.substr(dot + 1)};
  }
  const std::string interface = block.Interface.str();
  if (interface.empty() || block.Name().size() <= interface.size() + 1) return {};
  return {interface, std::string(block.Name().substr(interface.size() + 1))};
}

}  // namespace

Relations::Relations(const SiteMap& map, const TypeLinks& types) : mMap(map) {
  for (const ProjectEntry& project : map.Projects())
    for (const ModuleEntry& module : project.Modules) {
      AddModule(module, types);
      AddMembers(module, types);
    }
}

void Relations::AddModule(const ModuleEntry& module, const TypeLinks& types) {
  const Component& component = *module.Module;
  const auto entryOf = [&](std::string_view type) -> const ModuleEntry* {
    const ModuleEntry* found = mMap.ModuleOf(As<Component>(types.Find(&component, type)));
    return found == &module ? nullptr : found;
  };
  if (const ModuleEntry* base = entryOf(component.InheritsFrom)) {
    mBases.emplace(&module, base);
    mDerived[base].push_back(&module);
  }
  for (const Interface& interface : component.Interfaces)
    if (const ModuleEntry* entry = entryOf(interface.Name)) mImplementers[entry].push_back(&module);
}

void Relations::AddMembers(const ModuleEntry& module, const TypeLinks& types) {
  for (const Block& block : module.Module->Blocks.Listed()) {
    const auto [interface, name] = ImplementedName(block);
    if (name.empty()) continue;
    const ModuleEntry* entry = mMap.ModuleOf(As<Component>(types.Find(module.Module, interface)));
    const MemberEntry* member = entry ? MemberOf(*entry, name) : nullptr;
    if (!member || entry == &module) continue;
    mImplements.emplace(&block, &member->First());
    auto& all = mImplementations[&member->First()];
    // A property is one, however many procedures it has.
    if (all.empty() || As<Block>(all.back()) == nullptr ||
        all.back()->OwnComponent() != &*module.Module)
      all.push_back(&block);
  }
}

const MemberEntry* Relations::MemberOf(const ModuleEntry& module, std::string_view name) {
  auto& members = mMembers[&module];
  if (members.empty())
    for (const MemberEntry& member : module.Members) members.emplace(FoldKey(member.Name), &member);
  const auto found = members.find(FoldKey(name));
  return found == members.end() ? nullptr : found->second;
}

const ModuleEntry* Relations::BaseOf(const ModuleEntry& module) const {
  const auto found = mBases.find(&module);
  return found == mBases.end() ? nullptr : found->second;
}
std::span<const ModuleEntry* const> Relations::DerivedFrom(const ModuleEntry& module) const {
  return ListedIn(mDerived, &module);
}
std::span<const ModuleEntry* const> Relations::ImplementersOf(const ModuleEntry& module) const {
  return ListedIn(mImplementers, &module);
}
const CodeElement* Relations::Implements(const CodeElement& element) const {
  const auto found = mImplements.find(&element);
  return found == mImplements.end() ? nullptr : found->second;
}
std::span<const CodeElement* const> Relations::ImplementationsOf(const CodeElement& element) const {
  return ListedIn(mImplementations, &element);
}

}  // namespace vendrel::site
