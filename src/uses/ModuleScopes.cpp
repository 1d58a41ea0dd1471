// What a module declares, as names.

#include "core/Ascii.h"
#include "text/Identifiers.h"
#include "uses/Scopes.h"

namespace vendrel {
namespace {

bool IsSeenOutside(std::string_view access, bool isNet = false) {
  if (isNet) return !EqualsNoCaseAscii(access, "PRIVATE");
  return EqualsNoCaseAscii(access, "PUBLIC") || EqualsNoCaseAscii(access, "FRIEND");
}

// An Enum or Type is public where nothing says otherwise.
bool IsOpenType(std::string_view access) { return !EqualsNoCaseAscii(access, "PRIVATE"); }

Entry NewEntry(EntrySort sort, const Component* home, const CodeElement& element, bool isPublic) {
  Entry entry;
  entry.Sort = sort;
  entry.Home = home;
  entry.Element = &element;
  entry.IsPublic = isPublic;
  return entry;
}

}  // namespace

Entry* Scopes::Add(EntryMap& map, Symbol name, Entry entry) {
  entry.Name = name;
  Entry* added = Make(entry);
  Entry*& first = map.At(name);
  if (!first) return first = added;
  Entry* last = first;
  while (last->Next) last = last->Next;
  return last->Next = added;
}

void Scopes::AddProcedures(ModuleScope& scope) {
  const Component& module = *scope.Module;
  const bool isNet = IsNet(module);
  // In source what is inherited is found above; an assembly marks what overrides like that.
  const bool isSource = module.SourceForm != nullptr;
  for (const Block& block : module.Blocks) {
    if (block.Name().empty() || (isSource && !IsOwnMemberOf(block))) continue;
    const Symbol name = block.IsConstructor ? Symbol{word::New}  // as source calls it
                                            : mSymbols.Of(WithoutBrackets(block.Name()));
    const bool isPublic = IsSeenOutside(block.Access.view(), isNet);
    if (!block.IsPropertyType()) {
      if (block.IsMethod() || block.BlockType() != btAttributes)
        Add(scope.Members, name, NewEntry(EntrySort::Procedure, &module, block, isPublic));
      continue;
    }
    const PropertyGroup* group = module.PropertyGroups.Item(block.Name());
    const CodeElement& element = group ? static_cast<const CodeElement&>(*group) : block;
    if (Entry* known = scope.Members.Find(name)) {
      known->IsPublic |= isPublic;
      continue;
    }
    Add(scope.Members, name, NewEntry(EntrySort::Property, &module, element, isPublic));
  }
}

void Scopes::AddDeclarations(ModuleScope& scope) {
  const Component& module = *scope.Module;
  const bool isNet = IsNet(module);
  for (const Block& block : module.Blocks) {
    if (block.BlockType() != btDeclarations) continue;
    if (const Variables* variables = block.Variables.IfAny())
      for (const Variable& variable : *variables) {
        if (!IsOwnMemberOf(variable)) continue;
        Add(scope.Members, mSymbols.Of(WithoutBrackets(variable.Name)),
            NewEntry(EntrySort::Variable, &module, variable,
                     IsSeenOutside(variable.Access.view(), isNet) ||
                         EqualsNoCaseAscii(variable.Access.view(), "GLOBAL")));
      }
    if (const Constants* constants = block.Constants.IfAny())
      for (const Constant& constant : *constants) {
        Entry entry = NewEntry(EntrySort::Constant, &module, constant,
                               IsSeenOutside(constant.Access.view(), isNet) ||
                                   EqualsNoCaseAscii(constant.Access.view(), "GLOBAL"));
        entry.IsConstant = true;
        Add(scope.Members, mSymbols.Of(WithoutBrackets(constant.Name)), entry);
      }
  }
  for (const DeclareDeclaration& declare : module.Declarations)
    Add(scope.Members, mSymbols.Of(WithoutBrackets(declare.Name)),
        NewEntry(EntrySort::Declare, &module, declare, IsOpenType(declare.Access.view())));
  for (const EventDeclaration& event : module.EventDeclarations.Listed()) {
    if (!IsOwnMemberOf(event)) continue;
    Add(scope.Events, mSymbols.Of(WithoutBrackets(event.Name)),
        NewEntry(EntrySort::Event, &module, event, true));
  }
}

void Scopes::AddTypes(ModuleScope& scope) {
  const Component& module = *scope.Module;
  for (const Enumeration& enumeration : module.Enumerations) {
    const bool isPublic = IsOpenType(enumeration.Access.view());
    Add(scope.Types, mSymbols.Of(WithoutBrackets(enumeration.Name)),
        NewEntry(EntrySort::Enumeration, &module, enumeration, isPublic));
    for (const EnumMember& member : enumeration.Members())
      Add(scope.Members, mSymbols.Of(WithoutBrackets(member.Name)),
          NewEntry(EntrySort::EnumMember, &module, member, isPublic));
  }
  for (const UDT& structure : module.UDTs)
    Add(scope.Types, mSymbols.Of(WithoutBrackets(structure.Name)),
        NewEntry(EntrySort::Structure, &module, structure, IsOpenType(structure.Access.view())));
}

void Scopes::AddControls(ModuleScope& scope) {
  for (const VBControl& control : scope.Module->AllVBControls) {
    const std::string name = control.ShortName();
    if (name.empty()) continue;
    const Symbol symbol = mSymbols.Of(name);
    Entry* known = scope.Members.Find(symbol);
    if (known && known->Sort != EntrySort::Control) known = nullptr;
    const bool isIndexed = control.Name.size() > name.size();
    if (!known) {
      Entry entry = NewEntry(EntrySort::Control, scope.Module, control, true);
      entry.IsArrayOfControls = isIndexed;
      known = Add(scope.Members, symbol, entry);
    }
    if (isIndexed) mGroups[known].emplace(control.Index, &control);
  }
}

void Scopes::FindBase(ModuleScope& scope) {
  const Component& module = *scope.Module;
  if (IsNet(module)) {
    if (!module.InheritsFrom.empty()) {
      scope.Above = NetType(module, module.InheritsFrom.view());
      scope.HasForeignBase = !scope.Above;
      if (scope.Above == &module) scope.Above = nullptr;
    }
    if (const std::size_t dot = module.Name.rfind('.'); dot != std::string::npos && module.IsNested)
      scope.Around = NetType(
          module, module.FullName().substr(0, module.FullName().size() - module.Name.size() + dot));
    return;
  }
  const std::string_view base = BaseTypeName(module);
  if (!base.empty()) scope.Base = mBuiltins.FindType(base);
  scope.HasForeignBase =
      module.FileType == ftDesigner || module.FileType == ftOther || module.FileType == ftUnknown;
  scope.IsMissing = !module.SourceForm && module.Blocks.Listed().Count() == 0 &&
                    module.Enumerations.Count() == 0 && module.UDTs.Count() == 0;
  if (!module.DefaultMemberName.empty())
    scope.DefaultMember = scope.Members.Find(mSymbols.Of(module.DefaultMemberName));
}

ModuleScope& Scopes::Of(const Component& module) {
  std::unique_ptr<ModuleScope>& made = mModules[&module];
  if (made) return *made;
  made = std::make_unique<ModuleScope>();
  ModuleScope& scope = *made;
  scope.Module = &module;
  scope.Own.Name = mSymbols.Of(module.Name);
  scope.Own.Sort = EntrySort::Module;
  scope.Own.IsPublic = true;
  scope.Own.Element = &module;
  scope.Own.Home = &module;
  scope.Own.Type = TypeOfModule(module);
  scope.Own.TypeKnown = true;
  AddProcedures(scope);
  AddDeclarations(scope);
  AddTypes(scope);
  AddControls(scope);
  FindBase(scope);
  return scope;
}

TypeRef Scopes::TypeOfModule(const Component& module) { return {TypeSort::Module, false, &module}; }

const VBControl* Scopes::ControlAt(const Entry& group, std::int32_t index) const {
  const auto controls = mGroups.find(&group);
  if (controls == mGroups.end()) return nullptr;
  const auto found = controls->second.find(index);
  return found == controls->second.end() ? nullptr : found->second;
}

Entry* Scopes::Field(const UDT& structure, Symbol name) {
  std::unique_ptr<EntryMap>& fields = mFields[&structure];
  if (!fields) {
    fields = std::make_unique<EntryMap>();
    for (const Variable& field : structure.Members)
      Add(*fields, mSymbols.Of(WithoutBrackets(field.Name)),
          NewEntry(EntrySort::Field, structure.Component.Get(), field, true));
  }
  return fields->Find(name);
}

}  // namespace vendrel
