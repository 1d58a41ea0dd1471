// From a path to a tree, by the options of the tool.

#include <dlfcn.h>

#include <CLI/CLI.hpp>
#include <chrono>
#include <sstream>

#include "Element.h"
#include "LargePages.h"
#include "cli/ProjectSets.h"
#include "cli/Session.h"

namespace vendrel::python {
namespace {

// Options that say how the tool shows things, not how it reads them.
bool IsOfTheTool(std::string_view name) {
  for (const std::string_view each :
       {"output", "root", "strict", "quiet", "diagnostics", "error-report", "color"})
    if (name == each) return true;
  return false;
}

// The long name of an option without its dashes; empty for one of the tool alone.
std::string NameOf(const CLI::Option& option) {
  if (option.get_lnames().empty()) return {};
  const std::string& name = option.get_lnames().front();
  return name == "help" || IsOfTheTool(name) ? std::string() : name;
}

std::vector<const CLI::Option*> ReadingOptions(const CLI::App& app) {
  std::vector<const CLI::Option*> options;
  const auto take = [&](const CLI::App& group) {
    for (const CLI::Option* option : group.get_options())
      if (!NameOf(*option).empty()) options.push_back(option);
  };
  take(app);
  for (const CLI::App* group :
       app.get_subcommands([](const CLI::App* one) { return one->get_name().empty(); }))
    take(*group);
  return options;
}

std::string ValueOf(py::handle value) {
  if (PyBool_Check(value.ptr())) return value.cast<bool>() ? "True" : "False";
  return TextFrom(py::str(value));
}

// "--define", "DEBUG=1" for {"DEBUG": 1}; a list gives the option once for each of its items.
void AddArguments(std::vector<std::string>& arguments, const std::string& name,
                  const CLI::Option& option, py::handle value) {
  const auto add = [&](std::string text) { arguments.push_back(name + "=" + std::move(text)); };
  if (value.is_none()) return;
  if (option.get_items_expected_max() == 0) {
    if (value.cast<bool>()) arguments.push_back(name);
  } else if (py::isinstance<py::dict>(value)) {
    for (const auto& [key, each] : value.cast<py::dict>()) add(TextFrom(key) + "=" + ValueOf(each));
  } else if (py::isinstance<py::list>(value) || py::isinstance<py::tuple>(value)) {
    for (const py::handle each : value) add(ValueOf(each));
  } else {
    add(ValueOf(value));
  }
}

// As an argument of Python: "no_references", and "as_" for what is a keyword there.
std::string ArgumentName(const CLI::Option& option) {
  std::string name = NameOf(option);
  std::replace(name.begin(), name.end(), '-', '_');
  if (py::module_::import("keyword").attr("iskeyword")(name).cast<bool>()) name += '_';
  return name;
}

std::string Choices(const std::vector<const CLI::Option*>& options) {
  std::string names;
  for (const CLI::Option* option : options)
    names += (names.empty() ? "" : ", ") + ArgumentName(*option);
  return names;
}

void TakeOptions(const py::dict& given, cli::CommonOptions& options) {
  CLI::App app;
  cli::AddCommonOptions(app, options);
  const auto known = ReadingOptions(app);
  std::vector<std::string> arguments;
  for (const auto& [key, value] : given) {
    const std::string name = TextFrom(key);
    const auto found = std::find_if(known.begin(), known.end(), [&](const CLI::Option* option) {
      return ArgumentName(*option) == name;
    });
    if (found == known.end())
      throw py::type_error("load() takes no option '" + name + "'; there are " + Choices(known));
    AddArguments(arguments, "--" + NameOf(**found), **found, value);
  }
  try {
    std::reverse(arguments.begin(), arguments.end());  // as the parser takes them
    app.parse(arguments);
  } catch (const CLI::ParseError& error) {
    throw cli::ToolError(cli::exUsage, error.what());
  }
}

// Asked behind each module, without the interpreter's lock: tells how far the load is, and looks
// for Ctrl-C. What Python raises there stops the load.
class Watch {
 public:
  explicit Watch(py::object progress) : mProgress(std::move(progress)) {}

  void Tie(VBProject& project) {
    project.ComponentLoaded.Add([this, &project](std::int32_t done) {
      mPages.Look();
      const auto now = std::chrono::steady_clock::now();
      const std::size_t all = project.Components.Count();
      const bool isLast = static_cast<std::size_t>(done) == all && !mProgress.is_none();
      if (mRaised || (now < mNext && !isLast)) return;
      mNext = now + std::chrono::milliseconds(50);
      const py::gil_scoped_acquire python;
      try {
        if (PyErr_CheckSignals() != 0) throw py::error_already_set();
        if (!mProgress.is_none()) mProgress(done, all);
      } catch (py::error_already_set& error) {
        mRaised.emplace(std::move(error));
        project.CancelLoad = true;
      }
    });
  }
  void Untie(VBProject& project) { project.ComponentLoaded.Clear(); }
  void RaiseIfAny() {
    if (mRaised) throw py::error_already_set(std::move(*mRaised));
  }

