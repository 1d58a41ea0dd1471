#pragma once
// Who derives from whom, who implements what.

#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "site/SiteMap.h"
#include "site/TypeLinks.h"

namespace vendrel::site {

class Relations {
 public:
  Relations(const SiteMap& map, const TypeLinks& types);

  /// The module that another derives from; null if none is at hand.
  const ModuleEntry* BaseOf(const ModuleEntry& module) const;
  std::span<const ModuleEntry* const> DerivedFrom(const ModuleEntry& module) const;
  /// Those that implement an interface.
  std::span<const ModuleEntry* const> ImplementersOf(const ModuleEntry& module) const;
  /// The member of an interface that a procedure implements; null if none is at hand.
  const CodeElement* Implements(const CodeElement& element) const;
  /// Procedures that implement a member of an interface.
  std::span<const CodeElement* const> ImplementationsOf(const CodeElement& element) const;

 private:
  void AddModule(const ModuleEntry& module, const TypeLinks& types);
  void AddMembers(const ModuleEntry& module, const TypeLinks& types);
  const MemberEntry* MemberOf(const ModuleEntry& module, std::string_view name);

  const SiteMap& mMap;
  std::unordered_map<const ModuleEntry*, const ModuleEntry*> mBases;
  std::unordered_map<const ModuleEntry*, std::vector<const ModuleEntry*>> mDerived, mImplementers;
  std::unordered_map<const CodeElement*, const CodeElement*> mImplements;
  std::unordered_map<const CodeElement*, std::vector<const CodeElement*>> mImplementations;
  std::unordered_map<const ModuleEntry*, std::unordered_map<std::string, const MemberEntry*>>
      mMembers;
};

}  // namespace vendrel::site
