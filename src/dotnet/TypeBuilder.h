#pragma once
// Types of assemblies as modules of a project.

#include <memory>
#include <vector>

#include "dotnet/MemberBuilder.h"
#include "dotnet/metadata/Inheritance.h"
#include "project/VBProject.h"

namespace vendrel {

/// Fills a project from the types of one store of assemblies, which the modules keep alive for what
/// they inherit.
class TypeBuilder {
 public:
  /// `size`: bytes of the file whose types are built, which bound those of the tree.
  TypeBuilder(VBProject& project, std::shared_ptr<metadata::AssemblyStore> store, std::size_t size);

  /// Every type of a file that the options of the project ask for, in the order of the metadata.
  /// Ends where a small file would make more than any reader wants; that is told.
  void BuildAll(const metadata::AssemblyFile& file);
  /// One type; null for a delegate, which becomes a block of "__Delegates".
  std::shared_ptr<Component> Build(metadata::TypeHandle type);

 private:
  void BuildDelegate(Component& carrier, metadata::TypeHandle type);
  void BuildMembers(const std::shared_ptr<Component>& component, metadata::TypeHandle type,
                    const std::vector<metadata::BaseType>& bases);
  std::string HierarchyOf(metadata::TypeHandle type, const std::vector<metadata::BaseType>& bases);
  void TakeInterfaces(Component& component, metadata::TypeHandle type);

  VBProject& mProject;
  std::shared_ptr<metadata::AssemblyStore> mStore;
  std::shared_ptr<TreeRoom> mRoom;
};

/// Lets a module complete itself by what its type inherits when its blocks or events are first
/// asked for. `own` are the members of the type and the elements made of them. Numbers for the
/// blocks are set aside at once, so that they are those of a module completed at once.
void InheritLate(Component& component, const std::shared_ptr<metadata::AssemblyStore>& store,
                 metadata::TypeHandle type, const std::vector<metadata::BaseType>& bases,
                 std::vector<CodeElement*> own, const metadata::MemberFilter& filter,
                 const std::shared_ptr<TreeRoom>& room);

}  // namespace vendrel
