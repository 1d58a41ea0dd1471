#pragma once
// Assemblies: compiled files and VB.NET projects side by side, their types shared out over
// namespaces. Their rules stand in dotnet/.

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "model/CodeElement.h"
#include "model/ElementCollection.h"
#include "model/Namespace.h"
#include "project/VBProject.h"
#include "services/FileSystemObject.h"
#include "services/HostObjects.h"

namespace pugi {
class xml_node;
}

namespace vendrel {

/// What `IntegrateCommentFile` did with the members of a documentation file.
struct DocumentationReport {
  enum class Reason : std::uint8_t {
    /// No element has that name.
    NoElement,
    /// The element has no parameter of the name that is documented; `Part` is that name.
    NoParameter,
    /// The members of the file nest deeper than any documentation does.
    TooDeep
  };
  struct Dropped {
    Reason Why = Reason::NoElement;
    /// As the file has it: "M:Shop.Goods.Find(System.String)".
    std::string Name;
    std::string Part;
    /// 1-based line in the file.
    std::int32_t Line = 0;
  };
  /// The file that was read (path of this machine); empty if none.
  std::string File;
  std::size_t Members = 0;
  std::size_t Placed = 0;
  std::vector<Dropped> NotPlaced;
};

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
  /// The same with a share of the ownership; null where the project owns the assembly.
  const std::shared_ptr<vendrel::VBProject>& OwnProject() const { return mOwnProject; }
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

  /// The types behind it. An empty project is loaded from `FileName`; one that was loaded is only
  /// tied. The types of a compiled assembly are then shared out over `Namespaces`. Raises what the
  /// load raises.
  void SetVBProject(std::shared_ptr<vendrel::VBProject> project);
  /// Reads file, name and kind from an element of a saved set and loads the assembly. A file that
  /// is not there is asked for, where somebody is. Raises 91 without the attribute "CommentFile".
  bool Load(const pugi::xml_node& e);
  /// Writes them as attributes.
  bool Save(pugi::xml_node e) const;
  /// Works out the types of a source project, once: references to other assemblies of the set
  /// first.
  bool ResolveTypes();
  /// Ties references by the id of their project to the assemblies of the set, and makes what those
  /// projects build known to the resolver.
  bool ResolveReferences();
  /// Takes the names of the modules with `IncludeFlag` into `SelectedModules`.
  bool ReadSelectedModules(vendrel::VBProject& vbp);
  /// The namespace in front of the last dot of a name, made in `colN` where it is not there; null
  /// for a name without one.
  Namespace* GetNamespace(std::string_view Name, vendrel::Namespaces& colN);
  /// Name and parameter types as documentation files write them: "Run(System.String@)".
  std::string DotNetMethodSignature(const Block& b) const;

  /// Brings the comment file and, for a compiled assembly if `UseCSharpCommentFile`, the XML
  /// documentation beside it into the tree as tagged comments. `PlugIn` tells how they meet those
  /// that are there; null: that of the workspace. A file that is no XML is told and skipped.
  bool IntegrateCommentFile(vendrel::VBProject& vbp, PlugInHost* PlugIn, bool UseCSharpCommentFile,
                            bool DrillCommentFiles);
  /// What the last `IntegrateCommentFile` placed and dropped; null before.
  std::shared_ptr<const DocumentationReport> Documentation;
  /// Gives elements whose documentation is `inheritdoc` that of what they name, override or
  /// implement (complete reading). `IntegrateCommentFile` does so for what stands in the same set
  /// and has its documentation by then; to be called again when all assemblies have theirs.
  void ResolveInheritDocs();
  /// Notes an element of `VBProject` whose documentation is that of another one: of the .NET name
  /// `from`, or of what it overrides or implements where that is empty.
  void AddInheritDoc(CodeElement& element, std::string from);
  /// Gives members that are inherited the comments of those that they come from: elements of the
  /// set, and with `DrillCommentFiles` documentation files of assemblies outside of it.
  bool PopulateInheritedComments(vendrel::VBProject& vbp, PlugInHost* PlugIn,
                                 bool DrillCommentFiles);

  /// The project without the load that setting it by its rule brings.
  void TieVBProject(std::shared_ptr<vendrel::VBProject> project);
  /// The same for a project that owns this assembly and so is not owned by it.
  void TieOwner(vendrel::VBProject* project) { mProject = project; }

 private:
  WeakHandle<vendrel::VBProject> mProject;
  std::shared_ptr<vendrel::VBProject> mOwnProject;
  std::shared_ptr<class InheritDocs> mInheritDocs;
};

/// A set of assemblies that may refer to each other.
class Assemblies : public HandleTarget, public PlainCollection<Assembly> {
  using Base = PlainCollection<Assembly>;

 public:
  std::string AssemblyGroupName;
  /// What was missing or dropped when the set was loaded.
  vendrel::Diagnostics Diagnostics;
  /// Makes the projects that assemblies are loaded into; empty: with no options set.
  std::function<std::shared_ptr<VBProject>()> NewProject;

  ~Assemblies() override;

  using Base::Item;
  /// The first assembly of that name, or with a file of that leaf name, case ignored; null if none.
  Assembly* Item(std::string_view Key);
  const Assembly* Item(std::string_view Key) const;
  /// Adds an assembly and loads it if it has no project; it then stands under its name. Raises 457
  /// for a key that is taken, and what the load raises.
  void Add(std::shared_ptr<Assembly> item, std::string_view Key = {}, const Position& Before = {},
           const Position& After = {});

  /// The first assembly whose project has `RootFlag`; null if none.
  Assembly* RootAssembly();
  const Assembly* RootAssembly() const;
  /// Loads every "Assembly" element below `e`, then works out their types. Assemblies whose file
  /// nobody finds are told and left out.
  bool Load(const pugi::xml_node& e);
  /// Writes the set as attributes and child elements of `e`.
  bool Save(pugi::xml_node e) const;
  /// The element of a name "Assembly~Namespace.Type~Member"; null if none.
  CodeElement* GetObjectFromQualifiedName(std::string_view QualifiedName);
  /// The member that a block, field or event was copied from; null if it is in no assembly here.
  CodeElement* GetInheritedFromObject(const CodeElement& o);
  /// The module of that name: of the given project first (may be null), then of the others.
  Component* FindComponent(std::string_view Name, vendrel::VBProject* FirstVBProject);
};

}  // namespace vendrel
