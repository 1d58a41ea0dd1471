#pragma once
// The load table: projects of growing size, and folders of real projects, from disk to tree.

#include <cstdint>
#include <string>
#include <vector>

namespace vendrel::bench {

struct LoadOptions {
  /// Sizes of generated projects, in lines. Empty, with no folder: 10 thousand to 1 million.
  std::vector<std::int64_t> Lines;
  /// Folders of real projects: every .vbp below one is loaded, all of them are kept.
  std::vector<std::string> Folders;
  /// Where generated projects are kept from one call to the next.
  std::string WorkFolder;
  int Runs = 5;
  bool Classic = false;
  /// The generated projects as VB.NET too.
  bool DotNet = false;
};

/// Measures and prints the table; 0, or 1 where nothing could be measured.
int RunLoad(const LoadOptions& options);

/// The project file of a generated project of that size below `workFolder`; written if it is not
/// there.
std::string GeneratedProject(const std::string& workFolder, std::int64_t lines);

/// The same procedures as a VB.NET project.
std::string GeneratedNetProject(const std::string& workFolder, std::int64_t lines);

}  // namespace vendrel::bench
