#include <memory>

#include "cli/Commands.h"
#include "cli/Interrupts.h"
#include "cli/ProjectSets.h"
#include "cli/Report.h"
#include "cli/Results.h"
#include "cli/ShownText.h"
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

// Compiles projects where they stand, one after the other.
class Builder {
 public:
  Builder(const BuildArguments& arguments, const Streams& streams, std::ostream& out)
      : mArguments(arguments), mStreams(streams), mOut(out) {}

  /// The worst of what was told.
  int Code() const { return mCode; }

  void Build(VBProject& project) {
    project.OutputFileName.SetFullPath(project.FileName.FullPath());
    project.SetCompiler(mArguments.Compiler);
    if (project.Compiler().empty())
      throw ToolError(exUsage, "no compiler is registered; name one with --compiler");
    const InterruptHold hold;
    const TemporaryFolder temporary("build");
    project.LogFolder =
        project.LogFolder.empty() ? temporary.Path() : AbsolutePath(project.LogFolder);
    const std::string path = ShownPaths().Of(project.FileName.FullPath());
    try {
      const bool succeeded = project.Make();
      mOut << LogText(project);
      if (!succeeded) return Report(exNo, path + ": not compiled; the log tells why");
      if (!project.LastError.empty()) Report(exDone, path + ": compiled, but " + project.LastError);
    } catch (const VendrelError& error) {
      if (error.Number() == errFileNotFound && error.Text().find("build.log") != std::string::npos)
        return Report(exNo, path + ": the compiler wrote no log" +
                                (project.LastError.empty() ? "" : " (" + project.LastError + ")"));
      Report(exFailed, path + ": cannot be compiled: " + ReasonOf(error, path));
    }
  }

 private:
  void Report(ExitCode code, const std::string& text) {
    TellRemark(mStreams, mArguments.Common, "vendrelmodel: " + Shown(text),
               {{}, 0, 0, code == exDone ? "warning" : "error", "failure", text, code});
    if (mCode != exFailed && code != exDone) mCode = code;
  }

  const BuildArguments& mArguments;
  const Streams& mStreams;
  std::ostream& mOut;
  int mCode = exDone;
};

int RunBuild(const BuildArguments& arguments, const Streams& streams) {
  const InputKind kind = KindOfInput(arguments.File);
  if (kind == InputKind::Module || kind == InputKind::TypeLibrary)
    throw ToolError(exUsage, arguments.File + ": " +
                                 (kind == InputKind::Module ? "a module alone is no program"
                                                            : "this is compiled already") +
                                 "; name a project");
  int told = exDone, built = exDone;
  WriteResult(arguments.Common, streams, arguments.File, [&](std::ostream& out) {
    Builder builder(arguments, streams, out);
    told = ForEachProject(
        arguments.File, OneAfterTheOther(arguments.Common), streams,
        [&](VBProject& project) { builder.Build(project); }, LoadDepth::ProjectFile);
    built = builder.Code();
  });
  return built == exDone ? told : built;
}

}  // namespace

void AddBuildCommand(CLI::App& app, Job& job) {
  auto* command = app.add_subcommand("build", "Compile a project and show the log");
  const auto arguments = std::make_shared<BuildArguments>();
  command->add_option("file", arguments->File, "A project, group or folder")->required();
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
