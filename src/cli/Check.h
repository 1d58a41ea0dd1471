#pragma once
// What `check` does: reads what the paths name, holds it against the rules, and settles what is
// told and how it ends.

#include <memory>
#include <set>
#include <string>
#include <tuple>
#include <unordered_map>
#include <vector>

#include "cli/CheckSettings.h"
#include "cli/FindingOutput.h"
#include "cli/Inputs.h"
#include "cli/ProjectCounts.h"
#include "cli/Report.h"
#include "survey/Baseline.h"
#include "survey/EstateRules.h"

namespace vendrel::cli {

struct CheckArguments {
  CommonOptions Common;
  Inputs Paths;
  FindingForm Form = FindingForm::Text;
  /// Each reference without a file, not their number alone.
  bool Verbose = false;
  std::vector<std::string> Rules;
  /// The file of known findings; empty: that of the settings, or none.
  std::string Baseline;
  bool WritesBaseline = false;
};

/// One run. What is told goes to one stream, each thing once: a module that many projects share is
/// read, but not told of, with each of them.
class Check {
 public:
  /// Raises a `ToolError` for settings or a baseline that cannot be read.
  Check(const CheckArguments& arguments, const Streams& streams);
  /// Reads everything, writes what is found and gives the exit code.
  int Run(std::ostream& out);
  /// The findings as a baseline, after the run; nothing if it was not to write one.
  void WriteBaseline() const;

 private:
  void ReadBaseline();
  void RefuseOtherThanBaseline() const;
  void CheckInput(const std::string& path);
  void CheckFolder(const std::string& path);
  void CheckModules(const std::string& folder);
  void CheckGroup(const std::string& path);
  void CheckProjects(std::vector<std::string> paths);
  void CheckProject(const std::string& path);
  void Take(const VBProject& project, std::vector<Finding>& findings);
  void TellWhereItMayBe(Finding& finding);
  void SumUpReferences();
  void Tell(const Diagnostics& diagnostics);
  void Tell(std::vector<Finding> findings, const std::string& first);
  void TellOnce(const Finding& finding);
  int ExitCode() const;

  const CheckArguments& mArguments;
  const Streams mStreams;
  CheckSettings mSettings;
  bool mIsStrict;
  std::string mBaselinePath;
  /// The folder of the baseline, from which it names files.
  std::string mBaselineRoot;
  Baseline mKnown, mNew;
  std::unique_ptr<FindingOutput> mOutput;
  EstateRules mEstate;
  /// Source files below the folders that are checked, by their names; empty for a name of several.
  std::unordered_map<std::string, std::string> mFilesByLeaf;
  ShownPaths mPaths;
  ProjectCounts mCounts;
  /// What was told fails, or tells that input was not read.
  bool mFails = false, mIsUnread = false;
  std::set<std::tuple<std::string, std::int32_t, const Rule*, std::string>> mTold;
};

}  // namespace vendrel::cli
