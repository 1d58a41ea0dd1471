#include <algorithm>
#include <memory>
#include <string>

#include "cli/Commands.h"
#include "cli/Interrupts.h"
#include "cli/ProjectSets.h"
#include "cli/Results.h"
#include "cli/WatchedFiles.h"
#include "cli/Writer.h"
#include "writer/WriteRun.h"

namespace vendrel::cli {
namespace {

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
  if (!Agrees(streams, "Write " + arguments.File + " in place, with backups?"))
    throw ToolError(exNo, "nothing written");
}

int WriteAll(const WriteArguments& arguments, const CommonOptions& options, const Streams& streams,
             Writer& writer) {
  const InputKind kind = KindOfInput(arguments.File);
  if (kind == InputKind::Group) {
    const auto group = LoadGroup(arguments.File, options, streams);
    writer.Write(*group);
    return ReportGroup(*group, options, streams.Err);
  }
  return ForEachProject(arguments.File, options, streams, [&](VBProject& project) {
    writer.Write(project, kind == InputKind::Folder);
  });
}

int RunWrite(const WriteArguments& arguments, const Streams& streams) {
  const InterruptHold hold;
  AskFirst(arguments, streams);
  if (!arguments.DryRun) WatchedFiles::Current()->RemoveLeftFiles();
  CommonOptions options = OneAfterTheOther(arguments.Common);
  options.Unresolved = options.NoReferences = true;  // names stay as written in any case
  if (arguments.ResolveConditionals) {
    options.Settings.emplace_back("KeepDirectives=False");
    options.Settings.emplace_back("OutputConditionalCompilationBlocks=False");
  }
  int code = exDone;
  bool whole = true;
  WriteResult(options, streams, arguments.File, [&](std::ostream& out) {
    Writer writer(arguments, streams, out);
    const WriteRun run;
    code = WriteAll(arguments, options, streams, writer);
    whole = writer.Finish();
  });
  return whole ? code : static_cast<int>(exFailed);
}

}  // namespace

void AddWriteCommand(CLI::App& app, Job& job) {
  auto* command =
      app.add_subcommand("write", "Writes a project back, in place or to another folder");
  const auto arguments = std::make_shared<WriteArguments>();
  command->add_option("file", arguments->File, "A project, module, group or folder")->required();
  auto* where = command->add_option_group("where");
  where->add_option("--to", arguments->To, "Write a copy into this folder")->type_name("FOLDER");
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
  command->add_flag("--yes", arguments->Yes,
                    "Write in place, and over what differs in the folder, without asking");
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &job] {
    job.Run = [arguments, &streams = job.Streams] { return RunWrite(*arguments, streams); };
  });
}

}  // namespace vendrel::cli
