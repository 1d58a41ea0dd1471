// Sets of assemblies: loaded and saved, and the names that lead into them.

#include "dotnet/AssemblySets.h"

#include "core/CaseFold.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "model/Events.h"

namespace vendrel {
namespace {

constexpr std::string_view kNamespace = "_namespace", kDelegate = "_Delegate";

// The file that a project of the set builds.
std::string BuiltFile(const VBProject& project) {
  FileSystemObject file(project.FileName.FolderPath() + "bin\\" + project.VBNETAssemblyName +
                        ".dll");
  if (project.ProjectType != ptOleDLL) file.SetExtension("exe");
  return file.FullPath();
}

CodeElement* FindNamespace(Assembly& assembly, std::string_view name) {
  if (!name.empty()) return assembly.Namespaces.Item(name);
  for (Namespace& space : assembly.Namespaces)
    if (space.Name.empty()) return &space;
  return nullptr;
}

// "Type_Delegate" or "Type_Delegate:Parameter".
CodeElement* FindDelegate(Assembly& assembly, std::string_view text) {
  const std::size_t colon = text.find(':');
  std::string_view name = text.substr(0, colon);
  if (!name.ends_with(kDelegate)) return nullptr;
  name.remove_suffix(kDelegate.size());
  for (Namespace& space : assembly.Namespaces) {
    Block* found = space.Delegates.Item(name);
    if (!found) continue;
    if (colon == std::string_view::npos) return found;
    Parameters* parameters = found->Parameters.IfAny();
    return parameters ? parameters->Item(text.substr(colon + 1)) : nullptr;
  }
  return nullptr;
}

std::string KeyInModule(const Block& block) {
  std::string key = block.QualifiedName();
  if (const Component* component = block.Component.Get()) {
    const std::string front = component->QualifiedName() + "~";
    if (const std::size_t at = key.find(front); at != std::string::npos)
      key.erase(at, front.size());
  }
  return key;
}

}  // namespace

pugi::xml_attribute AttributeOf(const pugi::xml_node& element, std::string_view name) {
  for (const pugi::xml_attribute attribute : element.attributes())
    if (EqualsNoCase(attribute.name(), name)) return attribute;
  return {};
}

std::shared_ptr<VBProject> NewProjectFor(const Assembly& assembly) {
  const Assemblies* set = assembly.Assemblies.Get();
  return set && set->NewProject ? set->NewProject() : std::make_shared<VBProject>();
}

// The resolver of a project sees what its neighbours build only if that is there, so a failure to
// open it is none.
bool Assembly::ResolveReferences() try {
  vendrel::VBProject* project = VBProject();
  if (!project) return false;
  vendrel::Assemblies* set = Assemblies.Get();
  for (Reference& reference : project->References) {
    if (!set) break;
    for (Assembly& other : *set) {
      vendrel::VBProject* target = other.VBProject();
      if (&other == this || !target ||
          !EqualsNoCase(target->VBNETProjectGUID, reference.ProjectGUID))
        continue;
      try {
        if (NetResolver* resolver = project->NetResolver())
          resolver->addassembly(BuiltFile(*target));
      } catch (const VendrelError&) {
      }
      reference.SetReferencedProject(target);
      break;
    }
  }
  project->References.Resolved = true;
  return true;
}
VENDREL_CONTEXT(*this)

Assembly* Assemblies::Item(std::string_view Key) {
  for (Assembly& assembly : *this)
    if (EqualsNoCase(assembly.mName, Key) || EqualsNoCase(assembly.FileName.LeafName(), Key))
      return &assembly;
  return nullptr;
}

const Assembly* Assemblies::Item(std::string_view Key) const {
  return const_cast<Assemblies*>(this)->Item(Key);
}

void Assemblies::Add(std::shared_ptr<Assembly> item, std::string_view Key, const Position& Before,
                     const Position& After) try {
  if (!item) throw VendrelError(errObjectNotSet, "Assemblies.Add");
  item->Assemblies = this;
  std::string key(Key);
  if (!item->VBProject()) {
    item->SetVBProject(NewProjectFor(*item));
    for (Component& component : item->VBProject()->Components.Listed())
      component.IncludeFlag = true;
    key = item->mName;
  }
  Base::Add(std::move(item), key, Before, After);
}
VENDREL_CONTEXT(Key)

Assembly* Assemblies::RootAssembly() {
  for (Assembly& assembly : *this)
    if (assembly.RootFlag()) return &assembly;
  return nullptr;
}

const Assembly* Assemblies::RootAssembly() const {
  return const_cast<Assemblies*>(this)->RootAssembly();
}

bool Assemblies::Load(const pugi::xml_node& e) try {
  const DiagnosticScope scope(&Diagnostics, {});
  for (const pugi::xml_node& child : e.children()) {
    if (child.type() != pugi::node_element) continue;
    auto assembly = std::make_shared<Assembly>();
    assembly->Assemblies = this;
    try {
      assembly->Load(child);
    } catch (const VendrelError& error) {
      ReportAt(DiagnosticCode::UnreadProject, assembly->FileName.FullPath(), 0,
               {"the assembly is left out: " + error.Text()});
      continue;
    }
    if (assembly->FileName.Exists())
      Base::Add(assembly, HasKey(assembly->mName) ? std::string_view() : assembly->mName);
    else
      Report(DiagnosticCode::AssemblyDropped, {assembly->FileName.FullPath()});
  }
  for (Assembly& assembly : *this) assembly.ResolveTypes();
  const std::string root = AttributeOf(e, "RootAssemblyName").as_string();
  if (Assembly* assembly = root.empty() ? nullptr : Item(root)) assembly->SetRootFlag(true);
  return true;
}
VENDREL_CONTEXT(trace::Local("Count", Count()))

bool Assemblies::Save(pugi::xml_node e) const try {
  const Assembly* root = RootAssembly();
  e.append_attribute("RootAssemblyName").set_value(root ? root->mName.c_str() : "");
  for (const Assembly& assembly : *this) assembly.Save(e.append_child("Assembly"));
  return true;
}
VENDREL_CONTEXT(trace::Local("Count", Count()))

CodeElement* Assemblies::GetObjectFromQualifiedName(std::string_view QualifiedName) {
  const std::size_t mark = QualifiedName.find('~');
  if (mark == std::string_view::npos) return Item(QualifiedName);
  Assembly* assembly = Item(QualifiedName.substr(0, mark));
  if (!assembly) return nullptr;
  std::string_view rest = QualifiedName.substr(mark + 1);
  rest = rest.substr(0, rest.find('~'));
  if (QualifiedName.ends_with(kNamespace)) {
    if (rest.ends_with(kNamespace)) rest.remove_suffix(kNamespace.size());
    return FindNamespace(*assembly, rest);
  }
  if (VBProject* project = assembly->VBProject())
    if (CodeElement* found = project->GetObjectByName(QualifiedName)) return found;
  return FindDelegate(*assembly, rest);
}

Component* Assemblies::FindComponent(std::string_view Name, VBProject* FirstVBProject) {
  if (Name.empty()) return nullptr;
  if (Component* found = FirstVBProject ? FirstVBProject->Components.Item(Name) : nullptr)
    return found;
  for (Assembly& assembly : *this) {
    VBProject* project = assembly.VBProject();
    if (!project || project == FirstVBProject) continue;
    if (Component* found = project->Components.Item(Name)) return found;
  }
  return nullptr;
}

CodeElement* Assemblies::GetInheritedFromObject(const CodeElement& o) {
  const Component* own = o.OwnComponent();
  VBProject* project = own ? own->VBProject() : nullptr;
  if (const auto* block = As<Block>(&o)) {
    Component* from = FindComponent(block->InheritedFrom(), project);
    return from ? from->Blocks.Item(KeyInModule(*block)) : nullptr;
  }
  if (const auto* variable = As<Variable>(&o)) {
    Component* from = FindComponent(variable->InheritedFrom, project);
    Block* declarations = from ? from->Blocks.FirstOfType(btDeclarations) : nullptr;
    Variables* fields = declarations ? declarations->Variables.IfAny() : nullptr;
    return fields ? fields->Item(variable->Name) : nullptr;
  }
  if (const auto* event = As<EventDeclaration>(&o)) {
    Component* from = FindComponent(event->InheritedFrom, project);
    return from ? from->EventDeclarations.Item(event->Name) : nullptr;
  }
  return nullptr;
}

}  // namespace vendrel
