#include "cli/ManualPage.h"

#include <array>

#include "cli/CommandPages.h"
#include "cli/Tool.h"
#include "core/Ascii.h"
#include "output/HtmlText.h"

namespace vendrel::cli {
namespace {

constexpr std::string_view kPurpose = "reads projects of Visual Basic and shows what is in them";

struct ManualRow {
  std::string_view Name, Meaning;
};

constexpr std::array kExitCodes{
    ManualRow{"0", "done"},
    ManualRow{"1", "an input could not be read, or an output not written"},
    ManualRow{"2", "wrong use"},
    ManualRow{"3", "done, but there were warnings, under --strict"},
    ManualRow{"4", "the answer is no: nothing found, something missing, something differs"},
    ManualRow{"128 and more", "stopped by the signal of that number"},
};
constexpr std::array kEnvironment{
    ManualRow{"NO_COLOR", "anything in it: no colours, unless --color always"},
    ManualRow{"TERM", "dumb: neither colours nor progress"},
};

// One form of the manual.
class Form {
 public:
  virtual ~Form() = default;
  virtual void Begin(std::string_view title, std::string_view purpose) = 0;
  virtual void End() = 0;
  virtual void Section(std::string_view title) = 0;
  virtual void Command(const CommandFacts& command) = 0;
  virtual void Group(std::string_view title) = 0;
  virtual void Text(std::string_view text) = 0;
  virtual void Usage(std::string_view line) = 0;
  virtual void Entry(std::string_view name, std::string_view meaning) = 0;
};

class Roff final : public Form {
 public:
  explicit Roff(std::ostream& out) : mOut(out) {}
  void Begin(std::string_view title, std::string_view purpose) override {
    mOut << ".TH " << Escaped(UpperAscii(title)) << " 1 \"\" \"" << ToolVersion()
         << "\"\n.SH NAME\n"
         << Escaped(title) << " \\- " << Escaped(purpose) << '\n';
  }
  void End() override {}
  void Section(std::string_view title) override {
    mOut << ".SH " << Escaped(UpperAscii(title)) << '\n';
  }
  void Command(const CommandFacts& command) override {
    mOut << ".SS " << Escaped(command.Name) << '\n';
  }
  void Group(std::string_view title) override { mOut << ".PP\n.I " << Escaped(title) << '\n'; }
  void Text(std::string_view text) override { mOut << ".PP\n" << Escaped(text) << '\n'; }
  void Usage(std::string_view line) override { mOut << ".PP\n.B " << Escaped(line) << '\n'; }
  void Entry(std::string_view name, std::string_view meaning) override {
    mOut << ".TP\n.B " << Escaped(name) << '\n' << Escaped(meaning) << '\n';
  }

 private:
  // A hyphen of an option is one that can be copied; a dot or quote in front is no request.
  static std::string Escaped(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
      if (c == '\\')
        escaped += "\\e";
      else if (c == '-')
        escaped += "\\-";
      else if (c == '~')
        escaped += "\\(ti";
      else if (c == '^')
        escaped += "\\(ha";
      else if (c == '\'')
        escaped += "\\(aq";
      else if (c == '.' && escaped.empty())
        escaped += "\\&.";
      else
        escaped += c;
    }
    return escaped;
  }
  std::ostream& mOut;
};

class Html final : public Form {
 public:
  explicit Html(std::ostream& out) : mOut(out) {}
  void Begin(std::string_view title, std::string_view purpose) override {
    mOut
        << "<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\"><title>" << title
        << "</title>\n<style>:root{color-scheme:light dark}body{max-width:60em;margin:2em auto;"
           "padding:0 1em;font-family:sans-serif;line-height:1.4}dt,pre{font-family:monospace}"
           "dt{margin-top:.5em;font-weight:bold}nav a{margin-right:.8em}</style></head><body>\n<h1>"
        << title << "</h1>\n<p>" << Escaped(purpose) << "</p>\n";
  }
  void End() override {
    CloseList();
    mOut << "</body></html>\n";
  }
  void Section(std::string_view title) override { Heading("h2", title, {}); }
  void Command(const CommandFacts& command) override { Heading("h3", command.Name, command.Name); }
  void Group(std::string_view title) override { Heading("h4", title, {}); }
  void Text(std::string_view text) override {
    CloseList();
    mOut << "<p>" << Escaped(text) << "</p>\n";
  }
  void Usage(std::string_view line) override {
    CloseList();
    mOut << "<pre>" << Escaped(line) << "</pre>\n";
  }
  void Entry(std::string_view name, std::string_view meaning) override {
    if (!mInList) mOut << "<dl>\n";
    mInList = true;
    mOut << "<dt>" << Escaped(name) << "</dt><dd>" << Escaped(meaning) << "</dd>\n";
  }

