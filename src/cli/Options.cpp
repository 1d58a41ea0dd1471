#include "cli/Options.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <thread>

#include "cli/JsonLines.h"
#include "cli/Report.h"
#include "cli/WatchedFiles.h"
#include "comments/TagDefinitions.h"
#include "core/Workspace.h"
#include "diagnostics/ErrorReport.h"
#include "diagnostics/VendrelError.h"
#include "services/CodePage.h"
#include "services/FileSystemObject.h"
#include "services/Paths.h"
#include "typelib/TypeLibService.h"

namespace vendrel::cli {
namespace {

void CheckCodePage(const std::string& name) {
  try {
    const CodePageChooser chooser(name);
  } catch (const VendrelError&) {
    throw ToolError(exUsage, "--codepage: no code page is named '" + name +
                                 "'; give a number such as 1251, or auto");
  }
}

void ApplyDrives(const std::vector<std::string>& drives) {
  DriveMap::Current().Reset();
  for (const std::string& text : drives) {
    const NamedValue drive = CutNamedValue("--drive", text);
    try {
      DriveMap::Current().SetFromText(drive.Name + "=" + AbsolutePath(drive.Value));
    } catch (const VendrelError&) {
      throw ToolError(
          exUsage, "--drive: '" + text + "' is not a letter and a folder, as in " + "C=/home/me/c");
    }
  }
}

void ApplyTags(const std::string& path) {
  TemplateObjects::Install(nullptr);
  if (path.empty()) return;
  try {
    UseTagDefinitionFile(FileSystemObject(AbsolutePath(path)).NativePath());
  } catch (const VendrelError& error) {
    throw ToolError(exFailed, "--tags: " + path + ": " + ReasonOf(error, path));
  }
}

// Names of standard output, whatever that is; a result is put in the place of other files.
std::string WithoutStandardOutput(const std::string& path) {
  for (const std::string_view name : {"-", "/dev/stdout", "/dev/fd/1", "/proc/self/fd/1"})
    if (path == name) return {};
  return path;
}

}  // namespace

const ReadingRules& CommonOptions::Preset() const {
  return Reading == "classic" ? ReadingRules::Classic() : ReadingRules::Complete();
}

// A report is one file, and a loader of somebody else may keep things of its own between loads.
unsigned CommonOptions::JobsAtHand() const {
  if (!ErrorReport.empty() || !Loader.empty() || !WatchedFiles::AreOfThisMachine()) return 1;
  return Jobs > 0 ? Jobs : std::max(1u, std::thread::hardware_concurrency());
}

CommonOptions OneAfterTheOther(CommonOptions options) {
  options.Jobs = 1;
  return options;
}

void AddCommonOptions(CLI::App& command, CommonOptions& options) {
  auto* group = command.add_option_group(kReadingHeading);
  group->add_option("--reading", options.Reading, "How source is read: classic or complete")
      ->check(CLI::IsMember({"classic", "complete"}))
      ->capture_default_str();
  group->add_option("--define", options.Defines, "A constant of conditional compilation")
      ->type_name("NAME=VALUE")
      ->allow_extra_args(false);
  group
      ->add_option("--codepage", options.CodePage,
                   "Code page of files that are neither ASCII nor Unicode: a number, a name, auto")
      ->capture_default_str();
  group->add_option("--drive", options.Drives, "The folder behind a drive letter")
      ->type_name("LETTER=FOLDER")
      ->allow_extra_args(false);
  group->add_option("--set", options.Settings, "An option of the project or a flag of the reading")
      ->type_name("NAME=VALUE")
      ->allow_extra_args(false);
  group->add_option("--tags", options.Tags, "Tag definitions (JSON), added to the built-in ones")
      ->type_name("FILE");
  group
      ->add_option("--comment-file", options.CommentFile,
                   "Apply the tagged comments of this file (XML) once the source is read")
      ->type_name("FILE");
  group->add_flag("--xml-docs", options.XmlDocs,
                  "Take the XML documentation of an assembly into its tree");
  group
      ->add_option("--typelib-path", options.TypeLibPath,
                   "A folder searched for type libraries that others refer to")
      ->type_name("FOLDER")
      ->allow_extra_args(false);
  group
      ->add_option("--reference-path", options.ReferencePath,
                   "A folder searched for assemblies that others refer to")
      ->type_name("FOLDER")
      ->allow_extra_args(false);
  group->add_option("--as", options.As, "What a compiled file is read as: assembly or typelib")
      ->check(CLI::IsMember({"assembly", "typelib"}));
  group->add_option("--loader", options.Loader, "A shared library that has the loader of --custom")
      ->type_name("FILE");
  group
      ->add_option("--custom", options.Custom,
                   "In place of FILE: a project filled by the loader of that name from DATA")
      ->type_name("PROGID=DATA");
  group
      ->add_option("--configuration", options.Configuration,
                   "The configuration of VB.NET projects whose constants count")
      ->type_name("NAME");
  group->add_flag("--unresolved", options.Unresolved,
                  "VB.NET types as written, without what they inherit");
  group->add_flag("--no-references", options.NoReferences,
                  "Without the projects that a VB.NET project refers to");
  group
      ->add_option("--jobs", options.Jobs,
                   "How many projects of a folder are loaded at once (the processors)")
      ->type_name("N")
      ->check(CLI::Range(1, 64));
  group = command.add_option_group(kShowingHeading);
  group
      ->add_option("-o,--output", options.Output,
                   "Write the result to this file; - is standard output")
      ->type_name("FILE")
      ->transform(WithoutStandardOutput);
  group->add_option("--root", options.Root, "A folder from which JSON shows paths")
      ->type_name("FOLDER");
  group->add_option("--color", options.Color, "Colours: auto (on a terminal), always or never")
      ->check(CLI::IsMember({"auto", "always", "never"}))
      ->capture_default_str();
  group->add_flag("--strict", options.Strict, "Exit code 3 if there were warnings");
  group->add_flag("--quiet", options.Quiet, "Tell errors only; no progress");
  group
      ->add_option("--diagnostics", options.Diagnostics,
                   "How diagnostics are written: text or json")
      ->check(CLI::IsMember({"text", "json"}))
      ->capture_default_str();
  group
      ->add_option("--error-report", options.ErrorReport,
                   "Append a report of each failure inside to this file (-: stderr)")
      ->type_name("FILE");
}

void ApplyToProcess(const CommonOptions& options) {
  SetJsonRoot(NativeRootOf(options));
  State().Reset();
  Workspace::Current().Jobs = static_cast<int>(options.JobsAtHand());
  FileOptions::Current() = {};
  TLIApplication::TextPage() = options.CodePage;
  CheckCodePage(options.CodePage);
  ApplyDrives(options.Drives);
  ApplyTags(options.Tags);
  if (!options.ErrorReport.empty()) WriteErrorReports(options.ErrorReport);
}

NamedValue CutNamedValue(const std::string& option, const std::string& text) {
  const std::size_t equals = text.find('=');
  if (equals == std::string::npos || equals == 0)
    throw ToolError(exUsage, option + ": '" + text + "' has no name and value; write " + option +
                                 " Name=Value");
  return {text.substr(0, equals), text.substr(equals + 1)};
}

bool ColoursWanted(const CommonOptions& options, const Streams& streams) {
  if (options.Color == "never" || !options.Output.empty()) return false;
  if (options.Color == "always") return true;
  const char* refused = std::getenv("NO_COLOR");
  return streams.OutIsTerminal && !(refused && *refused) && !IsDumbTerminal();
}

bool IsDumbTerminal() {
  const char* kind = std::getenv("TERM");
  return kind && std::string_view(kind) == "dumb";
}

std::string AbsolutePath(const std::string& path) {
  if (path.empty() || IsAbsolutePath(path)) return path;
  return std::filesystem::absolute(path).lexically_normal().string();
}

}  // namespace vendrel::cli
