// Files of source: how they are cut into pages, and where the lines of elements are.

#include <algorithm>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "dotnet/Sources.h"
#include "output/Places.h"
#include "services/Paths.h"
#include "services/SourceText.h"
#include "site/SiteMap.h"

namespace vendrel::site {
namespace {

// "src/modMain.bas": as seen from the project file, else the leaf.
std::string PathIn(const VBProject& project, const FileSystemObject& file) {
  const std::string full = file.FullPath();
  std::string path = RelativePath(project.FileName.FolderPath(), full);
  if (IsAbsolutePath(path)) path = file.LeafName();
  std::replace(path.begin(), path.end(), '\\', '/');
  return path;
}

// Lines that designers and the environment write in front of the code: "VERSION", the controls,
// attributes.
std::int32_t LinesOfDesigner(std::string_view text) {
  std::int32_t lines = 0, header = 0, depth = 0;
  while (!text.empty()) {
    const std::string_view line = TrimGaps(TakeLine(text));
    ++lines;
    const bool opens = StartsWithNoCaseAscii(line, "Begin");
    const bool isOfHeader = depth > 0 || opens || StartsWithNoCaseAscii(line, "VERSION ") ||
                            StartsWithNoCaseAscii(line, "Object") ||
                            StartsWithNoCaseAscii(line, "Attribute VB_");
    if (!isOfHeader && !line.empty()) break;
    if (opens) ++depth;
    if (EqualsNoCaseAscii(line, "End") || EqualsNoCaseAscii(line, "EndProperty")) --depth;
    if (isOfHeader) header = lines;
  }
  return header;
}

void CutIntoPieces(SourceEntry& source) {
  std::int32_t line = 0, inPiece = 0;
  std::size_t begin = 0;
  source.Pieces.emplace_back(1, 0);
  for (std::string_view rest = source.Text; !rest.empty();) {
    const std::size_t at = source.Text.size() - rest.size();
    const std::size_t size = TakeLine(rest).size();
    ++line;
    if (inPiece > 0 && (inPiece == kLinesOnPage || at + size - begin > kSourceOnPage)) {
      source.Pieces.emplace_back(line, at);
      begin = at;
      inPiece = 0;
    }
    ++inPiece;
  }
  source.Lines = line;
}

}  // namespace

std::size_t SourceEntry::PieceOf(std::int32_t line) const {
  const auto behind =
      std::upper_bound(Pieces.begin(), Pieces.end(), line,
                       [](std::int32_t sought, const auto& piece) { return sought < piece.first; });
  return behind == Pieces.begin() ? 0 : static_cast<std::size_t>(behind - Pieces.begin()) - 1;
}

std::string SourceEntry::LeafOf(std::size_t piece) const { return LeafOfPage(Stem, piece); }

Address SourceEntry::AddressOf(std::int32_t line) const {
  std::string leaf = LeafOf(PieceOf(line));
  if (line > 0) leaf.append("#L").append(std::to_string(line));
  return {Folder, std::move(leaf)};
}

void SiteMap::AddSources(ProjectEntry& project) {
  if (!mOptions.Source) return;
  PageNames names{"index"};
  for (const ProjectFile& file : project.Project->ProjectFiles)
    if (file.SourceForm) AddSource(project, file.FileName, file.SourceForm->Text, names);
  if (project.Project->ProjectFiles.Count() > 0) return;
  for (const Component& component : project.Project->Components.Listed()) {
    if (!component.SourceForm) continue;
    SourceEntry& source = AddSource(project, component.FileName, component.SourceForm->Text, names);
    source.Module = &component;
    source.DesignerLines = LinesOfDesigner(source.Text);
  }
}

SourceEntry& SiteMap::AddSource(ProjectEntry& project, const FileSystemObject& file,
                                std::string_view text, PageNames& names) {
  SourceEntry& source = project.Sources.emplace_back();
  source.Path = PathIn(*project.Project, file);
  source.Text = text;
  source.Folder = project.Folder + "source/";
  source.Stem = names.Take(file.LeafName());
  source.Project = &project;
  CutIntoPieces(source);
  project.Lines += static_cast<std::size_t>(source.Lines);
  mSourceByPath.emplace(project.Folder + FoldKey(file.FullPath()), &source);
  return source;
}

Address SiteMap::SourceOf(const CodeElement& element) const {
  if (!mOptions.Source) return {};
  SourcePlace place = PlaceOf(element);
  if (!place.Component) return {};
  const ProjectEntry* project = ProjectOf(place.Component->VBProject());
  if (!project || project->Sources.empty()) return {};
  // The line of a classic module is that of the project file which lists it.
  if (!project->IsNet() && IsA<Component>(place.Declared)) place.Line = 0;
  const FileSystemObject& file = project->Project->ProjectFiles.Count() > 0 && place.Declared
                                     ? SourceFileOf(*place.Component, *place.Declared)
                                     : place.Component->FileName;
  const ModuleEntry* module = ModuleOf(place.Component);
  if (module && module->Source && &file == &place.Component->FileName)
    return module->Source->AddressOf(place.Line);
  const auto source = mSourceByPath.find(project->Folder + FoldKey(file.FullPath()));
  return source == mSourceByPath.end() ? Address{} : source->second->AddressOf(place.Line);
}

}  // namespace vendrel::site
