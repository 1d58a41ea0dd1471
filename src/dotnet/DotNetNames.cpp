// From a name of documentation files to the element.

#include "core/CaseFold.h"
#include "diagnostics/Context.h"
#include "model/Events.h"
#include "project/Assembly.h"
#include "project/VBProject.h"

namespace vendrel {
namespace {

// Those of source stand in their namespaces.
Block* FindSourceDelegate(VBProject& project, std::string_view name) {
  Assembly* assembly = project.Reading.NetNames ? project.Assembly() : nullptr;
  if (!assembly || project.ProjectFiles.Count() == 0) return nullptr;
  const std::size_t dot = name.rfind('.');
  const std::string_view front = dot == std::string_view::npos ? "" : name.substr(0, dot);
  const std::string_view own = dot == std::string_view::npos ? name : name.substr(dot + 1);
  if (!front.empty()) {
    Namespace* space = assembly->Namespaces.Item(front);
    return space ? space->Delegates.Item(own) : nullptr;
  }
  for (Namespace& space : assembly->Namespaces)
    if (space.Name.empty()) return space.Delegates.Item(own);
  return nullptr;
}

CodeElement* FindDelegate(VBProject& project, std::string_view name) {
  Component* delegates = project.Components.Item(kDelegatesModule);
  Block* block = delegates ? delegates->Blocks.Item(name) : nullptr;
  return block ? block : FindSourceDelegate(project, name);
}

CodeElement* FindType(VBProject& project, std::string_view name) {
  if (Component* component = project.Components.Item(name)) return component;
  if (CodeElement* found = FindDelegate(project, name)) return found;
  // The name that the classic reading gives a delegate.
  const std::string prefix = std::string(kDelegatesModule) + ".";
  if (!project.Reading.NetNames || !name.starts_with(prefix)) return nullptr;
  return FindDelegate(project, name.substr(prefix.size()));
}

// The block of that very name, among those that share the name in front of its parameters.
Block* FindDocumented(Component& component, std::string_view member, std::string_view name) {
  std::string base(member.substr(0, member.find_first_of("(~")));
  if (base == "#ctor" || base == "#cctor") base[0] = '_';
  for (Block* block : component.Blocks.Named(base)) {
    Blocks* overloads = block->Overloads();
    if (!overloads || overloads->Count() == 0) {
      if (block->DotNetName() == name) return block;
      continue;
    }
    for (Block& overload : *overloads)
      if (overload.DotNetName() == name) return &overload;
  }
  return nullptr;
}

// By either form. Parameters that no overload has lead nowhere.
Block* FindProcedure(Component& component, std::string_view member, std::string_view name) {
  if (Block* block = FindDocumented(component, member, name)) return block;
  Block* block = component.Blocks.Item(member);
  const bool isAnswer =
      block && (block->Overloaded() || member.find('(') == std::string_view::npos);
  return isAnswer ? block : nullptr;
}

// What every delegate has leads to the delegate, which is one block.
CodeElement* FindPartOfDelegate(VBProject& project, std::string_view type,
                                std::string_view member) {
  if (!project.Reading.NetNames) return nullptr;
  const std::string_view name = member.substr(0, member.find('('));
  const bool isPart =
      name == "#ctor" || name == "Invoke" || name == "BeginInvoke" || name == "EndInvoke";
  return isPart ? FindDelegate(project, type) : nullptr;
}

// Keys take no heed of case; in the complete reading names do.
template <typename Elements>
CodeElement* FindIn(Elements& elements, std::string_view member, std::string_view name,
                    bool exact) {
  auto* found = elements.Item(member);
  if (!exact || !found || found->DotNetName() == name) return found;
  for (auto& element : elements)
    if (element.DotNetName() == name) return &element;
  return found;
}

CodeElement* FindMember(Component& component, std::string_view member, std::string_view name,
                        bool exact) {
  switch (name[0]) {
    case 'M':
    case 'P': return exact ? FindProcedure(component, member, name) : component.Blocks.Item(member);
    case 'F': {
      Block* declarations = component.Blocks.FirstOfType(btDeclarations);
      Variables* fields = declarations ? declarations->Variables.IfAny() : nullptr;
      return fields ? FindIn(*fields, member, name, exact) : nullptr;
    }
    case 'E': return FindIn(component.EventDeclarations, member, name, exact);
    default: return nullptr;
  }
}

}  // namespace

void VBProject::SplitDotNetName(std::string_view Name, std::string& ComponentName,
                                std::string& MemberName) {
  const std::string_view front = Name.substr(0, Name.find('('));
  const std::size_t dot = front.rfind('.');
  ComponentName = dot == std::string_view::npos ? std::string_view() : front.substr(0, dot);
  MemberName = dot == std::string_view::npos ? Name : Name.substr(dot + 1);
}

CodeElement* VBProject::GetObjectFromDotNetName(std::string_view Name) try {
  const std::size_t colon = Name.find(':');
  if (colon != 1) return nullptr;
  const std::string_view rest = Name.substr(2);
  if (Name[0] == 'T') return FindType(*this, rest);
  std::string componentName, memberName;
  SplitDotNetName(rest, componentName, memberName);
  Component* component = Components.Item(componentName);
  if (component) return FindMember(*component, memberName, Name, Reading.NetNames);
  return Name[0] == 'M' ? FindPartOfDelegate(*this, componentName, memberName) : nullptr;
}
VENDREL_CONTEXT(Name, *this)

}  // namespace vendrel
