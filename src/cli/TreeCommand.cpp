#include <cstdlib>
#include <memory>

#include "cli/Commands.h"
#include "cli/Outline.h"
#include "cli/Results.h"
#include "cli/Session.h"

namespace vendrel::cli {
namespace {

struct TreeArguments {
  CommonOptions Common;
  std::string File;
  OutlineOptions Outline;
};

bool ColoursWanted(const TreeArguments& arguments, const Streams& streams) {
  const char* refused = std::getenv("NO_COLOR");
  return streams.OutIsTerminal && arguments.Common.Output.empty() && !(refused && *refused);
}

int RunTree(const TreeArguments& arguments, const Streams& streams) {
  const auto project = LoadInput(arguments.File, arguments.Common, streams);
  OutlineOptions options = arguments.Outline;
  options.Coloured = ColoursWanted(arguments, streams);
  bool found = false;
  WriteResult(arguments.Common, streams, arguments.File,
              [&](std::ostream& out) { found = Outline(out, options).Write(*project); });
  const int code = ReportDiagnostics(*project, arguments.Common, streams.Err);
  if (found) return code;
  throw ToolError(exNo, arguments.File + ": has no module '" + options.Module +
                            "'; tree --depth 2 lists its modules");
}

}  // namespace

void AddTreeCommand(CLI::App& app, Job& job) {
  auto* command = app.add_subcommand("tree", "An outline of what is in a project or module");
  const auto arguments = std::make_shared<TreeArguments>();
  command->add_option("file", arguments->File, "A project or a module")->required();
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
