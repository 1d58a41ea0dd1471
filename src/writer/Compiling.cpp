// Compiling a project, and opening it in its development environment. Both are calls of programs by
// a command line; whether a project was compiled, the log tells, not the exit code.

#include <memory>

#include "core/Ascii.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "project/VBProject.h"
#include "services/Procedures.h"
#include "services/ProcessRunner.h"
#include "services/SettingsReader.h"
#include "services/TemporaryFolder.h"
#include "services/TextUtility.h"
#include "text/Like.h"

namespace vendrel {
namespace {

constexpr std::string_view kMakeKey = "VisualBasic.Project\\shell\\make\\command";
constexpr std::string_view kPlaceOfProject = "%1";
constexpr std::string_view kLogName = "build.log";

std::string RegisteredCommand() {
  return SettingsReader::Default().ReadValue(HKEY_CLASSES_ROOT, kMakeKey, {});
}

FileSystemObject LogIn(std::string_view folder) {
  FileSystemObject log;
  log.SetFullPath(kLogName);
  log.SetFolderPath(folder);
  return log;
}

void DeleteQuietly(FileSystemObject& file) {
  try {
    file.DeleteFile();
  } catch (const VendrelError&) {  // what is left of it fails when it is read
  }
}

std::string LinesOf(FileSystemObject& file) try {
  file.OpenFile(omRead);
  std::string text;
  while (!file.AtEnd()) text.append(file.NextLine()).append("\r\n");
  file.CloseFile();
  return text;
}
VENDREL_CONTEXT(trace::Parameter("file", file.FullPath()))

// The command as registered: "vb6.exe" "%1" /make. What stands behind the switch is cut off, since
// the call brings its own.
std::string CommandAroundPlace(std::string_view compiler, std::string_view path, bool closed) try {
  const std::string_view left = TextUtility::FieldView(compiler, kPlaceOfProject, 1);
  std::string_view right = TextUtility::FieldView(compiler, kPlaceOfProject, 2);
  std::string text(left);
  if (closed) {
    text.append(left.ends_with('"') ? EscapedArgument(path) : QuotedArgument(path)).append(right);
  } else {
    right.remove_prefix(right.empty() ? 0 : 1);
    text.append(EscapedArgument(path)).append(right);
  }
  const std::size_t cut = text.find("/make");
  if (cut == std::string::npos)
    throw VendrelError(errInvalidArgument, "the compiler command has %1 and no /make");
  return text.substr(0, cut);
}
VENDREL_CONTEXT(compiler, path, closed)

std::string CompileCommand(const std::string& compiler, const VBProject& project) {
  const std::string path = project.OutputFileName.FullPath();
  if (compiler.find(kPlaceOfProject) != std::string::npos)
    return CommandAroundPlace(compiler, path, project.Reading.ClosedQuotes);
  return compiler + " " + QuotedArgument(path);
}

std::string MakeSwitch(const VBProject& project, const FileSystemObject& log) {
  const bool program = Like(LowerAscii(project.TypeName), "*exe*");
  return (program ? " /make /out " : " /makedll /out ") + QuotedArgument(log.FullPath());
}

}  // namespace

std::string VBProject::Compiler() try {
  const Workspace::Use use(Workspace());
  if (mCompiler.empty()) {
    std::string host = CurrentEXEName();
    mCompiler = ContainsNoCaseAscii(host, "\\vb") ? std::move(host) : RegisteredCommand();
  }
  return mCompiler;
}
VENDREL_CONTEXT(*this)

bool VBProject::Make() try {
  const Workspace::Use use(Workspace());
  const std::string compiler = Compiler();
  // An empty command would start the project itself.
  if (Trim(compiler).empty())
    throw VendrelError(errFileNotFound, "no compiler is assigned, and none is registered");
  std::unique_ptr<TemporaryFolder> temporary;
  if (LogFolder.empty()) temporary = std::make_unique<TemporaryFolder>("build");
  FileSystemObject log = LogIn(temporary ? temporary->Path() : LogFolder);
  const std::string command = CompileCommand(compiler, *this) + MakeSwitch(*this, log);
  DeleteQuietly(log);
  if (const int code = RunCommandLine(command))
    LastError = "VB returned Exit code " + std::to_string(code);
  const std::string text = LinesOf(log);
  if (Like(text, "*Build of '*' succeeded.*")) return true;
  LastError = "Compile failed\r\n\r\n" + text;
  return false;
}
VENDREL_CONTEXT(trace::Field("Compiler", mCompiler), *this)

void VBProject::OpenInVB(bool Asynchronous) try {
  const Workspace::Use use(Workspace());
  std::string command = TextUtility::Field(RegisteredCommand(), kPlaceOfProject, 1);
  if (command.empty()) throw VendrelError(errInvalidArgument, "no development environment known");
  command.pop_back();  // the quotation mark in front of the place of the project
  command += " " + QuotedArgument(OutputFileName.FolderPath() + ProjectName + ".vbp");
  if (!LogFolder.empty()) LogIn(LogFolder).DeleteFile();
  if (Asynchronous)
    RunCommandLine(command, {.Folder = {}, .Wait = false});
  else
    ExecCmd(command);
}
VENDREL_CONTEXT(Asynchronous, *this)

}  // namespace vendrel
