#pragma once
// Files that are written without being written: everything that is made, changed or deleted stays
// in memory, and what is read is what would then be there.

#include <map>
#include <memory>
#include <set>
#include <string>

#include "services/FileSource.h"

namespace vendrel::cli {

/// While the object lives, nothing that the library writes reaches the disk.
class PretendedFiles {
 public:
  PretendedFiles();
  ~PretendedFiles();
  PretendedFiles(const PretendedFiles&) = delete;
  PretendedFiles& operator=(const PretendedFiles&) = delete;

  /// Native paths and bytes of the files that would have been written.
  const std::map<std::string, std::string>& Written() const;

 private:
  class Source;
  std::shared_ptr<Source> mSource;
  std::shared_ptr<FileSource> mUnder;
};

}  // namespace vendrel::cli
