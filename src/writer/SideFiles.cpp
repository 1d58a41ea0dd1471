#include "writer/SideFiles.h"

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "services/Procedures.h"

namespace vendrel {
namespace {

constexpr int kThisFolderOnly = 1;

bool IsLeftOut(const std::string& extension, const std::string& ownExtension) {
  return EqualsNoCase(extension, ownExtension) || EqualsNoCaseAscii(extension, "vbg") ||
         EqualsNoCaseAscii(extension, "vbp");
}

}  // namespace

SideFiles::SideFiles(VBProject& project, OutputNames& names) : mNames(names) {
  mOtherFiles.insert(FoldKey(project.FileName.FullPath()));
  for (const Component& component : project.Components.Listed())
    mOtherFiles.insert(FoldKey(component.FileName.FullPath()));
}

bool SideFiles::IsOtherFile(std::string_view path) const {
  return mOtherFiles.contains(FoldKey(path));
}

// Each folder is listed once, however many modules lie in it.
const SideFiles::Listing& SideFiles::ListingOf(const std::string& folder) {
  const auto [entry, isNew] = mListings.try_emplace(FoldKey(folder));
  if (!isNew) return entry->second;
  FileSystemObject place;
  place.SetFolderPath(folder);
  std::vector<FileSystemObject> files;
  try {
    place.FindFiles("*", kThisFolderOnly, files);
  } catch (const VendrelError& failure) {
    // No folder, no side files; one that is there may hold some.
    if (place.IsFolder())
      Report(DiagnosticCode::WriteRefused,
             {"files beside the modules in " + folder + " are not copied: " + failure.Text()});
  }
  for (FileSystemObject& file : files) {
    std::string name = FoldKey(file.LeafName());
    entry->second.emplace(std::move(name), std::move(file));
  }
  return entry->second;
}

void SideFiles::Copy(Component& component, const std::string& folder) try {
  if (VBProject* project = component.VBProject())
    component.FileName.SetBaseFile(&project->FileName);
  const std::string base = FoldKey(mNames.BaseNameAsRead(component) + ".");
  const std::string ownExtension = component.FileName.Extension();
  const Listing& files = ListingOf(component.FileName.FolderPath());
  for (auto file = files.lower_bound(base); file != files.end(); ++file) {
    if (!file->first.starts_with(base)) break;
    const FileSystemObject& source = file->second;
    const std::string target = folder + source.LeafName();
    if (IsLeftOut(source.Extension(), ownExtension) || IsOtherFile(source.FullPath()) ||
        mNames.IsOutput(target))
      continue;
    CopyOne(source, target);
  }
}
VENDREL_CONTEXT(component, folder)

void SideFiles::CopyOne(const FileSystemObject& file, const std::string& target) {
  const std::string source = file.FullPath();
  const auto [earlier, isNew] = mCopied.emplace(FoldKey(target), source);
  if (!isNew && !EqualsNoCase(earlier->second, source)) {
    Report(DiagnosticCode::WriteRefused,
           {source + " is not copied: a file of that name was copied from " + earlier->second});
    return;
  }
  if (isNew) CopyOrTell(source, target);
}

void CopyOrTell(const std::string& source, const std::string& target) {
  if (EqualsNoCase(source, target)) return;  // it lies there already
  if (!FileCopy(source, target))
    Report(DiagnosticCode::WriteRefused,
           {source + " is not copied: " + State().FileCopy_LastError});
}

void Component::CopyTo(std::string_view Path) try {
  const Workspace::Use use(Options().Workspace());
  vendrel::VBProject* project = VBProject();
  if (!project) throw VendrelError(errObjectNotSet, "the component has no project");
  FileSystemObject folder;
  folder.SetFolderPath(Path);
  OutputNames names(*project);
  const DiagnosticScope scope(&project->Diagnostics, FileName.FullPath());
  SideFiles(*project, names).Copy(*this, folder.FolderPath());
}
VENDREL_CONTEXT(Path, *this)

bool Component::IsOtherFileName(std::string_view name) const {
  vendrel::VBProject* project = VBProject();
  if (!project) return false;
  OutputNames names(*project);
  return SideFiles(*project, names).IsOtherFile(name);
}

bool Component::IsComponentOutputFileName(std::string_view name) const {
  vendrel::VBProject* project = VBProject();
  return project && OutputNames(*project).IsOutput(name);
}

}  // namespace vendrel
