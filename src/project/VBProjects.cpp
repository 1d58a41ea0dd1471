#include "project/VBProjects.h"

#include <unordered_map>
#include <utility>

#include "core/Ascii.h"
#include "core/Workspace.h"
#include "diagnostics/VendrelError.h"

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
} catch (VendrelError& failure) {
  failure.AddContext("VBProjects.Add", "VBProjects")
      .Parameter("key", key)
      .Parameter("SetIncludeFlagForPublic", SetIncludeFlagForPublic);
  throw;
}

std::vector<FileSystemObject> VBProjects::ProjectFilesBelow(std::string_view RootPath) try {
  std::vector<FileSystemObject> files;
  FileSystemObject(RootPath).FindFiles("*.vbp", 0, files);
  std::erase_if(files, [](const FileSystemObject& f) { return IsExcludedFolder(f.FolderPath()); });
  return files;
} catch (VendrelError& failure) {
  failure.AddContext("VBProjects.ProjectFilesBelow", "VBProjects").Parameter("RootPath", RootPath);
  throw;
}

void VBProjects::Load(std::string_view RootPath) try {
  const Workspace::Use use(*mWorkspace);
  const DiagnosticScope scope(&Diagnostics, FileSystemObject(RootPath).FullPath());
  for (const FileSystemObject& file : ProjectFilesBelow(RootPath)) LoadOne(file.FullPath());
} catch (VendrelError& failure) {
  failure.AddContext("VBProjects.Load", "VBProjects").Parameter("RootPath", RootPath);
  throw;
}

void VBProjects::LoadCollection(const std::vector<std::string>& ProjectPaths) try {
  const Workspace::Use use(*mWorkspace);
  const DiagnosticScope scope(&Diagnostics, {});
  for (const std::string& path : ProjectPaths) LoadOne(path);
} catch (VendrelError& failure) {
  failure.AddContext("VBProjects.LoadCollection", "VBProjects").Local("Count", ProjectPaths.size());
  throw;
}

void VBProjects::LoadOne(std::string_view path) try {
  const auto project = std::make_shared<VBProject>();
  if (BeforeLoad) BeforeLoad(*project);
  if (LoadMember(*project, path)) Add(project, project->ProjectName);
} catch (VendrelError& failure) {
  failure.AddContext("VBProjects.LoadOne", "VBProjects").Parameter("path", path);
  throw;
}

bool LoadMember(VBProject& project, std::string_view path) {
  try {
    if (project.Load(path)) return true;
    Tell(DiagnosticCode::MissingProject, {path});
  } catch (const VendrelError& error) {
    Tell(DiagnosticCode::UnreadableFile, {path, error.Text()});
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
} catch (VendrelError& failure) {
  failure.AddContext("VBProjects.CementReferences", "VBProjects");
  throw;
}

void VBProject::CementReferences(const VBProjects& projects, bool SearchByName) try {
  const Workspace::Use use(Workspace());
  for (Reference& reference : References) {
    const std::string key = SearchByName ? reference.FileName.LeafName() : reference.ClsID();
    if (VBProject* project = projects.Item(key)) reference.SetReferencedProject(project);
  }
} catch (VendrelError& failure) {
  failure.AddContext("VBProject.CementReferences", "VBProjects")
      .Parameter("SearchByName", SearchByName)
      .Of(*this);
  throw;
}

}  // namespace vendrel
