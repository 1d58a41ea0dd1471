// What types of VB.NET source have from the classes above their own.

#include <unordered_map>
#include <unordered_set>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "dotnet/GenericNames.h"
#include "dotnet/SourceScan.h"
#include "model/Events.h"

namespace vendrel {
namespace {

constexpr std::string_view kObject = "System.Object";
constexpr std::string_view kValueType = "System.ValueType";
constexpr std::string_view kAboveStructure = ",System.ValueType,System.Object";

class SourceInheritance {
 public:
  explicit SourceInheritance(VBProject& project)
      : mProject(project), mWhole(project.Reading.NetInheritance) {}

  void TakeDefaults(Component& c) const;
  void Inherit(Component& c);

 private:
  Component* InProject(std::string_view name) const;
  Component* Outside(std::string_view name);
  Component* Hierarchy(Component& c);
  void WalkHierarchy(Component& c, Component& base);
  void WholeHierarchy(Component& c, Component* base);
  void TakeEvents(Component& c, Component& base);
  void TakeEvent(Component& c, EventDeclaration& from, const std::string& owner);
  void TakeBlocks(Component& c, Component& base);
  void TakeFields(Component& c, const Block& declarations, const Component& base);
  void TakeBlock(Component& c, Block& block, const Component& base);
  Block* Counterpart(Component& c, const Block& block) const;
  void TakeOverloads(Component& c, Block& own, const Block& block, const Component& base) const;
  bool IsLeftOut(const Block& block) const;

  template <typename Element>
  static std::string OwnerOf(const Element& element, const Component& base) {
    return element.InheritedFrom.empty() ? base.FullName() : element.InheritedFrom.str();
  }
  static std::string OwnerOf(const Block& block, const Component& base) {
    return block.InheritedFrom().empty() ? base.FullName() : block.InheritedFrom().str();
  }

