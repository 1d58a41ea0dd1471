#include "cli/Tool.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "cli/ClosestName.h"
#include "cli/Commands.h"
#include "cli/CompiledInput.h"
#include "cli/HelpText.h"
#include "cli/Inputs.h"
#include "cli/Interrupts.h"
#include "cli/Options.h"
#include "cli/Progress.h"
#include "cli/Report.h"
#include "cli/ShownText.h"
#include "cli/ToolFacts.h"
#include "cli/WatchedFiles.h"
#include "cli/WrittenFiles.h"
#include "core/Ascii.h"
#include "core/Version.h"
#include "diagnostics/ErrorReport.h"
#include "diagnostics/VendrelError.h"

namespace vendrel::cli {
namespace {

struct CommandEntry {
  std::string_view Name;
  void (*Add)(CLI::App&, Job&);
};

// In the order in which help lists them.
constexpr CommandEntry kCommands[] = {
    {"tree", AddTreeCommand},           {"dump", AddDumpCommand},
    {"manifest", AddManifestCommand},   {"comments", AddCommentsCommand},
    {"check", AddCheckCommand},         {"lines", AddLinesCommand},
    {"evaluate", AddEvaluateCommand},   {"names", AddNamesCommand},
    {"find", AddFindCommand},           {"uses", AddUsesCommand},
    {"resolve", AddResolveCommand},     {"controls", AddControlsCommand},
    {"structure", AddStructureCommand}, {"html", AddHtmlCommand},
    {"members", AddMembersCommand},     {"help-ids", AddHelpIDsCommand},
    {"write", AddWriteCommand},         {"typelib", AddTypeLibCommand},
    {"assembly", AddAssemblyCommand},   {"assemblies", AddAssembliesCommand},
    {"diff", AddDiffCommand},           {"build", AddBuildCommand},
    {"roundtrip", AddRoundtripCommand}, {"calls", AddCallsCommand},
    {"unused", AddUnusedCommand},       {"inventory", AddInventoryCommand},
    {"site", AddSiteCommand},           {"assess", AddAssessCommand},
    {"graph", AddGraphCommand},         {"schema", AddSchemaCommand},
    {"tags", AddTagsCommand},           {"completion", AddCompletionCommand},
    {"manual", AddManualCommand},
};

bool IsOneOf(const std::string& text, std::initializer_list<const char*> names) {
  return std::find(names.begin(), names.end(), text) != names.end();
}

bool LooksLikeFile(const std::string& text) {
  std::error_code ignored;
  return text.find_first_of("./\\:") != std::string::npos || std::filesystem::exists(text, ignored);
}

// The command that a command line begins with; "tree" where a file stands in its place.
std::string_view CommandAtFront(const std::vector<std::string>& arguments) {
  if (arguments.empty() || arguments.front().starts_with('-') || arguments.front() == "help")
    return {};
  const std::string& first = arguments.front();
  for (const CommandEntry& entry : kCommands)
    if (entry.Name == first) return entry.Name;
  return LooksLikeFile(first) ? "tree" : std::string_view();
}

// To declare the options of all commands takes longer than to read a small project. Where the
// command stands at the front only that one is added, unless it tells of all.
void AddCommands(CLI::App& app, Job& job, const std::vector<std::string>& arguments) {
  const std::string_view wanted = CommandAtFront(arguments);
  if (arguments.size() == 1 && arguments.front() == "--version") return;
  const bool all = wanted.empty() || wanted == "completion" || wanted == "manual";
  for (const CommandEntry& entry : kCommands)
    if (all || entry.Name == wanted) entry.Add(app, job);
}

// The command that was meant, or all of them.
std::string HintForCommand(const CLI::App& app, const std::string& word) {
  ClosestName closest(word);
  std::string names;
  for (const CLI::App* command : app.get_subcommands({})) {
    closest.Offer(command->get_name());
    names.append(names.empty() ? "" : ", ").append(command->get_name());
  }
  return closest.Name().empty() ? "; commands are " + names : closest.Hint();
}

const CLI::App* CommandNamed(const CLI::App& app, const std::string& text) {
  for (const CLI::App* command : app.get_subcommands({}))
    if (command->get_name() == text) return command;
  return nullptr;
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
  if (!arguments.empty() && arguments.front() == "help") {  // as other tools have it
    arguments.erase(arguments.begin());
    arguments.emplace_back("--help");
  }
  if (arguments.empty() || IsOneOf(arguments.front(), {"-h", "--help", "--version"})) return;
  std::size_t at = 0;
  while (at < arguments.size() && arguments[at].starts_with('-'))
    at += TakesNext(app, arguments[at]) ? 2 : 1;
  if (at < arguments.size() && CommandNamed(app, arguments[at])) {
    const auto first = arguments.begin();
    const auto command = first + static_cast<std::ptrdiff_t>(at);
    std::rotate(first, command, command + 1);
    return;
  }
  if (at < arguments.size() && !LooksLikeFile(arguments[at]))
    throw ToolError(exUsage, "'" + arguments[at] + "' is neither a command nor a file" +
                                 HintForCommand(app, arguments[at]));
  arguments.insert(arguments.begin(), "tree");
}

// The names among which a word that means nothing may have been meant.
std::string HintFor(const CLI::App* command, const std::string& word) {
  ClosestName closest(word);
  if (word.starts_with('-') && command)
    for (const OptionFacts& option : FactsOfCommand(*command).Options)
      for (const std::string& name : option.Names) closest.Offer(name);
  return closest.Hint();
}

// "--kind: modul not in {module,control}": the one of these that may have been meant.
std::string HintForChoice(std::string_view text) {
  constexpr std::string_view kNotIn = " not in {";
  const std::size_t at = text.find(kNotIn);
  if (at == std::string_view::npos) return {};
  const std::size_t word = text.rfind(' ', at - 1) + 1;
  ClosestName closest(text.substr(word, at - word));
  std::string_view choice;
  const std::string_view rest = text.substr(at + kNotIn.size());
  for (FieldCursor choices(rest.substr(0, rest.find('}')), ","); choices.Next(choice);)
    closest.Offer(choice);
  return closest.Hint();
}

// What the parser says, as one line with what to do about it.
std::string WrongUse(const CLI::App& app, const CLI::ParseError& error, const std::string& first) {
  const CLI::App* command = CommandNamed(app, first);
  const std::string help =
      std::string("; vendrelmodel ") + (command ? first + " " : "") + "--help tells what there is";
  std::string text = error.what();
  std::replace(text.begin(), text.end(), '\n', ' ');
  const auto* extras = dynamic_cast<const CLI::ExtrasError*>(&error);
  if (extras) {
    const std::string words = text.substr(text.rfind(": ") + 2);
    const std::string word = words.substr(0, words.find(' '));
    text = "does not take " + words + HintFor(command, word);
  }
  if (const std::size_t missing = text.find(" is required"); missing != std::string::npos) {
    const std::string what = text.substr(0, missing);
    text = "needs " + (what.starts_with('-') ? what : UpperAscii(what));
  }
  constexpr std::string_view kValue = ": 1 required ";
  if (const std::size_t value = text.find(kValue);
      value != std::string::npos && text.ends_with(" missing"))
    text = text.substr(0, value) + " needs " +
           text.substr(value + kValue.size(), text.rfind(' ') - value - kValue.size());
  if (!command) return "say what is to be done" + help;
  return first + ": " + text + HintForChoice(text) + help;
}

int Parse(CLI::App& app, std::vector<std::string> arguments, const Streams& streams) {
  std::string first;
  try {
    TakeCustomInput(arguments);
    PutCommandFirst(app, arguments);
    if (!arguments.empty()) first = arguments.front();
    ReadListedInputs(app, arguments, streams);
    std::reverse(arguments.begin(), arguments.end());  // as the parser takes them
    app.parse(arguments);
    return exDone;
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() != 0) throw ToolError(exUsage, WrongUse(app, error, first));
    app.exit(error, streams.Out, streams.Err);  // help or version
    return -1;
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
    app.formatter(std::make_shared<HelpText>());
    Job job{streams, {}};
    const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    AddCommands(app, job, arguments);
    const int parsed = Parse(app, arguments, streams);
    if (parsed != exDone) return parsed < 0 ? exDone : parsed;
    return job.Run();
  } catch (const Interrupted& interrupt) {
    const int code = SignalBase + interrupt.Signal;
    if (interrupt.Signal == SIGPIPE) return code;  // nobody listens any longer
    return fail(code, std::string("interrupted (") + strsignal(interrupt.Signal) + "); " +
                          ReachedSoFar() + DoneSince(0));
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
