#include "dotnet/DocumentedElements.h"

#include <algorithm>

#include "dotnet/GenericNames.h"
#include "model/Events.h"

namespace vendrel {
namespace {

constexpr std::size_t kLargeFamily = 16;

// A name cut where its arguments begin; what stands in the braces of its front is left out.
struct LooseName {
  std::string Front;
  std::string_view Arguments;
};

LooseName Loosen(std::string_view name) {
  LooseName loose;
  int depth = 0;
  std::size_t at = 0;
  for (; at < name.size(); ++at) {
    const char c = name[at];
    if (depth == 0 && (c == '(' || c == '~')) break;
    if (c == '}' && depth > 0) --depth;
    if (depth == 0) loose.Front += c;
    if (c == '{') ++depth;
  }
  loose.Arguments = name.substr(at);
  return loose;
}

}  // namespace

std::string DocumentedNameOf(const CodeElement& element) {
  if (const auto* component = As<Component>(&element)) return component->DotNetName();
  if (const auto* block = As<Block>(&element)) return block->DotNetName();
  if (const auto* variable = As<Variable>(&element)) return variable->DotNetName();
  if (const auto* event = As<EventDeclaration>(&element)) return event->DotNetName();
  return {};
}

const DocumentedElements::Members& DocumentedElements::MembersOf(Component& component) {
  const auto [known, isNew] = mMembers.try_emplace(&component);
  Members& members = known->second;
  if (!isNew) return members;
  const auto add = [&](Block& block) {
    members[Loosen(block.DotNetName()).Front].push_back(&block);
  };
  for (Block& block : component.Blocks) {
    if (block.BlockType() == btDeclarations) continue;
    Blocks* overloads = block.Overloads();
    if (!overloads || overloads->Count() == 0)
      add(block);
    else
      for (Block& overload : *overloads) add(overload);
  }
  return members;
}

// A walk over the overloads of a family for each of them would take the square of their number.
Block* DocumentedElements::FindOverload(std::string_view name) {
  std::string type, member;
  VBProject::SplitDotNetName(name.substr(2), type, member);
  Component* component = mProject.Components.Item(type);
  std::string base = member.substr(0, member.find_first_of("(~"));
  if (base == "#ctor") base[0] = '_';
  if (!component) return nullptr;
  for (Block* head : component->Blocks.Named(base)) {
    Blocks* overloads = head->Overloads();
    if (!overloads || overloads->Count() < kLargeFamily) continue;
    const auto [family, isNew] = mFamilies.try_emplace(head);
    if (isNew)
      for (Block& overload : *overloads)
        family->second.try_emplace(overload.DotNetName(), &overload);
    const auto found = family->second.find(std::string(name));
    if (found != family->second.end()) return found->second;
  }
  return nullptr;
}

CodeElement* DocumentedElements::Exact(std::string_view name) {
  const bool isProcedure = name.starts_with("M:") || name.starts_with("P:");
  if (isProcedure && mProject.Reading.NetNames)
    if (Block* overload = FindOverload(name)) return overload;
  return mProject.GetObjectFromDotNetName(name);
}

CodeElement* DocumentedElements::Referred(std::string_view name) {
  if (CodeElement* found = Exact(name)) return found;
  const std::size_t open = std::min(name.find('('), name.size());
  const bool hasArguments = name.substr(0, open).find('{') != std::string_view::npos;
  if (!hasArguments || !mProject.Reading.NetNames) return nullptr;
  return Exact(DefinitionOf(name.substr(0, open)).append(name.substr(open)));
}

DocumentedElement DocumentedElements::Find(std::string_view name) {
  if (CodeElement* exact = Exact(name)) return {exact, NameJoin::Exact};
  const bool isProcedure = name.starts_with("M:") || name.starts_with("P:");
  if (!isProcedure || !mProject.Reading.NetNames) return {};
  std::string type, member;
  VBProject::SplitDotNetName(name.substr(2), type, member);
  Component* component = mProject.Components.Item(type);
  if (!component) return {};
  const LooseName sought = Loosen(name);
  const Members& members = MembersOf(*component);
  const auto family = members.find(sought.Front);
  if (family == members.end()) return {};
  if (sought.Front.find('{') != std::string::npos)
    for (Block* block : family->second)
      if (Loosen(block->DotNetName()).Arguments == sought.Arguments)
        return {block, NameJoin::OtherBraces};
  if (family->second.size() == 1) return {family->second.front(), NameJoin::NameAlone};
  return {};
}

}  // namespace vendrel
