#include "names/NameWalk.h"

#include "diagnostics/Context.h"

#include <vector>

namespace vendrel {
namespace {

using Visitor = std::function<void(CodeElement&)>;

constexpr std::string_view kLocalVariable = "local-variable";
constexpr std::string_view kTypeMember = "type-member";

template <typename Collection>
void VisitEach(Collection& elements, const Visitor& visit) {
  for (auto& element : elements) visit(element);
}

/// The elements of a collection that may never have been made.
template <auto Member>
void VisitEach(Rarely<Member>& elements, const Visitor& visit) {
  if (auto* made = elements.IfAny()) VisitEach(*made, visit);
}
template <typename Collection>
void VisitEach(OnDemand<Collection>& elements, const Visitor& visit) {
  if (Collection* made = elements.IfAny()) VisitEach(*made, visit);
}

void VisitDeclared(Block& block, const Visitor& visit) {
  VisitEach(block.Constants, visit);
  VisitEach(block.Variables, visit);
}

void VisitInside(Block& block, const Visitor& visit) {
  VisitEach(block.Parameters, visit);
  VisitDeclared(block, visit);
}

void VisitProperty(Component& component, Block& first, const Visitor& visit) {
  Block* whole = component.ConsolidatedPropertyBlock(first.Name(), true);
  visit(whole ? *whole : first);
  for (Block* block : component.Blocks.Named(first.Name()))
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

void VisitDeclarations(Component& component, const Visitor& visit) {
  if (Block* declarations = component.Blocks.FirstOfType(btDeclarations))
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
  if (const auto* block = As<Block>(&element); block && block->IsPropertyType())
    return RowOf(kKindOf<PropertyGroup>).Word;
  if (const auto* variable = As<Variable>(&element)) {
    if (IsA<UDT>(variable->Parent.Get())) return kTypeMember;
    if (variable->Procedure) return kLocalVariable;
  }
  const ElementKindRow& row = RowOf(element.Kind());
  return row.InNameLists ? row.Word : std::string_view();
}

const std::vector<std::string_view>& AllKinds() {
  static const std::vector<std::string_view> kinds = [] {
    std::vector<std::string_view> all;
    for (const ElementKindRow& row : kElementKinds) {
      if (!row.InNameLists) continue;
      all.push_back(row.Word);
      if (&row == &RowOf(kKindOf<Variable>)) all.push_back(kLocalVariable);
      if (&row == &RowOf(kKindOf<UDT>)) all.push_back(kTypeMember);
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
