#pragma once
// The rules that hold between projects.

#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "survey/Findings.h"

namespace vendrel {

/// Takes projects one after the other, each freed before the next one is read, and module files
/// that lie on the disk; then tells which of these no project lists, and which modules are equal.
class EstateRules {
 public:
  void Add(const VBProject& project);
  void AddFile(const FileSystemObject& file);
  /// In the order in which the modules were added, then by the paths of files.
  std::vector<Finding> Findings() const;

 private:
  /// Of a module that was read: its path, and what its text is known by.
  struct Text {
    std::string File;
    std::pair<std::size_t, std::size_t> HashAndSize;
  };
  std::vector<Text> mTexts;
  /// Folded paths of the modules that projects list, and whether their texts need not be looked at
  /// (any more).
  std::unordered_map<std::string, bool> mListed;
  /// Files on the disk, by folded path.
  std::map<std::string, std::string> mFiles;
};

}  // namespace vendrel
