#pragma once
// The manual, made from what the tool says of itself: as man pages (roff) and as HTML.

#include <ostream>
#include <string>
#include <vector>

#include "cli/ToolFacts.h"

namespace vendrel::cli {

/// vendrelmodel(1): all commands.
void WriteManPage(std::ostream& out, const std::vector<CommandFacts>& commands);
/// vendrelmodel-NAME(1): one command.
void WriteManPage(std::ostream& out, const CommandFacts& command);
/// All of it as one page for a browser.
void WriteManualAsHtml(std::ostream& out, const std::vector<CommandFacts>& commands);

}  // namespace vendrel::cli
