// Types and members of VB.NET: what a name means is asked of the file in which it stands, which
// knows its imports, and of the assemblies.

#include "core/CaseFold.h"
#include "model/Namespace.h"
#include "project/ProjectFile.h"
#include "text/Identifiers.h"
#include "uses/Scopes.h"

namespace vendrel {
namespace {

// Classes above one another; more than any framework has.
constexpr int kMostLevels = 40;

std::string_view Trimmed(std::string_view name) {
  while (!name.empty() && (name.front() == ' ' || name.front() == '\t')) name.remove_prefix(1);
  while (!name.empty() && (name.back() == ' ' || name.back() == '?')) name.remove_suffix(1);
  return name;
}

// "List(Of T)" and "List{T}" with the number of their arguments, as assemblies name them: "List`1".
std::string WithoutArguments(std::string_view name) {
  const std::size_t open = name.find_first_of("({");
  if (open == std::string_view::npos) return std::string(name);
  int depth = 0, arguments = 1;
  for (const char c : name.substr(open)) {
    if (c == '(' || c == '{') ++depth;
    if (c == ')' || c == '}') --depth;
    if (c == ',' && depth == 1) ++arguments;
  }
  return std::string(Trimmed(name.substr(0, open))) + "`" + std::to_string(arguments);
}

}  // namespace

bool Scopes::IsNet(const Component& module) {
  const ProjectOptions* project = module.Project();
  return project && project->LanguageVersion() == lvVisualBasicDotNet;
}

ProjectFile* Scopes::FileOf(const Component& module) {
  const auto found = mFiles.find(module.SourceForm.get());
  return found == mFiles.end() ? nullptr : found->second;
}

// What is in no file knows no imports: such names mean the same everywhere.
NetScope& Scopes::NetScopeOf(const Component& home, ProjectFile* file) {
  if (!file) file = FileOf(home);
  NetScope& scope = mNetScopes[{file, file ? &home : nullptr}];
  if (!file || scope.Project) return scope;
  scope.File = file;
  scope.Project = ScopeOf(home);
  const Namespace* space = home.Namespace.Get();
  std::string known = space ? FoldKey(space->Name) : std::string();
  for (const std::string& import : file->Imports) known.append("\n").append(import);
  scope.Shared = &mNetShared[{scope.Project, std::move(known)}];
  return scope;
}

// Most words of source are the last one of no type at all.
Scopes::NetWord Scopes::SortOfNetWord(const NetScope& scope, std::string_view name) {
  if (!scope.File || !scope.Project || name.find_first_of("({[? ") != std::string_view::npos)
    return NetWord::Nested;
  name = name.substr(name.rfind('.') + 1);
  const Symbol word = mSymbols.Of(name.substr(0, name.find('`')));
  if (scope.Project->NestedWords.count(word) != 0) return NetWord::Nested;
  return scope.Project->TypeWords.count(word) != 0 || scope.File->MayNameType(name)
             ? NetWord::Type
             : NetWord::NoType;
}

const Component* Scopes::AskForNetType(const Component& home, ProjectFile* file,
                                       std::string_view name) try {
  const std::string asked = WithoutArguments(DotNetType(name));
  if (file) {
    const std::string full = file->ResolveType(const_cast<Component&>(home), asked);
    return file->GetComponentForTypeName(full.empty() ? asked : full);
  }
  // A type of an assembly was loaded by itself, and knows no other assembly.
  VBProject* project = mNetProject ? mNetProject : home.VBProject();
  return project ? project->netGetComponentForTypeName(asked) : nullptr;
} catch (const VendrelError&) {
  return nullptr;  // an assembly that cannot be read tells nothing
}

const Component* Scopes::NetType(const Component& home, NetScope& scope, Symbol folded,
                                 std::string_view name) {
  if (folded == word::None) return nullptr;
  if (const auto* known = scope.Types.Find(folded)) return *known;
  const NetWord sort = SortOfNetWord(scope, name);
  const Component* found = nullptr;
  if (sort == NetWord::Nested) {
    found = AskForNetType(home, scope.File, name);
  } else if (sort == NetWord::Type) {
    const auto* known = scope.Shared->Find(folded);
    found = known ? *known : scope.Shared->At(folded) = AskForNetType(home, scope.File, name);
  }
  return scope.Types.At(folded) = found;
}

const Component* Scopes::NetType(const Component& home, std::string_view name, ProjectFile* file) {
  name = Trimmed(name);
  return NetType(home, NetScopeOf(home, file), mSymbols.Of(name), name);
}

TypeRef Scopes::NetTypeNamed(const Component& home, std::string_view name, bool isArray) {
  name = Trimmed(name);
  if (name.ends_with("()") || name.ends_with("[]")) {
    isArray = true;
    name.remove_suffix(2);
  }
  if (name.empty() || EqualsNoCase(name, "Object") || EqualsNoCase(name, "System.Object"))
    return {TypeSort::Late, isArray, nullptr};
  if (const Component* type = NetType(home, name)) return {TypeSort::Module, isArray, type};
  const std::string_view bare = name.substr(0, name.find_first_of("({"));
  const std::size_t dot = bare.rfind('.');
  return {TypeSort::External, isArray,
          LibraryName(dot == std::string_view::npos ? std::string_view() : bare.substr(0, dot))};
}

Entry* Scopes::NetMember(const Component& module, Symbol name, bool& isOpen) {
  const Component* at = &module;
  for (int level = 0; at && level < kMostLevels; ++level) {
    ModuleScope& scope = Of(*at);
    if (Entry* member = scope.Members.Find(name)) return member;
    if (Entry* event = scope.Events.Find(name)) return event;
    isOpen |= scope.HasForeignBase;
    at = scope.Above;
  }
  if (!module.IsInterface) return nullptr;
  for (const Interface& interface : module.Interfaces) {
    const Component* above = NetType(module, interface.Name);
    if (!above || above == &module) {
      isOpen = true;
      continue;
    }
    if (Entry* member = Of(*above).Members.Find(name)) return member;
  }
  return nullptr;
}

Entry* Scopes::NetMemberInside(const Component& module, Symbol name) {
  ModuleScope& scope = Of(module);
  if (Entry* const* known = scope.SeenInside.Find(name)) return *known;
  Entry* found = nullptr;
  bool isOpen = false;
  for (const Component* around = &module; around && !found; around = Of(*around).Around)
    found = NetMember(*around, name, isOpen);
  return scope.SeenInside.At(name) = found;
}

}  // namespace vendrel
