#pragma once
// What the parser has no place for: under which heading a command stands, and examples of it.

#include <string>
#include <string_view>
#include <vector>

#include "cli/ToolFacts.h"

namespace vendrel::cli {

/// The heading of a command in the list of commands; "More" for one that has no row.
std::string GroupOfCommand(std::string_view command);
/// Its headings, in the order of the list.
std::vector<std::string> CommandGroups();

/// The examples of a command; none for one that has no row.
std::vector<Example> ExamplesOf(std::string_view command);

}  // namespace vendrel::cli
