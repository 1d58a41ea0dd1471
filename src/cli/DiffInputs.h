#pragma once
// Two inputs of one kind, read and handed on in pairs of what belongs together.

#include <string>

#include "cli/Options.h"
#include "output/Difference.h"
#include "project/VBProjectGroup.h"

namespace vendrel::cli {

/// Who compares what was paired.
class DiffTarget {
 public:
  virtual void Projects(VBProject& before, VBProject& after) = 0;
  virtual void Groups(VBProjectGroup& before, VBProjectGroup& after) = 0;
  /// A project file that is below one of two folders only.
  virtual void Alone(ChangeKind kind, const std::string& path) = 0;

 protected:
  ~DiffTarget() = default;
};

/// Reads both and hands them to `target`: two projects or modules, two groups, or two folders,
/// whose projects are paired by their paths and read two at a time. Two folders without project
/// files are two projects of their modules. Tells the diagnostics of both sides and gives the worse
/// exit code. Raises a `ToolError` for two kinds, and where one cannot be read.
int CompareInputs(const std::string& before, const std::string& after, const CommonOptions& common,
                  const Streams& streams, DiffTarget& target);

}  // namespace vendrel::cli
