// VB.NET: names in its scopes, types by their dotted names, members by what a class inherits.

#include <algorithm>

#include "core/CaseFold.h"
#include "project/ProjectFile.h"
#include "uses/ModuleBinder.h"

namespace vendrel {
namespace {

constexpr std::size_t kMostParts = 8;  // of a dotted name
constexpr int kMostBases = 40;         // of classes above one another

// Those of a property are gathered under its reading block; which of its writing blocks is meant
// shows only behind the arguments, and is left open.
const Blocks* OverloadsOf(const Entry& entry) {
  const auto* block = As<Block>(entry.Element);
  if (!As<PropertyGroup>(entry.Element)) return block ? block->OverloadBlocks().IfAny() : nullptr;
  const Blocks* overloads = nullptr;
  for (const Block* one : entry.Home->Blocks.Named(entry.Element->ElementName())) {
    if (one->BlockType() != btPropertyGet) return nullptr;
    overloads = one->OverloadBlocks().IfAny();
  }
  return overloads;
}

}  // namespace

bool ModuleBinder::IsTypeParameter(Symbol name) const {
  for (const auto& [parameter, depth] : mTypeParameters)
    if (parameter == name) return true;
  return false;
}

UseValue ModuleBinder::UseOfType(std::size_t at, const Component& type, UseKind kind) {
  UseValue value;
  if (kind == UseKind::Read && IsMark(at + 1, mScan.Tokens.size(), '.')) kind = UseKind::Qualify;
  value.Record = AddUse(at, kind, UseAnswer::Project);
  PendingUse& use = Of(value.Record);
  use.Element = &type;
  use.Answer = &type == mModule  ? UseAnswer::OwnModule
               : IsLibrary(type) ? UseAnswer::Library
                                 : UseAnswer::Project;
  value.Type = Scopes::TypeOfModule(type);
  return value;
}

// The type that the words from one to another mean, dots between them.
const Component* ModuleBinder::NetTypeOf(std::size_t from, std::size_t to) {
  Symbols& names = mScopes.Names();
  Symbol folded = At(from).Name;
  for (std::size_t at = from; at <= to; at += 2) {
    if (At(at).Suffix) return nullptr;
    if (at > from) folded = names.Joined(folded, At(at).Name);
  }
  const std::uint32_t arity = ArityBehind(to);
  if (arity > 0) folded = names.WithArity(folded, arity);
  if (const auto* known = mNetScope->TypesSeen.Find(folded)) return *known;
  std::string name = WrittenName(from, to);
  if (arity > 0) name += "`" + std::to_string(arity);
  const Component* found = NetTypeSeen(folded, name);
  return mNetScope->TypesSeen.At(folded) = found;
}

// How many types stand behind "(Of"; 0 where it does not follow.
std::uint32_t ModuleBinder::ArityBehind(std::size_t at) const {
  if (!IsMark(at + 1, mScan.Tokens.size(), '(') || !IsWord(at + 2, mScan.Tokens.size(), word::Of))
    return 0;
  std::uint32_t arguments = 1;
  const std::size_t close = CloseOf(at + 1, mScan.Tokens.size());
  for (at += 2; at < close; ++at) {
    if (IsMark(at, close, '(')) at = CloseOf(at, close);
    if (IsMark(at, close, ',')) ++arguments;
  }
  return arguments;
}

std::string ModuleBinder::WrittenName(std::size_t from, std::size_t to) const {
  std::string name;
  for (std::size_t at = from; at <= to; at += 2) {
    if (at > from) name += '.';
    std::string_view part = mScan.TextOf(At(at));
    if (At(at).Bracketed) part = part.substr(1, part.size() - 2);
    name += part;
  }
  return name;
}

const Component* ModuleBinder::NetTypeSeen(Symbol folded, std::string_view name) {
  if (const Component* type = mScopes.NetType(*mModule, *mNetScope, folded, name)) return type;
  // Types of the classes above it.
  const Component* above = mScopes.Of(*mModule).Above;
  for (int level = 0; above && !IsLibrary(*above) && level < kMostBases; ++level) {
    if (const Component* type = mScopes.NetType(*above, mScopes.NetScopeOf(*above), folded, name))
      return type;
    above = mScopes.Of(*above).Above;
  }
  return nullptr;
}

// A dotted name, the shortest front of which is a type: the words in front of it qualify.
bool ModuleBinder::BindNetType(std::size_t& at, std::size_t end, UseKind kind, UseValue& value) {
  std::size_t last = at;
  for (std::size_t part = 0; part < kMostParts; ++part, last += 2) {
    if (const Component* type = NetTypeOf(at, last)) {
      for (; at < last; at += 2) {
        const std::int32_t record = AddUse(at, UseKind::Qualify, UseAnswer::Project);
        Of(record).Answer = IsLibrary(*type) ? UseAnswer::Library : UseAnswer::Project;
        Of(record).Library = mScopes.LibraryName(mScan.TextOf(At(at)));
      }
      value = UseOfType(last, *type, kind);
      return true;
    }
    if (!IsMark(last + 1, end, '.') || !IsWord(last + 2, end)) return false;
  }
  return false;
}

// Whether namespaces begin with the word: those that the file imports, and those of the framework.
bool ModuleBinder::IsNamespaceRoot(Symbol name) {
  const std::string_view text = mScopes.Names().TextOf(name);
  if (text == "system" || text == "microsoft") return true;
  const std::vector<std::string>* imports = mFile ? &mFile->Imports : nullptr;
  return imports && std::any_of(imports->begin(), imports->end(), [&](std::string_view import) {
           const std::size_t dot = import.find('.');
           return dot != std::string_view::npos && import.find('=') == std::string_view::npos &&
                  EqualsNoCase(import.substr(0, dot), text);
         });
}

// A further word of a namespace, or a type of it, of an assembly that is not at hand.
UseValue ModuleBinder::BindNamespacePart(const UseValue& base, std::size_t at) {
  UseValue value = Unbound(at, UseAnswer::External, base.Type.Element());
  value.IsNamespace = IsMark(at + 1, mScan.Tokens.size(), '.');
  if (value.IsNamespace) Of(value.Record).Kind = UseKind::Qualify;
  return value;
}

UseValue ModuleBinder::BindNetName(std::size_t at) {
  const Symbol name = At(at).Name;
  if (const Entry* local = Local(name)) return UseOf(at, *local);
  if (const Entry* member = mScopes.NetMemberInside(*mModule, name)) return UseOf(at, *member);
  if (IsTypeParameter(name)) {
    UseValue value;
    value.Record = AddUse(at, UseKind::Type, UseAnswer::Type);
    value.Type = {TypeSort::Late, false, nullptr};
    return value;
  }
  if (const auto found = mProject.Names.find(name);
      found != mProject.Names.end() && found->second.Member)
    return UseOf(at, *found->second.Member);
  if (const Component* type = NetTypeOf(at, at)) return UseOfType(at, *type, UseKind::Read);
  const bool isQualifier = IsMark(at + 1, mScan.Tokens.size(), '.');
  const TypeRef type{TypeSort::External, false,
                     mScopes.LibraryName(isQualifier ? mScan.TextOf(At(at)) : std::string_view())};
  UseValue value = Unbound(at, UseAnswer::External, type);
  if (isQualifier) Of(value.Record).Kind = UseKind::Qualify;
  if (IsMark(at + 1, mScan.Tokens.size(), '(')) Of(value.Record).Kind = UseKind::Call;
  value.IsNamespace = isQualifier && IsNamespaceRoot(name);
  return value;
}

// A type inside of another.
const Component* ModuleBinder::NetTypeIn(const Component& module, std::size_t at) {
  Symbol& around = mScopes.Of(module).FullName;
  if (around == word::None) around = mScopes.Names().Of(module.FullName());
  const Symbol folded = mScopes.Names().Joined(around, At(at).Name);
  if (const auto* known = mNetScope->Types.Find(folded)) return *known;
  return mScopes.NetType(*mModule, *mNetScope, folded,
                         module.FullName() + "." + std::string(mScan.TextOf(At(at))));
}

UseValue ModuleBinder::NetMemberOf(const UseValue& base, const Component& module, std::size_t at) {
  bool isOpen = false;
  if (const Entry* member = mScopes.NetMember(module, At(at).Name, isOpen)) {
    UseValue value = UseOf(at, *member);
    const bool isPart = module.IsStructure && base.IsStorage && !IsLibrary(module);
    if (isPart && member->Sort == EntrySort::Variable) Of(value.Record).Path = base.Record;
    return value;
  }
  if (const Component* type = NetTypeIn(module, at)) return UseOfType(at, *type, UseKind::Read);
  if (isOpen)
    return Unbound(at, UseAnswer::External,
                   {TypeSort::External, false, mScopes.LibraryName(std::string_view())});
  // An extension method, which any imported module may have.
  return Unbound(at, UseAnswer::Late, {TypeSort::Late, false, nullptr});
}

// "(Of A, B(Of C))"
void ModuleBinder::ParseTypeArguments(std::size_t open, std::size_t close) {
  for (std::size_t at = open + 1; at < close;) {
    SkipIf(at, close, word::Of);
    if (IsWord(at, close))
      ParseNetType(at, close, UseKind::Type);
    else
      ++at;
  }
}

// A type behind As, New, Is, Of: "Integer()", "System.Collections.Generic.List(Of T)".
UseValue ModuleBinder::ParseNetType(std::size_t& at, std::size_t end, UseKind kind) {
  UseValue value;
  if (IsWord(at, end) && IsWord(at, end, word::Global) && IsMark(at + 1, end, '.')) {
    Skip(at);
    ++at;
  }
  if (!IsWord(at, end)) return value;
  const Symbol name = At(at).Name;
  const bool isDotted = IsMark(at + 1, end, '.');
  const bool isPlain = !At(at).Bracketed && !isDotted &&
                       (Builtins::IsIntrinsic(mScopes.Names().TextOf(name)) || name == word::Char ||
                        name == word::Short || name == word::SByte || name == word::UInteger ||
                        name == word::ULong || name == word::UShort);
  const std::size_t from = at;
  if (isPlain) {
    value.Type = mScopes.TypeNamed(mModule, mScan.TextOf(At(at)), false);
    Skip(at);
  } else if (!isDotted && IsTypeParameter(name)) {
    value.Record = AddUse(at++, kind, UseAnswer::Type);
    value.Type = {TypeSort::Late, false, nullptr};
  } else if (BindNetType(at, end, kind, value)) {
    ++at;
    while (IsMark(at, end, '.') && IsWord(at + 1, end)) {  // a nested type
      value = NetMemberOf(value, *value.Type.Module(), at + 1);
      at += 2;
      if (value.Type.Sort != TypeSort::Module) break;
      Of(value.Record).Kind = kind;
    }
  }
  if (at == from) {  // of an assembly that is not at hand
    std::size_t last = at;
    while (IsMark(last + 1, end, '.') && IsWord(last + 2, end)) last += 2;
    const std::string_view library =
        last == at ? std::string_view()
                   : mScan.Text().substr(At(at).Begin, At(last - 2).End - At(at).Begin);
    value.Type = {TypeSort::External, false, mScopes.LibraryName(library)};
    for (; at <= last; at += 2) {
      value.Record = AddUse(at, at < last ? UseKind::Qualify : kind, UseAnswer::External);
      Of(value.Record).Library = value.Type.Library();
    }
    at = last + 1;
  }
  while (IsMark(at, end, '(')) {
    const std::size_t close = CloseOf(at, end);
    if (IsWord(at + 1, close, word::Of)) {
      ParseTypeArguments(at, close);
    } else if (kind != UseKind::New || close == at + 1) {  // an array
      value.Type.IsArray = true;
      ParseArguments(at + 1, close, {});
    } else {
      break;
    }
    at = close < end ? close + 1 : end;
    if (IsMark(at, end, '.') && IsWord(at + 1, end)) {  // nested in a generic type
      const TypeRef outer = value.Type;
      value = outer.Sort == TypeSort::Module
                  ? NetMemberOf(value, *outer.Module(), at + 1)
                  : Unbound(at + 1, UseAnswer::External,
                            {TypeSort::External, false,
                             outer.Sort == TypeSort::External
                                 ? outer.Library()
                                 : mScopes.LibraryName(std::string_view())});
      Of(value.Record).Kind = kind;
      at += 2;
    }
  }
  return value;
}

// How many arguments stand in the parentheses that open at a place.
std::size_t ModuleBinder::CountArguments(std::size_t open) const {
  const std::size_t close = CloseOf(open, mScan.Tokens.size());
  std::size_t count = close > open + 1 ? 1 : 0;
  for (std::size_t at = open + 1; at < close; ++at) {
    if ((IsMark(at, close, '(') || IsMark(at, close, '{')) && At(at).Match > 0)
      at = CloseOf(at, close);
    if (IsMark(at, close, ',')) ++count;
  }
  return count;
}

// Of several procedures of one name, or properties that are only read, the first one that takes so
// many arguments; null where there is no choice.
const Block* ModuleBinder::ChooseOverload(const UseValue& value, std::size_t count) {
  if (!value.Named || value.Record < 0) return nullptr;
  const Blocks* overloads = OverloadsOf(*value.Named);
  if (!overloads) return nullptr;
  for (const Block& overload : *overloads) {
    const Parameters* parameters = overload.Parameters.IfAny();
    const std::size_t most = parameters ? parameters->Count() : 0;
    std::size_t least = 0;
    bool anyNumber = false;
    for (std::size_t i = 1; i <= most; ++i) {
      least += !parameters->Item(i)->IsOptional;
      anyNumber |= parameters->Item(i)->IsParamArray;
    }
    if (count < least || (count > most && !anyNumber)) continue;
    Of(value.Record).Element = &overload;
    return &overload;
  }
  return nullptr;
}

}  // namespace vendrel
