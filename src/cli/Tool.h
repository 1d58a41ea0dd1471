#pragma once
// The command-line tool as a function, so that tests can call it.

namespace vendrel::cli {

/// Runs the tool; gives its exit code (0 done, 1 not read or written, 2 wrong usage, 3 warnings
/// under --strict, 4 the answer is no).
int RunTool(int argc, char** argv);

}  // namespace vendrel::cli
