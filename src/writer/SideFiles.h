#pragma once
// The files beside a module that belong to it, such as the binary companion of a form.

#include <map>
#include <string>
#include <unordered_set>
#include <vector>

#include "writer/OutputNames.h"

namespace vendrel {

/// Takes the side files of modules along to another folder.
class SideFiles {
 public:
  SideFiles(VBProject& project, OutputNames& names);

  /// Copies every file that shares the module's base name, but for those of its own extension,
  /// project and group files, and files that the project reads or writes otherwise. A copy that
  /// fails is told only as a diagnostic.
  void Copy(Component& component, const std::string& folder);
  /// Whether a path is the project file's or a module's, case ignored.
  bool IsOtherFile(std::string_view path) const;

 private:
  using Listing = std::map<std::string, FileSystemObject>;
  const Listing& ListingOf(const std::string& folder);
  void CopyOne(const FileSystemObject& file, const std::string& target);

  OutputNames& mNames;
  std::unordered_set<std::string> mOtherFiles;
  /// Files of each folder that was looked into, by folded leaf name.
  std::map<std::string, Listing> mListings;
  /// Where each file of the target folder came from, by folded path.
  std::map<std::string, std::string> mCopied;
};

/// Copies a file that goes with a project. A failure is told as a diagnostic.
void CopyOrTell(const std::string& source, const std::string& target);

}  // namespace vendrel
