#include "cli/CallDrawing.h"

#include <map>
#include <unordered_map>

#include "cli/ShownText.h"
#include "model/Component.h"

namespace vendrel::cli {
namespace {

// The elements of some edges, numbered from 1 in the order in which they are met.
class DrawnElements {
 public:
  explicit DrawnElements(const std::vector<const CallEdge*>& edges) {
    for (const CallEdge* edge : edges) {
      Add(*edge->From);
      Add(*edge->To);
    }
  }
  std::size_t NumberOf(const CodeElement& element) const { return mNumbers.at(&element); }
  // By module, in the order in which these are met.
  const std::vector<std::pair<const Component*, std::vector<const CodeElement*>>>& Modules() const {
    return mModules;
  }

 private:
  void Add(const CodeElement& element) {
    if (!mNumbers.try_emplace(&element, mNumbers.size() + 1).second) return;
    const Component* module = element.OwnComponent();
    if (module == &element) module = nullptr;  // it is a box itself
    const auto place = mPlaces.try_emplace(module, mModules.size());
    if (place.second) mModules.push_back({module, {}});
    mModules[place.first->second].second.push_back(&element);
  }
  std::unordered_map<const CodeElement*, std::size_t> mNumbers;
  std::unordered_map<const Component*, std::size_t> mPlaces;
  std::vector<std::pair<const Component*, std::vector<const CodeElement*>>> mModules;
};

// In quotation marks, with what these or the language take for themselves written out.
std::string QuotedName(const std::string& text, const char* quote) {
  std::string quoted = "\"";
  for (const char c : Shown(text)) {
    if (c == '"')
      quoted += quote;
    else
      quoted += c;
  }
  return quoted + "\"";
}

// What stands inside the box of its module.
std::string NameInModule(const CodeElement& element) {
  std::string name = CallName(element);
  const Component* module = element.OwnComponent();
  if (!module || module == &element) return name;
  const std::string front = module->QualifiedName() + "~";
  return name.starts_with(front) ? name.substr(front.size()) : name;
}

std::string LabelOf(const CallEdge& edge) {
  return edge.Kind == UseKind::Call ? std::string() : std::string(WordOf(edge.Kind));
}

}  // namespace

std::string CallName(const CodeElement& element) {
  std::string name = element.QualifiedName();
  const auto* block = As<Block>(&element);
  if (!block) return name;
  switch (block->BlockType()) {
    case btPropertyGet: return name + " [get]";
    case btPropertyLet: return name + " [let]";
    case btPropertySet: return name + " [set]";
    default: return name;
  }
}

void WriteCallsAsDot(std::ostream& out, const std::vector<const CallEdge*>& edges) {
  constexpr const char* quote = "\\\"";
  const DrawnElements drawn(edges);
  out << "digraph calls {\n  rankdir=LR;\n  node [shape=box];\n";
  std::size_t cluster = 0;
  for (const auto& module : drawn.Modules()) {
    if (module.first)
      out << "  subgraph cluster_" << ++cluster
          << " {\n    label=" << QuotedName(module.first->QualifiedName(), quote) << ";\n";
    for (const CodeElement* element : module.second)
      out << "    n" << drawn.NumberOf(*element)
          << " [label=" << QuotedName(NameInModule(*element), quote) << "];\n";
    if (module.first) out << "  }\n";
  }
  for (const CallEdge* edge : edges) {
    out << "  n" << drawn.NumberOf(*edge->From) << " -> n" << drawn.NumberOf(*edge->To);
    const std::string label = LabelOf(*edge);
    if (!label.empty()) out << " [label=\"" << label << "\"]";
    if (!edge->IsSure) out << " [style=dashed]";
    out << ";\n";
  }
  out << "}\n";
}

void WriteCallsAsMermaid(std::ostream& out, const std::vector<const CallEdge*>& edges) {
  constexpr const char* quote = "#quot;";
  const DrawnElements drawn(edges);
  out << "flowchart LR\n";
  std::size_t cluster = 0;
  for (const auto& module : drawn.Modules()) {
    if (module.first)
      out << "  subgraph m" << ++cluster << "[" << QuotedName(module.first->QualifiedName(), quote)
          << "]\n";
    for (const CodeElement* element : module.second)
      out << "    n" << drawn.NumberOf(*element) << "[" << QuotedName(NameInModule(*element), quote)
          << "]\n";
    if (module.first) out << "  end\n";
  }
  for (const CallEdge* edge : edges) {
    const std::string label = LabelOf(*edge);
    out << "  n" << drawn.NumberOf(*edge->From) << (edge->IsSure ? " -->" : " -.->");
    if (!label.empty()) out << "|" << label << "|";
    out << " n" << drawn.NumberOf(*edge->To) << "\n";
  }
}

}  // namespace vendrel::cli
