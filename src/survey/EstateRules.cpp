#include "survey/EstateRules.h"

#include <functional>

#include "core/CaseFold.h"
#include "services/SourceText.h"

namespace vendrel {

// A module that a project lists in vain is listed too: it may be found under another case.
void EstateRules::Add(const VBProject& project) {
  for (const Component& component : project.Components.Listed())
    mListed.try_emplace(FoldKey(component.FileName.FullPath()), false);
  // Files of VB.NET without types are mostly made by a wizard.
  for (const ProjectFile& file : project.ProjectFiles)
    mListed.try_emplace(FoldKey(file.FileName.FullPath()), file.Components.Count() == 0);
  ForEachSource(project, [&](const std::string& file, const SourceText& text, const Component*) {
    if (file == project.FileName.FullPath()) return;
    bool& isKnown = mListed[FoldKey(file)];
    if (std::exchange(isKnown, true) || text.Text.empty()) return;
    mTexts.push_back({file, {std::hash<std::string>()(text.Text), text.Text.size()}});
  });
}

void EstateRules::AddFile(const FileSystemObject& file) {
  mFiles.emplace(FoldKey(file.FullPath()), file.FullPath());
}

std::vector<Finding> EstateRules::Findings() const {
  static constexpr std::string_view duplicate = "duplicate-module", unlisted = "unlisted-module";
  std::vector<Finding> found;
  std::map<std::pair<std::size_t, std::size_t>, const std::string*> first;
  for (const Text& text : mTexts) {
    const auto [known, isNew] = first.try_emplace(text.HashAndSize, &text.File);
    if (isNew) continue;
    const std::string& other = *known->second;
    found.push_back(
        {FindRule(duplicate), text.File, 0, 0, "holds the same text as " + other, other, {}});
  }
  for (const auto& [key, file] : mFiles)
    if (!mListed.contains(key))
      found.push_back({FindRule(unlisted), file, 0, 0, "no project lists this module", {}, {}});
  return found;
}

}  // namespace vendrel
