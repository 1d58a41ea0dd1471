#include "cli/UnusedRows.h"

#include <set>

#include "cli/CallDrawing.h"
#include "cli/Elements.h"
#include "core/CaseFold.h"
#include "project/VBProject.h"

namespace vendrel::cli {

void UnusedRows::AddFilesOf(const VBProject& project) {
  std::set<std::string> files;  // of VB.NET each with any number of types
  for (const Component& module : project.Components.Listed()) files.insert(FoldKey(FileOf(module)));
  for (const ProjectFile& file : project.ProjectFiles)
    files.insert(FoldKey(file.FileName.FullPath()));
  for (const std::string& file : files) ++mFiles[file];
}

void UnusedRows::Add(const UnusedFinding& finding, const VBProject& project) {
  UnusedRow row;
  row.Kind = finding.Kind;
  row.Reason = finding.Reason;
  row.How = finding.How;
  row.Doubt = finding.Doubt;
  if (finding.By) row.By = CallName(*finding.By);
  if (const auto* reference = As<Reference>(finding.Element)) {
    row.Name = project.ProjectName + "~" + reference->Name();
    row.WindowsPath = project.FileName.FullPath();
  } else {
    const SourcePlace place = vendrel::PlaceOf(*finding.Element);
    row.Name = CallName(*finding.Element);
    row.WindowsPath = FileOf(place);
    if (!IsA<Component>(finding.Element)) {  // a module is its whole file
      row.Line = place.Line;
      row.Column = mColumns.Of(place, finding.Element->ElementName());
    }
  }
  const std::string key = FoldKey(row.WindowsPath) + "|" + std::to_string(row.Line) + "|" +
                          row.Kind + "|" + row.Name.substr(row.Name.find('~') + 1);
  const auto place = mPlaces.try_emplace(key, mAll.size());
  if (place.second) mAll.push_back({std::move(row), 0});
  Kept& kept = mAll[place.first->second];
  ++kept.Projects;
  if (finding.How < kept.Row.How) {
    kept.Row.How = finding.How;
    kept.Row.Doubt = finding.Doubt;
  }
}

std::vector<const UnusedRow*> UnusedRows::Agreed() const {
  std::vector<const UnusedRow*> rows;
  for (const Kept& kept : mAll) {
    const auto listed = mFiles.find(FoldKey(kept.Row.WindowsPath));
    if (listed == mFiles.end() || kept.Projects >= listed->second) rows.push_back(&kept.Row);
  }
  return rows;
}

}  // namespace vendrel::cli
