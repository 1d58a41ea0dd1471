#include "cli/Writer.h"

#include <cerrno>
#include <map>

#include "cli/Results.h"
#include "cli/Session.h"
#include "cli/ShownText.h"
#include "cli/UnifiedDiff.h"
#include "cli/WatchedFiles.h"
#include "cli/WrittenFiles.h"
#include "core/CaseFold.h"
#include "core/Workspace.h"
#include "services/FileSource.h"
#include "writer/GroupFile.h"

namespace vendrel::cli {
namespace {

constexpr std::size_t kMostNamed = 3;

std::size_t RefusalsIn(const VBProject& project) {
  return project.Diagnostics.CountOf(DiagnosticCode::WriteRefused) +
         project.Diagnostics.CountOf(DiagnosticCode::CharactersNotHeld);
}

bool IsEmptyOrMissing(const std::string& folder) {
  std::vector<FolderEntry> entries;
  const int result = FileSource::Current().List(folder, entries);
  return result == -ENOENT || (result >= 0 && entries.empty());
}

bool IsOneModule(const VBProject& project) {
  return project.ProjectSourceAccess != psaReadWrite &&
         project.ProjectSourceType == ptsVisualBasicFiles && project.Components.Count() == 1;
}

}  // namespace

// Several projects go into a folder each, named after the project file.
void Writer::Place(VBProject& project, bool isOneOfSeveral) {
  const bool isModule = IsOneModule(project);
  if (project.ProjectSourceAccess != psaReadWrite && !isModule)
    throw ToolError(isOneOfSeveral ? exFailed : exUsage,
                    project.FileName.NativePath() +
                        ": only a project (.vbp), a group, a folder or a module can be written");
  if (isModule && mArguments.OnlyProjectFile)
    throw ToolError(exUsage, "--only-project-file: '" + mArguments.File + "' is a module alone");
  if (mArguments.InPlace) return project.OutputFileName.SetFullPath(project.FileName.FullPath());
  FileSystemObject folder;
  folder.SetFolderPath(AbsolutePath(mArguments.To));
  std::string path = folder.FolderPath();
  if (isOneOfSeveral) {
    const std::string base = path + project.FileName.BaseName();
    path = base;
    for (int number = 2; !mFoldersTaken.insert(FoldKey(path)).second; ++number)
      path = base + "_" + std::to_string(number);
    if (path != base)
      mNumbered.insert(&project);
    else
      mNumbered.erase(&project);  // the place of one that is gone
  }
  project.OutputFileName.SetFolderPath(path);
  if (isModule)
    project.OutputFileName.SetFullPath(project.OutputFileName.FolderPath() +
                                       project.FileName.LeafName());
  if (project.SameLocation())
    throw ToolError(exUsage, "--to: that is the folder of '" + project.FileName.NativePath() +
                                 "' itself; say --in-place");
}

void Writer::Prepare(VBProject& project, bool isOneOfSeveral) {
  Place(project, isOneOfSeveral);
  if (!mArguments.LineNumbers.empty())
    project.Tags["fvbOutputLineNumbers"] = mArguments.LineNumbers;
  project.LineNumberPerModule = mArguments.PerModule;
  if (mArguments.HelpDescriptions) project.WriteHelpDescriptions = true;
}

// Gathers what `--to` would write over. What is told on the way is told again by writing.
void Writer::LookBefore(VBProject& project) {
  const FileSystemObject any(project.OutputFileName.FolderPath() + "x");
  const std::string native = any.NativePath();
  if (mArguments.InPlace || mArguments.DryRun ||
      IsEmptyOrMissing(native.substr(0, native.rfind('/'))))
    return;
  const Diagnostics told = project.Diagnostics;
  const std::vector<PlannedFile> plan =
      PlanOf(project, [&] { WriteOutOrTell(project, mArguments.OnlyProjectFile); });
  project.Diagnostics = told;
  for (std::string& path : WrittenOver(plan)) mOver.push_back(std::move(path));
}

void Writer::AskOver() {
  if (!mOver.empty() && !mArguments.Yes && !mAgreed) {
    std::string files = std::to_string(mOver.size()) +
                        (mOver.size() == 1 ? " file there holds" : " files there hold") +
                        " other bytes than would be written: ";
    for (std::size_t i = 0; i < mOver.size() && i < kMostNamed; ++i)
      files += (i ? ", " : "") + mOver[i];
    if (mOver.size() > kMostNamed) files += ", ...";
    if (!mStreams.Answers)
      throw ToolError(exUsage, "--to: " + files +
                                   "; say --yes to write over them, look with --dry-run, or name " +
                                   "another folder; " + DoneSince(0));
    if (!Agrees(mStreams, files + ". Write over them?")) throw ToolError(exNo, DoneSince(0));
    mAgreed = true;
  }
  mOver.clear();
}

// A failure of one of several is told at once; what concerns the run goes on its way.
template <typename Step>
bool Writer::Attempt(const std::string& path, bool isOneOfSeveral, Step step) {
  std::string text;
  try {
    step();
    return true;
  } catch (const ToolError& error) {
    if (!isOneOfSeveral || error.Code() != exFailed) throw;
    text = error.what();
  } catch (const VendrelError& error) {
    if (!isOneOfSeveral) throw;
    text = path + ": cannot be written: " + ReasonOf(error, path);
  }
  mFailed.push_back(path);
  ReportFailure(mStreams.Err, text, exFailed, mArguments.Common.DiagnosticsAsJson());
  return false;
}

void Writer::Write(VBProject& project, bool isOneOfSeveral) {
  const std::string path = project.FileName.NativePath();
  if (isOneOfSeveral && IsBackupPath(path)) {
    mOut << Shown(mPaths.Of(project.FileName.FullPath())) << ": a backup, not written\n";
    return;
  }
  ++mProjects;
  const std::int32_t number = State().CurrentLineNumber;
  const auto place = [&] {
    Prepare(project, isOneOfSeveral);
    LookBefore(project);
  };
  if (!Attempt(path, isOneOfSeveral, place)) return;
  State().CurrentLineNumber = number;
  AskOver();
  WritePlaced(project, isOneOfSeveral);
}

void Writer::WritePlaced(VBProject& project, bool isOneOfSeveral) {
  RefuseSourceAsResult(mArguments.Common);
  const std::string path = project.FileName.NativePath();
  const std::size_t before = RefusalsIn(project);
  const auto write = [&] {
    if (mArguments.DryRun)
      Pretend(project);
    else
      WriteOut(project);
  };
  if (Attempt(path, isOneOfSeveral, write) && RefusalsIn(project) > before) mFailed.push_back(path);
}

void Writer::Write(VBProjectGroup& group) {
  std::vector<VBProject*> placed;
  const std::int32_t number = State().CurrentLineNumber;  // looked at, numbers run on as written
  for (VBProject& project : group.AllVBProjects()) {
    ++mProjects;
    const auto place = [&] {
      Prepare(project, true);
      LookBefore(project);
    };
    if (Attempt(project.FileName.NativePath(), true, place)) placed.push_back(&project);
  }
  const std::string file = group.FileName().NativePath();
  const auto look = [&] {
    if (mArguments.DryRun) return;
    const auto plan = PlanOf(file, [&] { WriteFileOf(group, placed); });
    for (std::string& path : WrittenOver(plan)) mOver.push_back(std::move(path));
  };
  const bool writesFile = !mArguments.InPlace && Attempt(file, true, look);
  State().CurrentLineNumber = number;
  AskOver();
  for (VBProject* project : placed) WritePlaced(*project, true);
  const auto write = [&] {
    if (mArguments.DryRun) return Show(PlanOf(file, [&] { WriteFileOf(group, placed); }));
    const WatchedFiles::Protection protection;
    WriteFileOf(group, placed);
    mOut << Shown(mPaths.Of(AbsolutePath(mArguments.To) + "/" + group.FileName().LeafName()))
         << ": group file written\n";
  };
  if (writesFile) Attempt(file, true, write);
}

// The line of a member that has no place in the copy stays as it is: nothing leads to a source.
void Writer::WriteFileOf(const VBProjectGroup& group, const std::vector<VBProject*>& placed) {
  std::map<std::string, std::string> targets;
  for (const VBProject* project : placed)
    targets.emplace(FoldKey(project->FileName.FullPath()),
                    project->OutputFileName.FolderPath() + project->FileName.LeafName());
  FileSystemObject target;
  target.SetFolderPath(AbsolutePath(mArguments.To));
  target.SetFullPath(target.FolderPath() + group.FileName().LeafName());
  target.CreateFolderPath();
  WriteGroupFile(group, target.FullPath(), [&](const std::string& member) {
    const auto found = targets.find(FoldKey(member));
    return found == targets.end() ? std::string() : found->second;
  });
}

void Writer::WriteOut(VBProject& project) {
  const std::size_t mark = WrittenSoFar();
  WriteOutOrTell(project, mArguments.OnlyProjectFile);
  mOut << Shown(mPaths.Of(project.OutputFileName.FullPath())) << ": " << WrittenOf(project, mark);
  if (mNumbered.contains(&project))  // its name alone does not tell which one it is
    mOut << ", from " << Shown(mPaths.Of(project.FileName.FullPath()));
  mOut << '\n';
}

void Writer::Pretend(VBProject& project) {
  const std::vector<PlannedFile> plan =
      PlanOf(project, [&] { WriteOutOrTell(project, mArguments.OnlyProjectFile); });
  if (!mArguments.InPlace) WrittenOver(plan);  // refuses sources
  Show(plan);
}

void Writer::Show(const std::vector<PlannedFile>& plan) {
  Counts counts;
  for (const PlannedFile& file : plan) ShowOne(file, counts);
  mOut << CountedWith(counts.Written, "file") << " would be written, " << counts.Changed
       << " of them changed\n";
}

// Against what is there, or where nothing is, against the file that it is made from.
void Writer::ShowOne(const PlannedFile& file, Counts& counts) {
  const bool isThere = IsThere(file.Path), isCopy = file.Origin.empty();
  if (isCopy && (!isThere || mArguments.InPlace)) {
    mOut << "copy " << Shown(mPaths.Of(file.Path)) << '\n';
    return;
  }
  ++counts.Written;
  const std::string& against = isThere ? file.Path : file.Origin;
  const std::string before = BytesAt(against);
  const bool isSame = before == file.Bytes;
  mOut << (!isThere ? "new "
           : isSame ? "same "
                    : "changed ")
       << Shown(mPaths.Of(file.Path)) << '\n';
  if (isSame) return;
  ++counts.Changed;
  if (isCopy) return;
  const CodePage& page = FileOptions::Current().Page();
  WriteUnifiedDiff(mOut, Shown(mPaths.Of(against)), SourceText::Decode(before, page)->Text,
                   Shown(mPaths.Of(file.Path)), SourceText::Decode(file.Bytes, page)->Text);
}

bool Writer::Finish() {
  if (mFailed.empty()) return true;
  if (mProjects > 1) {
    std::string text = "not written, or not whole: " + std::to_string(mFailed.size()) + " of " +
                       std::to_string(mProjects) + " projects:";
    for (const std::string& path : mFailed) text.append(" ").append(path);
    ReportFailure(mStreams.Err, text, exFailed, mArguments.Common.DiagnosticsAsJson());
  }
  return false;
}

}  // namespace vendrel::cli
