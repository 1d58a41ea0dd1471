#include <algorithm>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "cli/Commands.h"
#include "cli/PretendedFiles.h"
#include "cli/ProjectSets.h"
#include "cli/Report.h"
#include "cli/Results.h"
#include "cli/ShownText.h"
#include "cli/UnifiedDiff.h"
#include "core/CaseFold.h"

namespace vendrel::cli {
namespace {

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

// START:INCREMENT[.INTERVAL], all of them numbers, the last two above 0.
std::string CheckLineNumbers(const std::string& text) {
  const std::size_t colon = text.find(':'), dot = text.find('.', colon == text.npos ? 0 : colon);
  const auto isNumber = [&](std::size_t from, std::size_t to, bool zero) {
    const std::string part = text.substr(from, to - from);
    return !part.empty() && part.size() < 10 && part.find_first_not_of("0123456789") == part.npos &&
           (zero || std::stoi(part) > 0);
  };
  const std::size_t end = std::min(dot, text.size());
  const bool fits = colon != text.npos && isNumber(0, colon, true) &&
                    isNumber(colon + 1, end, false) &&
                    (dot == text.npos || isNumber(dot + 1, text.size(), false));
  return fits ? "" : "'" + text + "' is no START:INCREMENT or START:INCREMENT.INTERVAL";
}

// In place nothing happens unasked: --yes, or a person who says so.
void AskFirst(const WriteArguments& arguments, const Streams& streams) {
  if (!arguments.InPlace || arguments.DryRun || arguments.Yes) return;
  if (!streams.Answers)
    throw ToolError(exUsage, "--in-place changes the files of '" + arguments.File +
                                 "'; say --yes, or look with --dry-run first");
  streams.Err << "Write " << arguments.File << " in place, with backups? [y/N] " << std::flush;
  std::string answer;
  std::getline(*streams.Answers, answer);
  if (!EqualsNoCase(answer, "y") && !EqualsNoCase(answer, "yes"))
    throw ToolError(exNo, "nothing written");
}

// Writes each project and tells what it wrote.
class Writer {
 public:
  Writer(const WriteArguments& arguments, std::ostream& out) : mArguments(arguments), mOut(out) {}

  void Write(VBProject& project, bool isOneOfSeveral);
  bool Failed() const { return mFailed; }

 private:
  struct Counts {
    std::size_t Written = 0, Changed = 0;
  };
  void Place(VBProject& project, bool isOneOfSeveral);
  void WriteOut(VBProject& project);
  void Pretend(VBProject& project);
  void ShowDifference(const std::string& path, const std::string& bytes, const std::string& origin,
                      const std::string& before, Counts& counts);

