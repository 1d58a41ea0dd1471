// Where a tagged comment belongs. The decision has four phases, in this order: tags that are
// commands, the kind of element, exclusion, attachment to the element of that kind. `Application`
// holds the state of one decision.

#include <charconv>
#include <cmath>
#include <optional>

#include "comments/Descriptions.h"
#include "comments/TagDefinitions.h"
#include "comments/TaggedCommentRules.h"
#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "diagnostics/VendrelError.h"
#include "model/Block.h"
#include "model/Component.h"
#include "project/VBProject.h"
#include "project/VBProjectGroup.h"

namespace vendrel {
namespace {

struct Application {
  vendrel::Block& Block;
  vendrel::Component& Component;
  VBProject* Project;
  std::shared_ptr<TaggedComment> Comment;
  const TaggedCommentDef* Definition;
  CodeElement* LastElement;
  bool Preserves;
  bool Applied = false;
  int Wrap;
  ElementTypeEnum Kind = etNone;
  bool IsDescription = false;
  bool Exclude = false;

  bool Is(std::string_view tag) const { return EqualsNoCaseAscii(Comment->TagIdentifier, tag); }
  bool ScopeHas(std::string_view name) const {
    return ContainsNoCaseAscii(Definition->Scope, name);
  }
  /// The last element if it is of that class, else null.
  template <typename T>
  T* LastAs() const {
    return dynamic_cast<T*>(LastElement);
  }
  /// Adds the comment under its tag; a comment already there stays alone.
  void AddByTag(CodeElement& element) const {
    OnDemand<TaggedComments>* comments = element.TaggedCommentsField();
    if (comments && !(*comments)->HasKey(Comment->TagIdentifier))
      (*comments)->Add(Comment, Comment->TagIdentifier);
  }
};

Variable* VariableNamed(const Block& block, std::string_view name) {
  const Variables* variables = block.Variables.IfAny();
  return variables ? variables->Item(name) : nullptr;
}

// ---- Phase 1: commands -------------------------------------------------------------------------

// What a command left to do.
enum class Outcome { Applied, GoesOn, Refused };

std::shared_ptr<Example> LoadExample(const Application& a) {
  auto example = std::make_shared<Example>();
  example->Load(a.Comment->Text);
  return example;
}

void AddExample(const Application& a, const std::shared_ptr<Example>& example, CodeElement& item) {
  example->SetRelatedItem(&item);
  if (a.Project) a.Project->Examples->Add(example);
}

// A command that acted belongs to the element it acted on.
Outcome Done(Application& a, CodeElement* element) {
  a.Comment->CodeElement = element;
  return Outcome::Applied;
}

Outcome MarkModuleAsExample(Application& a) {
  AddExample(a, LoadExample(a), a.Component);
  a.Component.IsExample = true;
  return Done(a, &a.Component);
}

Outcome MarkBlockAsExample(Application& a) {
  const std::shared_ptr<Example> example = LoadExample(a);
  auto* block = a.LastAs<Block>();
  if (!block) return Outcome::Refused;
  AddExample(a, example, *block);
  block->IsExample = true;
  return Done(a, block);
}

Outcome MarkElementAsNew(Application& a) {
  if (!a.Definition) throw VendrelError(errObjectNotSet, a.Comment->TagIdentifier);
  CodeElement* element = nullptr;
  if (a.Definition->ElementType == etMethod) {
    auto* block = a.LastAs<Block>();
    if (block && !block->Name().empty()) element = block;
  } else if (a.Definition->ElementType == etVariable) {
    element = VariableNamed(a.Block, a.Comment->Qualifier);
  } else if (a.Definition->ElementType == etEvent) {
    element = a.LastAs<EventDeclaration>();
  }
  if (!element) return Outcome::GoesOn;
  *element->IsNewField() = true;
  a.AddByTag(*element);
  return Done(a, element);
}

Outcome MarkModuleAsNew(Application& a) {
  a.AddByTag(a.Component);
  a.Component.IsNew = true;
  return Outcome::GoesOn;
}

Outcome MarkLastElementAsNew(Application& a) {
  if (!a.LastElement) return Outcome::GoesOn;
  a.AddByTag(*a.LastElement);
  bool* isNew = a.LastElement->IsNewField();
  if (!isNew) return Outcome::GoesOn;
  *isNew = true;
  return Done(a, a.LastElement);
}

Outcome IgnoreReferences(Application& a) {
  std::vector<std::string>& names = a.Component.IgnoreReferences;
  std::unordered_set<std::string>& keys = *a.Component.IgnoreReferenceKeys;
  if (keys.size() != names.size())  // a client has changed the list
    for (const std::string& name : names) keys.insert(FoldKey(name));
  std::string_view rest = a.Comment->Text;
  while (!rest.empty()) {
    const std::string_view name = Trim(TakeField(rest, ','));
    if (!name.empty() && keys.insert(FoldKey(name)).second) names.emplace_back(name);
  }
  return Done(a, &a.Component);
}

// The number at the start of a text, blanks ignored, rounded half to even; nothing for 0, for text
// without a number, and for one beyond 32 bits.
std::optional<std::int32_t> LeadingNumber(std::string_view text) {
  std::string digits;
  for (const char c : text.substr(0, 400))
    if (c != ' ' && c != '\t') digits.push_back(UpperAscii(c) == 'D' ? 'E' : c);
  std::string_view number = digits;
  const bool radix = number.size() > 2 && number[0] == '&';
  const int base = radix && UpperAscii(number[1]) == 'H' ? 16 : 8;
  double value = 0;
  if (radix) {
    std::uint32_t bits = 0;
    std::from_chars(number.data() + 2, number.data() + number.size(), bits, base);
    value = static_cast<std::int32_t>(bits);
  } else {
    if (number.starts_with('+')) number.remove_prefix(1);
    const bool isWord = number.empty() || IsLetterAscii(number.front()) ||
                        (number.size() > 1 && number[0] == '-' && IsLetterAscii(number[1]));
    if (!isWord) std::from_chars(number.data(), number.data() + number.size(), value);
  }
  const double rounded = std::nearbyint(value);
  if (value == 0 || !(std::fabs(rounded) < 2147483648.0)) return std::nullopt;
  return static_cast<std::int32_t>(rounded);
}

Outcome SetRelationshipLevels(Application& a) {
  if (const auto levels = LeadingNumber(a.Comment->Text)) a.Component.RelationshipLevels = *levels;
  return Done(a, &a.Component);
}

Outcome MarkModuleAsCollection(Application& a) {
  a.Component.SetIsCollection(true);
  return Done(a, &a.Component);
}

Outcome MarkModuleAsInterface(Application& a) {
  a.Component.IsInterface = true;
  return Done(a, &a.Component);
}

Outcome RetainContextIDs(Application& a) {
  if (a.Project) a.Project->RetainContextIDs = true;
  return Done(a, a.Project);
}

// "##INTERFACE_ALIAS IFoo path" for an interface by name, "##INTERFACE_ALIAS path" for the last
// one.
Outcome SetInterfaceAlias(Application& a) {
  const std::string& text = a.Comment->Text;
  const std::size_t blank = text.find(' ');
  const bool twoParts =
      blank != std::string::npos && text.find(' ', blank + 1) == std::string::npos;
  Interface* target = nullptr;
  if (twoParts)
    target = a.Component.Interfaces.Item(std::string_view(text).substr(0, blank));
  else if (!text.empty() && blank == std::string::npos)
    target = a.LastAs<Interface>();
  if (!target) return Outcome::GoesOn;
  target->DocumentationLocation = text;
  return Done(a, target);
}

struct Command {
  std::string_view Tag;
  Outcome (*Act)(Application&);
};

constexpr Command kCommands[] = {
    {"##MODULE_IS_EXAMPLE", MarkModuleAsExample},
    {"##BLOCK_IS_EXAMPLE", MarkBlockAsExample},
    {"##IS_EXAMPLE", MarkBlockAsExample},
    {"##BLOCK_IS_NEW", MarkElementAsNew},
    {"##EVENT_IS_NEW", MarkElementAsNew},
    {"##VARIABLE_IS_NEW", MarkElementAsNew},
    {"##MODULE_IS_NEW", MarkModuleAsNew},
    {"##MODULE_ISNEW", MarkModuleAsNew},
    {"##IS_NEW", MarkLastElementAsNew},
    {"##ISNEW", MarkLastElementAsNew},
    {"##IGNORE_REFERENCE", IgnoreReferences},
    {"##IGNORE_REFERENCES", IgnoreReferences},
    {"##RELATIONSHIP_LEVELS", SetRelationshipLevels},
    {"##MODULE_IS_COLLECTION", MarkModuleAsCollection},
    {"##MODULE_IS_INTERFACE", MarkModuleAsInterface},
    {"##RETAIN_CONTEXT_IDS", RetainContextIDs},
    {"##INTERFACE_ALIAS", SetInterfaceAlias},
};

Outcome ActOnCommand(Application& a) {
  for (const Command& command : kCommands)
    if (a.Is(command.Tag)) return command.Act(a);
  return Outcome::GoesOn;
}

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

ElementTypeEnum KindOfQualified(const Application& a) {
  if (a.ScopeHas("Parameter")) return etParameter;
  if (a.ScopeHas("FZ:EnumerationMember") && a.Block.CurrentEnum) return etEnumerationMember;
  if (a.ScopeHas("FZ:StructureMember") && a.Block.CurrentUDT) return etStructureMember;
  if (a.LastAs<Variable>() && a.ScopeHas("FZ:Variable")) return etVariable;
  return etNone;
}

// The tag cannot describe the last element: what else it may mean there.
ElementTypeEnum KindBesidesLastElement(Application& a) {
  if (TypeMatch(a.LastElement, "Component")) {
    if (a.Is("##SUMMARY")) a.Comment->TagIdentifier = "##MODULE_SUMMARY";
    return etModule;
  }
  if (a.LastAs<EnumMember>() && a.Block.CurrentEnum) return etEnumerationMember;
  if (a.LastAs<Variable>() && a.Block.CurrentUDT) return etStructureMember;
  return a.ScopeHas("FZ:Project") ? etProject : etNone;
}

ElementTypeEnum KindOfLastElement(const Application& a) {
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

ElementTypeEnum KindOf(Application& a) {
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

// True if the comment excluded a reference, and is thereby done with.
bool ReadExclusion(Application& a) {
  const std::string& tag = a.Definition->TagIdentifier;
  if (tag != "##EXCLUDE" && !StartsWithNoCaseAscii(tag, "##EXCLUDE_")) return false;
  a.Exclude = !EqualsNoCaseAscii(tag, "##EXCLUDE_REFERENCE");
  if (a.Exclude) return false;
  if (!a.Project) return true;
  for (Reference& reference : a.Project->References) {
    if (!EqualsNoCase(reference.FileName.LeafName(), a.Comment->Text)) continue;
    reference.ExcludeFlag = true;
    a.Comment->CodeElement = &reference;
    break;
  }
  return true;
}

// ---- Phase 4: attachment -----------------------------------------------------------------------

// The common step. `description` is where a describing text goes.
void AttachTo(Application& a, CodeElement& element, std::string* description, bool canExclude) {
  bool* excluded = canExclude && a.Exclude ? element.ExcludeFlagField() : nullptr;
  if (a.IsDescription && !a.Preserves && description)
    AppendDescription(*description, std::string_view(a.Comment->Text), a.Wrap);
  else if (excluded && !a.Preserves)
    *excluded = true;
  else if (OnDemand<TaggedComments>* comments = element.TaggedCommentsField())
    AddTaggedComment(**comments, a.Comment, false, a.Preserves);
  a.Comment->CodeElement = &element;
  a.Applied = true;
}

void Attach(Application& a, CodeElement& element) {
  AttachTo(a, element, element.TaggedDescriptionField(), true);
}

void AttachWithoutExclusion(Application& a, CodeElement& element) {
  AttachTo(a, element, element.TaggedDescriptionField(), false);
}

void AttachToGroup(Application& a) {
  CodeElement* group = a.Project ? a.Project->VBProjectGroup() : nullptr;
  if (group) AttachWithoutExclusion(a, *group);
  a.Applied = true;
}

void AttachToProject(Application& a) {
  if (a.Project) AttachWithoutExclusion(a, *a.Project);
}

void AttachToModule(Application& a) { AttachWithoutExclusion(a, a.Component); }

void AttachToBlock(Application& a) {
  auto* block = a.LastAs<Block>();
  if (block && !a.Block.Name().empty()) Attach(a, *block);
}

void AttachToVariable(Application& a) {
  const std::string& name = a.Comment->Qualifier;
  Variable* variable = a.Comment->TagIdentifier == "##" || name.empty()
                           ? a.LastAs<Variable>()
                           : VariableNamed(a.Block, name);
  if (variable) Attach(a, *variable);
}

// The parameter of an event is found in its own letter case only.
Parameter* EventParameter(const Parameters& parameters, std::string_view name) {
  Parameter* found = parameters.Item(name);
  if (!found || found->Name() == name) return found;
  for (Parameter& parameter : parameters)
    if (parameter.Name() == name) return &parameter;
  return nullptr;
}

void AttachToParameter(Application& a) {
  const std::string_view name = a.Comment->Qualifier;
  Parameter* parameter = nullptr;
  const Parameters* list = nullptr;
  if (auto* event = a.LastAs<EventDeclaration>()) {
    list = &*event->Parameters;
    parameter = EventParameter(*list, name);
  } else if (auto* last = a.LastAs<Block>()) {
    if (!last->Name().empty()) list = last->Parameters.IfAny();
  } else if (auto* declare = a.LastAs<DeclareDeclaration>()) {
    list = &*declare->Parameters;
  } else if (!a.Block.Name().empty()) {
    list = a.Block.Parameters.IfAny();
  }
  if (!list) return;
  if (!a.LastAs<EventDeclaration>()) parameter = list->Item(name);
  a.Applied = true;  // a comment for a parameter that does not exist is dealt with, and lost
  if (parameter) AttachTo(a, *parameter, &parameter->mDescription, false);
}

void AttachToEvent(Application& a) {
  if (auto* event = a.LastAs<EventDeclaration>()) Attach(a, *event);
}

void AttachToEnumeration(Application& a) {
  if (a.Block.CurrentEnum) Attach(a, *a.Block.CurrentEnum);
}

// The member that a comment names; one that names none is for the last member, and gets its name.
template <typename Members>
void AttachToMember(Application& a, const Members& members) {
  std::string& name = a.Comment->Qualifier;
  if (name.empty() && members.Count() > 0) name = members.Item(members.Count())->Name;
  if (auto* member = members.Item(std::string_view(name))) Attach(a, *member);
}

void AttachToEnumMember(Application& a) {
  if (a.Block.CurrentEnum) AttachToMember(a, a.Block.CurrentEnum->Members());
}

void AttachToStructure(Application& a) {
  if (a.Block.CurrentUDT) Attach(a, *a.Block.CurrentUDT);
}

void AttachToStructureMember(Application& a) {
  if (a.Block.CurrentUDT) AttachToMember(a, a.Block.CurrentUDT->Members);
}

void AttachToDeclare(Application& a) {
  if (auto* declare = a.LastAs<DeclareDeclaration>()) Attach(a, *declare);
}

void AttachToInterface(Application& a) {
  const std::string& name = a.Comment->Qualifier;
  Interface* target =
      name.empty() ? a.LastAs<Interface>() : a.Component.Interfaces.Item(std::string_view(name));
  if (target) Attach(a, *target);
}

void AttachByKind(Application& a) {
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

}  // namespace

bool Block::ApplyTaggedComment(const std::shared_ptr<TaggedComment>& tc) {
  vendrel::Component* component = Component.Get();
  if (!component) throw VendrelError(errObjectNotSet, "Block.Component");
  Application a{*this,
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

}  // namespace vendrel
