// What types of VB.NET source have from the classes above their own.

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "dotnet/SourceHierarchy.h"
#include "dotnet/SourceScan.h"
#include "model/Events.h"

namespace vendrel {
namespace {

class SourceInheritance {
 public:
  explicit SourceInheritance(VBProject& project)
      : mWhole(project.Reading.NetInheritance), mHierarchy(project) {}

  void TakeDefaults(Component& c) const { mHierarchy.TakeDefaults(c); }
  void Inherit(Component& c);

 private:
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

  const bool mWhole;
  SourceHierarchy mHierarchy;
};

void SourceInheritance::Inherit(Component& c) try {
  for (Component* base : mHierarchy.Above(c)) {
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
