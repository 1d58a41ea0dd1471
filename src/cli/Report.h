#pragma once
// What is told on the way: diagnostics and progress.

#include <cstdint>
#include <ostream>
#include <string>
#include <unordered_map>

#include "cli/Options.h"
#include "diagnostics/VendrelError.h"
#include "project/VBProject.h"
#include "survey/Findings.h"

namespace vendrel::cli {

/// Paths as people are shown them: on this machine, spelled as the disk does, relative to the
/// current folder where they lie below it. Keeps what it looked up.
class ShownPaths {
 public:
  /// Of a path in Windows form; that form itself where its drive is not mapped.
  const std::string& Of(const std::string& windowsPath);
  /// "path:line", or the path alone for line 0.
  std::string Place(const std::string& windowsPath, std::int32_t line);

 private:
  std::unordered_map<std::string, std::string> mKnown;
};

/// Why something failed, as a person reads it: the text of an error without its class where there
/// is more to say, without the path that the message names already, and with others as
/// `ShownPaths`.
std::string ReasonIn(std::string_view errorText, const std::string& path = {});
std::string ReasonOf(const VendrelError& error, const std::string& path = {});

/// That a file or a device takes no more, with what the system says of it: `reason` is an `errno`,
/// 0 where it said nothing.
std::string CannotBeWritten(const std::string& path, int reason);

/// Blanks in front of a line of a tree, two a level (0 or more). Controls nest as deep as their
/// input makes them; what is deeper than 40 levels moves no further.
std::size_t IndentOf(int depth);

/// The text of a finding as people read it: paths as those of this machine, without one that its
/// place tells already.
std::string ShownTextOf(const Finding& finding, ShownPaths& paths);

/// Writes one finding as a line: "file:line: severity: text [code]".
void WriteFindingLine(std::ostream& out, const Finding& finding, RuleLevel level,
                      ShownPaths& paths);

/// What is told, as an object: a finding, or a failure with the exit code that it ends with.
struct DiagnosticObject {
  std::string WindowsPath;
  std::int32_t Line, Column;
  std::string_view Severity, Code, Text;
  int ExitCode;
};
void WriteDiagnosticObject(std::ostream& out, const DiagnosticObject& object);

/// Tells why something failed: a line, or an object.
void ReportFailure(std::ostream& err, const std::string& text, int code, bool json);

/// Tells something on the way that is no diagnostic of a project: the line, or the object.
void TellRemark(const Streams& streams, const CommonOptions& options, const std::string& line,
                const DiagnosticObject& object);

/// The folder of this machine from which paths of diagnostics are shown in JSON.
void SetJsonRoot(const std::string& nativeRoot);

/// Writes diagnostics to the error stream, as the options want them, with their columns if they
/// are those of a project.
void TellDiagnostics(const Diagnostics& diagnostics, const CommonOptions& options,
                     std::ostream& err, const VBProject* project = nullptr);

/// Writes the diagnostics of a project to the error stream, as the options want them; gives the
/// exit code: 3 for warnings under --strict, else 0.
int ReportDiagnostics(const VBProject& project, const CommonOptions& options, std::ostream& err);

/// Whether a diagnostic above a note is among them.
bool HasWarnings(const Diagnostics& diagnostics);

}  // namespace vendrel::cli
