#pragma once
// Names of types in declarations, as links.

#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "site/SiteMap.h"

namespace vendrel::site {

/// An address of documentation outside: names that begin with the prefix stand there. "{name}" in
/// it stands for the name; without it the name goes at its end.
using OutsideLink = std::pair<std::string, std::string>;

class TypeLinks {
 public:
  TypeLinks(const SiteMap& map, std::vector<OutsideLink> outside);

  /// The element that a type name means in a module; null for intrinsic types and those that are
  /// not at hand.
  const CodeElement* Find(const Component* module, std::string_view type) const;
  /// Where a type is described, as seen from a folder; empty if nowhere.
  std::string Href(std::string_view folder, const Component* module, std::string_view type) const;
  /// The same for a type that is named in full, or a .NET name such as "T:Ns.Type".
  std::string HrefOfName(std::string_view folder, const VBProject* project,
                         std::string_view name) const;
  std::string OutsideHref(std::string_view name) const;

  /// Appends a declaration as coloured code in which the names of types are links.
  void AppendDeclaration(std::string& html, std::string_view text, std::string_view folder,
                         const Component* module) const;

 private:
  const CodeElement* Resolve(const Component* module, const std::string& type) const;

  const SiteMap& mMap;
  std::vector<OutsideLink> mOutside;
  /// Types of the whole site by their full names, folded.
  std::unordered_map<std::string, const CodeElement*> mFullNames;
  mutable std::unordered_map<std::string, const CodeElement*> mKnown;
};

}  // namespace vendrel::site
