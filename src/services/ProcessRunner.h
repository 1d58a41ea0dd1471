#pragma once
// The one way to start programs: with a list of arguments, never through a shell.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vendrel {

struct ProcessOptions {
  /// Native folder in which the program starts; empty for the caller's.
  std::string Folder;
  /// Whether to wait for its end, however long that takes.
  bool Wait = true;
  /// "NAME=value", in front of what it inherits.
  std::vector<std::string> Environment = {};
  /// Native file that gets what it writes to standard output and error; empty for the caller's.
  std::string OutputFile = {};
};

/// Starts programs. Tests and hosts put their own in its place.
class ProcessRunner {
 public:
  virtual ~ProcessRunner() = default;
  /// Runs `arguments[0]` (a native path, or a name that is looked for in PATH) with the others.
  /// Gives its exit code, 128 and the signal if one ended it, 0 without waiting. Handles and
  /// environment are inherited. Raises 5 for an empty list, 53 or 70 if it cannot be started.
  virtual int Run(const std::vector<std::string>& arguments, const ProcessOptions& options) = 0;

  /// The runner in force; never null.
  static ProcessRunner& Current();
  /// Puts a runner in force; an empty pointer restores the machine's own.
  static void Install(std::shared_ptr<ProcessRunner> runner);
};

/// Cuts a command line into arguments by the rules of Windows programs: blanks and tabs part them,
/// quotes group; before a quote each two backslashes are one, and an odd one makes the quote a
/// character; two quotes within quotes are one. In the program's name backslashes are plain.
std::vector<std::string> SplitCommandLine(std::string_view commandLine);

/// The text within a pair of quotes of a command line: `SplitCommandLine` gives it back as it is.
/// A text without quotes that does not end with a backslash stays as it stands.
std::string EscapedArgument(std::string_view text);
/// The same with the quotes around it.
std::string QuotedArgument(std::string_view text);

}  // namespace vendrel
