#pragma once
// Scripts that complete command lines: commands, options, their values, names for --set, and files
// of the kinds that the tool reads.

#include <ostream>
#include <string_view>
#include <vector>

#include "cli/ToolFacts.h"

namespace vendrel::cli {

/// Writes the script of a shell: "bash", "zsh" or "fish".
void WriteCompletion(std::ostream& out, std::string_view shell,
                     const std::vector<CommandFacts>& commands);

}  // namespace vendrel::cli
