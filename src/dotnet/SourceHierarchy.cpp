#include "dotnet/SourceHierarchy.h"

#include <unordered_set>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "diagnostics/VendrelError.h"
#include "dotnet/GenericNames.h"

namespace vendrel {
namespace {

constexpr std::string_view kObject = "System.Object";
constexpr std::string_view kValueType = "System.ValueType";
constexpr std::string_view kAboveStructure = ",System.ValueType,System.Object";

}  // namespace

void SourceHierarchy::TakeDefaults(Component& c) const {
  if (!c.InheritsFrom.empty() && c.InheritsFrom != kObject) return;
  if (mWhole && c.IsInterface) return;  // nothing stands above an interface but interfaces
  c.InheritsFrom = c.IsStructure ? kValueType : kObject;
  if (mWhole && c.IsEnumeration) c.InheritsFrom = "System.Enum";
}

Component* SourceHierarchy::InProject(std::string_view name) const {
  if (name.empty()) return nullptr;
  if (mWhole && name.find('{') != kNotFound) return InProject(DefinitionOf(name));
  if (Component* found = mProject.Components.Item(name)) return found;
  return mWhole ? mProject.Components.Item("." + std::string(name)) : nullptr;
}

// Asked for once a name; failures of the resolver count as nothing found.
Component* SourceHierarchy::Outside(std::string_view name) {
  const auto [known, isNew] = mOutside.try_emplace(std::string(name), nullptr);
  if (!isNew) return known->second;
  try {
    const std::string definition = mWhole ? DefinitionOf(name) : std::string(name);
    known->second = mProject.netGetComponentForTypeName(definition);
  } catch (const VendrelError&) {
  }
  return known->second;
}

// From the class above `c` upwards, as described: each class found adds the name of the one above
// it. The walk ends at a class that is its own base, and at any class seen before.
void SourceHierarchy::WalkHierarchy(Component& c, Component& base) {
  std::string hierarchy = c.FullName() + "," + c.InheritsFrom.str();
  std::unordered_set<const Component*> seen;
  for (Component* cc = &base; seen.insert(cc).second;) {
    const std::string name = cc->InheritsFrom.str();
    if (name.empty() || EqualsNoCase(cc->FullName(), name)) break;
    if (Component* above = InProject(name)) {
      hierarchy += "," + above->InheritsFrom.str();
      cc = above;
      continue;
    }
    if (name == kValueType) {
      hierarchy += kAboveStructure;
    } else if (const Component* outside = Outside(name);
               outside && !outside->ClassHierarchy.empty()) {
      hierarchy += "," + outside->ClassHierarchy;
    }
    break;
  }
  c.ClassHierarchy = hierarchy;
}

// Every class once, up to the root or to a name behind which nothing is known.
void SourceHierarchy::WholeHierarchy(Component& c, Component* base) {
  std::string hierarchy = c.FullName();
  std::unordered_set<const Component*> seen{&c};
  std::string name = c.InheritsFrom.str();
  for (Component* cc = base; !name.empty(); cc = InProject(name)) {
    if (!cc || !InProject(name)) {
      const Component* outside = Outside(name);
      if (outside && !outside->ClassHierarchy.empty())
        hierarchy += "," + outside->ClassHierarchy;
      else if (name == kValueType)
        hierarchy += kAboveStructure;
      else
        hierarchy += "," + name;
      break;
    }
    if (!seen.insert(cc).second) break;
    hierarchy += "," + cc->FullName();
    name = cc->InheritsFrom.str();
  }
  c.ClassHierarchy = c.IsInterface ? std::string() : hierarchy;
}

// The class above `c`; null if nobody knows it.
Component* SourceHierarchy::Walk(Component& c) {
  Component* base = InProject(c.InheritsFrom.view());
  if (base == &c) base = nullptr;
  const bool isOwn = base != nullptr;
  if (!isOwn) base = Outside(c.InheritsFrom.view());
  if (mWhole) {
    WholeHierarchy(c, base);
  } else if (isOwn) {
    WalkHierarchy(c, *base);
  } else if (base && !base->ClassHierarchy.empty()) {
    c.ClassHierarchy = c.FullName() + "," + base->ClassHierarchy;
  } else if (!base && c.InheritsFrom == kValueType) {
    c.ClassHierarchy = c.FullName() + std::string(kAboveStructure);
  }
  return base;
}

std::vector<Component*> SourceHierarchy::Above(Component& c) {
  if (EqualsNoCase(c.InheritsFrom.view(), c.FullName())) c.InheritsFrom = kObject;
  std::vector<Component*> bases;
  if (Component* base = Walk(c)) bases.push_back(base);
  if (mWhole && c.IsInterface)
    for (const Interface& interface : c.Interfaces) {
      Component* base = InProject(interface.Name);
      if (!base) base = Outside(interface.Name);
      if (base && base != &c) bases.push_back(base);
    }
  return bases;
}

std::vector<Component*> BasesFirst(VBProject& project) {
  std::vector<Component*> order;
  std::unordered_set<const Component*> done;
  std::vector<Component*> chain;
  const auto baseOf = [&](const Component& c) -> Component* {
    const std::string name = DefinitionOf(c.InheritsFrom.view());
    Component* base = project.Components.Item(std::string_view(name));
    return base ? base : project.Components.Item("." + name);
  };
  const auto take = [&](Component& first) {
    for (Component* c = &first; c && done.insert(c).second; c = baseOf(*c)) chain.push_back(c);
    for (; !chain.empty(); chain.pop_back()) order.push_back(chain.back());
  };
  // Interfaces may stand below several; those above come before, as far as there are no rings.
  const auto takeInterfaces = [&](Component& first) {
    struct Step {
      Component* Module;
      std::size_t Next = 1;
    };
    if (!done.insert(&first).second) return;
    std::vector<Step> open{{&first}};
    while (!open.empty()) {
      Step& step = open.back();
      if (step.Next > step.Module->Interfaces.Count()) {
        order.push_back(step.Module);
        open.pop_back();
        continue;
      }
      const SharedText& name = step.Module->Interfaces.Item(step.Next++)->Name;
      Component* above = project.Components.Item(std::string_view(DefinitionOf(name)));
      if (above && above->IsInterface && done.insert(above).second) open.push_back({above});
    }
  };
  for (ProjectFile& file : project.ProjectFiles)
    for (Component& component : file.Components)
      if (component.IsInterface)
        takeInterfaces(component);
      else
        take(component);
  return order;
}

}  // namespace vendrel