  const WriteArguments& mArguments;
  std::ostream& mOut;
  ShownPaths mPaths;
  std::set<std::string> mFoldersTaken;
  bool mFailed = false;
};

// Several projects go into a folder each, named after the project file.
void Writer::Place(VBProject& project, bool isOneOfSeveral) {
  if (mArguments.InPlace) return project.OutputFileName.SetFullPath(project.FileName.FullPath());
  FileSystemObject folder;
  folder.SetFolderPath(AbsolutePath(mArguments.To));
  std::string path = folder.FolderPath();
  if (isOneOfSeveral) {
    const std::string base = path + project.FileName.BaseName();
    path = base;
    for (int number = 2; !mFoldersTaken.insert(FoldKey(path)).second; ++number)
      path = base + "_" + std::to_string(number);
  }
  project.OutputFileName.SetFolderPath(path);
  if (project.SameLocation())
    throw ToolError(exUsage, "--to: that is the folder of the project itself; say --in-place");
}

void Writer::Write(VBProject& project, bool isOneOfSeveral) {
  if (project.ProjectSourceAccess != psaReadWrite)
    throw ToolError(exUsage, mArguments.File + ": only a project (.vbp) or a group can be written");
  Place(project, isOneOfSeveral);
  if (!mArguments.LineNumbers.empty())
    project.Tags["fvbOutputLineNumbers"] = mArguments.LineNumbers;
  project.LineNumberPerModule = mArguments.PerModule;
  if (mArguments.HelpDescriptions) project.WriteHelpDescriptions = true;
  const Diagnostics& told = project.Diagnostics;
  const auto refusals = [&] {
    return told.CountOf(DiagnosticCode::WriteRefused) +
           told.CountOf(DiagnosticCode::CharactersNotHeld);
  };
  const std::size_t before = refusals();
  if (mArguments.DryRun)
    Pretend(project);
  else
    WriteOut(project);
  mFailed = mFailed || refusals() > before;
}

void Writer::WriteOut(VBProject& project) {
  try {
    project.OutputFileName.CreateFolderPath();
  } catch (const VendrelError&) {
    throw ToolError(exFailed, mPaths.Of(project.OutputFileName.FolderPath()) +
                                  ": this folder cannot be made; name another one");
  }
  project.WriteOut(mArguments.OnlyProjectFile);
  const std::size_t modules = project.Components.Count();
  mOut << Shown(mPaths.Of(project.OutputFileName.FullPath())) << ": "
       << (mArguments.OnlyProjectFile || modules == 0
               ? std::string("project file")
               : CountOf(modules, "module") + " and project file")
       << " written\n";
}

void Writer::Pretend(VBProject& project) {
  std::vector<std::string> sources;
  for (const Component& component : project.Components.Listed())
    sources.push_back(component.FileName.NativePath());
  PretendedFiles files;
  project.OutputFileName.CreateFolderPath();
  project.WriteOut(mArguments.OnlyProjectFile);
  std::map<std::string, std::string> origins{
      {project.OutputFileName.NativePath(), project.FileName.NativePath()}};
  std::size_t index = 0;
  for (const Component& component : project.Components.Listed()) {
    const std::string target = project.SameLocation() ? component.FileName.FullPath()
                                                      : project.OutputFileName.FolderPath() +
                                                            component.FileName.LeafName();
    origins.emplace(FileSystemObject(target).NativePath(), sources[index++]);
  }
  Counts counts;
  for (const auto& [path, bytes] : files.Written()) {
    const auto origin = origins.find(path);
    if (origin == origins.end())
      mOut << "copy " << Shown(mPaths.Of(path)) << '\n';
    else
      ShowDifference(path, bytes, origin->second, files.OnDisk(origin->second), counts);
  }
  mOut << CountedWith(counts.Written, "file") << " would be written, " << counts.Changed
       << " of them changed\n";
}

void Writer::ShowDifference(const std::string& path, const std::string& bytes,
                            const std::string& origin, const std::string& before, Counts& counts) {
  ++counts.Written;
  if (bytes == before) {
    mOut << "same " << Shown(mPaths.Of(path)) << '\n';
    return;
  }
  ++counts.Changed;
  mOut << "changed " << Shown(mPaths.Of(path)) << '\n';
  const CodePage& page = FileOptions::Current().Page();
  WriteUnifiedDiff(mOut, Shown(mPaths.Of(origin)), SourceText::Decode(before, page)->Text,
                   Shown(mPaths.Of(path)), SourceText::Decode(bytes, page)->Text);
}

int RunWrite(const WriteArguments& arguments, const Streams& streams) {
  AskFirst(arguments, streams);
  CommonOptions options = arguments.Common;
  if (arguments.ResolveConditionals) {
    options.Settings.emplace_back("KeepDirectives=False");
    options.Settings.emplace_back("OutputConditionalCompilationBlocks=False");
  }
  int code = exDone;
  bool failed = false;
  WriteResult(options, streams, arguments.File, [&](std::ostream& out) {
    Writer writer(arguments, out);
    const InputKind kind = KindOfInput(arguments.File);
    const bool several = kind == InputKind::Group || kind == InputKind::Folder;
    code = ForEachProject(arguments.File, options, streams,
                          [&](VBProject& project) { writer.Write(project, several); });
    failed = writer.Failed();
  });
  return failed ? static_cast<int>(exFailed) : code;
}

}  // namespace

void AddWriteCommand(CLI::App& app, Job& job) {
  auto* command =
      app.add_subcommand("write", "Writes a project back, in place or to another folder");
  const auto arguments = std::make_shared<WriteArguments>();
  command->add_option("file", arguments->File, "A project, group or folder")->required();
  auto* where = command->add_option_group("where");
  where->add_option("--to", arguments->To, "Write a copy of the project into this folder")
      ->type_name("FOLDER");
  where->add_flag("--in-place", arguments->InPlace, "Write over the files, with backups");
  where->require_option(1);
  command->add_flag("--only-project-file", arguments->OnlyProjectFile, "Without the modules");
  auto* numbers =
      command->add_option("--line-numbers", arguments->LineNumbers, "Number executable lines")
          ->type_name("START:INCREMENT[.INTERVAL]")
          ->check(CheckLineNumbers);
  command->add_flag("--per-module", arguments->PerModule, "Numbers begin anew in each module")
      ->needs(numbers);
  command->add_flag("--resolve-conditionals", arguments->ResolveConditionals,
                    "Directives and false branches of #If become comments");
  command->add_flag("--help-descriptions", arguments->HelpDescriptions,
                    "Write descriptions for the object browser");
  command->add_flag("--dry-run", arguments->DryRun, "Write nothing; show what would change");
  command->add_flag("--yes", arguments->Yes, "Write in place without asking");
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &job] {
    job.Run = [arguments, &streams = job.Streams] { return RunWrite(*arguments, streams); };
  });
}

}  // namespace vendrel::cli
