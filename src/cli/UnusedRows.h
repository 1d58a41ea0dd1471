#pragma once
// What is unused in one project after the other, kept as text, since each project is freed before
// the next is read. What stands in a file that several of them list is unused if all of them agree.

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "cli/Options.h"
#include "output/Places.h"
#include "uses/Unused.h"

namespace vendrel::cli {

/// One finding as it is shown.
struct UnusedRow {
  std::string Name, Kind, By;
  UnusedReason Reason = UnusedReason::NeverUsed;
  Sureness How = Sureness::Certain;
  std::string Doubt;
  std::string WindowsPath;
  std::int32_t Line = 0;
  std::int32_t Column = 0;
};

class UnusedRows {
 public:
  /// Before the findings of a project: it lists these files.
  void AddFilesOf(const VBProject& project);
  void Add(const UnusedFinding& finding, const VBProject& project);

  /// Those in which all projects agree that list the file, in the order in which they were added.
  std::vector<const UnusedRow*> Agreed() const;

 private:
  struct Kept {
    UnusedRow Row;
    int Projects = 0;
  };
  std::map<std::string, int> mFiles;           // by folded path: how many projects list it
  std::map<std::string, std::size_t> mPlaces;  // of a finding among all
  std::vector<Kept> mAll;
  SourceColumns mColumns;
};

}  // namespace vendrel::cli
