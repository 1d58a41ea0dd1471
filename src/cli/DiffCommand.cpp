#include <memory>
#include <optional>
#include <sstream>

#include "cli/Commands.h"
#include "cli/DiffTargets.h"
#include "cli/GitRevision.h"
#include "cli/Report.h"
#include "cli/Results.h"
#include "cli/TableWriter.h"
#include "core/Ascii.h"
#include "services/Paths.h"

namespace vendrel::cli {
namespace {

// A run on two paths: what it writes, and its exit code.
int DiffPaths(const DiffArguments& arguments, const std::string& before, const std::string& after,
              const Streams& streams, std::ostream& out) {
  if (arguments.Api) {
    ApiDiff diff(arguments);
    const int code = CompareInputs(before, after, arguments.Common, streams, diff);
    TableStyle style{"diff", "Changes of the public surface", TableForm::Text, true};
    if (arguments.Json) style.Form = TableForm::Json;
    if (arguments.Html) style.Form = TableForm::Html;
    WriteTables(out, diff.Report().Tables(), style, arguments.Common);
    return diff.Report().Breaks() > 0 ? Worse(code, exNo) : code;
  }
  TreeDiff diff(arguments, out);
  const int code = CompareInputs(before, after, arguments.Common, streams, diff);
  if (!arguments.Common.Quiet && !arguments.Json) streams.Err << diff.Writer().Summary() << '\n';
  return diff.Writer().Count() > 0 ? Worse(code, exNo) : code;
}

// Files of a revision are shown as git names them.
std::string WithRevisions(std::string text, const std::vector<const GitRevision*>& revisions) {
  for (const GitRevision* revision : revisions) {
    const std::string windows = WindowsPath(revision->Folder());
    const std::string folder = windows.substr(0, windows.size() - 1);
    text = ReplaceAll(text, ShownPaths().Of(folder) + "/", revision->Shown());
    text = ReplaceAll(text, revision->Folder(), revision->Shown());
    text = ReplaceAll(text, windows, revision->Shown());
  }
  return text;
}

int DiffRevisions(const DiffArguments& arguments, const Streams& streams, std::ostream& out) {
  const GitRevision before(arguments.Before, arguments.Revisions.front());
  std::optional<GitRevision> after;
  if (arguments.Revisions.size() > 1) after.emplace(arguments.Before, arguments.Revisions.back());
  std::vector<const GitRevision*> revisions{&before};
  if (after) revisions.push_back(&*after);
  std::ostringstream text, told;
  const Streams held{text, told, false, false, nullptr, nullptr};
  int code = exDone;
  try {
    code =
        DiffPaths(arguments, before.Path(), after ? after->Path() : arguments.Before, held, text);
  } catch (const ToolError& error) {
    throw ToolError(error.Code(), WithRevisions(error.what(), revisions));
  }
  out << WithRevisions(text.str(), revisions);
  streams.Err << WithRevisions(told.str(), revisions);
  return code;
}

void RefuseUnfitting(const DiffArguments& arguments) {
  const auto refuse = [](const std::string& text) { throw ToolError(exUsage, text); };
  if (arguments.Revisions.empty() && arguments.After.empty())
    refuse("diff: say what to compare with: a second path, or --git REV");
  if (!arguments.Revisions.empty() && !arguments.After.empty())
    refuse("--git compares one path with itself: '" + arguments.After + "' is one too many");
  if (arguments.Html && !arguments.Api) refuse("--html shows what callers see: it needs --api");
  if (arguments.AllModules && !arguments.Api) refuse("--all-modules needs --api");
}

int RunDiff(const DiffArguments& arguments, const Streams& streams) {
  RefuseUnfitting(arguments);
  int code = exDone;
  WriteResult(arguments.Common, streams, arguments.Before, [&](std::ostream& out) {
    code = arguments.Revisions.empty()
               ? DiffPaths(arguments, arguments.Before, arguments.After, streams, out)
               : DiffRevisions(arguments, streams, out);
  });
  return code;
}

}  // namespace

void AddDiffCommand(CLI::App& app, Job& job) {
  auto* command = app.add_subcommand("diff", "What differs between two projects, by element");
  const auto arguments = std::make_shared<DiffArguments>();
  command->add_option("before", arguments->Before, "A project, module, group or folder")
      ->required();
  command->add_option("after", arguments->After, "Another of the same kind");
  command
      ->add_option("--git", arguments->Revisions,
                   "Behind the path: a revision of its repository to compare with, or two")
      ->type_name("REV")
      ->expected(1, 2);
  command->add_flag("--json", arguments->Json, "A JSON object for each difference");
  command->add_flag("--no-text", arguments->NoText, "Without code lines: declarations alone");
  command->add_flag("--places", arguments->Places, "With the lines on which elements stand");
  command->add_flag("--comments", arguments->Comments, "With comments and blank lines");
  command->add_flag("--api", arguments->Api,
                    "What callers see alone, and whether each change breaks them");
  command->add_flag("--all-modules", arguments->AllModules,
                    "For callers: public members of every module, exposed or not");
  command->add_flag("--html", arguments->Html, "What callers see, as a page");
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &job] {
    job.Run = [arguments, &streams = job.Streams] { return RunDiff(*arguments, streams); };
  });
}

}  // namespace vendrel::cli
