#pragma once
// Calls as a drawing: the languages of Graphviz and Mermaid.

#include <ostream>
#include <vector>

#include "uses/CallGraph.h"

namespace vendrel::cli {

/// How people are shown what calls and is called: its qualified name, of the procedures of a
/// property with which one it is: "P~M~Total [let]".
std::string CallName(const CodeElement& element);

/// A digraph, the procedures of a module in one box; calls that may go elsewhere are dashed.
void WriteCallsAsDot(std::ostream& out, const std::vector<const CallEdge*>& edges);
/// The same as a flowchart of Mermaid.
void WriteCallsAsMermaid(std::ostream& out, const std::vector<const CallEdge*>& edges);

}  // namespace vendrel::cli
