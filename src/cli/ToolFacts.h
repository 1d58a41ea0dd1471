#pragma once
// What the tool says of itself, as data gathered from its parser: help, manual, completions and
// hints come from it, so that a command or option is known to all of them once it is added.

#include <CLI/CLI.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace vendrel::cli {

struct OptionFacts {
  /// As they are written: "-o", "--output".
  std::vector<std::string> Names;
  /// What stands behind it ("FILE"); empty for a switch.
  std::string Value;
  /// The values there are, where they are few and known.
  std::vector<std::string> Choices;
  std::string Default;
  std::string Meaning;
  /// Heading in the help: "Options", or that of its group.
  std::string Group;
  bool IsShared = false;

  /// The longest name.
  const std::string& Name() const { return Names.back(); }
};

struct ArgumentFacts {
  std::string Name;
  std::string Meaning;
  std::vector<std::string> Choices;
  bool IsRequired = false;
  bool AreSeveral = false;
};

/// A command line that is worth knowing.
struct Example {
  std::string_view Line;
  std::string_view Meaning;
};

struct CommandFacts {
  std::string Name;
  std::string Purpose;
  /// Heading in the list of commands.
  std::string Group;
  std::vector<ArgumentFacts> Arguments;
  std::vector<OptionFacts> Options;
  std::vector<Example> Examples;
};

/// The commands of the tool, in their order.
std::vector<CommandFacts> FactsOf(const CLI::App& app);
CommandFacts FactsOfCommand(const CLI::App& command);

/// Options of the tool itself: --help, --version.
std::vector<OptionFacts> OwnOptionsOf(const CLI::App& app);

/// "FILE..." or "[COMMAND]".
std::string ShownArgument(const ArgumentFacts& argument);
/// "-o, --output FILE", "--reading classic|complete".
std::string ShownOption(const OptionFacts& option);
/// What an option means, with its values and default: "...: project, module (default: module)".
std::string ShownMeaning(const OptionFacts& option);

}  // namespace vendrel::cli
