#include <memory>

#include "cli/AssemblySet.h"
#include "cli/Commands.h"
#include "cli/ProjectSets.h"
#include "cli/Report.h"
#include "cli/Results.h"

namespace vendrel::cli {
namespace {

struct AssembliesArguments : SetOptions {
  bool Json = false;
  bool Check = false;
  std::string Save;
};

int RunAssemblies(const AssembliesArguments& arguments, const Streams& streams) {
  const auto set = LoadSet(arguments);
  if (set->Count() == 0) {
    ReportSet(*set, arguments.Common, streams.Err);
    throw ToolError(exFailed, "no assembly could be loaded");
  }
  bool isIncomplete = false;
  WriteResult(arguments.Common, streams, arguments.Files.front(), [&](std::ostream& out) {
    if (arguments.Check)
      isIncomplete = WriteSetCheck(out, *set);
    else if (arguments.Json)
      WriteSetAsJson(out, *set);
    else
      WriteSet(out, *set);
  });
  if (!arguments.Save.empty()) SaveSet(*set, arguments.Save);
  const int code = ReportSet(*set, arguments.Common, streams.Err);
  return isIncomplete ? Worse(code, exNo) : code;
}

// The one of all commands takes a file; here it takes the assembly too.
void ReplaceCommentFileOption(CLI::App& command, SetOptions& options) {
  for (CLI::App* group : command.get_subcommands([](CLI::App*) { return true; }))
    if (CLI::Option* option = group->get_option_no_throw("--comment-file"))
      group->remove_option(option);
  command
      .add_option("--comment-file", options.CommentFiles,
                  "The comment file of an assembly, in place of that of the set")
      ->type_name("NAME=FILE")
      ->allow_extra_args(false);
}

void AddSetOptions(CLI::App& command, AssembliesArguments& arguments) {
  command.add_flag("--inherit", arguments.Inherit,
                   "Give inherited members the comments of those that they come from");
  command.add_flag("--drill", arguments.Drill,
                   "The same, from documentation outside of the set too (--doc-location)");
  command
      .add_option("--doc-location", arguments.DocLocations,
                  "Folder of the documentation of assemblies outside, by a pattern of their names")
      ->type_name("PATTERN=FOLDER")
      ->allow_extra_args(false);
  command
      .add_option("--external-docs", arguments.ExternalDocs,
                  "Address of the documentation of types whose names begin so; {name} is the name")
      ->type_name("PREFIX=URL")
      ->allow_extra_args(false);
  command
      .add_option("--import-mode", arguments.ImportMode,
                  "How documentation meets comments that are there: keep, add or replace")
      ->check(CLI::IsMember({"keep", "add", "replace"}))
      ->capture_default_str();
  command.add_option("--root-assembly", arguments.RootAssembly, "The assembly to start at")
      ->type_name("NAME");
  command.add_option("--root-module", arguments.RootModule, "The type to start at")
      ->type_name("NAME");
}

}  // namespace

void AddAssembliesCommand(CLI::App& app, Job& job) {
  auto* command = app.add_subcommand(
      "assemblies", "A set of assemblies and VB.NET projects with their documentation");
  const auto arguments = std::make_shared<AssembliesArguments>();
  command
      ->add_option("file", arguments->Files,
                   "Assemblies and VB.NET projects, or a saved set (.xml)")
      ->required();
  AddSetOptions(*command, *arguments);
  command->add_option("--save", arguments->Save, "Save the set as XML")->type_name("SET.xml");
  command->add_flag("--json", arguments->Json, "The assemblies and their projects as JSON");
  command->add_flag("--check", arguments->Check,
                    "What is documented and not there, or there and not documented; 4 if anything");
  AddCommonOptions(*command, arguments->Common);
  ReplaceCommentFileOption(*command, *arguments);
  command->callback([arguments, &job] {
    job.Run = [arguments, &streams = job.Streams] { return RunAssemblies(*arguments, streams); };
  });
}

}  // namespace vendrel::cli
