#pragma once
// A graph in the languages of programs that draw.

#include <ostream>

#include "survey/CodeGraph.h"

namespace vendrel {

/// For Graphviz: modules in a box of their project.
void WriteDot(std::ostream& out, const CodeGraph& graph);
/// For Mermaid, as pages of documentation take it.
void WriteMermaid(std::ostream& out, const CodeGraph& graph);
/// GraphML, with label, kind, project, file and line of nodes, relation and count of edges.
void WriteGraphML(std::ostream& out, const CodeGraph& graph);

}  // namespace vendrel
