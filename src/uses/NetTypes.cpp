// Types and members of VB.NET: what a name means is asked of the file in which it stands, which
// knows its imports, and of the assemblies.

#include "core/CaseFold.h"
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

const Component* Scopes::NetType(const Component& home, std::string_view name, ProjectFile* file) {
  name = Trimmed(name);
  if (name.empty()) return nullptr;
  if (!file) file = FileOf(home);
  std::string key = std::to_string(reinterpret_cast<std::uintptr_t>(file)) + " " + FoldKey(name);
  // Names of nested types mean something within their class alone.
  if (file) key += " " + home.Name;
  const auto [known, isNew] = mNetTypes.try_emplace(std::move(key), nullptr);
  if (!isNew) return known->second;
  const Component*& kept = known->second;  // holds while the map grows
  const Component* found = nullptr;
  try {
    auto& of = const_cast<Component&>(home);
    const std::string asked = WithoutArguments(DotNetType(name));
    if (file) {
      const std::string full = file->ResolveType(of, asked);
      found = file->GetComponentForTypeName(full.empty() ? asked : full);
    } else if (VBProject* project = home.VBProject()) {
      found = project->netGetComponentForTypeName(asked);
    }
  } catch (const VendrelError&) {
    found = nullptr;  // an assembly that cannot be read tells nothing
  }
  return kept = found;
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

}  // namespace vendrel
