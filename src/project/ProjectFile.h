#pragma once
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "model/CodeElement.h"
#include "model/Components.h"
#include "model/ElementCollection.h"
#include "model/Namespace.h"
#include "services/FileSystemObject.h"

namespace vendrel {

struct ScannedSource;

/// One source file of a VB.NET project, which holds any number of types. Its rules stand in
/// dotnet/.
class ProjectFile : public ElementOf<ProjectFile> {
 public:
  ProjectFile();
  ~ProjectFile() override;

  FileSystemObject FileName;
  /// What designers take the file for ("Code", "Form"), as its project says; mostly empty.
  std::string SubType;
  /// What a build does with it ("Compile", "None"), as its project says.
  std::string BuildAction;
  /// The types of the file, by namespace and name, in the order in which they end.
  vendrel::Components Components;

  /// What the file imports, as written ("System.Data", "A = System.Collections").
  std::vector<std::string> Imports;
  /// The file as it was decoded; empty before it was read.
  std::shared_ptr<const SourceText> SourceForm;

  /// Reads the element of the project file that names the file. Raises 5 without a "RelPath" or a
  /// "BuildAction".
  void LoadFromXML(const XmlElement& e);
  /// Scans the file: its types join the project, their namespaces the assembly of the project.
  /// A file that cannot be read is told. Always true.
  bool Populate();
  /// Gives type names in declarations their namespaces. Always true.
  bool ResolveTypeNames();
  /// Fills the types of the file with what they inherit. Always true.
  bool ResolveInheritedMembers();
  /// Writes the file with its types, and copies the files of its base name that go with it. False
  /// if nothing was written; that is told.
  bool WriteOut(std::string_view FileName);
  /// The full name of a type as it is named in `c`.
  std::string ResolveType(vendrel::Component& c, std::string_view TypeName);
  /// False where no type of an assembly or of the language and no alias of the file ends with this
  /// word: of the names that end with it only types of projects need be looked for.
  bool MayNameType(std::string_view Word);
  /// The module of a type name, of the project or of an assembly; null if there is none.
  vendrel::Component* GetComponentForTypeName(std::string_view Name);

  /// What stands outside the types of the file, as a module that is in no list; null in the classic
  /// reading.
  vendrel::Component* Outside() const;
  /// What the scan of the file leaves for its later steps; only dotnet/ touches it.
  ScannedSource& Scanned();

  /// Leaf name of the file.
  std::string Name() const { return FileName.LeafName(); }
  std::string ElementName() const override { return Name(); }
  vendrel::VBProject* VBProject() const;
  void SetVBProject(ProjectOptions* project) { mProject.Set(project); }

  template <typename Own>
  static constexpr auto Properties() {
    return PropertyTable{
        Prop{"Name", &Own::Name, PropertyKind::Derived},
        Prop{"FileName", &Own::FileName, PropertyKind::Identity},
        Prop{"SubType", &Own::SubType},
        Prop{"BuildAction", &Own::BuildAction},
        Prop{"Imports", &Own::Imports},
        Prop{"Components", &Own::Components, PropertyKind::Derived}.Hide(),
        Prop{"VBProject", &Own::VBProject, &Own::SetVBProject, PropertyKind::Link}.Hide()};
  }

 private:
  WeakHandle<ProjectOptions> mProject;
  std::shared_ptr<ScannedSource> mScanned;
};

/// What scanning VB.NET source shares in a workspace.
struct NetScanState {
  /// The namespace entered last.
  WeakHandle<Namespace> CurrentNamespace;
};

struct ProjectFileFamily {
  static constexpr std::string_view TypeText = "ProjectFile";
  static constexpr bool Placed = false;
};
/// The source files of a VB.NET project, in its order, without keys.
class ProjectFiles : public ElementCollection<ProjectFile, ProjectFileFamily> {};

}  // namespace vendrel
