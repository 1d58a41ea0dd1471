#include "project/VBProjects.h"

#include <unordered_map>
#include <utility>

#include "core/Ascii.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "services/FolderCache.h"
#include "services/Paths.h"

namespace vendrel {
namespace {

// Folders in which generators leave copies of projects.
bool IsExcludedFolder(std::string_view folder) {
  return EndsWithNoCaseAscii(folder, "FolioVB\\") || EndsWithNoCaseAscii(folder, "ForgeVBCode\\");
}

void IncludePublicComponents(VBProject& project) {
  for (Component& component : project.Components)
    if (project.WasReadFromTypeLibrary || component.Access == "PUBLIC")
      component.IncludeFlag = true;
}

// Silent about projects of one key: there the first stays, as a matter of course.
void AddQuietly(VBProjects& set, const std::shared_ptr<VBProject>& project, std::string_view key) {
  if (key.empty() || !set.HasKey(key)) set.Add(project, key);
}

}  // namespace

bool VBProjects::Add(std::shared_ptr<VBProject> item, std::string_view key, const Position& before,
                     const Position& after, bool SetIncludeFlagForPublic) try {
  VBProject& project = *item;
  if (!ElementCollection::Add(std::move(item), key, before, after)) return false;
  if (SetIncludeFlagForPublic) IncludePublicComponents(project);
  return true;
}
VENDREL_CONTEXT(key, SetIncludeFlagForPublic)

// One walk for both kinds: most of its time goes to the folders.
std::vector<FileSystemObject> VBProjects::ProjectFilesBelow(
    std::string_view RootPath, std::vector<FileSystemObject>* ofNet) try {
  std::vector<FileSystemObject> found, files;
  FileSystemObject(RootPath).FindFiles(ofNet ? "*.vbp*" : "*.vbp", 0, found);
  for (FileSystemObject& file : found) {
    const std::string leaf = file.LeafName();
    if (ofNet && MatchesPattern(leaf, "*.vbproj"))
      ofNet->push_back(std::move(file));
    else if (MatchesPattern(leaf, "*.vbp") && !IsExcludedFolder(file.FolderPath()))
      files.push_back(std::move(file));
  }
  return files;
}
VENDREL_CONTEXT(RootPath)

void VBProjects::Load(std::string_view RootPath) try {
  const Workspace::Use use(*mWorkspace);
  const KeptFolders folders;
  const DiagnosticScope scope(&Diagnostics, FileSystemObject(RootPath).FullPath());
  for (const FileSystemObject& file : ProjectFilesBelow(RootPath)) LoadOne(file.FullPath());
}
VENDREL_CONTEXT(RootPath)

void VBProjects::LoadCollection(const std::vector<std::string>& ProjectPaths) try {
  const Workspace::Use use(*mWorkspace);
  const KeptFolders folders;
  const DiagnosticScope scope(&Diagnostics, {});
  for (const std::string& path : ProjectPaths) LoadOne(path);
}
VENDREL_CONTEXT(trace::Local("Count", ProjectPaths.size()))

void VBProjects::LoadOne(std::string_view path) try {
  const auto project = std::make_shared<VBProject>();
  if (BeforeLoad) BeforeLoad(*project);
  if (LoadMember(*project, path)) Add(project, project->ProjectName);
}
VENDREL_CONTEXT(path)

bool LoadMember(VBProject& project, std::string_view path) {
  try {
    if (project.Load(path)) return true;
    Report(DiagnosticCode::MissingProject, {path});
  } catch (const VendrelError& error) {
    Report(DiagnosticCode::UnreadableFile, {path, error.Text()});
  }
  return false;
}

void VBProjects::CementReferences() try {
  const Workspace::Use use(*mWorkspace);
  VBProjects byClassId, byFile;
  for (std::size_t i = 1; i <= Count(); ++i) {
    const std::shared_ptr<VBProject> project = Share(i);
    AddQuietly(byClassId, project, project->ClsID());
    AddQuietly(byFile, project, project->FileName.LeafName());
  }
  for (VBProject& project : *this) {
    project.CementReferences(byClassId, false);
    project.CementReferences(byFile, true);
  }
}
VENDREL_CONTEXT()

void VBProject::CementReferences(VBProjects& projects, bool SearchByName) try {
  const Workspace::Use use(Workspace());
  for (Reference& reference : References) {
    const std::string key = SearchByName ? reference.FileName.LeafName() : reference.ClsID();
    if (VBProject* project = projects.Item(key)) reference.SetReferencedProject(project);
  }
}
VENDREL_CONTEXT(SearchByName, *this)

}  // namespace vendrel
