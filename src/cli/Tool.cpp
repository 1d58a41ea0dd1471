#include "cli/Tool.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "cli/Commands.h"
#include "cli/CompiledInput.h"
#include "cli/Inputs.h"
#include "cli/Interrupts.h"
#include "cli/Options.h"
#include "cli/Report.h"
#include "cli/ShownText.h"
#include "cli/WatchedFiles.h"
#include "cli/WrittenFiles.h"
#include "core/Version.h"
#include "diagnostics/ErrorReport.h"
#include "diagnostics/VendrelError.h"

namespace vendrel::cli {
namespace {

void AddCommands(CLI::App& app, Job& job) {
  AddTreeCommand(app, job);
  AddDumpCommand(app, job);
  AddManifestCommand(app, job);
  AddCommentsCommand(app, job);
  AddCheckCommand(app, job);
  AddLinesCommand(app, job);
  AddEvaluateCommand(app, job);
  AddNamesCommand(app, job);
  AddFindCommand(app, job);
  AddUsesCommand(app, job);
  AddResolveCommand(app, job);
  AddControlsCommand(app, job);
  AddStructureCommand(app, job);
  AddHtmlCommand(app, job);
  AddMembersCommand(app, job);
  AddHelpIDsCommand(app, job);
  AddWriteCommand(app, job);
  AddTypeLibCommand(app, job);
  AddAssemblyCommand(app, job);
  AddAssembliesCommand(app, job);
  AddDiffCommand(app, job);
  AddBuildCommand(app, job);
  AddRoundtripCommand(app, job);
  AddCallsCommand(app, job);
  AddUnusedCommand(app, job);
  AddInventoryCommand(app, job);
  AddSiteCommand(app, job);
  AddSchemaCommand(app, job);
}

bool IsOneOf(const std::string& text, std::initializer_list<const char*> names) {
  return std::find(names.begin(), names.end(), text) != names.end();
}

bool LooksLikeFile(const std::string& text) {
  std::error_code ignored;
  return text.find_first_of("./\\:") != std::string::npos || std::filesystem::exists(text, ignored);
}

std::string CommandNames(const CLI::App& app) {
  std::string names;
  for (const CLI::App* command : app.get_subcommands({})) {
    if (!names.empty()) names += ", ";
    names += command->get_name();
  }
  return names;
}

bool IsCommand(const CLI::App& app, const std::string& text) {
  for (const CLI::App* command : app.get_subcommands({}))
    if (command->get_name() == text) return true;
  return false;
}

// Whether an argument is an option, of whatever command, whose value is the next argument.
bool TakesNext(const CLI::App& app, const std::string& argument) {
  for (const CLI::App* command : app.get_subcommands({})) {
    const CLI::Option* option = command->get_option_no_throw(argument);
    if (option && option->get_items_expected_max() > 0) return true;
  }
  return false;
}

// Options may stand before the command as well as behind it: it is put in front of them. Where a
// file stands in its place the command is `tree`.
void PutCommandFirst(const CLI::App& app, std::vector<std::string>& arguments) {
  if (arguments.empty() || IsOneOf(arguments.front(), {"-h", "--help", "--version"})) return;
  std::size_t at = 0;
  while (at < arguments.size() && arguments[at].starts_with('-'))
    at += TakesNext(app, arguments[at]) ? 2 : 1;
  if (at < arguments.size() && IsCommand(app, arguments[at])) {
    const auto first = arguments.begin();
    const auto command = first + static_cast<std::ptrdiff_t>(at);
    std::rotate(first, command, command + 1);
    return;
  }
  if (at < arguments.size() && !LooksLikeFile(arguments[at]))
    throw ToolError(exUsage, "'" + arguments[at] +
                                 "' is neither a command nor a file; commands are " +
                                 CommandNames(app));
  arguments.insert(arguments.begin(), "tree");
}

int Parse(CLI::App& app, std::vector<std::string> arguments, const Streams& streams, bool json) {
  try {
    TakeCustomInput(arguments);
    PutCommandFirst(app, arguments);
    ReadListedInputs(app, arguments, streams);
    std::reverse(arguments.begin(), arguments.end());  // as the parser takes them
    app.parse(arguments);
    return exDone;
  } catch (const CLI::ParseError& error) {
    if (json && error.get_exit_code() != 0) throw ToolError(exUsage, error.what());
    const int code = app.exit(error, streams.Out, streams.Err);
    return code == 0 ? -1 : exUsage;
  }
}

// Known before the command line has been read: that it cannot be read is told in the same form.
bool WantsObjects(int argc, const char* const* argv) {
  for (int i = 1; i < argc; ++i) {
    const std::string_view argument = argv[i];
    if (argument == "--diagnostics=json") return true;
    if (argument == "--diagnostics" && i + 1 < argc && std::string_view(argv[i + 1]) == "json")
      return true;
  }
  return false;
}

}  // namespace

std::string_view ToolVersion() { return LibraryVersion(); }

ExitCode Worse(int a, int b) {
  for (const ExitCode code : {exUsage, exFailed, exNo, exWarnings})
    if (a == code || b == code) return code;
  return exDone;
}

int RunTool(int argc, const char* const* argv, const Streams& streams) {
  const bool json = WantsObjects(argc, argv);
  const auto fail = [&](int code, const std::string& text) {
    ReportFailure(streams.Err, text, code, json);
    return code;
  };
  NoteSignal(0);
  const WatchedFiles files;
  try {
    CLI::App app{"The object model of Visual Basic code: reads projects and shows what is in them.",
                 "vendrelmodel"};
    app.set_version_flag("--version", "vendrelmodel " + std::string(LibraryVersion()));
    app.require_subcommand(1);
    app.footer("vendrelmodel FILE is short for vendrelmodel tree FILE.");
    Job job{streams, {}};
    AddCommands(app, job);
    const int parsed = Parse(app, {argv + (argc > 0 ? 1 : 0), argv + argc}, streams, json);
    if (parsed != exDone) return parsed < 0 ? exDone : parsed;
    return job.Run();
  } catch (const Interrupted& interrupt) {
    return fail(SignalBase + interrupt.Signal,
                std::string("interrupted (") + strsignal(interrupt.Signal) + "); " + DoneSince(0));
  } catch (const ToolError& error) {
    return fail(error.Code(), error.what());
  } catch (const VendrelError& error) {
    ReportError(error);
    return fail(exFailed, ReasonOf(error));
  } catch (const std::exception& error) {
    return fail(exFailed, error.what());
  }
}

}  // namespace vendrel::cli
