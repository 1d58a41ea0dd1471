#pragma once
#include <memory>
#include <string>
#include <string_view>

#include "model/CodeElement.h"
#include "model/ElementCollection.h"
#include "model/ProjectOptions.h"
#include "model/Property.h"
#include "model/TaggedComment.h"
#include "services/FileSystemObject.h"

namespace vendrel {

/// A `Reference=` or `Object=` line of a project file and the file behind it.
class Reference : public ElementOf<Reference> {
 public:
  /// "Reference", "Object", or "Line" for anything else.
  std::string ReferenceType;
  /// Class id as read from the line.
  std::string StoredCLSID;
  /// The line refers to a compiled component, not to a project.
  bool CompiledReference = false;
  /// The raw line.
  std::string SourceString;
  std::string Version;
  std::string Locale;
  std::string ProjectGUID;
  bool ExcludeFlag = false;
  OnDemand<vendrel::TaggedComments> TaggedComments;
  FileSystemObject FileName;

  std::string ElementName() const override { return Name(); }
  std::string Description() const override;

  /// Parses a line; finds the file by the registry first, then by the path of the line.
  void Load(std::string_view Source);
  /// Library id read from the referenced file; empty where there is none.
  std::string ClsID() const;
  /// The name of the line or library, else the leaf name of the file.
  std::string Name() const;
  /// The line in compiled and in project form; empty where the form does not apply. Both are built
  /// afresh, with relative paths as seen from the project file.
  std::string CompiledLine();
  std::string CodeLine();

  vendrel::VBProject* ParentProject() const;
  void SetParentProject(ProjectOptions* project);
  vendrel::VBProject* ReferencedProject() const;
  void SetReferencedProject(ProjectOptions* project) { mReferencedProject.Set(project); }
  FileSystemObject* RelativeTo() const { return mRelativeTo.Get(); }
  void SetRelativeTo(FileSystemObject* file);

  /// How the name of a library is read from its file (a native path); gives empty text for a file
  /// that is none. Installed in the workspace in use by the room that reads type libraries.
  using LibraryNameReader = std::string (*)(const std::string& nativePath);
  static void SetLibraryNameReader(LibraryNameReader reader);

  template <typename Own>
  static constexpr auto Properties() {
    return PropertyTable{
        Prop{"Name", &Own::Name},
        Prop{"ReferenceType", &Own::ReferenceType},
        Prop{"StoredCLSID", &Own::StoredCLSID},
        Prop{"CompiledReference", &Own::CompiledReference},
        Prop{"SourceString", &Own::SourceString},
        Prop{"Version", &Own::Version},
        Prop{"Locale", &Own::Locale},
        Prop{"ProjectGUID", &Own::ProjectGUID},
        Prop{"FileName", &Own::FileName, PropertyKind::Identity},
        Prop{"ExcludeFlag", &Own::ExcludeFlag},
        Prop{"Description", &Own::Description, PropertyKind::Derived},
        Prop{"TaggedComments", &Own::TaggedComments, PropertyKind::Children},
        Prop{"SourceLine", &Own::SourceLine, &Own::SetSourceLine},
        Prop{"ParentProject", &Own::ParentProject, &Own::SetParentProject, PropertyKind::Link}
            .Hide(),
        Prop{"ReferencedProject", &Own::ReferencedProject, &Own::SetReferencedProject,
             PropertyKind::Link}
            .Hide()};
  }

 private:
  void LoadObject(std::string_view text);
  void LoadReference(std::string_view text);
  void FindRegisteredFile();
  std::string RegisteredPath(std::string_view version) const;
  std::string NewerRegisteredPath() const;
  void NameFromLibrary();
  bool MustRebuild() const;
  std::string CompiledForm(std::string_view classId, std::string_view path) const;
  static std::string HexVersion(std::string_view Version);

  std::string mName;
  WeakHandle<FileSystemObject> mRelativeTo;
  WeakHandle<ProjectOptions> mParentProject;
  WeakHandle<ProjectOptions> mReferencedProject;
};
struct ReferenceFamily {
  static constexpr std::string_view TypeText = "Reference";
  static constexpr bool Placed = false;
};
/// The references of a project, keyed by the library id of their file where it has one.
class References : public ElementCollection<Reference, ReferenceFamily> {
 public:
  bool Resolved = false;
};

}  // namespace vendrel
