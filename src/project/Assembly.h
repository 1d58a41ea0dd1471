#pragma once
// Assemblies: compiled files and VB.NET projects side by side, their types shared out over
// namespaces. Their rules stand in dotnet/.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "model/CodeElement.h"
#include "model/ElementCollection.h"
#include "model/Namespace.h"
#include "project/VBProject.h"
#include "services/FileSystemObject.h"

namespace vendrel {

/// Addresses of documentation outside of the tree; supplied by the host.
class ExternalDocs {
 public:
  virtual ~ExternalDocs() = default;
  /// The address of an element by its .NET name without prefix; empty if there is none.
  virtual std::string url(std::string_view name) = 0;
};

/// One assembly: a compiled file, or a VB.NET project read as source.
class Assembly : public ElementOf<Assembly> {
 public:
  Assembly();
  ~Assembly() override;

  std::string mName;
  AssemblyTypeEnum AssemblyType = atCompiled;
  /// The ".dll", ".exe" or ".vbproj".
  FileSystemObject FileName;
  /// Path of the comment file that an authoring tool keeps; empty if none.
  std::string CommentFile;
  vendrel::Namespaces Namespaces;
  LateText TaggedDescription;
  OnDemand<vendrel::TaggedComments> TaggedComments;
  bool IncludeFlag = true;
  /// Whether type names and inherited members of its source have been worked out.
  bool TypesResolved = false;
  /// Qualified name of the module that documentation starts at; empty if none.
  std::string RootModule;
  /// Names of the modules that were chosen, each once.
  std::vector<std::string> SelectedModules;
  std::shared_ptr<vendrel::ExternalDocs> ExternalDocs;
  /// The set it stands in.
  WeakHandle<vendrel::Assemblies> Assemblies;

  const std::string& Name() const { return mName; }
  void SetName(std::string_view name) { mName = name; }
  std::string ElementName() const override { return mName; }
  std::string Description() const override { return TaggedDescription.str(); }
  std::string QualifiedName() const override { return mName; }

  /// The types behind it; null before one was set.
  vendrel::VBProject* VBProject() const { return mProject.Get(); }
  /// That of its project; false without one.
  bool RootFlag() const;
  void SetRootFlag(bool value);

  template <typename Own>
  static constexpr auto Properties() {
    return PropertyTable{Prop{"Name", &Own::Name, &Own::SetName},
                         Prop{"AssemblyType", &Own::AssemblyType},
                         Prop{"FileName", &Own::FileName, PropertyKind::Identity},
                         Prop{"CommentFile", &Own::CommentFile, PropertyKind::Identity},
                         Prop{"TaggedDescription", &Own::TaggedDescription},
                         Prop{"Description", &Own::Description, PropertyKind::Derived},
                         Prop{"IncludeFlag", &Own::IncludeFlag},
                         Prop{"TypesResolved", &Own::TypesResolved},
                         Prop{"RootFlag", &Own::RootFlag, &Own::SetRootFlag},
                         Prop{"RootModule", &Own::RootModule},
                         Prop{"SelectedModules", &Own::SelectedModules},
                         Prop{"TaggedComments", &Own::TaggedComments, PropertyKind::Children},
                         Prop{"Namespaces", &Own::Namespaces, PropertyKind::Children},
                         Prop{"QualifiedName", &Own::QualifiedName, PropertyKind::Derived},
                         Prop{"VBProject", &Own::VBProject, PropertyKind::Link}.Hide()};
  }

  /// The project without the load that setting it by its rule brings.
  void TieVBProject(std::shared_ptr<vendrel::VBProject> project);
  /// The same for a project that owns this assembly and so is not owned by it.
  void TieOwner(vendrel::VBProject* project) { mProject = project; }

 private:
  WeakHandle<vendrel::VBProject> mProject;
  std::shared_ptr<vendrel::VBProject> mOwnProject;
};

/// A set of assemblies that may refer to each other.
class Assemblies : public HandleTarget, public PlainCollection<Assembly> {
 public:
  std::string AssemblyGroupName;
};

}  // namespace vendrel
