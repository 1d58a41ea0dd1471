#pragma once
// What is told on the way: diagnostics and progress.

#include <cstdint>
#include <ostream>
#include <string>
#include <unordered_map>

#include "cli/Options.h"
#include "diagnostics/Diagnostic.h"
#include "diagnostics/VendrelError.h"
#include "project/VBProject.h"

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

/// Blanks in front of a line of a tree, two a level (0 or more). Controls nest as deep as their
/// input makes them; what is deeper than 40 levels moves no further.
std::size_t IndentOf(int depth);

/// Writes one diagnostic as a line: "file:line: severity: text [code]", or a JSON object. A path
/// that the place tells already is left out of the text.
void WriteDiagnostic(std::ostream& out, const Diagnostic& diagnostic, ShownPaths& paths, bool json);

/// What is told, as an object: a diagnostic, or a failure with the exit code that it ends with.
struct DiagnosticObject {
  std::string WindowsPath;
  std::int32_t Line;
  std::string_view Severity, Code, Text;
  int ExitCode;
};
void WriteDiagnosticObject(std::ostream& out, const DiagnosticObject& object);

/// Tells why something failed: a line, or an object.
void ReportFailure(std::ostream& err, const std::string& text, int code, bool json);

/// The folder of this machine from which paths of diagnostics are shown in JSON.
void SetJsonRoot(const std::string& nativeRoot);

/// Writes the diagnostics of a project to the error stream, as the options want them; gives the
/// exit code: 3 for warnings under --strict, else 0.
int ReportDiagnostics(const VBProject& project, const CommonOptions& options, std::ostream& err);

/// Whether a diagnostic above a note is among them.
bool HasWarnings(const Diagnostics& diagnostics);

}  // namespace vendrel::cli
