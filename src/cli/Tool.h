#pragma once
// The command-line tool as a function, so that tests can call it.

#include <istream>
#include <memory>
#include <ostream>
#include <string_view>
#include <vector>

namespace vendrel::cli {

/// Exit codes of the tool.
enum ExitCode : int {
  exDone = 0,
  /// The input could not be read or the output not written.
  exFailed = 1,
  /// Wrong usage.
  exUsage = 2,
  /// Done, but there were warnings, under --strict.
  exWarnings = 3,
  /// The answer is no: nothing found, something missing.
  exNo = 4,
};

/// Of two exit codes the one that a command ends with: a failure outranks a "no", and that the
/// warnings.
ExitCode Worse(int a, int b);

/// Where results go, and what is told on the way.
struct Streams {
  std::ostream& Out;
  std::ostream& Err;
  bool OutIsTerminal = false;
  bool ErrIsTerminal = false;
  /// Where a question is answered, if a person sits there; else null.
  std::istream* Answers = nullptr;
  /// What is piped in: a list of paths; null where there is none.
  std::istream* In = nullptr;
  /// Where a process that ends with its command leaves the trees of single inputs, since taking
  /// them apart would only keep a person waiting; null: each goes with its last user.
  std::vector<std::shared_ptr<const void>>* Lasting = nullptr;

  /// The same for what must not pile up: one of many, or one that is looked at and dropped.
  Streams ForOneOfMany() const {
    Streams streams = *this;
    streams.Lasting = nullptr;
    return streams;
  }
};

/// Name and version: "vendrelmodel 2.0".
std::string_view ToolVersion();

/// Runs the tool on a command line, the program's name first; gives its exit code, or 128 and the
/// number of the signal that it stopped for (see cli/Interrupts.h). No handler is installed here.
int RunTool(int argc, const char* const* argv, const Streams& streams);

}  // namespace vendrel::cli
