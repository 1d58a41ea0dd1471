#include "project/VBProjectGroup.h"

#include <utility>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "core/MessageService.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "project/Solution.h"
#include "services/FolderCache.h"
#include "services/Procedures.h"
#include "text/Words.h"

namespace vendrel {
namespace {

// The VB.NET project that a line of a solution lists, as a line of a group; empty for any other.
std::string AsGroupLine(std::string_view line) {
  const std::optional<SolutionProject> project = SolutionProjectOf(line);
  return project && EndsWithNoCaseAscii(project->Path, ".vbproj") ? "Project=" + project->Path
                                                                  : std::string();
}

}  // namespace

std::string VBProjectGroup::Description() const {
  if (!mDescription.empty()) return mDescription;
  const VBProject* first = mProjects->Item(1);
  if (!first) return {};
  const std::string description = first->Description();
  return description.empty() ? first->ProjectName : description;
}

std::string VBProjectGroup::QualifiedName() const {
  std::string baseName = mFileName.BaseName();
  if (mFileName.Exists()) return baseName;
  if (!mQualifiedName.empty() && mQualifiedName != baseName) return SafeFileName(mQualifiedName);
  const VBProject* first = mProjects->Item(1);
  return first ? SafeFileName(first->ProjectName) : std::string();
}

VBProjects& VBProjectGroup::VBProjects() const try {
  bool all = true;
  for (const VBProject& project : *mProjects) all = all && project.IncludeFlag;
  if (all) return *mProjects;
  mIncluded = std::make_shared<vendrel::VBProjects>();
  for (std::size_t i = 1; i <= mProjects->Count(); ++i) {
    std::shared_ptr<VBProject> project = mProjects->Share(i);
    if (!project->IncludeFlag) continue;
    const std::string& name = project->ProjectName;
    mIncluded->Add(project, mIncluded->HasKey(name) ? std::string_view() : name);
  }
  return *mIncluded;
}
VENDREL_CONTEXT(*this)

VBProject* VBProjectGroup::Project(std::string_view projectName) const {
  VBProject* project = mProjects->Item(projectName);
  return project && project->IncludeFlag ? project : nullptr;
}

const FileSystemObject& VBProjectGroup::FileName() const {
  const VBProject* first = mProjects->Item(1);
  return mFileName.FullPath().empty() && first ? first->FileName : mFileName;
}

bool VBProjectGroup::Load(std::string_view FileName, bool Silent,
                          bool DoNotPopulateComponents) try {
  const Workspace::Use use(*mWorkspace);
  State().Silent = Silent;
  ForgetFoldersOfLoad();
  const KeptFolders folders;
  mFileName.SetFullPath(FileName);
  mFilesRead.clear();
  if (!mFileName.Exists()) {
    LastErrorString = "Passed filename was invalid / did not exist";
    return false;
  }
  std::int32_t line = 0;
  const DiagnosticScope scope(&Diagnostics, mFileName.FullPath(), &line);
  mFileName.OpenFile();
  const bool isSolution = EqualsNoCaseAscii(mFileName.Extension(), "sln");
  while (!mFileName.AtEnd()) {
    ++line;
    const std::string_view text = mFileName.NextLine();
    LoadLine(isSolution ? AsGroupLine(text) : std::string(text), Silent, DoNotPopulateComponents);
  }
  mFileName.CloseFile();
  return true;
}
VENDREL_CONTEXT(FileName, Silent, DoNotPopulateComponents, *this)

void VBProjectGroup::LoadLine(std::string_view line, bool silent, bool doNotPopulate) try {
  if (line.starts_with("VBGROUP ") || Trim(line).empty()) return;
  const std::size_t equals = line.find('=');
  const std::string_view path = equals == std::string_view::npos
                                    ? std::string_view()
                                    : StripQuotes(Trim(line.substr(equals + 1)));
  if (path.empty()) return Report(DiagnosticCode::GroupLineSkipped, {line});
  FileSystemObject file;
  file.SetBaseFile(&mFileName);
  file.SetFullPath(path);
  if (file.Exists()) return LoadProject(file, silent, doNotPopulate);
  const std::string fullPath = file.FullPath();
  ReportBox(DiagnosticCode::MissingProject, {fullPath},
            "Project group file contained a reference to a project that could not be found - '" +
                fullPath + "'.  Processing will continue without this project.",
            "Project not found", msExclamation);
}
VENDREL_CONTEXT_AT(LineReached(), line, silent, doNotPopulate, *this)

void VBProjectGroup::LoadProject(const FileSystemObject& file, bool silent,
                                 bool doNotPopulate) try {
  const std::string path = file.FullPath();
  if (EqualsNoCaseAscii(file.Extension(), "vbg"))
    return Report(DiagnosticCode::GroupLineSkipped, {"a group is no project: " + path});
  if (!mFilesRead.insert(FoldKey(path)).second)
    return Report(DiagnosticCode::ProjectRepeated, {path});
  const std::shared_ptr<VBProject> project = NewVBProject();
  // A new project silences the process; the caller of the group decided otherwise.
  State().Silent = silent;
  project->SetDoNotPopulateComponents(doNotPopulate);
  project->SetUpgradeLegacyTaggedcomments(UpgradeLegacyTaggedcomments);
  project->SetVBProjectGroup(this);
  if (BeforeLoad) BeforeLoad(*project);
  if (!LoadMember(*project, path)) return;
  if (mProjects->HasKey(project->ProjectName))
    return Report(DiagnosticCode::ProjectRepeated, {project->ProjectName + " (" + path + ")"});
  mProjects->Add(project, project->ProjectName);
}
VENDREL_CONTEXT_AT(LineReached(), trace::Parameter("file", file.FullPath()), silent, doNotPopulate,
                   *this)

VBProjectGroup* VBProject::VBProjectGroup() const { return mGroup.Get(); }
void VBProject::SetVBProjectGroup(vendrel::VBProjectGroup* group) { mGroup.Set(group); }

}  // namespace vendrel
