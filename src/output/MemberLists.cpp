#include "output/MemberLists.h"

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "diagnostics/Context.h"
#include "project/VBProject.h"
#include "services/SortedList.h"

namespace vendrel {
namespace {

using Members = SortedList<const CodeElement*>;

bool AccessMatch(std::string_view access, bool isHidden, bool includePrivate, bool includeFriend) {
  if (includePrivate) return true;
  if (EqualsNoCaseAscii(access, "friend")) return includeFriend;
  return EqualsNoCaseAscii(access, "public") && !isHidden;
}

bool AccessTypeMatch(AccessTypeEnum access, bool isHidden, const MemberFilter& filter) {
  if (filter.IncludePrivate || (access == atFriend && filter.IncludeFriend)) return true;
  return access == atPublic && !isHidden;
}

// A member of an interface that is documented elsewhere is excluded, and stays so.
void ExcludeIfAliased(const Component& component, Block& block) {
  if (block.Interface.empty()) return;
  const Interface* interface = component.Interfaces.Item(block.Interface.view());
  if (interface && !interface->DocumentationLocation.empty()) block.ExcludeFlag = true;
}

// The three cases of the argument `Interface`; `ofInterface` is the test that counts for a named
// one.
template <typename Match>
bool IsListed(const Component& component, Block& block, std::string_view interface, Match match,
              bool ofInterface) {
  if (interface.empty()) {
    ExcludeIfAliased(component, block);
    return !block.ExcludeFlag && match();
  }
  if (interface == "Default") return block.Interface.empty() && match();
  return EqualsNoCase(interface, block.Interface) && ofInterface;
}

bool TakesVariables(const Block& block, std::string_view interface) {
  return block.BlockType() == btDeclarations && (interface.empty() || interface == "Default");
}

// Calls `visit` for each variable of the block that is not excluded.
template <typename Visit>
void ForEachVariable(const Block& block, Visit visit) {
  const Variables* variables = block.Variables.IfAny();
  if (!variables) return;
  for (const Variable& variable : *variables)
    if (!variable.ExcludeFlag) visit(variable);
}

void AddTo(Members& members, const CodeElement& element) {
  members.Add(element.ElementName(), &element);
}

template <typename Match>
Members MethodsOf(Component& component, std::string_view interface, Match match,
                  bool hiddenOfInterface) {
  Members members;
  for (Block& block : component.Blocks) {
    if (!block.IsMethod() || block.ExcludeFlag) continue;
    if (IsListed(
            component, block, interface, [&] { return match(block); },
            hiddenOfInterface || !block.IsHiddenMember))
      AddTo(members, block);
  }
  return members;
}

template <typename Match, typename MatchVariable>
Members PropertiesOf(Component& component, std::string_view interface, bool includePrivate,
                     Match match, bool hiddenOfInterface, MatchVariable matchVariable) {
  Members members;
  for (Block& block : component.Blocks) {
    if (block.IsProperty()) {
      if (block.ExcludeFlag ||
          component.ConsolidatedPropertyBlock(block.Name(), includePrivate) != &block)
        continue;
      if (IsListed(
              component, block, interface, [&] { return match(block); },
              hiddenOfInterface || !block.IsHiddenMember))
        AddTo(members, block);
    } else if (TakesVariables(block, interface)) {
      ForEachVariable(block, [&](const Variable& variable) {
        if (matchVariable(variable)) AddTo(members, variable);
      });
    }
  }
  return members;
}

Members MethodsBy(Component& component, const MemberFilter& filter) {
  const auto match = [&](const Block& block) {
    return AccessMatch(block.Access, block.IsHiddenMember, filter.IncludePrivate,
                       filter.IncludeFriend);
  };
  return MethodsOf(component, filter.Interface, match, filter.IncludePrivate);
}

Members PropertiesBy(Component& component, const MemberFilter& filter) {
  const auto match = [&](const Block& block) {
    return AccessTypeMatch(block.ConsolidatedAccessType(), block.IsHiddenMember, filter);
  };
  const auto matchVariable = [&](const Variable& variable) {
    return AccessMatch(variable.Access, variable.IsHiddenMember, filter.IncludePrivate,
                       filter.IncludeFriend);
  };
  return PropertiesOf(component, filter.Interface, filter.IncludePrivate, match,
                      filter.IncludePrivate, matchVariable);
}

bool IsCollectionType(const Component& component, std::string_view typeName) {
  if (typeName == "Collection") return true;
  const VBProject* project = component.VBProject();
  const Component* type = project ? project->Components.Item(typeName) : nullptr;
  return type && type->Blocks.Item("NewEnum");
}

Members CollectionsOf(const Component& component, bool includePrivate) {
  Members members;
  for (const Block& block : component.Blocks)
    if (AccessMatch(block.Access, block.IsHiddenMember, includePrivate, false) &&
        block.IsProperty() && IsCollectionType(component, block.ReturnType))
      AddTo(members, block);
  const Block* declarations = component.Blocks.FirstOfType(btDeclarations);
  const Variables* variables = declarations ? declarations->Variables.IfAny() : nullptr;
  if (!variables) return members;
  for (const Variable& variable : *variables)
    // The name is asked, not the type: that is what clients know of this list.
    if (variable.Access == "PUBLIC" &&
        AccessMatch(variable.Access, variable.IsHiddenMember, includePrivate, false) &&
        IsCollectionType(component, variable.Name))
      AddTo(members, variable);
  return members;
}

Members EnumerationsOf(const Component& component, bool includePrivate) {
  Members members;
  for (const Enumeration& enumeration : component.Enumerations)
    if (!enumeration.ExcludeFlag &&
        AccessMatch(enumeration.Access, enumeration.IsHiddenMember, includePrivate, false))
      AddTo(members, enumeration);
  return members;
}

Members TypesOf(const Component& component, bool includePrivate) {
  Members members;
  for (const UDT& structure : component.UDTs)
    if (!structure.ExcludeFlag &&
        AccessMatch(structure.Access, structure.IsHiddenMember, includePrivate, false) &&
        (includePrivate || structure.Access == "PUBLIC"))
      AddTo(members, structure);
  return members;
}

Members EventsOf(const Component& component) {
  Members members;
  for (const EventDeclaration& event : component.EventDeclarations)
    if (!event.ExcludeFlag && !event.IsHiddenMember) AddTo(members, event);
  return members;
}

std::vector<std::string> NamesOf(const std::vector<const CodeElement*>& members) {
  std::vector<std::string> names;
  names.reserve(members.size());
  for (const CodeElement* member : members) names.push_back(member->ElementName());
  return names;
}

// What the filtered lists ask of a procedure and of a variable.
auto FilterBy(std::string_view access, bool isStatic) {
  return [access, isStatic](const auto& element) {
    return EqualsNoCase(element.Access, access) && element.IsStatic == isStatic;
  };
}

}  // namespace

std::vector<const CodeElement*> MembersOf(Component& component, MemberKind kind,
                                          const MemberFilter& filter) try {
  switch (kind) {
    case MemberKind::Methods: return MethodsBy(component, filter).Items();
    case MemberKind::Properties: return PropertiesBy(component, filter).Items();
    case MemberKind::Events: return EventsOf(component).Items();
    case MemberKind::Enumerations: return EnumerationsOf(component, filter.IncludePrivate).Items();
    case MemberKind::Types: return TypesOf(component, filter.IncludePrivate).Items();
    case MemberKind::Collections: return CollectionsOf(component, filter.IncludePrivate).Items();
  }
  return {};
}
VENDREL_CONTEXT(component)

std::vector<std::string> Component::MethodList(bool /*AsHTML*/, bool IncludePrivate,
                                               bool IncludeFriend, std::string_view Interface) try {
  return NamesOf(MembersOf(*this, MemberKind::Methods, {IncludePrivate, IncludeFriend, Interface}));
}
VENDREL_CONTEXT(IncludePrivate, IncludeFriend, Interface, *this)

std::vector<std::string> Component::FilteredMethodList(std::string_view access, bool IsStatic,
                                                       std::string_view Interface) try {
  return NamesOf(MethodsOf(*this, Interface, FilterBy(access, IsStatic), true).Items());
}
VENDREL_CONTEXT(access, IsStatic, Interface, *this)

std::vector<std::string> Component::PropertyList(bool /*AsHTML*/, bool IncludePrivate,
                                                 bool IncludeFriend,
                                                 std::string_view Interface) try {
  return NamesOf(
      MembersOf(*this, MemberKind::Properties, {IncludePrivate, IncludeFriend, Interface}));
}
VENDREL_CONTEXT(IncludePrivate, IncludeFriend, Interface, *this)

std::vector<std::string> Component::FilteredPropertyList(std::string_view access, bool IsStatic,
                                                         std::string_view Interface) try {
  const auto match = FilterBy(access, IsStatic);
  const bool includePrivate = EqualsNoCaseAscii(access, "private");
  return NamesOf(PropertiesOf(*this, Interface, includePrivate, match, true, match).Items());
}
VENDREL_CONTEXT(access, IsStatic, Interface, *this)

std::vector<std::string> Component::CollectionList(bool /*AsHTML*/, bool IncludePrivate) try {
  return NamesOf(MembersOf(*this, MemberKind::Collections, {IncludePrivate, false, {}}));
}
VENDREL_CONTEXT(IncludePrivate, *this)

std::vector<std::string> Component::EnumList(bool /*AsHTML*/, bool IncludePrivate) try {
  return NamesOf(MembersOf(*this, MemberKind::Enumerations, {IncludePrivate, false, {}}));
}
VENDREL_CONTEXT(IncludePrivate, *this)

std::vector<std::string> Component::UDTList(bool /*AsHTML*/, bool IncludePrivate) try {
  return NamesOf(MembersOf(*this, MemberKind::Types, {IncludePrivate, false, {}}));
}
VENDREL_CONTEXT(IncludePrivate, *this)

std::vector<std::string> Component::EventList(bool /*AsHTML*/, bool IncludePrivate) try {
  return NamesOf(MembersOf(*this, MemberKind::Events, {IncludePrivate, false, {}}));
}
VENDREL_CONTEXT(IncludePrivate, *this)

}  // namespace vendrel
