// How an assembly gets its types: loaded when a project is put into it, and shared out over
// namespaces.

#include <pugixml.hpp>
#include <unordered_set>

#include "core/CaseFold.h"
#include "core/MessageService.h"
#include "core/ProcessState.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "dotnet/AssemblySets.h"
#include "dotnet/Sources.h"
#include "project/Assembly.h"

namespace vendrel {
namespace {

constexpr int kAskStyle = 49;  // exclamation mark, OK and Cancel

std::string_view NamespaceOf(std::string_view name) {
  const std::size_t dot = name.rfind('.');
  return dot == std::string_view::npos ? std::string_view() : name.substr(0, dot);
}

bool IsBlank(std::string_view text) {
  return text.find_first_not_of(' ') == std::string_view::npos;
}

// In the complete reading a nested type stands in the namespace of the type around it: the part of
// its name that names no type.
std::string_view OuterName(const VBProject& project, std::string_view name) {
  if (!project.Reading.AssemblyNesting) return name;
  for (std::string_view outer = NamespaceOf(name); !outer.empty(); outer = NamespaceOf(outer))
    if (project.Components.HasKey(outer)) name = outer;
  return name;
}

// A name without the namespace in front of it.
std::string NameIn(const Namespace& space, std::string_view name) {
  return std::string(name.substr(space.Name.size() + 1));
}

template <typename Collection, typename Element>
void AddOnce(Collection& collection, std::shared_ptr<Element> element, const std::string& key) {
  const bool isTaken = collection.HasKey(key);
  collection.Add(std::move(element), isTaken ? std::string_view() : std::string_view(key));
}

Components& ListFor(Namespace& space, const Component& type) {
  if (type.IsInterface) return space.Interfaces;
  if (type.IsEnumeration) return space.Enumerations;
  return type.IsStructure ? space.Structures : space.Classes;
}

// Shares the types of a compiled assembly out over its namespaces.
class Sharing {
 public:
  Sharing(Assembly& assembly, VBProject& project) : mAssembly(assembly), mProject(project) {}

  void Run() {
    Components& types = mProject.Components;
    for (std::size_t i = 1; i <= types.Count(); ++i) {
      const std::shared_ptr<Component> type = types.Share(i);
      if (type->Name == "__Delegates")
        ShareDelegates(*type);
      else
        ShareType(type);
    }
  }

 private:
  Namespace* SpaceOf(std::string_view name) {
    return mAssembly.GetNamespace(OuterName(mProject, name), mAssembly.Namespaces);
  }

  void ShareType(const std::shared_ptr<Component>& type) {
    Namespace* space = SpaceOf(type->Name);
    if (!space) return;
    type->Namespace = space;
    type->Name = NameIn(*space, type->Name);
    AddOnce(ListFor(*space, *type), type, type->Name);
  }

  void ShareDelegates(Component& carrier) {
    for (std::size_t i = 1; i <= carrier.Blocks.Count(); ++i) {
      const std::shared_ptr<Block> block = carrier.Blocks.Share(i);
      Namespace* space = SpaceOf(block->Name());
      if (!space) continue;
      const std::string name = NameIn(*space, block->Name());
      block->SetNamespace(space);
      block->SetName(name);
      AddOnce(space->Delegates, block, name);
    }
  }

