#include <memory>

#include "cli/Commands.h"
#include "cli/Interrupts.h"
#include "cli/Report.h"
#include "cli/Results.h"
#include "cli/Session.h"
#include "services/TemporaryFolder.h"

namespace vendrel::cli {
namespace {

struct BuildArguments {
  CommonOptions Common;
  std::string File;
  std::string Compiler;
};

std::string LogText(const VBProject& project) {
  FileSystemObject log;
  log.SetFullPath("build.log");
  log.SetFolderPath(project.LogFolder);
  if (!log.Exists()) return {};
  log.OpenFile();
  std::string text;
  while (!log.AtEnd()) text.append(log.NextLine()).push_back('\n');
  log.CloseFile();
  return text;
}

// Compiles the project where it stands; false where it was not compiled.
bool Build(VBProject& project, const std::string& path) {
  try {
    return project.Make();
  } catch (const VendrelError& error) {
    if (error.Number() == errFileNotFound && error.Text().find("build.log") != std::string::npos)
      throw ToolError(exNo, path + ": the compiler wrote no log" +
                                (project.LastError.empty() ? "" : " (" + project.LastError + ")"));
    throw ToolError(exFailed, path + ": cannot be compiled: " + error.Text());
  }
}

int RunBuild(const BuildArguments& arguments, const Streams& streams) {
  const InputKind kind = KindOfInput(arguments.File);
  if (kind == InputKind::Module)
    throw ToolError(exUsage, arguments.File + ": a module alone is no program; name its project");
  const auto project = LoadInput(arguments.File, arguments.Common, streams, LoadDepth::ProjectFile);
  project->OutputFileName.SetFullPath(project->FileName.FullPath());
  project->SetCompiler(arguments.Compiler);
  if (project->Compiler().empty())
    throw ToolError(exUsage, "no compiler is registered; name one with --compiler");
  const InterruptHold hold;
  std::unique_ptr<TemporaryFolder> temporary;
  if (project->LogFolder.empty()) {
    temporary = std::make_unique<TemporaryFolder>("build");
    project->LogFolder = temporary->Path();
  } else {
    project->LogFolder = AbsolutePath(project->LogFolder);
  }
  bool succeeded = false;
  WriteResult(arguments.Common, streams, arguments.File, [&](std::ostream& out) {
    succeeded = Build(*project, arguments.File);
    out << LogText(*project);
  });
  const int code = ReportDiagnostics(*project, arguments.Common, streams.Err);
  if (!succeeded) throw ToolError(exNo, arguments.File + ": not compiled; the log tells why");
  if (!project->LastError.empty())
    streams.Err << "vendrelmodel: " << arguments.File << ": compiled, but " << project->LastError
                << '\n';
  return code;
}

}  // namespace

void AddBuildCommand(CLI::App& app, Job& job) {
  auto* command = app.add_subcommand("build", "Compile a project and show the log");
  const auto arguments = std::make_shared<BuildArguments>();
  command->add_option("file", arguments->File, "A project")->required();
  command
      ->add_option("--compiler", arguments->Compiler,
                   "The command that compiles, such as 'wine /opt/vb/VB6.EXE'")
      ->type_name("COMMAND");
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &job] {
    job.Run = [arguments, &streams = job.Streams] { return RunBuild(*arguments, streams); };
  });
}

}  // namespace vendrel::cli
