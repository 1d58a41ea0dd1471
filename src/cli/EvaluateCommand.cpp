#include <memory>

#include "cli/Commands.h"
#include "cli/ProjectSettings.h"
#include "cli/Report.h"
#include "cli/Results.h"
#include "core/Workspace.h"

namespace vendrel::cli {
namespace {

struct EvaluateArguments {
  CommonOptions Common;
  std::string Condition;
  std::string ProjectConstants;
  std::vector<std::string> ModuleConstants;
  bool DotNet = false;
  bool Script = false;
};

int RunEvaluate(const EvaluateArguments& arguments, const Streams& streams) {
  ApplyToProcess(arguments.Common);
  VBProject project;
  ApplyToProject(arguments.Common, project);
  project.SetLanguageVersion(arguments.DotNet ? lvVisualBasicDotNet : lvVisualBasic5or6);
  const DiagnosticScope scope(&project.Diagnostics, {});
  project.CompilerConstants.AddFromProjectLine(arguments.ProjectConstants, &project);
  CompilerConstants module;
  for (const std::string& line : arguments.ModuleConstants)
    module.AddFromDeclaration(line, &project);
  const std::string answer = arguments.Script
                                 ? module.EvaluationScript(arguments.Condition, &project)
                             : module.Evaluate(arguments.Condition, &project) ? "True\n"
                                                                              : "False\n";
  WriteResult(arguments.Common, streams, std::string(), [&](std::ostream& out) { out << answer; });
  return ReportDiagnostics(project, arguments.Common, streams.Err);
}

}  // namespace

void AddEvaluateCommand(CLI::App& app, Job& job) {
  auto* command = app.add_subcommand("evaluate", "The truth of a condition of #If");
  const auto arguments = std::make_shared<EvaluateArguments>();
  command->add_option("condition", arguments->Condition, "\"#If Win32 And Debug = 1 Then\"")
      ->required();
  command
      ->add_option("--project", arguments->ProjectConstants,
                   "Constants of the project: \"A = 1 : B = 0\"")
      ->type_name("LINE");
  command
      ->add_option("--module", arguments->ModuleConstants,
                   "A constant of the module: \"#Const X = 1\"")
      ->type_name("LINE")
      ->allow_extra_args(false);
  command->add_flag("--dotnet", arguments->DotNet, "By the rules of VB.NET");
  command->add_flag("--script", arguments->Script,
                    "Show the script that the classic reading runs, instead");
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &job] {
    job.Run = [arguments, &streams = job.Streams] { return RunEvaluate(*arguments, streams); };
  });
}

}  // namespace vendrel::cli
