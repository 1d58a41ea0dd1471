#include "writer/OutputNames.h"

#include "core/CaseFold.h"

namespace vendrel {

std::string ComponentOutputFileName(VBProject& project, Component& component) {
  if (project.SameLocation()) return component.FileName.FullPath();
  OutputNames names(project);
  for (Component& earlier : project.Components.Listed()) {
    if (&earlier == &component) break;
    names.Of(earlier);
  }
  return names.Of(component);
}

const std::string& OutputNames::Of(Component& component) {
  const auto known = mPaths.find(&component);
  if (known != mPaths.end()) return known->second;
  std::string path;
  if (mSameLocation) {
    path = component.FileName.FullPath();
  } else {
    GiveFreeName(component);
    path = mProject.OutputFileName.FolderPath() + component.FileName.LeafName();
  }
  mFoldedPaths.insert(FoldKey(path));
  return mPaths.emplace(&component, std::move(path)).first->second;
}

void OutputNames::GiveFreeName(Component& component) {
  FileSystemObject& file = component.FileName;
  const auto [found, isFirst] = mLeafNames.emplace(FoldKey(file.LeafName()), 2);
  if (isFirst) return;
  const std::string base = file.BaseName();
  mRenamed.emplace(&component, base);
  int& number = found->second;  // stays where it is while others are added
  do {
    file.SetBaseName(base + "_" + std::to_string(number++));
  } while (!mLeafNames.emplace(FoldKey(file.LeafName()), 2).second);
}

std::string OutputNames::BaseNameAsRead(const Component& component) const {
  const auto renamed = mRenamed.find(&component);
  return renamed == mRenamed.end() ? component.FileName.BaseName() : renamed->second;
}

bool OutputNames::IsOutput(std::string_view path) {
  for (Component& component : mProject.Components.Listed()) Of(component);
  return mFoldedPaths.contains(FoldKey(path));
}

}  // namespace vendrel
