#include "cli/Check.h"

#include <algorithm>
#include <map>

#include "cli/Progress.h"
#include "cli/ProjectSets.h"
#include "cli/ProjectsAhead.h"
#include "cli/Report.h"
#include "cli/Results.h"
#include "cli/Session.h"
#include "cli/ShownText.h"
#include "core/CaseFold.h"
#include "model/Block.h"
#include "output/Dump.h"
#include "project/VBProjectGroup.h"
#include "services/FileSource.h"
#include "survey/ProjectRules.h"
#include "survey/UseRules.h"
#include "survey/Wording.h"

namespace vendrel::cli {

/// Tagged comments as they are read, to see at the end which found no element.
class CommentWatch {
 public:
  void Begin(VBProject& project) {
    // Apart, a comment has an element of its own, or none.
    project.PreserveOriginalTaggedComments = true;
    project.NewTaggedComment.Add([this](Block& block, TaggedComment&, const CodeLine&) {
      const Component* component = block.Component.Get();
      if (component) mRead.push_back({block.LastTaggedComment(), component->FileName.FullPath()});
    });
  }
  void ReportUnplaced() const {
    for (const auto& [comment, file] : mRead) {
      if (!comment || comment->CodeElement) continue;
      const std::string name = comment->Qualifier.empty() ? "" : " " + comment->Qualifier;
      ReportAt(DiagnosticCode::CommentUnplaced, file, comment->SourceLine,
               {comment->TagIdentifier + name});
    }
  }

 private:
  struct ReadComment {
    std::shared_ptr<TaggedComment> Comment;
    std::string File;
  };
  std::vector<ReadComment> mRead;
};

namespace {

// Told by this command alone: on this machine hardly any registered library has its file.
void ReportMissingReferences(const VBProject& project) {
  for (const Reference& reference : project.References)
    if (IsWithoutFile(reference))
      ReportAt(DiagnosticCode::MissingReference, project.FileName.FullPath(),
               reference.SourceLine(),
               {reference.FileName.FullPath().empty() ? reference.Name()
                                                      : reference.FileName.FullPath()});
}

}  // namespace

/// What is found in one project, on the thread that loads it.
class ProjectCheck final : public ProjectsAhead::Task {
 public:
  ProjectCheck(CheckSettings& settings, bool isVerbose)
      : mSettings(settings), mIsVerbose(isVerbose) {}

  // Whoever asks for descriptions takes an ordinary comment for one.
  void Prepare(VBProject& project) override {
    mComments.Begin(project);
    if (!mSettings.IsOnIn(project, *FindRule("undocumented"))) return;
    project.UnTaggedBlocks = project.UnTaggedEnumerations = project.UnTaggedEvents = true;
    project.UnTaggedUDTs = project.UnTaggedVariables = true;
  }

  void Run(VBProject& project) override {
    {
      const DiagnosticScope scope(&project.Diagnostics, project.FileName.FullPath());
      mComments.ReportUnplaced();
      if (mIsVerbose) ReportMissingReferences(project);
    }
    for (const Diagnostic& item : project.Diagnostics) Findings.push_back(FindingOf(item));
    const auto isOn = [&](const Rule& rule) { return mSettings.IsOnIn(project, rule); };
    FindInProject(project, isOn, Findings);
    FindByUses(project, isOn, Findings);
    ProjectSources sources(project);
    for (Finding& finding : Findings) sources.Complete(finding);
  }

  std::vector<Finding> Findings;

