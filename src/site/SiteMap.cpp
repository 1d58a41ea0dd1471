#include "site/SiteMap.h"

#include <algorithm>
#include <map>
#include <tuple>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "model/ModuleKinds.h"
#include "project/Assembly.h"

namespace vendrel::site {
namespace {

std::string_view KindOfProject(const VBProject& project) {
  if (project.WasReadFromTypeLibrary)
    return project.LanguageVersion() == lvVisualBasicDotNet ? "assembly" : "type library";
  if (project.ProjectSourceType == ptsTypeLibrary)
    return project.LanguageVersion() == lvVisualBasicDotNet ? "assembly" : "type library";
  return project.LanguageVersion() == lvVisualBasicDotNet ? "VB.NET project" : "project";
}

std::string_view KindOfMember(const CodeElement& element) {
  if (IsA<EventDeclaration>(&element)) return "Event";
  if (IsA<DeclareDeclaration>(&element)) return "Declare";
  if (IsA<Enumeration>(&element)) return "Enum";
  if (IsA<UDT>(&element)) return "Type";
  const auto* block = As<Block>(&element);
  if (!block) return "Member";
  if (block->IsPropertyType()) return "Property";
  if (block->IsDelegate()) return "Delegate";
  if (block->IsConstructor) return "Constructor";
  return block->BlockType() == btFunction ? "Function" : "Sub";
}

// Without the types that the name of an overload ends with.
std::string BareName(const Block& block) {
  const std::string_view name = block.Name();
  return std::string(block.Overloaded() ? name.substr(0, name.find('(')) : name);
}

bool IsInherited(const Block& block) {
  return !block.Implemented && !block.InheritedFrom().empty();
}

bool IsInheritedField(const Variable& field) {
  return !field.Implemented && !field.InheritedFrom.empty();
}
bool IsInheritedField(const Constant&) { return false; }

std::string PageOfFields(std::string_view stem, std::size_t index, std::size_t count) {
  return count <= kFieldsOnPage ? "index.html" : LeafOfPage(stem, index / kFieldsOnPage);
}

}  // namespace

bool IsPrivateAccess(std::string_view access) {
  return !access.empty() && EqualsNoCaseAscii(access, "PRIVATE");
}

std::vector<std::pair<const VBControl*, int>> ControlsOf(const Component& form) {
  std::vector<std::pair<const VBControl*, int>> controls;
  std::vector<std::pair<const VBControl*, int>> open;
  if (form.VBControl) open.emplace_back(form.VBControl.get(), 0);
  while (!open.empty()) {
    const auto [control, depth] = open.back();
    open.pop_back();
    controls.emplace_back(control, depth);
    for (std::size_t i = control->VBControls.Count(); i > 0; --i)
      open.emplace_back(control->VBControls.Item(i), depth + 1);
  }
  return controls;
}

std::string PageOfControls(std::size_t page) { return LeafOfPage("form", page); }

std::string_view KindOfModule(const Component& component) {
  if (component.IsInterface) return "interface";
  if (component.IsStructure) return "structure";
  if (component.IsEnumeration) return "enumeration";
  const VBProject* project = component.VBProject();
  const bool isNet = project && project->LanguageVersion() == lvVisualBasicDotNet;
  const ModuleKind& kind = vendrel::KindOfModule(component.FileType);
  return isNet ? kind.Word : kind.FullWord;
}

std::string RootFrom(std::string_view folder) {
  std::string root;
  for (const char c : folder)
    if (c == '/') root += "../";
  return root;
}

std::string HrefFrom(std::string_view folder, const Address& to) {
  if (folder == to.Folder) return to.Leaf;
  std::string_view target = to.Folder;
  while (!folder.empty() && !target.empty()) {
    std::string_view restOfFolder = folder, restOfTarget = target;
    if (TakeField(restOfFolder, '/') != TakeField(restOfTarget, '/')) break;
    folder = restOfFolder;
    target = restOfTarget;
  }
  return RootFrom(folder).append(target).append(to.Leaf);
}

SiteMap::SiteMap(const std::vector<VBProject*>& projects, const SiteMapOptions& options)
    : mOptions(options) {
  PageNames names{"index", "assets", "search", "names", "graphs"};
  for (VBProject* project : projects) {
    ProjectEntry& entry = mProjects.emplace_back();
    entry.Project = project;
    entry.Name = project->ProjectName.empty() ? project->FileName.BaseName() : project->ProjectName;
    entry.Kind = KindOfProject(*project);
    entry.Folder = names.Take(entry.Name) + "/";
    mByProject.emplace(project, &entry);
    Set(project, entry.Folder, "index.html");
    AddProject(*project);
  }
}

std::string_view SiteMap::Set(const CodeElement* element, std::string_view folder,
                              std::string_view leaf) {
  const std::string_view kept = mTexts.Add(leaf);
  mAddresses.insert_or_assign(element, Place{folder, kept});
  return kept;
}

bool SiteMap::IsShown(const CodeElement& element, std::string_view access) const {
  const bool* excluded = element.ExcludeFlagField();
  if (excluded && *excluded) return false;
  return mOptions.Private || !IsPrivateAccess(access);
}

void SiteMap::AddProject(VBProject& project) {
  ProjectEntry& entry = mProjects.back();
  AddSources(entry);
  PageNames names{"index", "source", "hierarchy", "undocumented", "calls"};
  for (const Component& component : project.Components.Listed()) {
    // A program of classic source consists of modules that nobody outside can see.
    const bool isPrivate = entry.IsNet() && IsPrivateAccess(component.Access);
    if (component.ExcludeFlag || (isPrivate && !mOptions.Private)) continue;
    AddModule(entry, component, names);
  }
  AddNamespaces(entry);
}

void SiteMap::AddModule(ProjectEntry& project, const Component& component, PageNames& names) {
  ModuleEntry& module = project.Modules.emplace_back();
  module.Module = &component;
  module.Project = &project;
  module.Name = component.Name;
  module.Kind = KindOfModule(component);
  module.Folder = project.Folder + names.Take(component.Name) + "/";
  module.HasForm = component.VBControl != nullptr;
  module.Index = project.Modules.size() - 1;
  const auto source = mSourceByPath.find(project.Folder + FoldKey(component.FileName.FullPath()));
  if (source != mSourceByPath.end()) module.Source = source->second;
  mModules.emplace(&component, &module);
  Set(&component, module.Folder, "index.html");
  AddMembers(module);
  AddFields(module);
  AddControls(module);
}

void SiteMap::AddControls(const ModuleEntry& module) {
  PageNames anchors;
  std::size_t index = 0;
  for (const auto& [control, depth] : ControlsOf(*module.Module)) {
    std::string leaf = PageOfControls(index++ / kFieldsOnPage);
    Set(control, module.Folder, leaf.append("#c-").append(anchors.Take(control->Name)));
  }
}

void SiteMap::AddMembers(ModuleEntry& module) {
  const Component& component = *module.Module;
  PageNames names{"index", "form", "constants", "variables", "implemented"};
  AddTypes(module, names);
  std::unordered_map<std::string, std::size_t> byName;
  const auto add = [&](const CodeElement& element, const std::string& name, std::string_view access,
                       bool isShared) {
    if (name.empty() || !IsShown(element, access)) return;
    const std::string_view kind = KindOfMember(element);
    std::size_t at = module.Members.size();
    if (isShared) at = byName.try_emplace(FoldKey(name), at).first->second;
    if (at == module.Members.size())
      module.Members.push_back(
          {mTexts.Add(name), kind, {}, mTexts.Add(names.Take(name) + ".html")});
    MemberEntry& member = module.Members[at];
    member.Elements.push_back(&element);
    mAddresses.insert_or_assign(&element, Place{module.Folder, member.Leaf});
  };
  for (const EventDeclaration& event : component.EventDeclarations.Listed())
    if (event.Implemented || event.InheritedFrom.empty())
      add(event, event.Name, event.Access, false);
  for (const Block& block : component.Blocks.Listed()) {
    if (block.BlockType() == btDeclarations || block.BlockType() == btAttributes) continue;
    if (IsInherited(block)) continue;
    const bool isProperty = block.IsPropertyType();
    const PropertyGroup* group =
        isProperty ? component.PropertyGroups.Item(std::string_view(block.Name())) : nullptr;
    add(block, BareName(block), group ? group->Access() : block.Access.str(), true);
  }
  for (const DeclareDeclaration& declare : component.Declarations)
    add(declare, declare.Name, declare.Access, false);
  for (const PropertyGroup& group : component.PropertyGroups)
    if (group.PrimaryBlock())
      if (const auto found = mAddresses.find(group.PrimaryBlock()); found != mAddresses.end())
        mAddresses.insert_or_assign(&group, Place(found->second));
  module.Members.shrink_to_fit();
  std::stable_sort(
      module.Members.begin(), module.Members.end(),
      [](const MemberEntry& a, const MemberEntry& b) { return FoldKey(a.Name) < FoldKey(b.Name); });
}

void SiteMap::AddTypes(ModuleEntry& module, PageNames& names) {
  const auto add = [&](const auto& type) {
    if (!IsShown(type, type.Access)) return;
    const std::string stem = names.Take(type.Name);
    const std::string_view leaf = Set(&type, module.Folder, stem + ".html");
    module.Types.push_back({mTexts.Add(type.Name), KindOfMember(type), {&type}, leaf});
    // Members of long ones stand on further pages.
    PageNames anchors;
    std::size_t index = 0;
    const auto place = [&](const CodeElement& member) {
      const std::size_t page = index++ / kFieldsOnPage;
      Set(&member, module.Folder,
          LeafOfPage(stem, page) + "#" + anchors.Take(member.ElementName()));
    };
    if constexpr (requires { type.Members(); })
      for (const EnumMember& member : type.Members()) place(member);
    else
      for (const Variable& member : type.Members) place(member);
  };
  for (const Enumeration& enumeration : module.Module->Enumerations) add(enumeration);
  for (const UDT& type : module.Module->UDTs) add(type);
}

void SiteMap::AddFields(ModuleEntry& module) {
  const Block* section = module.Module->Blocks.FirstOfType(btDeclarations);
  if (!section) return;
  PageNames anchors{"members", "description"};
  const auto add = [&](std::vector<FieldEntry>& fields, const auto& all, std::string_view stem) {
    for (const auto& field : all)
      if (IsShown(field, field.Access) && !IsInheritedField(field)) fields.push_back({&field, {}});
    for (std::size_t i = 0; i < fields.size(); ++i) {
      const std::string anchor = anchors.Take("v-" + fields[i].Element->ElementName());
      fields[i].Leaf = Set(fields[i].Element, module.Folder,
                           PageOfFields(stem, i, fields.size()) + "#" + anchor);
    }
  };
  if (const Constants* constants = section->Constants.IfAny())
    add(module.Constants, *constants, "constants");
  if (const Variables* variables = section->Variables.IfAny())
    add(module.Variables, *variables, "variables");
}

namespace {

// The namespace of a type: in front of the types that it is nested in.
std::string NamespaceOf(const VBProject& project, const Component& type) {
  if (const Namespace* space = type.Namespace.Get()) return space->Name;
  std::string name = type.FullName();
  do {
    name.erase(name.rfind('.') == kNotFound ? 0 : name.rfind('.'));
  } while (!name.empty() && project.Components.HasKey(name));
  return name;
}

}  // namespace

void SiteMap::AddNamespaces(ProjectEntry& project) {
  if (!project.IsNet()) return;
  std::map<std::string, std::vector<const ModuleEntry*>> byName;
  for (ModuleEntry& module : project.Modules) {
    const std::string space = NamespaceOf(*project.Project, *module.Module);
    const std::string full = module.Module->FullName();
    if (!space.empty() && full.size() > space.size() + 1 && full.starts_with(space + "."))
      module.Name = full.substr(space.size() + 1);
    byName[space].push_back(&module);
  }
  PageNames names;
  for (auto& [name, modules] : byName) {
    const std::string leaf = "ns-" + names.Take(name.empty() ? "global" : name) + ".html";
    if (const Namespace* space = modules.front()->Module->Namespace.Get())
      Set(space, project.Folder, leaf);
    project.Namespaces.push_back({name, leaf, std::move(modules)});
  }
}

Address SiteMap::Of(const CodeElement* element) const {
  const auto found = mAddresses.find(element);
  if (found == mAddresses.end()) return {};
  return {found->second.Folder, std::string(found->second.Leaf)};
}

std::string_view SiteMap::LeafOf(const CodeElement& element) const {
  const auto found = mAddresses.find(&element);
  return found == mAddresses.end() ? std::string_view() : found->second.Leaf;
}

const ModuleEntry* SiteMap::ModuleOf(const Component* component) const {
  const auto found = mModules.find(component);
  return found == mModules.end() ? nullptr : found->second;
}

const ProjectEntry* SiteMap::ProjectOf(const VBProject* project) const {
  const auto found = mByProject.find(project);
  return found == mByProject.end() ? nullptr : found->second;
}

const CodeElement* SiteMap::Named(std::string_view qualifiedName) const {
  if (mByName.empty()) {
    // Of elements of one name the first in the order of their addresses, so that runs agree.
    for (const auto& [element, place] : mAddresses) {
      const auto [entry, isNew] =
          mByName.try_emplace(HashOf(FoldKey(element->QualifiedName())), element);
      if (isNew) continue;
      const Place& known = mAddresses.at(entry->second);
      if (std::tie(place.Folder, place.Leaf) < std::tie(known.Folder, known.Leaf))
        entry->second = element;
    }
  }
  const auto found = mByName.find(HashOf(FoldKey(qualifiedName)));
  return found == mByName.end() ? nullptr : found->second;
}

}  // namespace vendrel::site
