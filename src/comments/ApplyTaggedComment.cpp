// Where a tagged comment belongs. The decision has four phases, in this order: tags that are
// commands (TagCommands.cpp), the kind of element, exclusion, attachment to the element of that
// kind.

#include "comments/AppendDescription.h"
#include "comments/Placement.h"
#include "comments/TaggedCommentRules.h"
#include "core/CaseFold.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "project/Assembly.h"
#include "project/ModulesAhead.h"
#include "project/VBProjectGroup.h"

namespace vendrel {
namespace {

// ---- Phase 2: the kind of element --------------------------------------------------------------

struct ScopeKind {
  std::string_view Scope;
  ElementTypeEnum Kind;
};

constexpr ScopeKind kScopeKinds[] = {
    {"fz:declarestatement", etDeclareStatement},
    {"fz:enumeration", etEnumeration},
    {"fz:enumerationmember", etEnumerationMember},
    {"fz:event", etEvent},
    {"fz:implementedinterface", etImplementedInterface},
    {"fz:method", etMethod},
    {"fz:module", etModule},
    {"fz:parameter", etParameter},
    {"fz:project", etProject},
    {"fz:property", etMethod},
    {"fz:structure", etStructure},
    {"fz:structuremember", etStructureMember},
    {"fz:variable", etVariable},
};

ElementTypeEnum KindOfSingleScope(std::string_view scope) {
  for (const ScopeKind& entry : kScopeKinds)
    if (EqualsNoCaseAscii(scope, entry.Scope)) return entry.Kind;
  return etNone;
}

ElementTypeEnum KindOfQualified(const Placement& a) {
  if (a.ScopeHas("Parameter")) return etParameter;
  if (a.ScopeHas("FZ:EnumerationMember") && a.Block.CurrentEnum()) return etEnumerationMember;
  if (a.ScopeHas("FZ:StructureMember") && a.Block.CurrentUDT()) return etStructureMember;
  if (a.LastAs<Variable>() && a.ScopeHas("FZ:Variable")) return etVariable;
  return etNone;
}

// Constants take comments in the complete reading, by the tags of variables.
Constant* LastConstant(const Placement& a) {
  return a.Block.Options().Reading.ConstantComments ? a.LastAs<Constant>() : nullptr;
}

// The tag cannot describe the last element: what else it may mean there.
ElementTypeEnum KindBesidesLastElement(Placement& a) {
  if (IsA<Component>(a.LastElement)) {
    if (a.Is("##SUMMARY")) a.Comment->TagIdentifier = "##MODULE_SUMMARY";
    return etModule;
  }
  if (LastConstant(a) && a.ScopeHas("FZ:Variable")) return etVariable;
  if (a.LastAs<EnumMember>() && a.Block.CurrentEnum()) return etEnumerationMember;
  if (a.LastAs<Variable>() && a.Block.CurrentUDT()) return etStructureMember;
  return a.ScopeHas("FZ:Project") ? etProject : etNone;
}

ElementTypeEnum KindOfLastElement(const Placement& a) {
  if (a.LastAs<Block>()) return etMethod;
  if (a.LastAs<DeclareDeclaration>()) return etDeclareStatement;
  if (const auto* enumeration = a.LastAs<Enumeration>()) {
    // An open enumeration takes it for its last member; that of a type library for itself.
    const bool fromLibrary = a.Block.Options().WasReadFromTypeLibrary;
    return enumeration->Members().Count() > 0 && !fromLibrary ? etEnumerationMember : etEnumeration;
  }
  if (a.LastAs<EnumMember>()) return etEnumerationMember;
  if (a.LastAs<EventDeclaration>()) return etEvent;
  if (a.LastAs<Interface>()) return etImplementedInterface;
  if (const auto* udt = a.LastAs<UDT>())
    return udt->Members.Count() > 0 ? etStructureMember : etStructure;
  return a.LastAs<Variable>() ? etVariable : etNone;
}

ElementTypeEnum KindOf(Placement& a) {
  const TaggedCommentDef& definition = *a.Definition;
  if (definition.ElementType != etNone) return definition.ElementType;
  if (definition.Scope.empty()) return etProjectGroup;
  if (definition.Scope.find(',') == std::string::npos) return KindOfSingleScope(definition.Scope);
  if (!a.Comment->Qualifier.empty()) return KindOfQualified(a);
  if (EqualsNoCaseAscii(definition.Scope, "FZ:Project,FZ.NET:Assembly")) return etProject;
  if (a.ScopeHas(NamespaceFromObject(a.LastElement))) return KindOfLastElement(a);
  return KindBesidesLastElement(a);
}

// ---- Phase 3: exclusion ------------------------------------------------------------------------

void ExcludeReference(const Placement& a) {
  for (Reference& reference : a.Project->References) {
    if (!EqualsNoCase(reference.FileName.LeafName(), a.Comment->Text)) continue;
    reference.ExcludeFlag = true;
    a.Comment->CodeElement = &reference;
    break;
  }
}

// True if the comment excluded a reference, and is thereby done with.
bool ReadExclusion(Placement& a) {
  const std::string& tag = a.Definition->TagIdentifier;
  if (tag != "##EXCLUDE" && !StartsWithNoCaseAscii(tag, "##EXCLUDE_")) return false;
  a.Exclude = !EqualsNoCaseAscii(tag, "##EXCLUDE_REFERENCE");
  if (a.Exclude) return false;
  if (a.Project) ChangeProject([a] { ExcludeReference(a); });
  return true;
}

// ---- Phase 4: attachment -----------------------------------------------------------------------

// The common step. `description` is where a describing text goes.
void AttachTo(Placement& a, CodeElement& element, LateText* description, bool canExclude) {
  bool* excluded = canExclude && a.Exclude ? element.ExcludeFlagField() : nullptr;
  if (a.IsDescription && !a.Preserves && description)
    AppendDescription(description->Edit(), std::string_view(a.Comment->Text), a.Wrap);
  else if (excluded && !a.Preserves)
    *excluded = true;
  else if (OnDemand<TaggedComments>* comments = element.TaggedCommentsField())
    AddTaggedComment(**comments, a.Comment, false, a.Preserves);
  a.Comment->CodeElement = &element;
  a.Applied = true;
}

void Attach(Placement& a, CodeElement& element) {
  AttachTo(a, element, element.TaggedDescriptionField(), true);
}

void AttachWithoutExclusion(Placement& a, CodeElement& element) {
  AttachTo(a, element, element.TaggedDescriptionField(), false);
}

void AttachToGroup(Placement& a) {
  a.Applied = true;
  if (!a.Project) return;
  ChangeProject([a]() mutable {
    if (CodeElement* group = a.Project->VBProjectGroup()) AttachWithoutExclusion(a, *group);
  });
}

// What a project is the content of takes its comments, unless the project made it for itself.
void AttachToProject(Placement& a) {
  if (!a.Project) return;
  a.Applied = true;
  ChangeProject([a]() mutable {
    Assembly* assembly = a.Project->Assembly();
    if (!assembly || !assembly->OwnProject()) return AttachWithoutExclusion(a, *a.Project);
    AttachWithoutExclusion(a, *assembly);
    a.Comment->CodeElement = a.Project;
  });
}

void AttachToModule(Placement& a) { AttachWithoutExclusion(a, a.Component); }

void AttachToBlock(Placement& a) {
  auto* block = a.LastAs<Block>();
  if (block && !a.Block.Name().empty()) Attach(a, *block);
}

void AttachToVariable(Placement& a) {
  const SharedText& name = a.Comment->Qualifier;
  const bool isLast = a.Comment->TagIdentifier == "##" || name.empty();
  CodeElement* element = nullptr;
  if (!isLast)
    element = VariableNamed(a, name);
  else if (!(element = a.LastAs<Variable>()))
    element = LastConstant(a);
  if (element) Attach(a, *element);
}

// The parameter of an event is found in its own letter case only.
Parameter* EventParameter(Parameters& parameters, std::string_view name) {
  Parameter* found = parameters.Item(name);
  if (!found || found->Name() == name) return found;
  for (Parameter& parameter : parameters)
    if (parameter.Name() == name) return &parameter;
  return nullptr;
}

Parameters* ParameterList(const Placement& a) {
  if (auto* event = a.LastAs<EventDeclaration>()) return &*event->Parameters;
  if (auto* last = a.LastAs<Block>())
    return last->Name().empty() ? nullptr : last->Parameters.IfAny();
  if (auto* declare = a.LastAs<DeclareDeclaration>()) return &*declare->Parameters;
  if (a.Block.Name().empty() || StandsBehindEnd(a)) return nullptr;
  return a.Block.Parameters.IfAny();
}

void AttachToParameter(Placement& a) {
  Parameters* list = ParameterList(a);
  if (!list) return;
  const std::string_view name = a.Comment->Qualifier;
  Parameter* parameter =
      a.LastAs<EventDeclaration>() ? EventParameter(*list, name) : list->Item(name);
  a.Applied = true;  // a comment for a parameter that does not exist is dealt with, and lost
  if (parameter) AttachTo(a, *parameter, &parameter->mDescription.Field(), false);
}

void AttachToEvent(Placement& a) {
  if (auto* event = a.LastAs<EventDeclaration>()) Attach(a, *event);
}

void AttachToEnumeration(Placement& a) {
  if (a.Block.CurrentEnum()) Attach(a, *a.Block.CurrentEnum());
}

// The member that a comment names; one that names none is for the last member, and gets its name.
template <typename Members>
void AttachToMember(Placement& a, Members& members) {
  SharedText& name = a.Comment->Qualifier;
  if (name.empty() && members.Count() > 0) name = members.Item(members.Count())->Name;
  if (auto* member = members.Item(name.view())) Attach(a, *member);
}

void AttachToEnumMember(Placement& a) {
  if (a.Block.CurrentEnum()) AttachToMember(a, a.Block.CurrentEnum()->Members());
}

void AttachToStructure(Placement& a) {
  if (a.Block.CurrentUDT()) Attach(a, *a.Block.CurrentUDT());
}

void AttachToStructureMember(Placement& a) {
  if (a.Block.CurrentUDT()) AttachToMember(a, a.Block.CurrentUDT()->Members);
}

void AttachToDeclare(Placement& a) {
  if (auto* declare = a.LastAs<DeclareDeclaration>()) Attach(a, *declare);
}

void AttachToInterface(Placement& a) {
  const SharedText& name = a.Comment->Qualifier;
  Interface* target =
      name.empty() ? a.LastAs<Interface>() : a.Component.Interfaces.Item(std::string_view(name));
  if (target) Attach(a, *target);
}

void AttachByKind(Placement& a) try {
  switch (a.Kind) {
    case etNone:
    case etReserved: return;
    case etProjectGroup: return AttachToGroup(a);
    case etProject: return AttachToProject(a);
    case etModule: return AttachToModule(a);
    case etMethod: return AttachToBlock(a);
    case etVariable: return AttachToVariable(a);
    case etParameter: return AttachToParameter(a);
    case etEvent: return AttachToEvent(a);
    case etEnumeration: return AttachToEnumeration(a);
    case etEnumerationMember: return AttachToEnumMember(a);
    case etStructure: return AttachToStructure(a);
    case etStructureMember: return AttachToStructureMember(a);
    case etDeclareStatement: return AttachToDeclare(a);
    case etImplementedInterface: return AttachToInterface(a);
  }
}
VENDREL_CONTEXT_AT(LineReached(), trace::Local("Tag", a.Comment->TagIdentifier),
                   trace::Local("Kind", a.Kind), trace::Local("LastElement", a.LastElement),
                   trace::Me(a.Block))

// Whether an element of the kind is at hand, for a comment that names none.
bool IsAtHand(const Placement& a) {
  switch (a.Kind) {
    case etNone:
    case etReserved: return false;
    case etProjectGroup:
    case etProject:
    case etModule: return true;
    case etMethod: return a.LastAs<Block>() && !a.Block.Name().empty();
    case etVariable: return a.LastAs<Variable>() || LastConstant(a);
    case etParameter: return ParameterList(a);
    case etEvent: return a.LastAs<EventDeclaration>();
    case etEnumeration: return a.Block.CurrentEnum() != nullptr;
    case etEnumerationMember:
      return a.Block.CurrentEnum() && a.Block.CurrentEnum()->Members().Count() > 0;
    case etStructure: return a.Block.CurrentUDT() != nullptr;
    case etStructureMember:
      return a.Block.CurrentUDT() && a.Block.CurrentUDT()->Members.Count() > 0;
    case etDeclareStatement: return a.LastAs<DeclareDeclaration>();
    case etImplementedInterface: return a.LastAs<Interface>();
  }
  return true;
}

}  // namespace

bool Block::ApplyTaggedComment(const std::shared_ptr<TaggedComment>& tc) try {
  vendrel::Component* component = Component.Get();
  if (!component) throw VendrelError(errObjectNotSet, "Block.Component");
  Placement a{*this,
              *component,
              VBProject(),
              tc,
              tc->TaggedCommentDef(),
              component->LastElement.Get(),
              Options().PreserveOriginalTaggedComments,
              false,
              tc->AlwaysJoinWithWhitespace ? wrapSpace : wrapLineBreak};
  const Outcome outcome = ActOnCommand(a);
  if (outcome == Outcome::Refused) return false;
  a.Applied = outcome == Outcome::Applied;
  if (a.Applied && !a.Preserves) return true;
  if (!a.Definition) return a.Applied;
  a.IsDescription = a.Definition->IsDescription;
  a.Kind = KindOf(a);
  if (ReadExclusion(a)) return true;
  AttachByKind(a);
  return a.Applied;
}
VENDREL_CONTEXT_AT(LineReached(),
                   trace::Parameter("Tag", tc ? tc->TagIdentifier.view() : std::string_view()),
                   trace::Parameter("Text", tc ? tc->Text : std::string()), *this)

ElementTypeEnum FixedKind(const TaggedCommentDef& definition) {
  if (definition.ElementType != etNone) return definition.ElementType;
  if (definition.Scope.empty()) return etProjectGroup;
  const bool single = definition.Scope.find(',') == std::string::npos;
  return single ? KindOfSingleScope(definition.Scope) : etNone;
}

bool FindsElement(const TaggedCommentDef& definition, Component& component, Block& block) {
  static const auto unnamed = std::make_shared<TaggedComment>();
  Placement a{block, component, nullptr,      unnamed, &definition, component.LastElement.Get(),
              false, false,     wrapLineBreak};
  a.Kind = KindOf(a);
  return IsAtHand(a);
}

}  // namespace vendrel
