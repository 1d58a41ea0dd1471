// From a qualified name back to the element. Every step is a keyed look-up. Nothing raises: what
// cannot be found is nothing.

#include <array>
#include <initializer_list>
#include <string_view>

#include "core/CaseFold.h"
#include "core/Workspace.h"
#include "names/NameLookup.h"
#include "project/VBProjectGroup.h"

namespace vendrel {
namespace {

constexpr std::size_t kMostParts = 4;

/// The levels of a name; `Count` is one more than `kMostParts` if there are too many.
struct NameParts {
  std::array<std::string_view, kMostParts> Part;
  std::size_t Count = 0;

  explicit NameParts(std::string_view name) {
    while (Count < kMostParts) {
      const std::size_t at = name.find('~');
      Part[Count++] = name.substr(0, at);
      if (at == std::string_view::npos) return;
      name.remove_prefix(at + 1);
    }
    ++Count;
  }
};

/// A member name and the qualifier behind its ":" (empty if there is none).
struct QualifiedMember {
  std::string_view Name;
  std::string_view Qualifier;

  explicit QualifiedMember(std::string_view text) : Name(text.substr(0, text.find(':'))) {
    if (Name.size() < text.size()) Qualifier = text.substr(Name.size() + 1);
  }
  /// The same with the end of the name cut off.
  QualifiedMember Without(std::size_t length) const {
    QualifiedMember cut = *this;
    cut.Name.remove_suffix(length);
    return cut;
  }
};

VBProject* ProjectNamed(VBProject& from, std::string_view name) {
  if (EqualsNoCase(name, from.ProjectName)) return &from;
  const VBProjectGroup* group = from.VBProjectGroup();
  return group ? group->Project(name) : nullptr;
}

template <typename Element>
CodeElement* ParameterOf(Element* element, std::string_view name) {
  Parameters* parameters = element ? element->Parameters.IfAny() : nullptr;
  return parameters ? parameters->Item(name) : nullptr;
}

CodeElement* BlockOrParameter(Block* block, std::string_view qualifier) {
  return qualifier.empty() ? block : ParameterOf(block, qualifier);
}

// A parameter that the procedure found first has not: the property has others.
CodeElement* ParameterOfAnyProcedure(Component& component, const QualifiedMember& member) {
  for (Block* block : component.Blocks.Named(member.Name))
    if (CodeElement* found = ParameterOf(block, member.Qualifier)) return found;
  return nullptr;
}

// Null as well where there is no such procedure, or it has no such parameter; `isThere` tells
// which.
CodeElement* FindProcedure(Component& component, const QualifiedMember& member, bool complete,
                           bool& isThere) {
  isThere = true;
  if (Block* block = component.Blocks.Item(member.Name)) {
    if (!member.Qualifier.empty()) {
      CodeElement* parameter = ParameterOf(block, member.Qualifier);
      return parameter || !complete ? parameter : ParameterOfAnyProcedure(component, member);
    }
    if (block->Overloaded() || !block->IsPropertyType()) return block;
    return component.ConsolidatedPropertyBlock(block->Name(), true);
  }
  Block* property = component.ConsolidatedPropertyBlock(member.Name, true);
  isThere = property != nullptr;
  return property ? BlockOrParameter(property, member.Qualifier) : nullptr;
}

CodeElement* DeclaredIn(Block* block, std::string_view name, bool constantsToo) {
  if (!block) return nullptr;
  if (Variables* variables = block->Variables.IfAny())
    if (Variable* variable = variables->Item(name)) return variable;
  Constants* constants = constantsToo ? block->Constants.IfAny() : nullptr;
  return constants ? constants->Item(name) : nullptr;
}

CodeElement* FindControlNamed(Component& component, std::string_view name) {
  VBControl* root = component.VBControl.get();
  if (root && EqualsNoCase(root->Name, name)) return root;
  return component.AllVBControls.Named(name);
}

// The member of that very name, whatever its name ends in.
CodeElement* FindAsWritten(Component& component, const QualifiedMember& member, bool complete) {
  bool isProcedure = false;
  CodeElement* procedure = FindProcedure(component, member, complete, isProcedure);
  if (isProcedure) return procedure;
  Block* declarations = component.Blocks.FirstOfType(btDeclarations);
  if (CodeElement* found = DeclaredIn(declarations, member.Name, complete)) return found;
  return complete ? FindControlNamed(component, member.Name) : nullptr;
}

CodeElement* FindPropertyProcedure(Component& component, const QualifiedMember& member,
                                   BlockTypeEnum type) {
  for (Block* block : component.Blocks.Named(member.Name))
    if (block->BlockType() == type) return BlockOrParameter(block, member.Qualifier);
  return nullptr;
}

CodeElement* FindInterface(Component& component, const QualifiedMember& member) {
  return component.Interfaces.Item(member.Name);
}
CodeElement* FindLet(Component& component, const QualifiedMember& member) {
  return FindPropertyProcedure(component, member, btPropertyLet);
}
CodeElement* FindGet(Component& component, const QualifiedMember& member) {
  return FindPropertyProcedure(component, member, btPropertyGet);
}
CodeElement* FindSet(Component& component, const QualifiedMember& member) {
  return FindPropertyProcedure(component, member, btPropertySet);
}
CodeElement* FindEnumeration(Component& component, const QualifiedMember& member) {
  Enumeration* enumeration = component.Enumerations.Item(member.Name);
  if (!enumeration || member.Qualifier.empty()) return enumeration;
  return enumeration->Members().Item(member.Qualifier);
}
CodeElement* FindStructure(Component& component, const QualifiedMember& member) {
  UDT* structure = component.UDTs.Item(member.Name);
  if (!structure || member.Qualifier.empty()) return structure;
  return structure->Members.Item(member.Qualifier);
}
CodeElement* FindEvent(Component& component, const QualifiedMember& member) {
  EventDeclaration* event = component.EventDeclarations.Item(member.Name);
  return member.Qualifier.empty() ? event : ParameterOf(event, member.Qualifier);
}

struct SuffixRule {
  std::string_view Suffix;
  CodeElement* (*Find)(Component&, const QualifiedMember&);
};
// In the order in which they are tried; letter case counts.
constexpr SuffixRule kSuffixRules[] = {
    {"_I", FindInterface},    {"_PL", FindLet},       {"_PG", FindGet},  {"_PS", FindSet},
    {"_EN", FindEnumeration}, {"_UT", FindStructure}, {"_EV", FindEvent}};

CodeElement* FindMember(Component& component, std::string_view text, bool complete) {
  const QualifiedMember member(text);
  if (complete)
    if (CodeElement* found = FindAsWritten(component, member, true)) return found;
  for (const SuffixRule& rule : kSuffixRules)
    if (member.Name.ends_with(rule.Suffix))
      return rule.Find(component, member.Without(rule.Suffix.size()));
  return complete ? nullptr : FindAsWritten(component, member, false);
}

// "Library_LIB", in the complete reading.
Library* FindLibrary(VBProject& project, std::string_view name) {
  if (!name.ends_with("_LIB")) return nullptr;
  name.remove_suffix(4);
  Libraries* libraries = project.Libraries.IfAny();
  return libraries ? libraries->Item(name) : nullptr;
}

// "Name_DEC" with or without a parameter, in the complete reading.
CodeElement* FindDeclare(Library& library, std::string_view text) {
  const QualifiedMember member(text);
  if (!member.Name.ends_with("_DEC")) return nullptr;
  DeclareDeclaration* declare = library.DeclareDeclarations.Item(member.Without(4).Name);
  return member.Qualifier.empty() ? declare : ParameterOf(declare, member.Qualifier);
}

// Type libraries keep enumerations that belong to no module in one of their own; delegates have a
// module of their own too.
CodeElement* FindOutsideComponents(VBProject& project, std::string_view text) {
  QualifiedMember member(text);
  if (member.Qualifier.empty()) {
    Component* free = project.Components.Item("Enumerations");
    if (Enumeration* found = free ? free->Enumerations.Item(member.Name) : nullptr) return found;
  }
  constexpr std::string_view kDelegate = "_Delegate";
  if (member.Name.ends_with(kDelegate)) member = member.Without(kDelegate.size());
  Component* delegates = project.Components.Item("__Delegates");
  Block* block = delegates ? delegates->Blocks.Item(member.Name) : nullptr;
  return block ? BlockOrParameter(block, member.Qualifier) : nullptr;
}

CodeElement* FindInProject(VBProject& project, std::string_view text, bool complete) {
  if (Component* component = project.Components.Item(text)) return component;
  if (CodeElement* found = FindOutsideComponents(project, text)) return found;
  return complete ? FindLibrary(project, text) : nullptr;
}

CodeElement* FindInComponent(VBProject& project, std::string_view component,
                             std::string_view member, bool complete) {
  if (Component* found = project.Components.Item(component))
    return FindMember(*found, member, complete);
  Library* library = complete ? FindLibrary(project, component) : nullptr;
  return library ? FindDeclare(*library, member) : nullptr;
}

// What a procedure declares: "Procedure~Name", of a property "Property_PG~Name" and so on.
CodeElement* FindInProcedure(Component& component, std::string_view procedure,
                             std::string_view name) {
  if (procedure.find(':') != std::string_view::npos)
    return nullptr;  // a parameter declares nothing
  for (Block* block : component.Blocks.Named(procedure))
    if (CodeElement* found = DeclaredIn(block, name, true)) return found;
  for (const SuffixRule& rule : kSuffixRules) {
    if (!rule.Suffix.starts_with("_P") || !procedure.ends_with(rule.Suffix)) continue;
    const QualifiedMember member = QualifiedMember(procedure).Without(rule.Suffix.size());
    CodeElement* block = rule.Find(component, member);
    return DeclaredIn(static_cast<Block*>(block), name, true);
  }
  return nullptr;
}

CodeElement* FindByName(VBProject& from, std::string_view name) {
  const NameParts parts(name);
  if (name.empty() || parts.Count > kMostParts) return nullptr;
  VBProject* project = ProjectNamed(from, parts.Part[0]);
  if (!project || parts.Count == 1) return project;
  const bool complete = from.Reading.CompleteNames;
  if (parts.Count == 2) return FindInProject(*project, parts.Part[1], complete);
  if (parts.Count == 3) return FindInComponent(*project, parts.Part[1], parts.Part[2], complete);
  Component* component = complete ? project->Components.Item(parts.Part[1]) : nullptr;
  return component ? FindInProcedure(*component, parts.Part[2], parts.Part[3]) : nullptr;
}

}  // namespace

CodeElement* VBProject::GetObjectByName(std::string_view Name) {
  const Workspace::Use use(Workspace());
  try {
    return FindByName(*this, Name);
  } catch (const VendrelError&) {
    return nullptr;
  }
}

CodeElement* VBProject::GetObjectByName_MainObject(std::string_view Name) {
  return GetObjectByName(Name.substr(0, Name.find(':')));
}

const VBControl* VBControls::Named(std::string_view name) const {
  if (!mNames || mNames->size() > Count()) IndexNames();
  const std::string key = FoldKey(name);
  // The index follows neither removals nor new names; a hit that is none shows it.
  for (int attempt = 0; attempt < 2; ++attempt) {
    const auto found = mNames->find(key);
    const VBControl* control = found == mNames->end() ? nullptr : Item(found->second);
    if (control && EqualsNoCase(control->Name, name)) return control;
    if (found == mNames->end()) return nullptr;
    IndexNames();
  }
  return nullptr;
}

void VBControls::IndexNames() const {
  mNames = std::make_unique<std::unordered_map<std::string, std::size_t>>();
  for (std::size_t i = 1; i <= Count(); ++i) mNames->emplace(FoldKey(Item(i)->Name), i);
}

}  // namespace vendrel
