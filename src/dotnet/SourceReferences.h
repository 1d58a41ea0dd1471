#pragma once
// What documentation in source refers to: names as the source would write them.

#include <string>
#include <string_view>
#include <vector>

#include "dotnet/DocumentedElements.h"

namespace vendrel {

/// Finds elements of a VB.NET project by names such as "Goods(Of T).Find(String)", seen from a
/// type, and by those of documentation files ("M:Shop.Goods`1.Find(System.String)").
class SourceReferences {
 public:
  explicit SourceReferences(VBProject& project) : mProject(project), mElements(project) {}
  /// Looks in the type and what is around it from the inside, then in the namespaces that `imports`
  /// name. Null if nothing of the project has that name.
  CodeElement* Find(std::string_view name, const Component& from,
                    const std::vector<std::string>& imports);

 private:
  struct Written;
  CodeElement* At(const std::string& scope, const Written& written) const;
  CodeElement* MemberOf(Component& type, std::string_view name, const Written& written) const;

  VBProject& mProject;
  DocumentedElements mElements;
};

}  // namespace vendrel