  VBProject& mProject;
  const bool mWhole;
  std::unordered_map<std::string, Component*> mOutside;
};

void SourceInheritance::TakeDefaults(Component& c) const {
  if (!c.InheritsFrom.empty() && c.InheritsFrom != kObject) return;
  if (mWhole && c.IsInterface) return;  // nothing stands above an interface but interfaces
  c.InheritsFrom = c.IsStructure ? kValueType : kObject;
  if (mWhole && c.IsEnumeration) c.InheritsFrom = "System.Enum";
}

Component* SourceInheritance::InProject(std::string_view name) const {
  if (name.empty()) return nullptr;
  if (mWhole && name.find('{') != kNotFound) return InProject(DefinitionOf(name));
  if (Component* found = mProject.Components.Item(name)) return found;
  return mWhole ? mProject.Components.Item("." + std::string(name)) : nullptr;
}

// Asked for once a name; failures of the resolver count as nothing found.
Component* SourceInheritance::Outside(std::string_view name) {
  const auto [known, isNew] = mOutside.try_emplace(std::string(name), nullptr);
  if (!isNew) return known->second;
  try {
    const std::string definition = mWhole ? DefinitionOf(name) : std::string(name);
    known->second = mProject.netGetComponentForTypeName(definition);
  } catch (const VendrelError&) {
  }
  return known->second;
}

// From the class above `c` upwards, as described: each class found adds the name of the one above
// it. The walk ends at a class that is its own base, and at any class seen before.
void SourceInheritance::WalkHierarchy(Component& c, Component& base) {
  std::string hierarchy = c.FullName() + "," + c.InheritsFrom.str();
  std::unordered_set<const Component*> seen;
  for (Component* cc = &base; seen.insert(cc).second;) {
    const std::string name = cc->InheritsFrom.str();
    if (name.empty() || EqualsNoCase(cc->FullName(), name)) break;
    if (Component* above = InProject(name)) {
      hierarchy += "," + above->InheritsFrom.str();
      cc = above;
      continue;
    }
    if (name == kValueType) {
      hierarchy += kAboveStructure;
    } else if (const Component* outside = Outside(name);
               outside && !outside->ClassHierarchy.empty()) {
      hierarchy += "," + outside->ClassHierarchy;
    }
    break;
  }
  c.ClassHierarchy = hierarchy;
}

// Every class once, up to the root or to a name behind which nothing is known.
void SourceInheritance::WholeHierarchy(Component& c, Component* base) {
  std::string hierarchy = c.FullName();
  std::unordered_set<const Component*> seen{&c};
  std::string name = c.InheritsFrom.str();
  for (Component* cc = base; !name.empty(); cc = InProject(name)) {
    if (!cc || !InProject(name)) {
      const Component* outside = Outside(name);
      if (outside && !outside->ClassHierarchy.empty())
        hierarchy += "," + outside->ClassHierarchy;
      else if (name == kValueType)
        hierarchy += kAboveStructure;
      else
        hierarchy += "," + name;
      break;
    }
    if (!seen.insert(cc).second) break;
    hierarchy += "," + cc->FullName();
    name = cc->InheritsFrom.str();
  }
  c.ClassHierarchy = c.IsInterface ? std::string() : hierarchy;
}

// The class above `c`; null if nobody knows it.
Component* SourceInheritance::Hierarchy(Component& c) {
  Component* base = InProject(c.InheritsFrom.view());
  if (base == &c) base = nullptr;
  const bool isOwn = base != nullptr;
  if (!isOwn) base = Outside(c.InheritsFrom.view());
  if (mWhole) {
    WholeHierarchy(c, base);
  } else if (isOwn) {
    WalkHierarchy(c, *base);
  } else if (base && !base->ClassHierarchy.empty()) {
    c.ClassHierarchy = c.FullName() + "," + base->ClassHierarchy;
  } else if (!base && c.InheritsFrom == kValueType) {
    c.ClassHierarchy = c.FullName() + std::string(kAboveStructure);
  }
  return base;
}

void SourceInheritance::Inherit(Component& c) try {
  if (EqualsNoCase(c.InheritsFrom.view(), c.FullName())) c.InheritsFrom = kObject;
  std::vector<Component*> bases;
  if (Component* base = Hierarchy(c)) bases.push_back(base);
  if (mWhole && c.IsInterface)
    for (const Interface& interface : c.Interfaces) {
      Component* base = InProject(interface.Name);
      if (!base) base = Outside(interface.Name);
      if (base && base != &c) bases.push_back(base);
    }
  for (Component* base : bases) {
    TakeEvents(c, *base);
    TakeBlocks(c, *base);
    if (c.DefaultMemberName.empty()) c.DefaultMemberName = base->DefaultMemberName;
  }
}
VENDREL_CONTEXT(c)

void SourceInheritance::TakeEvents(Component& c, Component& base) {
  for (EventDeclaration& event : base.EventDeclarations) {
    if (mWhole && event.AccessType() == atPrivate && !event.Access.empty()) continue;
    const std::string owner = OwnerOf(event, base);
    EventDeclaration* own = c.EventDeclarations.Item(std::string_view(event.Name));
    if (!own) {
      TakeEvent(c, event, owner);
    } else if (!(mWhole && own->IsShadow)) {
      own->InheritedFrom = owner;
      own->Implemented = true;
    }
  }
}

void SourceInheritance::TakeEvent(Component& c, EventDeclaration& from, const std::string& owner) {
  EventDeclaration* made = c.netCreateEvent(from.Name, from.DelegateName, false, owner);
  if (!mWhole || !made) return;
  made->Access = from.Access;
  const Parameters* parameters = from.Parameters.IfAny();
  if (!parameters) return;
  for (const Parameter& parameter : *parameters) {
    const auto copy = parameter.Clone(false);
    copy->Parent = made;
    made->Parameters->Add(copy, parameter.Name());
  }
}

void SourceInheritance::TakeBlocks(Component& c, Component& base) {
  std::vector<Block*> blocks;  // a class may be the base of a copy of itself
  for (Block& block : base.Blocks) blocks.push_back(&block);
  for (Block* block : blocks) {
    if (block->BlockType() == btDeclarations)
      TakeFields(c, *block, base);
    else if (!(mWhole && IsLeftOut(*block)))
      TakeBlock(c, *block, base);
  }
}

// What a class does not give on: constructors, what is private, and what is no member at all.
bool SourceInheritance::IsLeftOut(const Block& block) const {
  return block.Name().empty() || block.IsConstructor || block.Name() == "_ctor" ||
         block.AccessType() == atPrivate;
}

void SourceInheritance::TakeFields(Component& c, const Block& declarations, const Component& base) {
  const Variables* fields = declarations.Variables.IfAny();
  if (!fields) return;
  Block& own = *c.BlockOfType(btDeclarations, true);
  for (const Variable& field : *fields) {
    if (mWhole && field.AccessType() == atPrivate) continue;
    const std::string owner = OwnerOf(field, base);
    if (Variable* known = own.Variables->Item(std::string_view(field.Name))) {
      if (mWhole && known->IsShadow) continue;
      if (!known->Implemented && !known->InheritedFrom.empty()) continue;
      known->InheritedFrom = owner;
      known->Implemented = true;
    } else {
      c.netCreateField(field.Name, field.TypeName, field.Access, field.IsStatic, false, owner,
                       true);
    }
  }
}

// A method by its name, a property by name and kind.
Block* SourceInheritance::Counterpart(Component& c, const Block& block) const {
  if (block.IsMethod()) {
    if (!mWhole) return c.Blocks.Item(std::string_view(block.Name()));
    for (Block* own : c.Blocks.Named(block.Name()))
      if (own->IsMethod()) return own;
    return nullptr;
  }
  for (Block* own : c.Blocks.Named(block.Name()))
    if (own->BlockType() == block.BlockType() && (mWhole || own->Name() == block.Name()))
      return own;
  return nullptr;
}

void SourceInheritance::TakeOverloads(Component& c, Block& own, const Block& block,
                                      const Component& base) const {
  const Blocks* overloads = block.OverloadBlocks().IfAny();
  if (!overloads) return;
  for (const Block& overload : *overloads) {
    if (mWhole && overload.AccessType() == atPrivate) continue;
    const std::string owner =
        overload.Implemented && !mWhole ? base.FullName() : OwnerOf(overload, base);
    Block* known = nullptr;
    if (Blocks* mine = own.Overloads(); mine && mine->HasKey(overload.Name()))
      for (Block& each : *mine)
        if (EqualsNoCase(each.Name(), overload.Name())) known = &each;
    if (known) {
      if (mWhole && known->IsShadow) continue;
      known->SetInheritedFrom(owner);
      known->Implemented = true;
      continue;
    }
    const auto copy = overload.Clone(&c, false);
    if (mWhole) copy->SetInheritedFrom(owner);
    own.AddOverload(copy, overload.Name());
  }
}

void SourceInheritance::TakeBlock(Component& c, Block& block, const Component& base) {
  Block* own = Counterpart(c, block);
  if (own && mWhole && own->IsShadow) return;
  if (own) {
    own->Implemented = true;
    TakeOverloads(c, *own, block, base);
  } else {
    const auto copy = block.Clone(&c, false);
    copy->Implemented = false;
    if (Blocks* overloads = mWhole ? copy->Overloads() : nullptr)
      for (Block& overload : *overloads) overload.SetInheritedFrom(OwnerOf(block, base));
    if (!c.Blocks.Add(copy, block.Name())) return;
    own = copy.get();
  }
  const bool neverInherited = block.IsConstructor || EqualsNoCaseAscii(own->Name(), "dispose");
  if (own->Implemented && neverInherited)
    own->SetInheritedFrom({});
  else if (block.Implemented)
    own->SetInheritedFrom(base.FullName());
  else
    own->SetInheritedFrom(OwnerOf(block, base));
}

// The types of a project with the classes above each in front of it, whatever the order of files.
std::vector<Component*> BasesFirst(VBProject& project) {
  std::vector<Component*> order;
  std::unordered_set<const Component*> done;
  std::vector<Component*> chain;
  const auto baseOf = [&](const Component& c) -> Component* {
    const std::string name = DefinitionOf(c.InheritsFrom.view());
    Component* base = project.Components.Item(std::string_view(name));
    return base ? base : project.Components.Item("." + name);
  };
  const auto take = [&](Component& first) {
    for (Component* c = &first; c && done.insert(c).second; c = baseOf(*c)) chain.push_back(c);
    for (; !chain.empty(); chain.pop_back()) order.push_back(chain.back());
  };
  // Interfaces may stand below several; those above come before, as far as there are no rings.
  const auto takeInterfaces = [&](Component& first) {
    struct Step {
      Component* Module;
      std::size_t Next = 1;
    };
    if (!done.insert(&first).second) return;
    std::vector<Step> open{{&first}};
    while (!open.empty()) {
      Step& step = open.back();
      if (step.Next > step.Module->Interfaces.Count()) {
        order.push_back(step.Module);
        open.pop_back();
        continue;
      }
      const std::string& name = step.Module->Interfaces.Item(step.Next++)->Name;
      Component* above = project.Components.Item(std::string_view(DefinitionOf(name)));
      if (above && above->IsInterface && done.insert(above).second) open.push_back({above});
    }
  };
  for (ProjectFile& file : project.ProjectFiles)
    for (Component& component : file.Components)
      if (component.IsInterface)
        takeInterfaces(component);
      else
        take(component);
  return order;
}

}  // namespace

bool ProjectFile::ResolveInheritedMembers() try {
  vendrel::VBProject* project = VBProject();
  if (!project || Scanned().InheritanceResolved) return true;
  const Workspace::Use use(project->Workspace());
  SourceInheritance inheritance(*project);
  if (!project->Reading.NetInheritance) {
    Scanned().InheritanceResolved = true;
    for (vendrel::Component& component : Components) inheritance.TakeDefaults(component);
    for (vendrel::Component& component : Components) inheritance.Inherit(component);
    return true;
  }
  // All files at once: a base may stand in any of them.
  for (ProjectFile& file : project->ProjectFiles) {
    if (file.Scanned().InheritanceResolved) continue;
    file.Scanned().InheritanceResolved = true;
    file.ResolveTypeNames();
    for (vendrel::Component& component : file.Components) inheritance.TakeDefaults(component);
  }
  for (vendrel::Component* component : BasesFirst(*project)) inheritance.Inherit(*component);
  return true;
}
VENDREL_CONTEXT(trace::Field("FileName", FileName.FullPath()))

}  // namespace vendrel