 private:
  CheckSettings& mSettings;
  const bool mIsVerbose;
  CommentWatch mComments;
};

Check::Check(const CheckArguments& arguments, const Streams& streams)
    : mArguments(arguments), mStreams(arguments.Paths.For(streams)), mSettings(arguments.Rules) {
  const CheckSettings::ForRun run = mSettings.AtPath(arguments.Paths.Paths.front());
  mIsStrict = arguments.Common.Strict || run.Strict;
  mBaselinePath = arguments.Baseline.empty()
                      ? run.Baseline
                      : FileSystemObject(AbsolutePath(arguments.Baseline)).NativePath();
  mBaselineRoot = mBaselinePath.substr(0, mBaselinePath.find_last_of('/'));
  if (arguments.WritesBaseline && mBaselinePath.empty())
    throw ToolError(exUsage, std::string("--write-baseline: no file is named; say --baseline FILE, "
                                         "or set check.baseline in ") +
                                 kSettingsFile);
  if (arguments.WritesBaseline)
    RefuseOtherThanBaseline();
  else if (!mBaselinePath.empty())
    ReadBaseline();
}

// A source that was named by mistake must not be written over.
void Check::RefuseOtherThanBaseline() const {
  if (!FileSystemObject(mBaselinePath).Exists()) return;
  try {
    Baseline().Read(ReadWholeFile(mBaselinePath));
  } catch (const VendrelError&) {
    throw ToolError(exUsage, "--write-baseline: " + mBaselinePath +
                                 " is there, and is no baseline; name another file, or delete it");
  }
}

void Check::ReadBaseline() try {
  mKnown.Read(ReadWholeFile(mBaselinePath));
} catch (const VendrelError& error) {
  throw ToolError(exFailed, "--baseline: " + mBaselinePath + ": " + ReasonOf(error, mBaselinePath) +
                                "; --write-baseline makes a new one");
}

void Check::WriteBaseline() const {
  if (!mArguments.WritesBaseline) return;
  CommonOptions options = mArguments.Common;
  options.Output = mBaselinePath;
  WriteResult(options, mStreams, mArguments.Paths, [&](std::ostream& out) { mNew.Write(out); });
  mStreams.Err << CountedWith(static_cast<std::size_t>(mNew.Count()), "finding") << " written to "
               << Shown(mBaselinePath) << '\n';
}

int Check::Run(std::ostream& out) {
  mOutput = MakeFindingOutput(mArguments.Form, out, mArguments.Common);
  const int code =
      ForEachInput(mArguments.Paths, mArguments.Common, mStreams, [&](const std::string& path) {
        CheckInput(path);
        return exDone;
      });
  Tell(mEstate.Findings(), {});
  SumUpReferences();
  mOutput->End(mCounts, mIsUnread || code == exFailed);
  return Worse(code, ExitCode());
}

int Check::ExitCode() const {
  if (mIsUnread) return exFailed;
  if (mFails) return exNo;
  return mIsStrict && mCounts.Warnings > 0 ? exWarnings : exDone;
}

// Of several paths one that cannot be read counts as a project that cannot.
void Check::CheckInput(const std::string& path) try {
  switch (KindOfInput(path)) {
    case InputKind::Folder: return CheckFolder(path);
    case InputKind::Group: return CheckGroup(path);
    default: return CheckProject(path);
  }
} catch (const ToolError& error) {
  if (mArguments.Paths.AreSeveral() && error.Code() == exFailed) ++mCounts.Unread;
  throw;
}

void Check::CheckFolder(const std::string& path) {
  Diagnostics told;
  const KeptFolders folders;
  const auto files = ProjectFilesBelow(path, told);
  if (files.empty() && told.Count() == 0) return CheckModules(path);
  Tell(told);
  if (files.empty()) return;
  for (const FileSystemObject& file : SourceFilesBelow(path)) {
    mEstate.AddFile(file);
    const auto [leaf, isNew] = mFilesByLeaf.try_emplace(FoldKey(file.LeafName()), file.FullPath());
    if (!isNew) leaf->second.clear();
  }
  std::vector<std::string> paths;
  for (const FileSystemObject& file : files) paths.push_back(file.FullPath());
  CheckProjects(std::move(paths));
}

void Check::CheckProjects(std::vector<std::string> paths) {
  ProgressOfMany progress(paths.size(), mArguments.Common, mStreams);
  ProjectsAhead projects(std::move(paths), mArguments.Common, mStreams, [this] {
    return std::make_unique<ProjectCheck>(mSettings, mArguments.Verbose);
  });
  while (true) {
    progress.Step();
    Diagnostics told;
    const auto turn = projects.Next(told);
    progress.Clear();
    if (!turn) return;
    if (turn->Project && turn->IsAside) progress.Add(*turn->Project);
    if (turn->Project)
      Take(*turn->Project, static_cast<ProjectCheck&>(*turn->Done).Findings);
    else
      ++mCounts.Unread;
    Tell(told);
  }
}

// The members each as it would be alone; those that the group names in vain are
// told at its line.
void Check::CheckGroup(const std::string& path) {
  const auto group = LoadGroup(path, mArguments.Common, mStreams, LoadDepth::ProjectFile);
  mCounts.Unread += group->Diagnostics.CountOf(DiagnosticCode::MissingProject) +
                    group->Diagnostics.CountOf(DiagnosticCode::UnreadProject) +
                    group->Diagnostics.CountOf(DiagnosticCode::UnreadableFile);
  Tell(group->Diagnostics);
  std::vector<std::string> paths;
  for (const VBProject& member : group->AllVBProjects())
    paths.push_back(member.FileName.FullPath());
  CheckProjects(std::move(paths));
}

void Check::CheckProject(const std::string& path) {
  ProjectCheck check(mSettings, mArguments.Verbose);
  const auto project = LoadInput(path, mArguments.Common, mStreams, LoadDepth::Modules,
                                 [&](VBProject& one) { check.Prepare(one); });
  check.Run(*project);
  Take(*project, check.Findings);
}

// A folder without project files is one project of its modules.
void Check::CheckModules(const std::string& folder) {
  ProjectCheck check(mSettings, mArguments.Verbose);
  const auto project = LoadFolderOfModules(folder, mArguments.Common, mStreams, LoadDepth::Modules,
                                           [&](VBProject& one) { check.Prepare(one); });
  check.Run(*project);
  Take(*project, check.Findings);
}

void Check::Take(const VBProject& project, std::vector<Finding>& findings) {
  for (Finding& finding : findings) TellWhereItMayBe(finding);
  Tell(std::move(findings), project.FileName.FullPath());
  mCounts.Add(project);
  mEstate.Add(project);
}

// A module that is missing has often been moved.
void Check::TellWhereItMayBe(Finding& finding) {
  if (finding.Rule->Id != CodeName(DiagnosticCode::MissingModule)) return;
  const auto file = mFilesByLeaf.find(FoldKey(FileSystemObject(finding.Path).LeafName()));
  if (file != mFilesByLeaf.end() && !file->second.empty())
    finding.Text += "; " + mPaths.Of(file->second) + " bears that name";
}

void Check::SumUpReferences() {
  const std::size_t count = mCounts.ReferencesWithoutFile;
  if (count == 0 || mArguments.Verbose) return;
  Diagnostics told;
  const DiagnosticScope scope(&told, {});
  Report(DiagnosticCode::MissingReferences,
         {count == 1 ? "1 reference names a file that is"
                     : std::to_string(count) + " references name files that are"});
  Tell(told);
}

void Check::Tell(const Diagnostics& diagnostics) {
  std::vector<Finding> findings;
  for (const Diagnostic& item : diagnostics) findings.push_back(FindingOf(item));
  Tell(std::move(findings), {});
}

// File by file, `first` before the others, and line by line.
void Check::Tell(std::vector<Finding> findings, const std::string& first) {
  std::map<std::string, std::size_t> places{{first, 0}};
  for (const Finding& finding : findings) places.try_emplace(finding.File, places.size());
  std::stable_sort(findings.begin(), findings.end(), [&](const Finding& a, const Finding& b) {
    return std::pair(places[a.File], a.Line) < std::pair(places[b.File], b.Line);
  });
  for (const Finding& finding : findings) TellOnce(finding);
}

void Check::TellOnce(const Finding& finding) {
  if (!mTold.emplace(FoldKey(finding.File), finding.Line, finding.Rule, finding.Text).second)
    return;
  const CheckSettings::LevelOfRule level = mSettings.LevelOf(*finding.Rule, finding.File);
  if (level.Level == RuleLevel::Off) return;
  if (!mBaselinePath.empty()) {
    const std::string file =
        finding.File.empty() ? std::string() : ShownFile(finding.File, mBaselineRoot);
    if (mArguments.WritesBaseline) mNew.Add(finding, file);
    if (mArguments.WritesBaseline || mKnown.Take(finding, file)) {
      ++mCounts.Known;
      return;
    }
  }
  // A level that somebody set says how much it matters.
  const bool isError = level.Level == RuleLevel::Error;
  const bool counts = isError || !level.IsSet;
  if (counts && finding.Rule->Weight == RuleWeight::Unread)
    mIsUnread = true;
  else if (isError || (counts && finding.Rule->Weight == RuleWeight::Incomplete))
    mFails = true;
  ++(isError                             ? mCounts.Errors
     : level.Level == RuleLevel::Warning ? mCounts.Warnings
                                         : mCounts.Notes);
  mOutput->Write(finding, level.Level);
}

}  // namespace vendrel::cli
