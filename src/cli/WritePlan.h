#pragma once
// What a write would put in place, found out by writing into memory.

#include <functional>
#include <string>
#include <vector>

#include "project/VBProject.h"

namespace vendrel::cli {

/// One file that would be put in place.
struct PlannedFile {
  /// Native, as its writer names it: links are not followed.
  std::string Path;
  std::string Bytes;
  /// The file that it is made from; empty for copies.
  std::string Origin;
};

/// Runs `write`, which writes files of that project; nothing reaches the disk, and the names that
/// writing gives out are as before. Line numbers have run on.
std::vector<PlannedFile> PlanOf(VBProject& project, const std::function<void()>& write);
/// The same for a file that is made from `origin` alone.
std::vector<PlannedFile> PlanOf(const std::string& origin, const std::function<void()>& write);

/// The bytes that stand at a path, which does not make it a source; empty if none can be read.
std::string BytesAt(const std::string& nativePath);
bool IsThere(const std::string& nativePath);

/// Files that would be written over and hold other bytes. Raises a `ToolError` for one that was
/// read for the result: `--to` never writes over a source.
std::vector<std::string> WrittenOver(const std::vector<PlannedFile>& plan);

}  // namespace vendrel::cli
