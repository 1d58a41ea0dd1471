#pragma once
// From names of documentation files to elements, also where a name was written by hand.

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "project/VBProject.h"

namespace vendrel {

/// How a name led to its element.
enum class NameJoin {
  None,
  /// As `VBProject::GetObjectFromDotNetName` finds it.
  Exact,
  /// What stands between "{" and "}" in the name of the member differs: documentation written by
  /// hand has `ICollection{T}` where the assembly has the real type.
  OtherBraces,
  /// The parameters differ, and no second member has that name.
  NameAlone
};

/// An element and how it was found.
struct DocumentedElement {
  CodeElement* Element = nullptr;
  NameJoin Join = NameJoin::None;
};

/// Finds many names in one project, which must not change meanwhile: what cannot be found exactly
/// is looked up in an index of its type, made once. In the classic reading names are exact.
class DocumentedElements {
 public:
  explicit DocumentedElements(VBProject& project) : mProject(project) {}
  DocumentedElement Find(std::string_view name);
  /// As `VBProject::GetObjectFromDotNetName`, with an index for large families of overloads.
  CodeElement* Exact(std::string_view name);
  /// The same for a reference, in which a generic type may stand with its arguments
  /// ("M:Shop.Goods{`0}.Find") in the complete reading.
  CodeElement* Referred(std::string_view name);

 private:
  using Members = std::unordered_map<std::string, std::vector<Block*>>;
  const Members& MembersOf(Component& component);
  Block* FindOverload(std::string_view name);

  VBProject& mProject;
  std::unordered_map<const Component*, Members> mMembers;
  std::unordered_map<const Block*, std::unordered_map<std::string, Block*>> mFamilies;
};

/// The name that documentation files have for an element; empty for what has none there.
std::string DocumentedNameOf(const CodeElement& element);

}  // namespace vendrel
