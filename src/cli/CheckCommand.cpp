#include <cstdlib>
#include <memory>

#include "cli/Check.h"
#include "cli/Commands.h"
#include "cli/Results.h"

namespace vendrel::cli {
namespace {

// What was given on the command line.
struct CheckOptions : CheckArguments {
  bool Json = false;
  bool Sarif = false;
  std::string Annotations;
};

// "auto": by the variable that a server sets for what it runs.
std::string ServerOf(const std::string& annotations) {
  if (annotations != "auto") return annotations;
  if (std::getenv("TF_BUILD")) return "azure";
  return std::getenv("GITLAB_CI") ? "gitlab" : "github";
}

FindingForm FormOf(const CheckOptions& options) {
  if (options.Sarif) return FindingForm::Sarif;
  if (options.Json) return FindingForm::Json;
  const std::string server = ServerOf(options.Annotations);
  if (server == "github") return FindingForm::GitHub;
  if (server == "azure") return FindingForm::Azure;
  if (server == "gitlab") return FindingForm::GitLab;
  return options.Common.DiagnosticsAsJson() ? FindingForm::Json : FindingForm::Text;
}

int RunCheck(CheckOptions& options, const Streams& streams) {
  ApplyToProcess(options.Common);
  options.Form = FormOf(options);
  Check check(options, streams);
  int code = exDone;
  WriteResult(options.Common, streams, options.Paths,
              [&](std::ostream& out) { code = check.Run(out); });
  check.WriteBaseline();
  return code;
}

}  // namespace

void AddCheckCommand(CLI::App& app, Job& job) {
  auto* command =
      app.add_subcommand("check", "What is missing or not understood in a project or folder");
  const auto options = std::make_shared<CheckOptions>();
  AddInputs(*command, options->Paths);
  auto* form = command->add_option_group("form");
  form->add_flag("--json", options->Json, "One JSON object a line");
  form->add_flag("--sarif", options->Sarif, "As a SARIF 2.1.0 log");
  form->add_option("--annotations", options->Annotations,
                   "For a build server: github, azure, gitlab, or auto, by its environment")
      ->check(CLI::IsMember({"github", "azure", "gitlab", "auto"}));
  form->require_option(0, 1);
  command->add_flag("--verbose", options->Verbose,
                    "Each reference whose file is not on this machine, not their number alone");
  command
      ->add_option("--rule", options->Rules,
                   "The level of a rule: off, note, warning or error; may be repeated")
      ->type_name("ID=LEVEL")
      ->allow_extra_args(false);
  command->add_option("--baseline", options->Baseline, "Hide the findings that this file lists")
      ->type_name("FILE");
  command->add_flag("--write-baseline", options->WritesBaseline,
                    "Write all findings to the file of --baseline");
  AddCommonOptions(*command, options->Common);
  command->callback([options, &job] {
    job.Run = [options, &streams = job.Streams] { return RunCheck(*options, streams); };
  });
}

}  // namespace vendrel::cli
