#include "dotnet/Sources.h"

#include <unordered_map>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "dotnet/SourceScan.h"
#include "output/Xml.h"
#include "project/Solution.h"
#include "services/SourceText.h"
#include "text/Words.h"

namespace vendrel {

NetProjectForm FormOfNetProject(const std::string& nativePath, std::string& root) {
  root.clear();
  XmlDocument document;
  try {
    document.LoadXml(SourceText::Read(nativePath)->Text);
  } catch (const VendrelError& error) {
    if (error.Number() != errInvalidArgument) throw;
    return NetProjectForm::Other;
  }
  root = document.Root().Name();
  if (root == "VisualStudioProject") return NetProjectForm::VisualStudio;
  return root == "Project" ? NetProjectForm::MSBuild : NetProjectForm::Other;
}

void TieNetReferences(VBProject& project, const std::vector<VBProject*>& others) {
  for (Reference& reference : project.References) {
    const std::string file = reference.FileName.FullPath();
    for (VBProject* other : others) {
      if (other == &project) continue;
      const bool sameId = !reference.ProjectGUID.empty() &&
                          EqualsNoCase(reference.ProjectGUID, other->VBNETProjectGUID);
      const bool sameFile = !file.empty() && EqualsNoCase(file, other->FileName.FullPath());
      if (!sameId && !sameFile) continue;
      reference.SetReferencedProject(other);
      if (reference.Name().empty()) reference.FileName.SetFullPath(other->FileName.FullPath());
      break;
    }
  }
}

namespace {

constexpr int kFoldersAbove = 3;  // in which a solution is looked for

// Files of projects by their ids, folded, as the solutions around a project tell.
std::unordered_map<std::string, std::string> FilesById(const VBProject& project) {
  std::unordered_map<std::string, std::string> files;
  std::string folder = project.FileName.FolderPath();
  for (int i = 0; i <= kFoldersAbove && folder.size() > 3; ++i) {
    std::vector<FileSystemObject> solutions;
    try {
      FileSystemObject(folder).FindFiles("*.sln", 1, solutions);
    } catch (const VendrelError&) {
      break;
    }
    for (FileSystemObject& solution : solutions) try {
        const auto text = SourceText::Read(solution.NativePath());
        for (const SolutionProject& listed : ProjectsOfSolution(text->Text)) {
          FileSystemObject file;
          file.SetBaseFile(&solution);
          file.SetFullPath(listed.Path);
          if (!listed.GUID.empty() && file.Exists())
            files.emplace(FoldKey(listed.GUID), file.FullPath());
        }
      } catch (const VendrelError&) {  // not a solution that can be read
      }
    folder.resize(folder.size() - 1);
    folder.resize(folder.rfind('\\') + 1);
  }
  return files;
}

}  // namespace

std::vector<std::string> ReferencedProjectFiles(const VBProject& project) {
  std::vector<std::string> paths;
  std::unordered_map<std::string, std::string> byId;
  bool isKnown = false;
  for (const Reference& reference : project.References) {
    std::string path = reference.FileName.FullPath();
    if (path.empty() && !reference.ProjectGUID.empty()) {
      if (!isKnown) byId = FilesById(project);
      isKnown = true;
      const auto found = byId.find(FoldKey(reference.ProjectGUID));
      if (found != byId.end()) path = found->second;
    }
    if (EndsWithNoCaseAscii(path, ".vbproj") && FileSystemObject(path).Exists())
      paths.push_back(path);
  }
  return paths;
}

void ResolveFiles(VBProject& project) {
  for (ProjectFile& file : project.ProjectFiles) {
    file.ResolveTypeNames();
    file.ResolveInheritedMembers();
  }
}

void ResolveSourceTypes(VBProject& project) try {
  const Workspace::Use use(project.Workspace());
  const DiagnosticScope scope(&project.Diagnostics, project.FileName.FullPath());
  ResolveFiles(project);
  if (Assembly* assembly = project.Assembly()) {
    assembly->TypesResolved = true;
    assembly->ResolveInheritDocs();
  }
}
VENDREL_CONTEXT(trace::Me(project))

namespace {

// The procedure itself, or that of a parameter.
const Block* BlockAround(const CodeElement& element) {
  if (const auto* block = As<Block>(&element)) return block;
  const auto* parameter = As<Parameter>(&element);
  return parameter ? As<Block>(parameter->Parent.Get()) : nullptr;
}

ProjectFile* FileIn(const auto& places, const auto* key) {
  const auto found = places.find(key);
  return found == places.end() ? nullptr : found->second.Get();
}

ProjectFile* FileOfLaterPart(const SourcePlaces& places, const CodeElement& element) {
  const auto found = places.OfLaterParts.find(&element);
  const bool isIt = found != places.OfLaterParts.end() && found->second.Element.Get() == &element;
  return isIt ? found->second.File.Get() : nullptr;
}

}  // namespace

ProjectFile* SourcePlaces::FileOf(const CodeElement& element) const {
  const Block* block = BlockAround(element);
  if (!block) return FileOfLaterPart(*this, element);
  const CodeLines* lines = block->CodeLines.IfAny();
  return lines ? FileIn(ByText, lines->SourceText()) : nullptr;
}

const FileSystemObject& SourceFileOf(const Component& component, const CodeElement& element) {
  const VBProject* project = component.VBProject();
  if (!project || project->ProjectFiles.Count() == 0 || &element == &component)
    return component.FileName;
  auto& files = const_cast<ProjectFiles&>(project->ProjectFiles);
  const auto& places = files.Item(1)->Scanned().Places;
  const ProjectFile* file = places ? places->FileOf(element) : nullptr;
  return file ? file->FileName : component.FileName;
}

std::string TargetOfSource(const VBProject& project, const ProjectFile& file) {
  const ReadingRules& rules = project.Reading;
  if (rules.NetKeepPlaces && project.SameLocation()) return file.FileName.FullPath();
  std::string path = file.FileName.LeafName();
  if (rules.NetKeepPlaces) {
    FileSystemObject relative(file.FileName.FullPath());
    relative.SetBaseFile(const_cast<FileSystemObject*>(&project.FileName));
    path = relative.RelativePath();
    // Nothing is written outside of the folder that was asked for.
    while (path.starts_with("..\\")) path.erase(0, 3);
    if (path.find(':') != std::string::npos) path = file.FileName.LeafName();
  }
  return project.OutputFileName.FolderPath() + path;
}

}  // namespace vendrel
