#pragma once
// The few plain procedures that touch the outside world.

#include <cstdint>
#include <string>
#include <string_view>

#include "services/ProcessRunner.h"

namespace vendrel {

/// Runs a command line (see `SplitCommandLine`) and gives its exit code. A program given by its
/// Windows path is looked for on this machine. Raises as `ProcessRunner::Run`.
int RunCommandLine(std::string_view commandLine, const ProcessOptions& options = {});

/// Runs a command line (see `SplitCommandLine`) and waits for its end. The exit code is not read,
/// and a program that cannot be started is no failure. A program given by its Windows path is
/// looked for on this machine.
void ExecCmd(std::string_view commandLine);

/// Copies a file; both paths in Windows or native form. A destination that exists is replaced,
/// as a whole or not at all. True if it worked and both sizes agree. Never raises: after a failure
/// `State().FileCopy_LastError` has its number, a blank and its text.
bool FileCopy(std::string_view source, std::string_view destination);

/// The text with characters that may not stand in a file name replaced: "A:B/C?" gives "A-B-C ".
std::string SafeFileName(std::string_view text);

/// Whether the system is of the family with long file names and Unicode; so here.
bool IsNT();

/// Native path of the program that hosts the library; empty if it cannot be told.
std::string CurrentEXEName();

/// The text up to the first NUL.
std::string StrZToStr(std::string_view text);

/// Handles of processes have no counterpart here: the id itself if such a process exists, else 0.
std::int64_t ProcFromProcID(std::int64_t processId);
/// A process has one first module, which needs no handle of its own: as `ProcFromProcID`.
std::int64_t ModFromProcID(std::int64_t processId);

}  // namespace vendrel
