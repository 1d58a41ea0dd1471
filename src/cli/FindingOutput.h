#pragma once
// The forms in which a check writes its findings.

#include <memory>
#include <ostream>
#include <string>

#include "cli/Options.h"
#include "cli/ProjectCounts.h"
#include "survey/Findings.h"

namespace vendrel::cli {

enum class FindingForm { Text, Json, Sarif, GitHub, Azure, GitLab };

/// Takes findings one after the other.
class FindingOutput {
 public:
  virtual ~FindingOutput() = default;
  virtual void Write(const Finding& finding, RuleLevel level) = 0;
  /// Writes what stands behind them all. `failed`: part of the input could not be read.
  virtual void End(const ProjectCounts& counts, bool failed) = 0;
};

std::unique_ptr<FindingOutput> MakeFindingOutput(FindingForm form, std::ostream& out,
                                                 const CommonOptions& options);

/// The folder of this machine from which paths are shown to programs other than ours: --root, else
/// the current one.
std::string RootForServers(const CommonOptions& options);

}  // namespace vendrel::cli
