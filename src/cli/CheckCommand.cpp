#include <algorithm>
#include <map>
#include <memory>
#include <set>
#include <tuple>

#include "cli/Commands.h"
#include "cli/Inputs.h"
#include "cli/JsonLines.h"
#include "cli/Progress.h"
#include "cli/ProjectCounts.h"
#include "cli/ProjectSets.h"
#include "cli/Report.h"
#include "cli/Results.h"
#include "cli/Session.h"
#include "cli/ShownText.h"
#include "model/Block.h"
#include "project/VBProjectGroup.h"

namespace vendrel::cli {
namespace {

struct CheckArguments {
  CommonOptions Common;
  Inputs Paths;
  bool Json = false;
  bool Verbose = false;

  bool AsJson() const { return Json || Common.DiagnosticsAsJson(); }
};

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

/// The check of one path: what is told goes to one stream, each thing once.
class Check {
 public:
  Check(const CheckArguments& arguments, const Streams& streams, std::ostream& out)
      : mArguments(arguments), mStreams(streams), mOut(out) {}

  ProjectCounts Run();

 private:
  void CheckInput(const std::string& path);
  void CheckFolder(const std::string& path);
  void CheckModules(const std::string& folder);
  void CheckGroup(const std::string& path);
  void CheckLoaded(VBProject& project, const CommentWatch& comments);
  void CheckProject(const std::string& path, Diagnostics* told);
  void ReportMissingReferences(const VBProject& project) const;
  void SumUpReferences();
  void Write(const Diagnostics& diagnostics, const std::string& first);
  void WriteOnce(const Diagnostic& item);