 private:
  py::object mProgress;
  LargePages mPages;
  std::optional<py::error_already_set> mRaised;
  std::chrono::steady_clock::time_point mNext =
      std::chrono::steady_clock::now() + std::chrono::milliseconds(50);
};

void Fill(Root& root, const std::string& path, cli::LoadDepth depth, Watch& watch) {
  std::ostringstream told;
  const cli::Streams streams{told, told};
  const auto prepare = [&](VBProject& project) { watch.Tie(project); };
  root.Files.emplace();
  const cli::InputKind kind = cli::KindOfInput(path);
  if (kind == cli::InputKind::Group) {
    root.Group = cli::LoadGroup(path, root.Options, streams, depth, prepare);
    for (VBProject& project : root.Group->AllVBProjects()) watch.Untie(project);
    return;
  }
  if (kind == cli::InputKind::Folder) {
    Diagnostics passed;
    if (!cli::ProjectFilesBelow(path, passed).empty())
      throw cli::ToolError(
          cli::exUsage, path + ": a folder of projects; projects() lists them, load() takes one");
    root.Project = cli::LoadFolderOfModules(path, root.Options, streams, depth, prepare);
  } else {
    root.Project = cli::LoadInput(path, root.Options, streams, depth, prepare);
  }
  watch.Untie(*root.Project);
}

// A file, or what stands in its place: the data of a loader.
std::string InputOf(const py::object& path, const cli::CommonOptions& options) {
  if (path.is_none() == options.Custom.empty())
    throw py::type_error("load() takes either a path, or custom='PROGID=DATA' in its place");
  return path.is_none() ? "custom:" + options.Custom
                        : TextFrom(py::str(py::module_::import("os").attr("fspath")(path)));
}

py::object Load(const py::object& path, bool modules, py::object progress,
                const py::kwargs& options) {
  const auto root = std::make_shared<Root>();
  TakeOptions(options, root->Options);
  const std::string file = InputOf(path, root->Options);
  if (!root->Options.Loader.empty()) OfferToLoaders();
  Watch watch(std::move(progress));
  WithoutPython(*root, [&] {
    Fill(*root, file, modules ? cli::LoadDepth::Modules : cli::LoadDepth::ProjectFile, watch);
  });
  watch.RaiseIfAny();
  root->IsWhole = modules;
  return Wrap(root, root->Top());
}

py::list Projects(const py::object& path) {
  const std::string folder = TextFrom(py::str(py::module_::import("os").attr("fspath")(path)));
  vendrel::Workspace workspace;
  std::vector<std::string> files;
  {
    const vendrel::Workspace::Use use(workspace);
    const py::gil_scoped_release release;
    Diagnostics passed;
    for (const FileSystemObject& file : cli::ProjectFilesBelow(folder, passed))
      files.push_back(file.NativePath());
  }
  py::list found;
  for (const std::string& file : files) found.append(TextOf(file));
  return found;
}

// Name, whether it is a flag, whether it may be given often, what it means.
py::list OptionsOfLoad() {
  cli::CommonOptions options;
  CLI::App app;
  cli::AddCommonOptions(app, options);
  py::list known;
  for (const CLI::Option* option : ReadingOptions(app)) {
    known.append(py::make_tuple(ArgumentName(*option), option->get_items_expected_max() == 0,
                                option->get_items_expected_max() > 1, option->get_description()));
  }
  return known;
}

}  // namespace

void OfferToLoaders() {
  Dl_info own;
  if (dladdr(reinterpret_cast<const void*>(&OfferToLoaders), &own) != 0)
    dlopen(own.dli_fname, RTLD_NOW | RTLD_NOLOAD | RTLD_GLOBAL);
}

void AddLoading(py::module_& module) {
  module.def("load", &Load, py::arg("path") = py::none(), py::kw_only(), py::arg("modules") = true,
             py::arg("progress") = py::none());
  module.def("projects", &Projects, py::arg("folder"));
  module.def("options_of_load", &OptionsOfLoad);
  py::module_::import("atexit").attr("register")(py::cpp_function(&Root::LeaveToTheEnd));
}

}  // namespace vendrel::python
