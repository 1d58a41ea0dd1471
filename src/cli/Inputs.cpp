#include "cli/Inputs.h"

#include "cli/Report.h"

namespace vendrel::cli {
namespace {

constexpr std::size_t kMostShown = 3;

bool TakesValue(const CLI::App& app, const std::string& argument) {
  for (const CLI::App* command : app.get_subcommands({})) {
    const CLI::Option* option = command->get_option_no_throw(argument);
    if (option && option->get_items_expected_max() > 0) return true;
  }
  return false;
}

std::vector<std::string> PathsIn(std::istream& list) {
  std::vector<std::string> paths;
  for (std::string line; std::getline(list, line);) {
    if (line.ends_with('\r')) line.pop_back();
    if (!line.empty()) paths.push_back(line);
  }
  return paths;
}

}  // namespace

std::string Inputs::Shown() const {
  std::string text;
  for (std::size_t i = 0; i < Paths.size() && i < kMostShown; ++i)
    text.append(i == 0 ? "" : ", ").append(Paths[i]);
  if (Paths.size() > kMostShown) text += " and others";
  return text;
}

void AddInputs(CLI::App& command, Inputs& inputs) {
  command
      .add_option("file", inputs.Paths,
                  "Projects, modules, groups or folders; - reads a list of them")
      ->required();
}

void AddInputsAndName(CLI::App& command, Inputs& inputs, const std::string& meaning) {
  command
      .add_option(
          "file", inputs.Paths,
          "Projects, modules, groups or folders (- reads a list of them), and last: " + meaning)
      ->required();
}

std::string TakeName(Inputs& inputs, const std::string& what) {
  if (!inputs.AreSeveral())
    throw ToolError(exUsage, "'" + inputs.Shown() + "' stands alone; say " + what + " behind it");
  std::string name = std::move(inputs.Paths.back());
  inputs.Paths.pop_back();
  return name;
}

std::string TakeNameIfAny(Inputs& inputs) {
  if (!inputs.AreSeveral() || KindOfInput(inputs.Paths.back()) != InputKind::Missing) return {};
  return TakeName(inputs, {});
}

InputKind KindOfInput(const Inputs& inputs) {
  return inputs.AreSeveral() ? InputKind::Folder : KindOfInput(inputs.Paths.front());
}

int ForEachInput(const Inputs& inputs, const CommonOptions& options, const Streams& streams,
                 const std::function<int(const std::string&)>& step) {
  int code = exDone;
  for (const std::string& path : inputs.Paths) {
    try {
      code = Worse(code, step(path));
    } catch (const ToolError& error) {
      if (!inputs.AreSeveral() || (error.Code() != exFailed && error.Code() != exNo)) throw;
      ReportFailure(streams.Err, error.what(), error.Code(), options.DiagnosticsAsJson());
      code = Worse(code, error.Code());
    }
  }
  return code;
}

int ForEachProject(const Inputs& inputs, const CommonOptions& options, const Streams& streams,
                   const std::function<void(VBProject&)>& visit, LoadDepth depth,
                   const std::function<void(VBProject&)>& prepare) {
  const Streams each = inputs.For(streams);
  return ForEachInput(inputs, options, streams, [&](const std::string& path) {
    return ForEachProject(path, options, each, visit, depth, prepare);
  });
}

void ReadListedInputs(const CLI::App& app, std::vector<std::string>& arguments,
                      const Streams& streams) {
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    if (arguments[i] != "-") {
      i += arguments[i].starts_with('-') && TakesValue(app, arguments[i]);
      continue;
    }
    if (!streams.In) throw ToolError(exUsage, "'-': there is no list to read; name the paths");
    const std::vector<std::string> paths = PathsIn(*streams.In);
    if (paths.empty()) throw ToolError(exNo, "'-': the list is empty");
    const auto at = arguments.erase(arguments.begin() + static_cast<std::ptrdiff_t>(i));
    arguments.insert(at, paths.begin(), paths.end());
    i += paths.size() - 1;
  }
}

void WriteResult(const CommonOptions& options, const Streams& streams, const Inputs& inputs,
                 const std::function<void(std::ostream&)>& write, ResultForm form) {
  for (const std::string& path : inputs.Paths) RefuseAsResult(options, path);
  WriteResult(options, streams, inputs.Paths.front(), write, form);
}

}  // namespace vendrel::cli