  const CheckArguments& mArguments;
  const Streams& mStreams;
  std::ostream& mOut;
  ShownPaths mPaths;
  ProjectCounts mCounts;
  // A module that many projects share is read, but not told of, with each of them.
  std::set<std::tuple<std::string, std::int32_t, DiagnosticCode, std::string>> mWritten;
};

ProjectCounts Check::Run() {
  const JsonLines list(mOut, "check", mArguments.Common, mArguments.AsJson());
  ForEachInput(mArguments.Paths, mArguments.Common, mStreams, [&](const std::string& path) {
    CheckInput(path);
    return exDone;
  });
  SumUpReferences();
  mCounts.Write(mOut, mArguments.AsJson());
  return mCounts;
}

// Of several paths one that cannot be read counts as a project that cannot.
void Check::CheckInput(const std::string& path) try {
  switch (KindOfInput(path)) {
    case InputKind::Folder: return CheckFolder(path);
    case InputKind::Group: return CheckGroup(path);
    default: return CheckProject(path, nullptr);
  }
} catch (const ToolError& error) {
  if (mArguments.Paths.AreSeveral() && error.Code() == exFailed) ++mCounts.Unread;
  throw;
}

void Check::CheckFolder(const std::string& path) {
  Diagnostics told;
  const auto files = ProjectFilesBelow(path, told);
  if (files.empty() && told.Count() == 0) return CheckModules(path);
  mCounts.UnreadFolders += told.Count();
  Write(told, {});
  ProgressOfMany progress(files.size());
  for (const FileSystemObject& file : files) {
    progress.Step();
    told.Clear();
    CheckProject(file.FullPath(), &told);
    Write(told, {});
  }
}

// The members one after the other, as they would be alone; those that the group names in vain are
// told at its line.
void Check::CheckGroup(const std::string& path) {
  const auto group = LoadGroup(path, mArguments.Common, mStreams, LoadDepth::ProjectFile);
  mCounts.Unread += group->Diagnostics.CountOf(DiagnosticCode::MissingProject) +
                    group->Diagnostics.CountOf(DiagnosticCode::UnreadProject);
  Write(group->Diagnostics, {});
  Diagnostics told;
  for (const VBProject& member : group->AllVBProjects()) {
    told.Clear();
    CheckProject(member.FileName.FullPath(), &told);
    Write(told, {});
  }
}

// With a list to tell it to, a project that cannot be read does not end the check.
void Check::CheckProject(const std::string& path, Diagnostics* told) {
  CommentWatch comments;
  const auto begin = [&](VBProject& project) { comments.Begin(project); };
  const auto project =
      told ? LoadOneOf(path, mArguments.Common, mStreams, *told, LoadDepth::Modules, begin)
           : LoadInput(path, mArguments.Common, mStreams, LoadDepth::Modules, begin);
  if (project)
    CheckLoaded(*project, comments);
  else
    ++mCounts.Unread;
}

// A folder without project files is one project of its modules.
void Check::CheckModules(const std::string& folder) {
  CommentWatch comments;
  const auto project = LoadFolderOfModules(folder, mArguments.Common, mStreams, LoadDepth::Modules,
                                           [&](VBProject& one) { comments.Begin(one); });
  if (!project)
    throw ToolError(exNo,
                    folder + ": no project (.vbp) and no module lies in or below this folder");
  CheckLoaded(*project, comments);
}

void Check::CheckLoaded(VBProject& project, const CommentWatch& comments) {
  {
    const DiagnosticScope scope(&project.Diagnostics, project.FileName.FullPath());
    comments.ReportUnplaced();
    if (mArguments.Verbose) ReportMissingReferences(project);
  }
  Write(project.Diagnostics, project.FileName.FullPath());
  mCounts.Add(project);
}

// Told by this command alone: on this machine hardly any registered library has its file.
void Check::ReportMissingReferences(const VBProject& project) const {
  for (const Reference& reference : project.References)
    if (!reference.FileName.Exists())
      ReportAt(DiagnosticCode::MissingReference, project.FileName.FullPath(),
               reference.SourceLine(),
               {reference.FileName.FullPath().empty() ? reference.Name()
                                                      : reference.FileName.FullPath()});
}

void Check::SumUpReferences() {
  const std::size_t count = mCounts.ReferencesWithoutFile;
  if (count == 0 || mArguments.Verbose) return;
  Diagnostics told;
  const DiagnosticScope scope(&told, {});
  Report(DiagnosticCode::MissingReferences,
         {count == 1 ? "1 reference names a file that is"
                     : std::to_string(count) + " references name files that are"});
  Write(told, {});
}

// File by file, `first` before the others, and line by line.
void Check::Write(const Diagnostics& diagnostics, const std::string& first) {
  std::map<std::string, std::size_t> places{{first, 0}};
  std::vector<const Diagnostic*> items;
  for (const Diagnostic& item : diagnostics) {
    places.try_emplace(item.File, places.size());
    items.push_back(&item);
  }
  std::stable_sort(items.begin(), items.end(), [&](const Diagnostic* a, const Diagnostic* b) {
    return std::pair(places[a->File], a->Line) < std::pair(places[b->File], b->Line);
  });
  for (const Diagnostic* item : items) WriteOnce(*item);
}

void Check::WriteOnce(const Diagnostic& item) {
  if (!mWritten.emplace(item.File, item.Line, item.Code, item.Text).second) return;
  WriteDiagnostic(mOut, item, mPaths, mArguments.AsJson());
}

int RunCheck(const CheckArguments& arguments, const Streams& streams) {
  ApplyToProcess(arguments.Common);
  ProjectCounts counts;
  WriteResult(arguments.Common, streams, arguments.Paths,
              [&](std::ostream& out) { counts = Check(arguments, streams, out).Run(); });
  if (counts.Unread + counts.UnreadFolders > 0) return exFailed;
  if (counts.Missing + counts.Unreadable > 0) return exNo;
  return arguments.Common.Strict && counts.Warnings ? exWarnings : exDone;
}

}  // namespace

void AddCheckCommand(CLI::App& app, Job& job) {
  auto* command =
      app.add_subcommand("check", "What is missing or not understood in a project or folder");
  const auto arguments = std::make_shared<CheckArguments>();
  AddInputs(*command, arguments->Paths);
  command->add_flag("--json", arguments->Json, "One JSON object a line");
  command->add_flag("--verbose", arguments->Verbose,
                    "Each reference whose file is not on this machine, not their number alone");
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &job] {
    job.Run = [arguments, &streams = job.Streams] { return RunCheck(*arguments, streams); };
  });
}

}  // namespace vendrel::cli
