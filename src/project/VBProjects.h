#pragma once
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "model/ElementCollection.h"
#include "project/VBProject.h"

namespace vendrel {

struct VBProjectFamily {
  static constexpr std::string_view TypeText = "VBProject";
  static constexpr bool Placed = true;
};

/// A set of projects, keyed by `ProjectName`. Fill it by `Add`, or from a folder or a list of
/// files.
class VBProjects : public ElementCollection<VBProject, VBProjectFamily> {
 public:
  /// Called for each project that `Load` and `LoadCollection` make, before it is read: the place to
  /// set its options.
  std::function<void(VBProject&)> BeforeLoad;
  /// What `Load` and `LoadCollection` stepped over.
  vendrel::Diagnostics Diagnostics;

  /// Adds a project; a key that is taken is told and the project dropped. With
  /// `SetIncludeFlagForPublic`, `IncludeFlag` is set on its public modules (all modules of a type
  /// library), which loads them. Gives whether it was added.
  bool Add(std::shared_ptr<VBProject> item, std::string_view key = {}, const Position& before = {},
           const Position& after = {}, bool SetIncludeFlagForPublic = false);

  /// Loads every project file ("*.vbp") in a folder and below it, but for those directly in a
  /// folder whose name ends in "FolioVB" or "ForgeVBCode". A file that cannot be read, and one
  /// whose project name is taken, is told and left out. Raises 75 or 70 if the folder cannot be
  /// read.
  void Load(std::string_view RootPath);
  /// Loads each path; what is missing or cannot be read is told and left out.
  void LoadCollection(const std::vector<std::string>& ProjectPaths);
  /// The files that `Load` would load, in the order of their paths. Those of VB.NET ("*.vbproj"),
  /// which it does not, are added to `ofNet` where that is asked for.
  static std::vector<FileSystemObject> ProjectFilesBelow(
      std::string_view RootPath, std::vector<FileSystemObject>* ofNet = nullptr);

  /// Ties the references of all projects to the projects of this set: by library id, then by the
  /// leaf name of the project file. Of projects with one id or one name the first counts.
  void CementReferences();
  /// An XML document of the projects and which refers to which, after `CementReferences`.
  std::string Structure();

 private:
  void LoadOne(std::string_view path);

  Workspace* mWorkspace = &Workspace::Current();
};

/// `project` as a member of a set, loaded from `path`; false, and told, if that fails.
bool LoadMember(VBProject& project, std::string_view path);

}  // namespace vendrel
