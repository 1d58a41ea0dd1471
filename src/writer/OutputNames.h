#pragma once
// Where the modules of a project are written.

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "project/VBProject.h"

namespace vendrel {

/// Where a module is written: in place, or in the folder of `OutputFileName` under its leaf name. A
/// name that an earlier module of the project has is changed to one that is free, on the module's
/// own `FileName`.
std::string ComponentOutputFileName(VBProject& project, Component& component);

/// The same for all modules of a project, asked for in their order: each name is looked up, not
/// searched for.
class OutputNames {
 public:
  explicit OutputNames(VBProject& project)
      : mProject(project), mSameLocation(project.SameLocation()) {}

  /// Where the module is written; the name of a module asked for before is known.
  const std::string& Of(Component& component);
  /// Base name of the module's file before it was changed here.
  std::string BaseNameAsRead(const Component& component) const;
  /// Whether a module of the project is written to that path, case ignored.
  bool IsOutput(std::string_view path);

 private:
  void GiveFreeName(Component& component);

  VBProject& mProject;
  const bool mSameLocation;
  std::unordered_map<const Component*, std::string> mPaths;
  std::unordered_map<const Component*, std::string> mRenamed;
  /// Leaf names of the modules so far, folded, with the number that each may have next.
  std::unordered_map<std::string, int> mLeafNames;
  std::unordered_set<std::string> mFoldedPaths;
};

}  // namespace vendrel
