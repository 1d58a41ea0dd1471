// Which type a name means behind `As`, and of which type a thing is.

#include "core/Ascii.h"
#include "text/Identifiers.h"
#include "uses/Scopes.h"

namespace vendrel {
namespace {

bool IsPlainType(Symbol name) {
  switch (name) {
    case word::Boolean:
    case word::Byte:
    case word::Integer:
    case word::Long:
    case word::Single:
    case word::Double:
    case word::Currency:
    case word::Decimal:
    case word::Date:
    case word::String: return true;
    default: return false;
  }
}

// "String * 5" is String, "New Collection" Collection.
std::string_view BareType(std::string_view name) {
  name = TrimGaps(name);
  if (StartsWithNoCaseAscii(name, "NEW ")) name = TrimGaps(name.substr(4));
  if (name.starts_with('[')) return name;
  std::size_t end = 0;  // mostly all of it: no search for each character
  while (end < name.size() && name[end] != ' ' && name[end] != '*' && name[end] != '(') ++end;
  return name.substr(0, end);
}

}  // namespace

Entry* Scopes::TypeInProject(ProjectScope& scope, Symbol name, bool asLibrary) {
  const auto found = scope.Names.find(name);
  if (found == scope.Names.end()) return nullptr;
  Entry* module = found->second.Module;
  if (module && (asLibrary || module->Home->FileType != ftModule)) return module;
  return found->second.Type;
}

Entry* Scopes::TypeEntry(const Component* home, Symbol qualifier, Symbol name) {
  ProjectScope* project = home ? ScopeOf(*home) : nullptr;
  if (!project) return nullptr;
  if (qualifier == word::None) {
    if (Entry* own = Of(*home).Types.Find(name)) return own;
    if (Entry* found = TypeInProject(*project, name, false)) return found;
    for (ProjectScope* reference : project->References)
      if (Entry* found = TypeInProject(*reference, name, true)) return found;
    return nullptr;
  }
  if (qualifier == project->Own.Name)
    if (Entry* found = TypeInProject(*project, name, false)) return found;
  for (ProjectScope* reference : project->References)
    if (qualifier == reference->Own.Name) return TypeInProject(*reference, name, true);
  const auto module = project->Names.find(qualifier);
  if (module == project->Names.end() || !module->second.Module) return nullptr;
  const Component& holder = *module->second.Module->Home;
  Entry* found = Of(holder).Types.Find(name);
  return found && (found->IsPublic || &holder == home) ? found : nullptr;
}

TypeRef Scopes::TypeNamed(const Component* home, Symbol qualifier, Symbol name) {
  if (qualifier == word::None) {
    if (IsPlainType(name)) return {TypeSort::Plain, false, nullptr};
    if (name == word::None || name == word::Variant || name == word::Object || name == word::Any)
      return {TypeSort::Late, false, nullptr};
  }
  if (const Entry* entry = TypeEntry(home, qualifier, name)) {
    if (entry->Sort == EntrySort::Module) return entry->Type;
    if (entry->Sort == EntrySort::Structure) return {TypeSort::Structure, false, entry->Element};
    return {TypeSort::Plain, false, nullptr};
  }
  const BuiltinType* type = qualifier == word::None ? mBuiltins.FindType(mSymbols.TextOf(name))
                                                    : mBuiltins.FindType(mSymbols.TextOf(qualifier),
                                                                         mSymbols.TextOf(name));
  if (type) {
    if (EqualsNoCaseAscii(type->Name, "Control")) return {TypeSort::Late, false, nullptr};
    const BuiltinType& real = mBuiltins.WithoutAlias(*type);
    if (real.IsObject()) return {TypeSort::Builtin, false, &real};
    return {TypeSort::Plain, false, nullptr};
  }
  const ProjectScope* project = home ? ScopeOf(*home) : nullptr;
  if (qualifier == word::None && !(project && project->MissesReferences)) return {};
  return {TypeSort::External, false,
          LibraryName(qualifier == word::None ? std::string_view() : mSymbols.TextOf(qualifier))};
}

TypeRef Scopes::TypeNamed(const Component* home, std::string_view name, bool isArray) {
  if (home && IsNet(*home)) return NetTypeNamed(*home, name, isArray);
  name = BareType(name);
  if (name.ends_with("()")) {
    isArray = true;
    name.remove_suffix(2);
  }
  const std::size_t dot = name.rfind('.');
  Symbol qualifier = word::None;
  if (dot != std::string_view::npos) {
    std::string_view front = name.substr(0, dot);
    if (const std::size_t inner = front.rfind('.'); inner != std::string_view::npos)
      front.remove_prefix(inner + 1);
    qualifier = mSymbols.Of(WithoutBrackets(front));
    LibraryName(WithoutBrackets(front));  // spelled as here, should it be one
    name.remove_prefix(dot + 1);
  }
  TypeRef type = TypeNamed(home, qualifier, mSymbols.Of(WithoutBrackets(name)));
  type.IsArray = isArray;
  return type;
}

TypeRef Scopes::TypeOfMember(const BuiltinMember& member) {
  TypeRef type{TypeSort::Plain, member.IsArray, nullptr};
  if (member.Type.empty() || EqualsNoCaseAscii(member.Type, "Variant") ||
      EqualsNoCaseAscii(member.Type, "Object") || EqualsNoCaseAscii(member.Type, "Control")) {
    type.Sort = TypeSort::Late;
    return type;
  }
  if (Builtins::IsIntrinsic(member.Type)) return type;
  const BuiltinType* of = mBuiltins.FindType(member.Type);
  if (!of) {
    type.Sort = TypeSort::Late;
    return type;
  }
  const BuiltinType& real = mBuiltins.WithoutAlias(*of);
  if (real.IsObject()) return {TypeSort::Builtin, member.IsArray, &real};
  return type;
}

TypeRef Scopes::TypeOfControl(const Entry& entry, const VBControl& control) {
  if (entry.IsArrayOfControls) return {TypeSort::ControlGroup, false, &entry};
  const std::string_view progId = control.ProgID;
  return TypeNamed(entry.Home, progId, false);
}

TypeRef Scopes::TypeOfEntry(const Entry& entry) {
  const CodeElement* element = entry.Element;
  if (const auto* variable = As<Variable>(element))
    return TypeNamed(entry.Home, variable->TypeName.view(), variable->IsArray);
  if (const auto* parameter = As<Parameter>(element))
    return TypeNamed(entry.Home, parameter->VariableType.view(),
                     parameter->IsArray || parameter->IsParamArray);
  if (const auto* group = As<PropertyGroup>(element)) element = group->PrimaryBlock();
  if (const auto* block = As<Block>(element)) {
    if (block->BlockType() == btSub) return {TypeSort::Plain, false, nullptr};
    return TypeNamed(entry.Home, block->ReturnType.view(), block->ReturnTypeIsArray);
  }
  if (const auto* declare = As<DeclareDeclaration>(element))
    return TypeNamed(entry.Home, declare->ReturnType.view(), declare->ReturnTypeIsArray);
  if (const auto* control = As<VBControl>(element)) return TypeOfControl(entry, *control);
  if (const auto* module = As<Component>(element)) return TypeOfModule(*module);
  if (!element) return {TypeSort::Late, false, nullptr};
  return {TypeSort::Plain, false, nullptr};
}

TypeRef Scopes::TypeOf(const Entry& entry) {
  if (entry.TypeKnown) return entry.Type;
  Entry& known = const_cast<Entry&>(entry);  // what is remembered of it
  known.Type = TypeOfEntry(entry);
  known.TypeKnown = true;
  return known.Type;
}

}  // namespace vendrel
