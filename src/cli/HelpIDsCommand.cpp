#include <algorithm>
#include <limits>
#include <memory>
#include <optional>

#include "cli/Commands.h"
#include "cli/Elements.h"
#include "cli/Inputs.h"
#include "cli/JsonLines.h"
#include "cli/Results.h"
#include "cli/ShownText.h"
#include "cli/WatchedFiles.h"
#include "cli/Writer.h"
#include "output/HelpIDs.h"
#include "output/UniqueNames.h"
#include "writer/WriteRun.h"

namespace vendrel::cli {
namespace {

struct HelpIDsArguments {
  CommonOptions Common;
  Inputs File;
  std::optional<std::int32_t> Begin;
  bool Force = false;
  bool Write = false;
  bool Json = false;
  bool Header = false;
};

void WriteAsText(std::ostream& out, const std::vector<HelpTopic>& topics) {
  ShownPaths paths;
  for (const HelpTopic& topic : topics)
    WriteRow(out, {std::to_string(topic.HelpContextID), topic.Element->QualifiedName(),
                   PlaceOf(*topic.Element, paths)});
}

void WriteAsJson(JsonLines& json, const UniqueNames& names, const std::vector<HelpTopic>& topics) {
  for (const HelpTopic& topic : topics) {
    json.Begin();
    json.Number("HelpContextID", topic.HelpContextID);
    json.Text("UniqueName", names.Of(*topic.Element));
    json.Text("QualifiedName", topic.Element->QualifiedName());
    json.Place(*topic.Element);
    json.End();
  }
}

void WriteMap(std::ostream& out, JsonLines& json, UniqueNames& names, VBProject& project,
              const HelpIDsArguments& arguments) {
  const std::vector<HelpTopic> topics = HelpTopicsOf(project);
  if (arguments.Header)
    WriteHelpHeader(out, topics);
  else if (arguments.Json) {
    names.Add(Describe(project));
    WriteAsJson(json, names, topics);
  } else
    WriteAsText(out, topics);
}

// The project is written in place, with backups; unless a module was refused, all of them are.
void WriteBack(VBProject& project) {
  project.OutputFileName.SetFullPath(project.FileName.FullPath());
  WriteOutOrTell(project);
  if (project.Diagnostics.CountOf(DiagnosticCode::WriteRefused) > 0)
    throw ToolError(exFailed, ShownPaths().Of(project.FileName.FullPath()) +
                                  ": not every module could be written");
}

// Why no element of a project has got a number.
std::string WhyNone(const VBProject& project, bool force) {
  const auto& modules = project.Components.Listed();
  if (force && project.RetainContextIDs)
    return "##RETAIN_CONTEXT_IDS keeps those it has, and nothing is without one";
  if (std::none_of(modules.begin(), modules.end(),
                   [](const Component& module) { return TakesHelpIDs(module); }))
    return "the project has its ID, and no module is a public class or control: what stands in "
           "standard modules, forms and private classes takes none";
  return "the project, its public classes and their public members all have one; say --force to "
         "number them anew";
}

// Numbers the project and gives whether anything got another number.
bool Assign(VBProject& project, const HelpIDsArguments& arguments, const Streams& streams) {
  const std::vector<HelpTopic> before = HelpTopicsOf(project);
  project.AssignHelpContextIDs(*arguments.Begin, arguments.Force);
  if (HelpTopicsOf(project) != before) return true;
  ShownPaths paths;
  if (arguments.Common.Quiet) return false;
  const bool keeps = arguments.Write && project.Reading.KeepProjectLines;
  const std::string file = project.FileName.FullPath(),
                    text = std::string("no help ID was given") +
                           (keeps ? ", so nothing is written" : "") + ": " +
                           WhyNone(project, arguments.Force);
  TellRemark(streams, arguments.Common, paths.Of(file) + ": " + text,
             {file, 0, 0, "note", CodeName(DiagnosticCode::Told), text, exDone});
  return false;
}

int RunHelpIDs(const HelpIDsArguments& arguments, const Streams& streams) {
  int code = exDone;
  const CommonOptions options = OneAfterTheOther(arguments.Common);
  if (arguments.Write) WatchedFiles::Current()->RemoveLeftFiles();
  WriteResult(arguments.Common, streams, arguments.File, [&](std::ostream& out) {
    const WriteRun run;
    JsonLines json(out, "help-ids", arguments.Common, arguments.Json);
    UniqueNames names;
    code = ForEachProject(arguments.File, options, streams, [&](VBProject& project) {
      if (arguments.Write && project.ProjectSourceAccess != psaReadWrite)
        throw ToolError(exUsage,
                        arguments.File.Shown() + ": --write takes a project (.vbp) or a group");
      const bool changed = arguments.Begin && Assign(project, arguments, streams);
      if (arguments.Write && (changed || !project.Reading.KeepProjectLines)) WriteBack(project);
      WriteMap(out, json, names, project, arguments);
    });
  });
  return code;
}

}  // namespace

void AddHelpIDsCommand(CLI::App& app, Job& job) {
  auto* command =
      app.add_subcommand("help-ids", "Help context IDs, as a map; assigns missing ones");
  const auto arguments = std::make_shared<HelpIDsArguments>();
  AddInputs(*command, arguments->File);
  auto* begin =
      command->add_option("--begin", arguments->Begin, "Number what has no ID, from this one on")
          ->check(CLI::Range(1, std::numeric_limits<std::int32_t>::max()));
  command->add_flag("--force", arguments->Force, "Number everything anew")->needs(begin);
  command->add_flag("--write", arguments->Write, "Write the IDs into the source, with backups")
      ->needs(begin);
  auto* json = command->add_flag("--json", arguments->Json, "One JSON object a line");
  command->add_flag("--header", arguments->Header, "As #define lines for a help compiler")
      ->excludes(json);
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &job] {
    job.Run = [arguments, &streams = job.Streams] { return RunHelpIDs(*arguments, streams); };
  });
}

}  // namespace vendrel::cli
