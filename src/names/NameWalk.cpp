#include "names/NameWalk.h"

#include "diagnostics/Context.h"

#include <utility>
#include <vector>

namespace vendrel {
namespace {

using Visitor = std::function<void(CodeElement&)>;

constexpr std::pair<std::string_view, std::string_view> kKinds[] = {
    {"VBProject", "project"},
    {"Library", "library"},
    {"Component", "module"},
    {"VBControl", "control"},
    {"Constant", "constant"},
    {"Variable", "variable"},
    {"Enumeration", "enumeration"},
    {"EnumMember", "enumeration-member"},
    {"UDT", "type"},
    {"EventDeclaration", "event"},
    {"DeclareDeclaration", "declare"},
    {"Interface", "interface"},
    {"Block", "procedure"},
    {"PropertyGroup", "property"},
    {"Parameter", "parameter"}};

template <typename Collection>
void VisitEach(const Collection& elements, const Visitor& visit) {
  for (auto& element : elements) visit(element);
}

/// The elements of a collection that may never have been made.
template <typename Collection>
void VisitEach(const OnDemand<Collection>& elements, const Visitor& visit) {
  if (const Collection* made = elements.IfAny()) VisitEach(*made, visit);
}

void VisitDeclared(const Block& block, const Visitor& visit) {
  VisitEach(block.Constants, visit);
  VisitEach(block.Variables, visit);
}

void VisitInside(const Block& block, const Visitor& visit) {
  VisitEach(block.Parameters, visit);
  VisitDeclared(block, visit);
}

void VisitProperty(Component& component, Block& first, const Visitor& visit) {
  Block* whole = component.ConsolidatedPropertyBlock(first.Name(), true);
  visit(whole ? *whole : first);
  for (const Block* block : component.Blocks.Named(first.Name()))
    if (block->IsPropertyType()) VisitInside(*block, visit);
}

bool IsFirstOfProperty(const Component& component, const Block& block) {
  for (const Block* other : component.Blocks.Named(block.Name()))
    if (other->IsPropertyType()) return other == &block;
  return true;
}

void VisitProcedures(Component& component, const Visitor& visit) {
  for (std::size_t i = 1; i <= component.Blocks.Count(); ++i) {
    Block& block = *component.Blocks.Item(i);
    if (block.Name().empty()) continue;
    if (!block.IsPropertyType()) {
      visit(block);
      VisitInside(block, visit);
    } else if (IsFirstOfProperty(component, block)) {
      VisitProperty(component, block, visit);
    }
  }
}

void VisitDeclarations(const Component& component, const Visitor& visit) {
  if (const Block* declarations = component.Blocks.FirstOfType(btDeclarations))
    VisitDeclared(*declarations, visit);
  for (Enumeration& enumeration : component.Enumerations) {
    visit(enumeration);
    VisitEach(enumeration.Members(), visit);
  }
  for (UDT& structure : component.UDTs) {
    visit(structure);
    VisitEach(structure.Members, visit);
  }
  for (EventDeclaration& event : component.EventDeclarations) {
    visit(event);
    VisitEach(event.Parameters, visit);
  }
  for (DeclareDeclaration& declare : component.Declarations) {
    visit(declare);
    VisitEach(declare.Parameters, visit);
  }
  VisitEach(component.Interfaces, visit);
}

}  // namespace

std::string_view KindOf(const CodeElement& element) {
  if (const auto* block = dynamic_cast<const Block*>(&element))
    return block->IsPropertyType() ? "property" : "procedure";
  if (const auto* variable = dynamic_cast<const Variable*>(&element)) {
    if (TypeMatch(variable->Parent.Get(), "UDT")) return "type-member";
    return variable->Procedure ? "local-variable" : "variable";
  }
  for (const auto& [className, kind] : kKinds)
    if (element.ClassName() == className) return kind;
  return {};
}

const std::vector<std::string_view>& AllKinds() {
  static const std::vector<std::string_view> kinds = [] {
    std::vector<std::string_view> all;
    for (const auto& [className, kind] : kKinds) {
      all.push_back(kind);
      if (kind == "variable") all.push_back("local-variable");
      if (kind == "type") all.push_back("type-member");
    }
    return all;
  }();
  return kinds;
}

void ForEachNamedElement(Component& component, const Visitor& visit) try {
  visit(component);
  if (component.VBControl) visit(*component.VBControl);
  VisitEach(component.AllVBControls, visit);
  VisitDeclarations(component, visit);
  VisitProcedures(component, visit);
}
VENDREL_CONTEXT(component)

void ForEachNamedElement(VBProject& project, const Visitor& visit) try {
  visit(project);
  VisitEach(project.Libraries, visit);
  for (Component& component : project.Components.Listed()) ForEachNamedElement(component, visit);
}
VENDREL_CONTEXT(project)

}  // namespace vendrel
