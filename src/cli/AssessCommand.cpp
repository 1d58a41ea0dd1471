#include <charconv>
#include <memory>

#include "cli/CheckSettings.h"
#include "cli/Commands.h"
#include "cli/Inputs.h"
#include "cli/JsonLines.h"
#include "cli/TableWriter.h"
#include "survey/Assessment.h"

namespace vendrel::cli {
namespace {

struct AssessArguments {
  CommonOptions Common;
  Inputs Paths;
  TableForms Forms;
  std::vector<std::string> Weights;
  bool Places = false;
  bool All = false;
};

void TakeWeights(const std::vector<std::string>& texts, HindranceWeights& weights) {
  for (const std::string& text : texts) {
    const NamedValue weight = CutNamedValue("--weight", text);
    std::int64_t number = 0;
    const char* end = weight.Value.data() + weight.Value.size();
    const auto [at, failure] = std::from_chars(weight.Value.data(), end, number);
    if (failure != std::errc() || at != end || number < 0 || number > kMostWeight)
      throw ToolError(exUsage, "--weight " + text + ": a weight is a number from 0 to 1000");
    if (!weights.Set(weight.Name, number))
      throw ToolError(exUsage, "--weight " + text + ": '" + weight.Name +
                                   "' is none of what is counted; see docs/assess.md");
  }
}

int RunAssess(const AssessArguments& arguments, const Streams& streams) {
  int code = exDone;
  Assessment assessment;
  if (!arguments.Paths.Paths.empty())
    assessment.Weights = CheckSettings({}).AtPath(arguments.Paths.Paths.front()).Weights;
  TakeWeights(arguments.Weights, assessment.Weights);
  assessment.NativeRoot = FolderSeenFrom(arguments.Common, arguments.Forms.Json);
  assessment.KeepsFindings = arguments.Places;
  WriteResult(arguments.Common, streams, arguments.Paths, [&](std::ostream& out) {
    code = ForEachProject(arguments.Paths, arguments.Common, streams,
                          [&](VBProject& project) { assessment.Add(project); });
    WriteTables(out, assessment.Tables(),
                {"assess", "What stands in the way", arguments.Forms.Chosen(), arguments.All},
                arguments.Common);
  });
  return code;
}

}  // namespace

void AddAssessCommand(CLI::App& app, Job& job) {
  auto* command =
      app.add_subcommand("assess", "What stands in the way of a move to another platform");
  const auto arguments = std::make_shared<AssessArguments>();
  AddInputs(*command, arguments->Paths);
  AddTableForms(*command, arguments->Forms);
  command->add_flag("--places", arguments->Places, "Each finding with its place, too");
  command
      ->add_option("--weight", arguments->Weights,
                   "Points that one of a kind counts, such as gosub=5; may be repeated")
      ->type_name("ID=POINTS")
      ->allow_extra_args(false);
  command->add_flag("--all", arguments->All, "Every row, not the largest alone");
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &job] {
    job.Run = [arguments, &streams = job.Streams] { return RunAssess(*arguments, streams); };
  });
}

}  // namespace vendrel::cli
