#pragma once
// Projects, groups and modules written back, and what is asked and told about it.

#include <set>
#include <string>
#include <vector>

#include "cli/Options.h"
#include "cli/Report.h"
#include "cli/WritePlan.h"
#include "project/VBProjectGroup.h"

namespace vendrel::cli {

/// What the command line asked for.
struct WriteArguments {
  CommonOptions Common;
  std::string File;
  std::string To;
  std::string LineNumbers;
  bool InPlace = false;
  bool OnlyProjectFile = false;
  bool PerModule = false;
  bool ResolveConditionals = false;
  bool HelpDescriptions = false;
  bool DryRun = false;
  bool Yes = false;
};

/// Writes a project to where its `OutputFileName` says, or the one module of a project that is
/// none. A `ToolError` says what had been written before it failed. Elsewhere no source is written
/// over; in place none that lies among the backups.
void WriteOutOrTell(VBProject& project, bool onlyProjectFile = false);

/// Whether the one who is asked says yes.
bool Agrees(const Streams& streams, const std::string& question);

/// Writes each project and tells what it wrote.
class Writer {
 public:
  Writer(const WriteArguments& arguments, const Streams& streams, std::ostream& out)
      : mArguments(arguments), mStreams(streams), mOut(out) {}

  /// One project. Where it is one of several a failure is told, and the next one may follow.
  void Write(VBProject& project, bool isOneOfSeveral);
  /// All members of a group, and where they are copied, its file. Nothing is written before all
  /// that would be written over is known.
  void Write(VBProjectGroup& group);
  /// Says how many of several failed; false if any did, or if something was refused.
  bool Finish();

 private:
  struct Counts {
    std::size_t Written = 0, Changed = 0;
  };
  void Place(VBProject& project, bool isOneOfSeveral);
  void Prepare(VBProject& project, bool isOneOfSeveral);
  void LookBefore(VBProject& project);
  void AskOver();
  void WritePlaced(VBProject& project, bool isOneOfSeveral);
  void WriteOut(VBProject& project);
  void Pretend(VBProject& project);
  void WriteFileOf(const VBProjectGroup& group, const std::vector<VBProject*>& placed);
  void Show(const std::vector<PlannedFile>& plan);
  void ShowOne(const PlannedFile& file, Counts& counts);
  template <typename Step>
  bool Attempt(const std::string& path, bool isOneOfSeveral, Step step);

  const WriteArguments& mArguments;
  const Streams& mStreams;
  std::ostream& mOut;
  ShownPaths mPaths;
  std::set<std::string> mFoldersTaken;
  /// Projects whose folder has a number behind its name.
  std::set<const VBProject*> mNumbered;
  /// What stands in the target, holds other bytes and would be written over.
  std::vector<std::string> mOver;
  bool mAgreed = false;
  std::size_t mProjects = 0;
  std::vector<std::string> mFailed;
};

}  // namespace vendrel::cli
