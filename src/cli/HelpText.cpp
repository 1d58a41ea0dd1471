#include "cli/HelpText.h"

#include <algorithm>
#include <sstream>

#include "cli/CommandPages.h"
#include "cli/ToolFacts.h"

namespace vendrel::cli {
namespace {

constexpr std::size_t kWidth = 100;
constexpr std::size_t kWidestName = 30;

// A text from that column on, broken at blanks.
void WriteWrapped(std::ostream& out, const std::string& text, std::size_t column) {
  std::size_t at = column;
  bool isFirst = true;
  std::istringstream words(text);
  for (std::string word; words >> word; isFirst = false) {
    if (!isFirst && at + 1 + word.size() > kWidth) {
      out << '\n' << std::string(column, ' ');
      at = column;
    } else if (!isFirst) {
      out << ' ';
      ++at;
    }
    out << word;
    at += word.size();
  }
  out << '\n';
}

// Names and what they mean, in two columns.
class TwoColumns {
 public:
  void Add(std::string name, std::string meaning) {
    if (name.size() <= kWidestName) mWidth = std::max(mWidth, name.size());
    mRows.emplace_back(std::move(name), std::move(meaning));
  }
  void Write(std::ostream& out) const {
    for (const auto& [name, meaning] : mRows) {
      out << "  " << name;
      if (name.size() > mWidth)
        out << '\n' << std::string(mWidth + 4, ' ');
      else
        out << std::string(mWidth + 2 - name.size(), ' ');
      WriteWrapped(out, meaning, mWidth + 4);
    }
  }

 private:
  std::size_t mWidth = 0;
  std::vector<std::pair<std::string, std::string>> mRows;
};

void ListOptions(std::ostream& out, const std::vector<OptionFacts>& options) {
  std::vector<std::string> groups;
  for (const OptionFacts& option : options)
    if (std::find(groups.begin(), groups.end(), option.Group) == groups.end())
      groups.push_back(option.Group);
  for (const std::string& group : groups) {
    TwoColumns columns;
    for (const OptionFacts& option : options)
      if (option.Group == group) columns.Add(ShownOption(option), ShownMeaning(option));
    out << '\n' << group << ":\n";
    columns.Write(out);
  }
}

void ListExamples(std::ostream& out, const std::vector<Example>& examples) {
  if (examples.empty()) return;
  out << "\nExamples:\n";
  for (const Example& example : examples)
    out << "  vendrelmodel " << example.Line << "\n      " << example.Meaning << '\n';
}

std::string HelpOfCommand(const CommandFacts& command) {
  std::ostringstream out;
  out << command.Purpose << "\n\n  vendrelmodel " << command.Name;
  for (const ArgumentFacts& argument : command.Arguments) out << ' ' << ShownArgument(argument);
  out << " [options]\n";
  if (!command.Arguments.empty()) {
    TwoColumns columns;
    for (const ArgumentFacts& argument : command.Arguments)
      columns.Add(argument.Name, argument.Meaning);
    out << '\n';
    columns.Write(out);
  }
  ListOptions(out, command.Options);
  ListExamples(out, command.Examples);
  return out.str();
}

std::string HelpOfTool(const CLI::App& app) {
  std::ostringstream out;
  out << app.get_description() << "\n\n  vendrelmodel COMMAND FILE... [options]\n"
      << "  vendrelmodel FILE                the same as: vendrelmodel tree FILE\n"
      << "  vendrelmodel COMMAND --help      what a command takes, with examples\n";
  const std::vector<CommandFacts> commands = FactsOf(app);
  for (const std::string& group : CommandGroups()) {
    TwoColumns columns;
    bool any = false;
    for (const CommandFacts& command : commands)
      if (command.Group == group) {
        columns.Add(
            command.Name + std::string(12 - std::min<std::size_t>(12, command.Name.size()), ' '),
            command.Purpose);
        any = true;
      }
    if (!any) continue;
    out << '\n' << group << ":\n";
    columns.Write(out);
  }
  ListOptions(out, OwnOptionsOf(app));
  return out.str();
}

}  // namespace

std::string HelpText::make_help(const CLI::App* app, std::string, CLI::AppFormatMode) const {
  return app->get_parent() ? HelpOfCommand(FactsOfCommand(*app)) : HelpOfTool(*app);
}

}  // namespace vendrel::cli
