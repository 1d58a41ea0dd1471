// What the name of a procedure ties it to: the member of an interface, the event of a source.

#include "core/Ascii.h"
#include "uses/ModuleBinder.h"

namespace vendrel {

PendingUse& ModuleBinder::AddPart(std::size_t at, std::size_t from, std::size_t to, UseKind kind) {
  PendingUse of;
  of.Begin = At(at).Begin + static_cast<std::uint32_t>(from);
  of.End = At(at).Begin + static_cast<std::uint32_t>(to);
  of.Line = At(at).Line;
  of.Name = At(at).Name;
  of.Holder = mHolder;
  return AddSecondary(of, kind);
}

// "IFoo_Bar" implements Bar of IFoo.
bool ModuleBinder::TieToInterface(std::size_t at, std::string_view prefix,
                                  std::string_view member) {
  if (!mModule->Interfaces.HasKey(prefix)) return false;
  const Entry* type = mScopes.TypeEntry(mModule, word::None, mScopes.Names().Of(prefix));
  const Component* interface = type ? As<Component>(type->Element) : nullptr;
  const Entry* of =
      interface ? mScopes.Of(*interface).Members.Find(mScopes.Names().Of(member)) : nullptr;
  if (interface && !of) return true;  // a procedure with such a name, and no more
  PendingUse& use =
      AddPart(at, prefix.size() + 1, prefix.size() + 1 + member.size(), UseKind::Implements);
  if (!of) {
    use.Answer = UseAnswer::External;
    use.Library = mScopes.LibraryName(std::string_view());
    return true;
  }
  use.Answer = AnswerOf(*of);
  use.Element = of->Element;
  if (of->Sort == EntrySort::Property && mBlock)
    use.Accessor = mBlock->BlockType() == btPropertyGet   ? UseAccessor::Get
                   : mBlock->BlockType() == btPropertySet ? UseAccessor::Set
                                                          : UseAccessor::Let;
  return true;
}

// An event of a type: of the project or of the table. False for a type that has none of that name;
// one that is not at hand may have any.
bool ModuleBinder::FindEvent(const TypeRef& type, bool isControl, std::string_view event,
                             PendingUse& use) {
  if (type.Sort == TypeSort::External || type.Sort == TypeSort::Unknown) {
    use.Answer = UseAnswer::External;
    use.Library =
        type.Sort == TypeSort::External ? type.Library() : mScopes.LibraryName(std::string_view());
    return true;
  }
  if (type.Sort == TypeSort::Module) {
    const ModuleScope& scope = mScopes.Of(*type.Module());
    if (const Entry* declared = scope.Events.Find(mScopes.Names().Of(event))) {
      use.Answer = AnswerOf(*declared);
      use.Element = declared->Element;
      return true;
    }
    if (scope.Base) use.Member = mScopes.Table().FindEvent(*scope.Base, event);
  }
  if (type.Sort == TypeSort::Builtin)
    use.Member = mScopes.Table().FindEvent(*type.Builtin(), event);
  if (!use.Member && isControl)  // what the container adds: GotFocus, Validate
    use.Member = mScopes.Table().FindEvent("VBControlExtender", event);
  use.Answer = UseAnswer::Library;
  return use.Member != nullptr;
}

// "cmd_Click" handles Click of cmd; "Form_Load" Load of the module itself.
bool ModuleBinder::TieToEvent(std::size_t at, std::string_view prefix, std::string_view event) {
  PendingUse found;
  const std::size_t behind = prefix.size() + 1;
  const std::string_view header = mModule->EventProcedureHeader();
  if (!header.empty() && EqualsNoCaseAscii(prefix, header.substr(0, header.size() - 1))) {
    const BuiltinType* own = mScope->Base ? mScope->Base : mScopes.Table().FindType("Class");
    if (!own || !FindEvent({TypeSort::Builtin, false, own}, false, event, found)) return false;
    PendingUse& use = AddPart(at, behind, behind + event.size(), UseKind::Handle);
    use.Answer = found.Answer;
    use.Member = found.Member;
    return true;
  }
  const Entry* source = mScope->Members.Find(mScopes.Names().Of(prefix));
  if (!source) return false;
  const auto* variable = As<Variable>(source->Element);
  const bool isControl = source->Sort == EntrySort::Control;
  if (!isControl && !(variable && variable->IsWithEvents)) return false;
  TypeRef type = mScopes.TypeOf(*source);
  if (type.Sort == TypeSort::ControlGroup)
    type = mScopes.TypeNamed(mModule, As<VBControl>(source->Element)->ProgID, false);
  if (!FindEvent(type, isControl, event, found)) return false;
  PendingUse& handled = AddPart(at, 0, prefix.size(), UseKind::Handle);
  handled.Element = source->Element;
  handled.Answer = AnswerOf(*source);
  handled.WholeArray = source->IsArrayOfControls;
  PendingUse& use = AddPart(at, behind, behind + event.size(), UseKind::Handle);
  use.Answer = found.Answer;
  use.Element = found.Element;
  use.Member = found.Member;
  use.Library = found.Library;
  return true;
}

// The longest front of the name that is an interface or a source of events.
void ModuleBinder::TieToSource(std::size_t at, const Block& block) {
  const std::string_view name = mScan.TextOf(At(at));
  if (At(at).Bracketed || (block.IsPropertyType() && mModule->Interfaces.Count() == 0)) return;
  for (std::size_t cut = name.rfind('_'); cut != std::string_view::npos && cut > 0;
       cut = name.rfind('_', cut - 1)) {
    const std::string_view prefix = name.substr(0, cut), member = name.substr(cut + 1);
    if (member.empty()) continue;
    if (TieToInterface(at, prefix, member)) return;
    if (!block.IsPropertyType() && TieToEvent(at, prefix, member)) return;
  }
}

}  // namespace vendrel
