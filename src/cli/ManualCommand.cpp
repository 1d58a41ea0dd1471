#include <cerrno>
#include <filesystem>
#include <fstream>
#include <memory>

#include "cli/Commands.h"
#include "cli/Completions.h"
#include "cli/ManualPage.h"
#include "cli/Options.h"
#include "cli/Report.h"
#include "cli/Results.h"

namespace vendrel::cli {
namespace {

struct ManualArguments {
  CommonOptions Common;
  std::string Command;
  std::string Into;
  bool Html = false;
};

void WriteInto(const std::filesystem::path& path, const std::function<void(std::ostream&)>& write) {
  std::error_code ignored;
  std::filesystem::create_directories(path.parent_path(), ignored);
  errno = 0;
  std::ofstream file(path);
  write(file);
  file.close();
  if (!file) throw ToolError(exFailed, CannotBeWritten(path.string(), errno));
}

// What an installation puts beside the tool, as it lies below "share".
void WriteAll(const std::filesystem::path& share, const std::vector<CommandFacts>& commands) {
  const auto man = share / "man/man1";
  WriteInto(man / "vendrelmodel.1", [&](std::ostream& out) { WriteManPage(out, commands); });
  for (const CommandFacts& command : commands)
    WriteInto(man / ("vendrelmodel-" + command.Name + ".1"),
              [&](std::ostream& out) { WriteManPage(out, command); });
  WriteInto(share / "doc/vendrelmodel/manual.html",
            [&](std::ostream& out) { WriteManualAsHtml(out, commands); });
  WriteInto(share / "bash-completion/completions/vendrelmodel",
            [&](std::ostream& out) { WriteCompletion(out, "bash", commands); });
  WriteInto(share / "zsh/vendor-completions/_vendrelmodel",
            [&](std::ostream& out) { WriteCompletion(out, "zsh", commands); });
  WriteInto(share / "fish/vendor_completions.d/vendrelmodel.fish",
            [&](std::ostream& out) { WriteCompletion(out, "fish", commands); });
}

int RunManual(const ManualArguments& arguments, const CLI::App& app, const Streams& streams) {
  const std::vector<CommandFacts> commands = FactsOf(app);
  if (!arguments.Into.empty()) {
    WriteAll(arguments.Into, commands);
    return exDone;
  }
  WriteResult(arguments.Common, streams, std::string(), [&](std::ostream& out) {
    if (arguments.Html) return WriteManualAsHtml(out, commands);
    if (arguments.Command.empty()) return WriteManPage(out, commands);
    for (const CommandFacts& command : commands)
      if (command.Name == arguments.Command) return WriteManPage(out, command);
    throw ToolError(exUsage, "no command is called '" + arguments.Command + "'");
  });
  return exDone;
}

struct CompletionArguments {
  CommonOptions Common;
  std::string Shell;
};

}  // namespace

void AddManualCommand(CLI::App& app, Job& job) {
  auto* command = app.add_subcommand("manual", "The manual, as a man page or as HTML");
  const auto arguments = std::make_shared<ManualArguments>();
  command->add_option("command", arguments->Command, "Only the page of this command");
  command->add_flag("--html", arguments->Html, "All of it for a browser");
  command
      ->add_option("--into", arguments->Into,
                   "Write all pages and the completions of shells below this folder, as they are "
                   "installed below share")
      ->type_name("FOLDER");
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &app, &job] {
    job.Run = [arguments, &app, &streams = job.Streams] {
      return RunManual(*arguments, app, streams);
    };
  });
}

void AddCompletionCommand(CLI::App& app, Job& job) {
  auto* command =
      app.add_subcommand("completion", "A script that completes command lines in a shell");
  const auto arguments = std::make_shared<CompletionArguments>();
  command->add_option("shell", arguments->Shell, "The shell")
      ->required()
      ->check(CLI::IsMember({"bash", "zsh", "fish"}));
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &app, &job] {
    job.Run = [arguments, &app, &streams = job.Streams] {
      WriteResult(arguments->Common, streams, std::string(),
                  [&](std::ostream& out) { WriteCompletion(out, arguments->Shell, FactsOf(app)); });
      return exDone;
    };
  });
}

}  // namespace vendrel::cli