  Assembly& mAssembly;
  VBProject& mProject;
};

void LoadSource(Assembly& assembly, VBProject& project) {
  project.FileName.SetFullPath(assembly.FileName.FullPath());
  if (!project.LoadDotNet(assembly.FileName.FullPath()))
    throw VendrelError(errFileNotFound, project.LastErrorString);
  assembly.mName = project.ProjectName;
  project.Tags["AddedManually"] = "True";
}

void MarkRoot(Assembly& assembly, VBProject& project, bool isCompiled) {
  if (assembly.RootModule.empty()) return;
  Component* named = isCompiled ? project.Components.Item(assembly.RootModule) : nullptr;
  if (named) named->RootFlag = true;
  // Names tell the assembly in front; the project bears its name by now.
  if (auto* root = As<Component>(project.GetObjectByName(assembly.RootModule)))
    root->RootFlag = true;
}

void LoadCompiled(Assembly& assembly, VBProject& project) {
  project.WasReadFromTypeLibrary = true;
  project.ProjectSourceType = ptsTypeLibrary;
  project.ProjectSourceAccess = psaNone;
  project.PlugInFlag = true;
  project.SetSilent(true);
  WaitCursor& cursor = *InUse<HostObjects>().Cursor;
  const int before = cursor.Show();
  project.ProjectName = assembly.mName;
  try {
    project.LoadFromAssembly(assembly.FileName.FullPath());
  } catch (const VendrelError&) {
    cursor.Restore(before);
    throw;
  }
  cursor.Restore(before);
  project.FileName.SetFullPath(assembly.FileName.FullPath());
}

void LoadInto(Assembly& assembly, VBProject& project) {
  const bool isSource = EqualsNoCase(assembly.FileName.Extension(), "vbproj");
  if (isSource)
    LoadSource(assembly, project);
  else
    LoadCompiled(assembly, project);
  for (Component& component : project.Components.Listed()) component.IncludeFlag = true;
  MarkRoot(assembly, project, !isSource);
}

// Asks the user where an assembly is that is not where it was.
void AskForFile(Assembly& assembly) {
  const std::string path = assembly.FileName.FullPath();
  const std::string text = "Assembly '" + path +
                           "' could not be found.  Please press OK then use the displayed dialog "
                           "to identify the new location of this assembly.";
  if (!MessageService::Current().Ask(text, "Could not find assembly", kAskStyle)) return;
  const std::string chosen = InUse<HostObjects>().Dialog->OpenFile(
      ".NET Assembly or VB.NET Project (*.dll;*.exe;*.vbproj)|*.dll;*.exe;*.vbproj", ".NET Item");
  if (!chosen.empty()) assembly.FileName.SetFullPath(chosen);
}

}  // namespace

Namespace* Assembly::GetNamespace(std::string_view Name, vendrel::Namespaces& colN) {
  const std::string_view name = NamespaceOf(Name);
  if (IsBlank(name)) return nullptr;
  if (Namespace* known = colN.Item(name)) return known;
  auto made = std::make_shared<Namespace>();
  made->Name = name;
  made->Assembly = this;
  colN.Add(made, name);
  return made.get();
}

void Assembly::SetVBProject(std::shared_ptr<vendrel::VBProject> project) try {
  if (!project) throw VendrelError(errObjectNotSet, "Assembly.VBProject");
  vendrel::VBProject& vbp = *project;
  const Workspace::Use use(vbp.Workspace());
  TieVBProject(std::move(project));
  vbp.SetAssembly(this);
  vbp.SetLanguageVersion(lvVisualBasicDotNet);
  if (vbp.FileName.FullPath().empty()) LoadInto(*this, vbp);
  mName = vbp.ProjectName;
  if (AssemblyType == atCompiled) Sharing(*this, vbp).Run();
}
VENDREL_CONTEXT(trace::Field("FileName", FileName.FullPath()), *this)

bool Assembly::Load(const pugi::xml_node& e) try {
  FileName.SetFullPath(AttributeOf(e, "FileName").as_string());
  if (!FileName.Exists()) AskForFile(*this);
  const pugi::xml_attribute comments = AttributeOf(e, "CommentFile");
  if (!comments) throw VendrelError(errObjectNotSet, "attribute CommentFile");
  CommentFile = comments.as_string();
  RootModule = AttributeOf(e, "RootModule").as_string();
  AssemblyType = AttributeOf(e, "AssemblyType").as_int(atCompiled) == atVBNETSource ? atVBNETSource
                                                                                    : atCompiled;
  if (!FileName.Exists()) return false;
  SetVBProject(NewProjectFor(*this));
  VBProject()->ExamplesOnlyFlag = EqualsNoCase(AttributeOf(e, "ExamplesOnly").as_string(), "True");
  return true;
}
VENDREL_CONTEXT(trace::Field("FileName", FileName.FullPath()), *this)

bool Assembly::Save(pugi::xml_node e) const try {
  const vendrel::VBProject* project = VBProject();
  std::string root;
  if (project)
    for (const Component& component : project->Components.Listed())
      if (component.RootFlag) root = component.QualifiedName();
  const auto add = [&](const char* name, const std::string& value) {
    e.append_attribute(name).set_value(value.c_str());
  };
  add("FileName", FileName.FullPath());
  add("CommentFile", CommentFile);
  add("RootModule", root);
  add("AssemblyName", mName);
  add("AssemblyType", std::to_string(static_cast<int>(AssemblyType)));
  add("ExamplesOnly", project && project->ExamplesOnlyFlag ? "True" : "False");
  return true;
}
VENDREL_CONTEXT(*this)

bool Assembly::ReadSelectedModules(vendrel::VBProject& vbp) {
  SelectedModules.clear();
  std::unordered_set<std::string> seen;
  for (const Component& component : vbp.Components.Listed())
    if (component.IncludeFlag && seen.insert(FoldKey(component.Name)).second)
      SelectedModules.push_back(component.Name);
  return true;
}

std::string Assembly::DotNetMethodSignature(const Block& b) const {
  std::string signature(b.Name().substr(0, b.Name().find('(')));
  const Parameters* parameters = b.Parameters.IfAny();
  if (!parameters || parameters->Count() == 0) return signature;
  std::string list;
  for (const Parameter& parameter : *parameters) {
    if (!list.empty()) list += ',';
    list += parameter.VariableType.view();
    // The mark was cut when the parameter was made.
    if (parameter.IsByRef && b.Options().Reading.NetNames) list += '&';
  }
  for (char& c : list)
    if (c == '&') c = '@';
  return signature + "(" + list + ")";
}

bool Assembly::ResolveTypes() try {
  if (TypesResolved) return true;
  vendrel::VBProject* project = VBProject();
  if (!project) return false;
  const Workspace::Use use(project->Workspace());
  if (!project->References.Resolved) ResolveReferences();
  ResolveFiles(*project);
  TypesResolved = true;
  ResolveInheritDocs();
  return true;
}
VENDREL_CONTEXT(*this)

}  // namespace vendrel
