#pragma once
// Where a result goes: the output stream, or the file of -o, which appears whole or not at all.

#include <functional>
#include <ostream>

#include "cli/Options.h"

namespace vendrel::cli {

/// Whether a command paints its result itself where that is a terminal.
enum class ResultForm { Plain, Painted };

/// Calls `write` with the stream of the result. On a terminal a plain result passes a
/// `TerminalFilter`. Raises a `ToolError` where it could not be written, or where -o names the
/// input.
void WriteResult(const CommonOptions& options, const Streams& streams, const std::string& input,
                 const std::function<void(std::ostream&)>& write,
                 ResultForm form = ResultForm::Plain);

/// Raises a usage error where -o names that input.
void RefuseAsResult(const CommonOptions& options, const std::string& input);

/// Raises a usage error where -o names a file that was read so far, by whatever path, or one that
/// was written. Looked at again before the result is put in place.
void RefuseSourceAsResult(const CommonOptions& options);

}  // namespace vendrel::cli
