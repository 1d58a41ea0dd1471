#pragma once
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>

#include "model/CodeElement.h"
#include "project/VBProject.h"
#include "project/VBProjects.h"

namespace vendrel {

/// A group of projects, read from a group file (.vbg) or put together by a client.
class VBProjectGroup : public ElementOf<VBProjectGroup> {
 public:
  /// Reason of the last load that failed.
  std::string LastErrorString;
  LateText TaggedDescription;
  /// Handed to each member at `Load`; the switch itself is one for the whole process.
  bool UpgradeLegacyTaggedcomments = false;
  OnDemand<vendrel::TaggedComments> TaggedComments;
  /// What `Load` stepped over; each member has a list of its own.
  vendrel::Diagnostics Diagnostics;
  /// Called for each member before it is read: the place to set its options.
  std::function<void(VBProject&)> BeforeLoad;

  std::string ElementName() const override { return Name(); }
  /// The stored text; where there is none, the description or else the name of the first project.
  std::string Description() const override;
  void SetDescription(std::string_view text) override { mDescription = text; }
  /// The stored text alone.
  const std::string& InternalDescription() const { return mDescription; }
  void SetInternalDescription(std::string_view text) { mDescription = text; }
  /// Name of the group's file without folder and extension; without such a file the stored name,
  /// else that of the first project, as a file name could hold it.
  std::string QualifiedName() const override;
  void SetQualifiedName(std::string_view name) { mQualifiedName = name; }
  std::string Name() const { return QualifiedName(); }

  /// The projects whose `IncludeFlag` is set. While it is set on all, this is the collection of all
  /// itself; else a list of its own, gathered at each call.
  vendrel::VBProjects& VBProjects() const;
  /// All projects, whatever their flag. Add projects here, and set their `VBProjectGroup`.
  vendrel::VBProjects& AllVBProjects() const { return *mProjects; }
  /// The member of that name (case ignored) whose `IncludeFlag` is set; null if there is none.
  VBProject* Project(std::string_view projectName) const;
  /// The group's file; without one, the file of the first project.
  const FileSystemObject& FileName() const;

  /// Reads a group file and loads its projects. `Silent` becomes the process-wide switch. A project
  /// that is missing, unreadable or named twice is told, and reading goes on. False, with
  /// `LastErrorString`, if the file itself does not exist.
  bool Load(std::string_view FileName, bool Silent = true, bool DoNotPopulateComponents = false);

  template <typename Own>
  static constexpr auto Properties() {
    return PropertyTable{
        Prop{"Name", &Own::Name},
        Prop{"FileName", &Own::FileName, PropertyKind::Identity},
        Prop{"LastErrorString", &Own::LastErrorString},
        Prop{"TaggedDescription", &Own::TaggedDescription},
        Prop{"Description", &Own::Description, &Own::SetDescription, PropertyKind::Derived},
        Prop{"InternalDescription", &Own::InternalDescription, &Own::SetInternalDescription},
        Prop{"TaggedComments", &Own::TaggedComments, PropertyKind::Children},
        Prop{"VBProjects", &Own::AllVBProjects, PropertyKind::Children},
        Prop{"QualifiedName", &Own::QualifiedName, &Own::SetQualifiedName, PropertyKind::Derived},
        Prop{"UpgradeLegacyTaggedcomments", &Own::UpgradeLegacyTaggedcomments}.Hide()};
  }

 private:
  void LoadLine(std::string_view line, bool silent, bool doNotPopulate);
  void LoadProject(const FileSystemObject& file, bool silent, bool doNotPopulate);

  Workspace* mWorkspace = &Workspace::Current();
  std::string mDescription;
  std::string mQualifiedName;
  FileSystemObject mFileName;
  std::unordered_set<std::string> mFilesRead;  // folded paths of the members
  std::shared_ptr<vendrel::VBProjects> mProjects = std::make_shared<vendrel::VBProjects>();
  mutable std::shared_ptr<vendrel::VBProjects> mIncluded;
};

}  // namespace vendrel
