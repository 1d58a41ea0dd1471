#pragma once
#include <memory>
#include <string>
#include <string_view>

#include "model/CodeElement.h"
#include "model/Components.h"
#include "model/ElementCollection.h"
#include "services/FileSystemObject.h"

namespace vendrel {

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

  /// Leaf name of the file.
  std::string Name() const { return FileName.LeafName(); }
  std::string ElementName() const override { return Name(); }
  vendrel::VBProject* VBProject() const;
  void SetVBProject(ProjectOptions* project) { mProject.Set(project); }

  static constexpr auto Properties() {
    return std::tuple{
        Prop{"Name", &ProjectFile::Name, PropertyKind::Derived},
        Prop{"FileName", &ProjectFile::FileName, PropertyKind::Identity},
        Prop{"SubType", &ProjectFile::SubType},
        Prop{"BuildAction", &ProjectFile::BuildAction},
        Prop{"Components", &ProjectFile::Components, PropertyKind::Derived}.Hide(),
        Prop{"VBProject", &ProjectFile::VBProject, &ProjectFile::SetVBProject, PropertyKind::Link}
            .Hide()};
  }

 private:
  WeakHandle<ProjectOptions> mProject;
};

struct ProjectFileFamily {
  static constexpr std::string_view TypeText = "ProjectFile";
  static constexpr bool Placed = false;
};
/// The source files of a VB.NET project, in its order, without keys.
class ProjectFiles : public ElementCollection<ProjectFile, ProjectFileFamily> {};

}  // namespace vendrel