 private:
  static std::string Escaped(std::string_view text) {
    std::string escaped;
    AppendHtml(escaped, text);
    return escaped;
  }
  void CloseList() {
    if (mInList) mOut << "</dl>\n";
    mInList = false;
  }
  void Heading(std::string_view tag, std::string_view title, std::string_view anchor) {
    CloseList();
    mOut << '<' << tag;
    if (!anchor.empty()) mOut << " id=\"" << anchor << '"';
    mOut << '>' << Escaped(title) << "</" << tag << ">\n";
  }
  std::ostream& mOut;
  bool mInList = false;
};

std::string UsageOf(const CommandFacts& command) {
  std::string line = "vendrelmodel " + command.Name;
  for (const ArgumentFacts& argument : command.Arguments) line += " " + ShownArgument(argument);
  return line + " [options]";
}

void DescribeOptions(Form& form, const std::vector<OptionFacts>& options, bool shared) {
  std::string group;
  for (const OptionFacts& option : options) {
    if (option.IsShared != shared || option.Name() == "--help") continue;
    if (shared && option.Group != group) form.Group(group = option.Group);
    form.Entry(ShownOption(option), ShownMeaning(option));
  }
}

void DescribeArguments(Form& form, const CommandFacts& command) {
  for (const ArgumentFacts& argument : command.Arguments)
    form.Entry(ShownArgument(argument), argument.Meaning);
}

void DescribeExamples(Form& form, const std::vector<Example>& examples) {
  for (const Example& example : examples)
    form.Entry("vendrelmodel " + std::string(example.Line), example.Meaning);
}

template <typename Rows>
void DescribeRows(Form& form, std::string_view title, const Rows& rows) {
  form.Section(title);
  for (const ManualRow& row : rows) form.Entry(row.Name, row.Meaning);
}

void DescribeRest(Form& form) {
  DescribeRows(form, "Exit status", kExitCodes);
  DescribeRows(form, "Environment", kEnvironment);
  form.End();
}

void WriteManual(Form& form, const std::vector<CommandFacts>& commands) {
  form.Begin("vendrelmodel", kPurpose);
  form.Section("Synopsis");
  form.Usage("vendrelmodel COMMAND FILE... [options]");
  form.Usage("vendrelmodel FILE");
  form.Section("Description");
  form.Text(
      "Reads projects of Visual Basic 5 and 6 (.vbp), groups (.vbg), single modules, VB.NET "
      "projects and solutions (.vbproj, .sln), type libraries and .NET assemblies, and builds the "
      "tree of what stands in them. FILE may be a folder, whose projects are read one after the "
      "other. Results go to standard output, what is told on the way to standard error. A file "
      "alone is shown as by the command tree.");
  form.Section("Commands");
  for (const std::string& group : CommandGroups())
    for (const CommandFacts& command : commands) {
      if (command.Group != group) continue;
      form.Command(command);
      form.Text(command.Purpose + ".");
      form.Usage(UsageOf(command));
      DescribeOptions(form, command.Options, false);
      DescribeExamples(form, command.Examples);
    }
  form.Section("Options of all commands");
  for (const CommandFacts& command : commands) {
    const bool hasAll = !command.Options.empty() && command.Options.back().IsShared;
    if (!hasAll) continue;
    DescribeOptions(form, command.Options, true);
    break;
  }
  DescribeRest(form);
}

}  // namespace

void WriteManPage(std::ostream& out, const std::vector<CommandFacts>& commands) {
  Roff form(out);
  WriteManual(form, commands);
}

void WriteManualAsHtml(std::ostream& out, const std::vector<CommandFacts>& commands) {
  Html form(out);
  WriteManual(form, commands);
}

void WriteManPage(std::ostream& out, const CommandFacts& command) {
  Roff form(out);
  form.Begin("vendrelmodel-" + command.Name, command.Purpose);
  form.Section("Synopsis");
  form.Usage(UsageOf(command));
  if (!command.Arguments.empty()) form.Section("Arguments");
  DescribeArguments(form, command);
  form.Section("Options");
  DescribeOptions(form, command.Options, false);
  DescribeOptions(form, command.Options, true);
  if (!command.Examples.empty()) form.Section("Examples");
  DescribeExamples(form, command.Examples);
  DescribeRest(form);
}

}  // namespace vendrel::cli
