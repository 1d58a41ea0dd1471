#include <memory>

#include "cli/ClosestName.h"
#include "cli/Commands.h"
#include "cli/Inputs.h"
#include "cli/Outline.h"
#include "cli/Results.h"

namespace vendrel::cli {
namespace {

struct TreeArguments {
  CommonOptions Common;
  Inputs File;
  OutlineOptions Outline;
};

int RunTree(const TreeArguments& arguments, const Streams& streams) {
  OutlineOptions options = arguments.Outline;
  options.Coloured = ColoursWanted(arguments.Common, streams);
  bool found = false;
  ClosestName closest(options.Module);
  int code = exDone;
  WriteResult(
      arguments.Common, streams, arguments.File,
      [&](std::ostream& out) {
        code = ForEachProject(arguments.File, arguments.Common, streams, [&](VBProject& project) {
          found = Outline(out, options).Write(project) || found;
          closest.OfferModulesOf(project);
        });
      },
      ResultForm::Painted);
  if (found || options.Module.empty()) return code;
  throw ToolError(Worse(code, exNo), arguments.File.Shown() + ": has no module '" + options.Module +
                                         "'" +
                                         HintOr(closest, "; tree --depth 2 lists its modules"));
}

}  // namespace

void AddTreeCommand(CLI::App& app, Job& job) {
  auto* command = app.add_subcommand("tree", "An outline of what is in a project or module");
  const auto arguments = std::make_shared<TreeArguments>();
  AddInputs(*command, arguments->File);
  command
      ->add_option("--depth", arguments->Outline.Depth,
                   "1: the project, 2: its modules, 3: their members, 4: all")
      ->type_name("N")
      ->check(CLI::Range(1, 100))
      ->capture_default_str();
  command->add_option("--module", arguments->Outline.Module, "Only the module of this name")
      ->type_name("NAME");
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &job] {
    job.Run = [arguments, &streams = job.Streams] { return RunTree(*arguments, streams); };
  });
}

}  // namespace vendrel::cli
