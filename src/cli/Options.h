#pragma once
// The options that all commands share.

#include <CLI/CLI.hpp>
#include <stdexcept>
#include <string>
#include <vector>

#include "cli/Tool.h"
#include "core/ReadingRules.h"

namespace vendrel::cli {

/// Ends a command with an exit code and a text: what, where, what to do.
class ToolError : public std::runtime_error {
 public:
  ToolError(ExitCode code, const std::string& text) : std::runtime_error(text), mCode(code) {}
  ExitCode Code() const { return mCode; }

 private:
  ExitCode mCode;
};

/// An input that cannot be read, or is not what it is named as: the path and why.
class InputError : public ToolError {
 public:
  InputError(const std::string& path, const std::string& reason)
      : ToolError(exFailed, path + ": " + reason), mReason(reason) {}
  const std::string& Reason() const { return mReason; }

 private:
  std::string mReason;
};

/// Name and value of an option such as --define.
struct NamedValue {
  std::string Name;
  std::string Value;
};

/// Values of the shared options.
struct CommonOptions {
  std::string Output;
  /// "auto", "always" or "never".
  std::string Color = "auto";
  std::string Reading = "complete";
  std::vector<std::string> Defines;
  std::string CodePage = "auto";
  std::vector<std::string> Drives;
  std::vector<std::string> Settings;
  std::vector<std::string> TypeLibPath;
  std::vector<std::string> ReferencePath;
  /// "assembly" or "typelib": what a file that may be both is read as.
  std::string As;
  std::string Loader;
  std::string Custom;
  std::string Tags;
  std::string CommentFile;
  /// The configuration of VB.NET projects whose constants count; empty: "Debug".
  std::string Configuration;
  /// Type names of VB.NET source stay as written, and nothing is inherited.
  bool Unresolved = false;
  /// Projects that a VB.NET project refers to are not read.
  bool NoReferences = false;
  /// The documentation of assemblies joins their tree.
  bool XmlDocs = false;
  bool Strict = false;
  bool Quiet = false;
  /// A folder from which JSON shows paths.
  std::string Root;
  std::string Diagnostics = "text";
  std::string ErrorReport;
  /// How many projects of a folder are loaded at once; 0: as many as there are processors.
  unsigned Jobs = 0;

  /// The preset that --reading names, without the flags of --set.
  const ReadingRules& Preset() const;
  bool DiagnosticsAsJson() const { return Diagnostics == "json"; }
  /// `Jobs` as far as the run allows it; at least 1.
  unsigned JobsAtHand() const;
};

/// Headings of the shared options, which are groups of options to the parser.
inline constexpr const char* kReadingHeading = "How source is read";
inline constexpr const char* kShowingHeading = "How results and messages are shown";

/// The options of a command that writes: a project is read once those before it are written, for
/// they may share modules.
CommonOptions OneAfterTheOther(CommonOptions options);

/// Adds the shared options to a command.
void AddCommonOptions(CLI::App& command, CommonOptions& options);

/// Puts what holds for the process in force: drives, tag definitions, start values.
void ApplyToProcess(const CommonOptions& options);

/// Cuts "Name=Value"; raises a usage error that names the option where there is no name or no "=".
NamedValue CutNamedValue(const std::string& option, const std::string& text);

/// Whether a result that can have colours gets them: by --color, else on a terminal that knows
/// colours, unless NO_COLOR holds anything.
bool ColoursWanted(const CommonOptions& options, const Streams& streams);
/// Whether the terminal, if there is one, knows neither colours nor movements (TERM=dumb).
bool IsDumbTerminal();

/// The absolute form of a path as a user types it; a Windows path stays.
std::string AbsolutePath(const std::string& path);

}  // namespace vendrel::cli
