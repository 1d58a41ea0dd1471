#pragma once
// Names for what ends a process, in the words that a report uses.

#include <string>

namespace vendrel {

/// The words for a fatal signal: `signal` and the `si_code` that came with it; "Unknown (&H...)"
/// with the signal's number in eight hexadecimal digits where no word corresponds.
std::string FatalSignalName(int signal, int code);

/// Installs a handler for the signals that end a process by a fault and for an interrupt. It runs
/// on a stack of its own, writes "vendrelmodel: " and the words to stderr by write(2), and passes
/// the signal on to what was there before. A second call does nothing.
void InstallFatalSignalHandler();

}  // namespace vendrel
