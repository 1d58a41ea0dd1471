// What a type name means. With the type caches of modules and projects, which fill as code loads,
// each step is a keyed look-up; the tree is never walked.

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "project/VBProjectGroup.h"

namespace vendrel {
namespace {

template <typename Collection>
typename Collection::Element* Required(Collection& collection, std::string_view name) {
  auto* element = collection.Item(name);
  if (!element) throw VendrelError(errSubscript, std::string(name));
  return element;
}

bool IsModuleClass(std::int32_t number) {
  return number == tcLocalProjectModule || number == tcOtherProjectModule;
}
bool IsEnumClass(std::int32_t number) {
  return number == tcLocalProjectEnum || number == tcOtherProjectEnum;
}
bool IsUDTClass(std::int32_t number) {
  return number == tcLocalProjectUDT || number == tcOtherProjectUDT;
}

CodeElement* FindInModule(Component& component, std::string_view name, TypeClassEnum& typeClass) {
  const std::int32_t number = component.TypeCache.Find(name);
  if (number == 0) return nullptr;
  typeClass = static_cast<TypeClassEnum>(number);
  if (typeClass == tcLocalModuleEnum) return Required(component.Enumerations, name);
  if (typeClass == tcLocalModuleUDT) return Required(component.UDTs, name);
  return nullptr;
}

/// A type name and the project in front of its ".", as far as that is a project of the group.
struct TypeReference {
  std::string_view Name;
  std::string_view ProjectName;
  bool OtherProject = false;

  TypeReference(const VBProject& from, std::string_view name) : Name(name) {
    const VBProjectGroup* group = from.VBProjectGroup();
    const std::size_t dot = name.find('.');
    if (!group || dot == std::string_view::npos || from.LanguageVersion() == lvVisualBasicDotNet)
      return;
    const std::string_view first = name.substr(0, dot);
    if (!group->Project(first)) return;
    ProjectName = first;
    name.remove_prefix(dot + 1);
    Name = name.substr(0, name.find('.'));
    OtherProject = !EqualsNoCase(first, from.ProjectName);
  }
};

}  // namespace

bool VBProject::IsIntrinsicType(std::string_view TypeName) {
  static constexpr std::string_view kTypes[] = {
      "VARIANT",  "BYTE", "BOOLEAN", "INTEGER", "LONG",   "SINGLE", "DOUBLE",
      "CURRENCY", "DATE", "DECIMAL", "STRING",  "OBJECT", "CONTROL"};
  const std::string_view name = Trim(TypeName);
  for (const std::string_view type : kTypes)
    if (EqualsNoCaseAscii(name, type)) return true;
  return false;
}

CodeElement* VBProject::ResolveType(Component* component, std::string_view Name,
                                    TypeClassEnum& TypeClass) try {
  const Workspace::Use use(Workspace());
  const bool wholeName =
      Name.find('.') == std::string_view::npos || LanguageVersion() == lvVisualBasicDotNet;
  if (wholeName && IsIntrinsicType(Name)) {
    TypeClass = tcIntrinsic;
    return nullptr;
  }
  const TypeReference type(*this, Name);
  CodeElement* found = nullptr;
  if (component && !type.OtherProject) found = FindInModule(*component, type.Name, TypeClass);
  if (TypeClass != tcUnresolved) return found;

  if (!type.OtherProject) {
    if (const auto* entry = TypeCache.Find(type.Name))
      return GetCachedMember(*entry, type.Name, true, *this, TypeClass);
    return ResolveInOtherProjects(type.Name, TypeClass);
  }
  VBProject* const own = component ? component->VBProject() : nullptr;
  const vendrel::VBProjectGroup* group = own ? own->VBProjectGroup() : nullptr;
  VBProject* other = group ? group->Project(type.ProjectName) : nullptr;
  const auto* entry = other ? other->TypeCache.Find(type.Name) : nullptr;
  return entry ? GetCachedMember(*entry, type.Name, false, *other, TypeClass) : nullptr;
}
VENDREL_CONTEXT(component, Name, TypeClass, *this)

// The projects of the group for a type library, the referenced ones for any other project. Of
// several that know the name the last one wins.
CodeElement* VBProject::ResolveInOtherProjects(std::string_view Name,
                                               TypeClassEnum& TypeClass) try {
  CodeElement* found = nullptr;
  const auto tryProject = [&](VBProject* project) {
    const auto* entry = project ? project->TypeCache.Find(Name) : nullptr;
    if (entry) found = GetCachedMember(*entry, Name, false, *project, TypeClass);
  };
  if (!WasReadFromTypeLibrary) {
    for (const Reference& reference : References) tryProject(reference.ReferencedProject());
  } else if (const vendrel::VBProjectGroup* group = VBProjectGroup()) {
    for (VBProject& project : group->VBProjects())
      if (&project != this) tryProject(&project);
  }
  return found;
}
VENDREL_CONTEXT(Name, TypeClass, *this)

CodeElement* VBProject::GetCachedMember(const ProjectTypeCache::Entry& Source,
                                        std::string_view Name, bool IsLocal, VBProject& vbp,
                                        TypeClassEnum& TypeClass) try {
  if (IsModuleClass(Source.Number)) {
    TypeClass = IsLocal ? tcLocalProjectModule : tcOtherProjectModule;
    return Required(vbp.Components, Name);
  }
  if (IsEnumClass(Source.Number)) {
    TypeClass = IsLocal ? tcLocalProjectEnum : tcOtherProjectEnum;
    return Required(Required(vbp.Components, Source.ComponentName)->Enumerations, Name);
  }
  if (IsUDTClass(Source.Number)) {
    TypeClass = IsLocal ? tcLocalProjectUDT : tcOtherProjectUDT;
    return Required(Required(vbp.Components, Source.ComponentName)->UDTs, Name);
  }
  return nullptr;
}
VENDREL_CONTEXT(Name, IsLocal, vbp, TypeClass,
                trace::Parameter("ComponentName", Source.ComponentName))

UDT* VBProject::FindUDT(std::string_view Name, Component* component) try {
  const Workspace::Use use(Workspace());
  TypeClassEnum typeClass = tcUnresolved;
  auto* found = As<UDT>(ResolveType(component, Name, typeClass));
  if (!found) return nullptr;
  return found->Component.Get() == component || found->AccessType() == atPublic ? found : nullptr;
}
VENDREL_CONTEXT(Name, component, *this)

Enumeration* VBProject::FindEnum(std::string_view Name, Component* MustBeVisibleTo) try {
  const Workspace::Use use(Workspace());
  TypeClassEnum typeClass = tcUnresolved;
  auto* found = As<Enumeration>(ResolveType(MustBeVisibleTo, Name, typeClass));
  if (!found) return nullptr;
  return found->Component.Get() == MustBeVisibleTo || found->AccessType() == atPublic ? found
                                                                                      : nullptr;
}
VENDREL_CONTEXT(Name, MustBeVisibleTo, *this)

bool Variable::IsUDT(vendrel::Component* component) const try {
  vendrel::VBProject* project = component ? component->VBProject() : VBProject();
  return project && project->FindUDT(TypeName, component);
}
VENDREL_CONTEXT(component, *this)

bool Parameter::IsUDT(vendrel::Component* component) const try {
  vendrel::VBProject* project = component ? component->VBProject() : nullptr;
  return project && project->FindUDT(VariableType, component);
}
VENDREL_CONTEXT(component, *this)

}  // namespace vendrel
