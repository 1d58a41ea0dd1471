// What stands behind a dot, an exclamation mark or a parenthesis, by the type of what stands in
// front of it.

#include "core/Ascii.h"
#include "uses/ModuleBinder.h"

namespace vendrel {
namespace {

constexpr TypeRef kLate{TypeSort::Late, false, nullptr};

// Objects of these may be anything that has been derived from them.
bool IsOpenClass(const BuiltinType& type) {
  for (const std::string_view name :
       {"Form", "MDIForm", "IUnknown", "IDispatch", "VBControlExtender"})
    if (EqualsNoCaseAscii(type.Name, name)) return true;
  return false;
}

}  // namespace

// A dot behind a blank begins an argument of a statement: "Post .Amount"; on a line of its own it
// goes on with what stands above.
bool ModuleBinder::IsMemberMark(std::size_t at, std::size_t end, bool isStatement) const {
  if (!IsMark(at, end, '.') && !IsMark(at, end, '!')) return false;
  if (!IsWord(at + 1, end)) return false;
  if (!At(at).GapBefore || !isStatement) return true;
  return At(at).Line != At(at - 1).Line;
}

// In "Post (x), y" the parentheses belong to the first argument; in "Item(x).y" and "Item(x) = y"
// they hold arguments.
bool ModuleBinder::TakesParentheses(std::size_t at, std::size_t end, bool isStatement) const {
  if (!IsMark(at, end, '(')) return false;
  if (!isStatement) return true;
  const auto close = static_cast<std::size_t>(At(at).Match);
  if (At(at).Match < 0 || close >= end) return false;
  const std::size_t next = close + 1;
  if (IsMark(next, end, '=') || IsMark(next, end, '(')) return true;
  return IsMemberMark(next, end, !At(next - 1).GapBefore && next < end && At(next).GapBefore);
}

UseValue ModuleBinder::MemberOfModule(const UseValue& base, const Component& module,
                                      std::size_t at) {
  if (mIsNet) return NetMemberOf(base, module, at);
  ModuleScope& scope = mScopes.Of(module);
  const Symbol name = At(at).Name;
  const bool isOwn = &module == mModule;
  const Entry* member = scope.Members.Find(name);
  if (member && (member->IsPublic || isOwn)) return UseOf(at, *member);
  if (base.Sort == UseValue::Of::Module) {
    const Entry* type = scope.Types.Find(name);
    if (type && type->Sort == EntrySort::Enumeration) return UseOf(at, *type);
  }
  // What a user control is by itself shows inside of it; outside it is what its site makes of it.
  const bool isSited = !base.IsMe && module.FileType == ftUserControl;
  if (scope.Base && !isSited)
    if (const BuiltinMember* builtin = mScopes.Member(*scope.Base, name))
      return UseOfMember(at, *builtin);
  if (isSited)
    if (const BuiltinMember* site = mScopes.SiteMember(name)) return UseOfMember(at, *site);
  const bool isLibrary = IsLibrary(module);
  if (scope.HasForeignBase || (scope.IsMissing && !isLibrary))
    return Unbound(at, UseAnswer::External,
                   {TypeSort::External, false,
                    mScopes.LibraryName(scope.IsMissing ? std::string_view(module.Name)
                                                        : std::string_view())});
  if (isLibrary) return Unbound(at, UseAnswer::Late, kLate);
  return Unbound(at, UseAnswer::Unknown, {});
}

UseValue ModuleBinder::MemberOfBuiltin(const BuiltinType& type, std::size_t at) {
  const Symbol name = At(at).Name;
  if (const BuiltinMember* member = mScopes.Member(type, name)) return UseOfMember(at, *member);
  if (type.Kind == BuiltinTypeKind::Control)
    if (const BuiltinMember* site = mScopes.SiteMember(name)) return UseOfMember(at, *site);
  if (IsOpenClass(type)) return Unbound(at, UseAnswer::Late, kLate);
  return Unbound(at, UseAnswer::Unknown, {});
}

UseValue ModuleBinder::MemberOfGroup(std::size_t at) {
  static constexpr std::string_view kGroup = "ControlArray";
  if (const BuiltinType* type = mScopes.Table().FindType(kGroup))
    if (const BuiltinMember* member = mScopes.Member(*type, At(at).Name))
      return UseOfMember(at, *member);
  return Unbound(at, UseAnswer::Late, kLate);
}

UseValue ModuleBinder::MemberOfProject(ProjectScope& project, std::size_t at) {
  const auto found = project.Names.find(At(at).Name);
  if (found != project.Names.end()) {
    const ProjectName& name = found->second;
    for (const Entry* entry : {name.Module, name.Member, name.EnumMember, name.Type})
      if (entry) return UseOf(at, *entry);
  }
  if (project.IsLibrary) return Unbound(at, UseAnswer::Late, kLate);
  return Unbound(at, UseAnswer::Unknown, {});
}

UseValue ModuleBinder::MemberOfHolder(const UseValue& base, std::size_t at) {
  const Symbol name = At(at).Name;
  const std::string_view text = mScopes.Names().TextOf(name);
  switch (base.Sort) {
    case UseValue::Of::Module: return MemberOfModule(base, *base.Named->Home, at);
    case UseValue::Of::Project: return MemberOfProject(*base.Project, at);
    case UseValue::Of::Library:
      if (const BuiltinMember* member = mScopes.Table().FindGlobal(base.Library, text))
        return UseOfMember(at, *member);
      if (const BuiltinType* type = mScopes.Table().FindType(base.Library, text))
        return UseOfHolder(at, *type);
      break;
    case UseValue::Of::BuiltinHolder:
      if (const BuiltinMember* member = mScopes.Member(*base.Holder, name))
        return UseOfMember(at, *member);
      break;
    case UseValue::Of::Enumeration: {
      const auto* enumeration = As<Enumeration>(base.Named->Element);
      const Entry* member = mScopes.Of(*base.Named->Home).Members.Find(name);
      for (; member; member = member->Next) {
        const auto* of = As<EnumMember>(member->Element);
        if (of && of->Enumeration.Get() == enumeration) {
          Entry alone = *member;
          alone.Next = nullptr;
          UseValue value = UseOf(at, alone);
          value.Named = member;
          return value;
        }
      }
      break;
    }
    default: break;
  }
  return Unbound(at, UseAnswer::Unknown, {});
}

UseValue ModuleBinder::BindMember(const UseValue& base, std::size_t at) {
  if (base.Sort != UseValue::Of::Value) return MemberOfHolder(base, at);
  if (base.IsNamespace) return BindNamespacePart(base, at);
  UseValue value;
  if (mIsNet && base.Type.IsArray)  // "names.Length" is of the array, not of its elements
    if (const Component* array = mScopes.NetType(*mModule, "System.Array", mFile))
      return NetMemberOf(base, *array, at);
  switch (base.Type.Sort) {
    case TypeSort::Module: value = MemberOfModule(base, *base.Type.Module(), at); break;
    case TypeSort::Structure:
      if (const Entry* field = mScopes.Field(*base.Type.Structure(), At(at).Name)) {
        value = UseOf(at, *field);
        Of(value.Record).Path = base.IsStorage ? base.Record : -1;
      } else {
        value = Unbound(at, UseAnswer::Unknown, {});
      }
      break;
    case TypeSort::Builtin: value = MemberOfBuiltin(*base.Type.Builtin(), at); break;
    case TypeSort::ControlGroup: value = MemberOfGroup(at); break;
    case TypeSort::Late: value = Unbound(at, UseAnswer::Late, kLate); break;
    case TypeSort::External: value = Unbound(at, UseAnswer::External, base.Type.Element()); break;
    default:
      // In VB.NET everything has members, and the type of an expression is not computed.
      value = mIsNet ? Unbound(at, UseAnswer::External,
                               {TypeSort::External, false, mScopes.LibraryName(std::string_view())})
                     : Unbound(at, UseAnswer::Unknown, {});
      break;
  }
  return value;
}

UseValue ModuleBinder::BindKey(const UseValue& base, std::size_t at) {
  if (base.Type.Sort == TypeSort::Module) {
    const Entry* member = mScopes.Of(*base.Type.Module()).Members.Find(At(at).Name);
    if (member && member->Sort == EntrySort::Control) return UseOf(at, *member);
  }
  TypeRef type = kLate;
  if (base.Type.Sort == TypeSort::External) type = base.Type.Element();
  UseValue value = Unbound(at, UseAnswer::Key, type);
  Of(value.Record).Library = nullptr;
  return value;
}

// An element of an array or control array, or of what the default member gives.
void ModuleBinder::ApplyIndex(UseValue& value, std::size_t open, std::size_t close) {
  if (value.Type.IsArray) {
    ParseArguments(open + 1, close, {});
    value.Type.IsArray = false;
    return;
  }
  if (value.Type.Sort == TypeSort::ControlGroup) {
    ParseArguments(open + 1, close, {});
    const auto& group = *static_cast<const Entry*>(value.Type.Of);
    const VBControl* control = As<VBControl>(group.Element);
    if (close == open + 2 && At(open + 1).Kind == TokenKind::Number && value.Record >= 0) {
      const std::string index(mScan.TextOf(At(open + 1)).substr(0, 9));
      if (const VBControl* found = mScopes.ControlAt(group, std::atoi(index.c_str()))) {
        control = found;
        Of(value.Record).Element = found;
        Of(value.Record).WholeArray = false;
      }
    }
    value.Type = mScopes.TypeNamed(group.Home, control->ProgID, false);
    return;
  }
  Callee callee;
  if (mIsNet) {  // an indexer
    ParseArguments(open + 1, close, callee);
    if (value.Type.Sort != TypeSort::External) value.Type = kLate;
    return;
  }
  if (value.Type.IsObject() && AddDefaultMember(value, UseKind::Read)) callee = CalleeOf(value);
  ParseArguments(open + 1, close, callee);
}

void ModuleBinder::ApplyParentheses(UseValue& value, std::size_t& at, std::size_t end) {
  const std::size_t open = at, close = CloseOf(open, end);
  at = close < end ? close + 1 : end;
  if (mIsNet && IsWord(open + 1, close, word::Of)) return ParseTypeArguments(open, close);
  Callee callee = CalleeOf(value);
  if (mIsNet)
    if (const Block* chosen = ChooseOverload(value, CountArguments(open)))
      callee.Declared = chosen->Parameters.IfAny();
  const bool takesArguments =
      !value.HadArguments && ((callee.Declared && callee.Declared->Count() > 0) ||
                              (callee.Member && (!callee.Member->Parameters.empty() ||
                                                 callee.Member->Kind == BuiltinKind::Function ||
                                                 callee.Member->Kind == BuiltinKind::Sub)));
  const bool isEmpty = close == open + 1;
  value.HadArguments = true;
  const bool mayBeCalled = value.Record >= 0 && (Of(value.Record).Answer == UseAnswer::Late ||
                                                 Of(value.Record).Answer == UseAnswer::External ||
                                                 Of(value.Record).Answer == UseAnswer::Unknown);
  if (mayBeCalled && Of(value.Record).Kind == UseKind::Read) Of(value.Record).Kind = UseKind::Call;
  if (takesArguments || isEmpty || value.Sort != UseValue::Of::Value)
    ParseArguments(open + 1, close, callee);
  else
    ApplyIndex(value, open, close);
}

UseValue ModuleBinder::ChainStart(std::size_t& at, std::size_t end) {
  UseValue value;
  if (IsMark(at, end, '.') || IsMark(at, end, '!')) {
    const bool isKey = At(at).Mark == '!';
    UseValue base;
    if (!mWith.empty()) base = mWith.back().Value;
    base.Record = -1;
    ++at;
    value = isKey ? BindKey(base, at) : BindMember(base, at);
    if (!mWith.empty() && Of(value.Record).Answer == UseAnswer::Field)
      Of(value.Record).Path = mWith.back().Path.empty() ? -1 : -2;
    ++at;
    return value;
  }
  if (IsWord(at, end, word::Me)) {
    value.Type = Scopes::TypeOfModule(*mModule);
    value.IsMe = true;
    Skip(at);
    return value;
  }
  value = BindName(at);
  ++at;
  return value;
}

// Members and arguments behind what was read.
void ModuleBinder::FollowChain(UseValue& value, std::size_t& at, std::size_t end,
                               bool isStatement) {
  for (;;) {
    const bool takes = TakesParentheses(at, end, isStatement);
    if (mIsNet && !takes && !value.HadArguments && !mAddressed) ChooseOverload(value, 0);
    if (takes) {
      ApplyParentheses(value, at, end);
    } else if (IsMemberMark(at, end, isStatement)) {
      const bool isKey = At(at).Mark == '!';
      value = isKey ? BindKey(value, at + 1) : BindMember(value, at + 1);
      at += 2;
    } else {
      return;
    }
  }
}

UseValue ModuleBinder::ParseChain(std::size_t& at, std::size_t end, bool isStatement) {
  UseValue value = ChainStart(at, end);
  FollowChain(value, at, end, isStatement);
  value.IsLone = true;
  return value;
}

}  // namespace vendrel
