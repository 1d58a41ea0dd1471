#include "cli/ToolFacts.h"

#include <algorithm>

#include "cli/CommandPages.h"
#include "cli/Options.h"
#include "core/Ascii.h"

namespace vendrel::cli {
namespace {

constexpr std::size_t kFewChoices = 4;
constexpr const char* kOwnHeading = "Options";

std::string Joined(const std::vector<std::string>& texts, std::string_view between) {
  std::string joined;
  for (const std::string& text : texts) joined.append(joined.empty() ? "" : between).append(text);
  return joined;
}

// "KIND:{project,library}" taken apart.
struct TypeText {
  explicit TypeText(const std::string& text) : Name(text.substr(0, text.find(':'))) {
    const std::size_t open = text.find('{'), close = text.rfind('}');
    if (open == std::string::npos || close == std::string::npos) return;
    std::string item;
    for (std::size_t i = open + 1; i <= close; ++i) {
      if (text[i] != ',' && i < close) {
        item += text[i];
        continue;
      }
      Choices.push_back(item);
      item.clear();
    }
  }
  std::string Name;
  std::vector<std::string> Choices;
};

// CLI11 names a type where nobody else did.
bool IsTypeOfParser(const std::string& name) {
  return name == "TEXT" || name == "INT" || name == "UINT" || name == "BOOLEAN" || name.empty();
}

OptionFacts FactsOfOption(const CLI::Option& option, const std::string& group) {
  OptionFacts facts;
  for (const std::string& name : option.get_snames()) facts.Names.push_back("-" + name);
  for (const std::string& name : option.get_lnames()) facts.Names.push_back("--" + name);
  facts.Meaning = option.get_description();
  facts.Group = group;
  facts.Default = option.get_default_str();
  if (option.get_items_expected_max() == 0) return facts;
  TypeText type(option.get_type_name());
  facts.Choices = std::move(type.Choices);
  facts.Value = IsTypeOfParser(type.Name) ? UpperAscii(option.get_lnames().front()) : type.Name;
  if (IsTypeOfParser(type.Name) && facts.Choices.size() > 0 && facts.Choices.size() <= kFewChoices)
    facts.Value = Joined(facts.Choices, "|");
  return facts;
}

void TakeOptions(const CLI::App& app, const std::string& group, bool areShared,
                 std::vector<OptionFacts>& options) {
  for (const CLI::Option* option : app.get_options()) {
    if (option->get_positional() || option->get_group().empty()) continue;
    const bool isOfGroup = app.get_name().empty();
    if (isOfGroup && option == app.get_help_ptr()) continue;  // each group has one
    options.push_back(FactsOfOption(*option, group));
    options.back().IsShared = areShared;
  }
}

ArgumentFacts FactsOfArgument(const CLI::Option& option) {
  const TypeText type(option.get_type_name());
  return {UpperAscii(option.get_name(true)), option.get_description(), type.Choices,
          option.get_required(), option.get_items_expected_max() > 1};
}

}  // namespace

CommandFacts FactsOfCommand(const CLI::App& command) {
  CommandFacts facts;
  facts.Name = command.get_name();
  facts.Purpose = command.get_description();
  facts.Group = GroupOfCommand(facts.Name);
  facts.Examples = ExamplesOf(facts.Name);
  for (const CLI::Option* option : command.get_options())
    if (option->get_positional()) facts.Arguments.push_back(FactsOfArgument(*option));
  TakeOptions(command, kOwnHeading, false, facts.Options);
  // A group of options is a command without a name to the parser.
  for (const CLI::App* group : command.get_subcommands([](const CLI::App*) { return true; })) {
    const std::string heading = group->get_group();
    const bool isShared = heading == kReadingHeading || heading == kShowingHeading;
    if (group->get_name().empty())
      TakeOptions(*group, isShared ? heading : kOwnHeading, isShared, facts.Options);
  }
  std::stable_sort(
      facts.Options.begin(), facts.Options.end(),
      [](const OptionFacts& a, const OptionFacts& b) { return a.IsShared < b.IsShared; });
  return facts;
}

std::vector<CommandFacts> FactsOf(const CLI::App& app) {
  std::vector<CommandFacts> commands;
  for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; }))
    commands.push_back(FactsOfCommand(*command));
  return commands;
}

std::vector<OptionFacts> OwnOptionsOf(const CLI::App& app) {
  std::vector<OptionFacts> options;
  TakeOptions(app, kOwnHeading, false, options);
  return options;
}

std::string ShownArgument(const ArgumentFacts& argument) {
  const std::string name = argument.Name + (argument.AreSeveral ? "..." : "");
  return argument.IsRequired ? name : "[" + name + "]";
}

std::string ShownOption(const OptionFacts& option) {
  const std::string names = Joined(option.Names, ", ");
  return option.Value.empty() ? names : names + " " + option.Value;
}

std::string ShownMeaning(const OptionFacts& option) {
  std::string text = option.Meaning;
  if (option.Choices.size() > kFewChoices) text += ": " + Joined(option.Choices, ", ");
  if (!option.Default.empty()) text += " (default: " + option.Default + ")";
  return text;
}

}  // namespace vendrel::cli
