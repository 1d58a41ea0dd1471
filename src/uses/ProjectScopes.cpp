// What a project makes known to its modules, and what late binding may reach.

#include "core/Ascii.h"
#include "project/ProjectFile.h"
#include "project/VBProjectGroup.h"
#include "services/SourceText.h"
#include "text/Identifiers.h"
#include "uses/Scopes.h"
#include "uses/Tokens.h"

namespace vendrel {
namespace {

// Part of every project, and of the table of built-ins.
bool IsStandardLibrary(const Reference& reference) {
  return ContainsNoCaseAscii(reference.SourceString, "{00020430-0000-0000-C000-000000000046}") ||
         ContainsNoCaseAscii(reference.SourceString, "stdole");
}

void Chain(Entry*& first, Entry* added) {
  if (!first) {
    first = added;
    return;
  }
  Entry* last = first;
  while (last->Next) last = last->Next;
  last->Next = added;
}

}  // namespace

void Scopes::AddModule(ProjectScope& project, const Component& module) {
  ModuleScope& scope = Of(module);
  project.MissesReferences |= scope.IsMissing && !project.IsLibrary;
  const bool isStandard = module.FileType == ftModule;
  ProjectName& own = project.Names[scope.Own.Name];
  if (!own.Module) own.Module = &scope.Own;
  // Copies: the entries of the module chain those of one module.
  scope.Members.ForEach([&](Entry& first) {
    for (Entry* entry = &first; entry; entry = entry->Next) {
      if (!entry->IsPublic) continue;
      const bool isEnumMember = entry->Sort == EntrySort::EnumMember;
      if (!isEnumMember && (!isStandard || entry->Sort == EntrySort::Control)) continue;
      Entry copy = *entry;
      copy.Next = nullptr;
      ProjectName& name = project.Names[entry->Name];
      Chain(isEnumMember ? name.EnumMember : name.Member, Make(copy));
      if (!isEnumMember) break;  // a second one of the module is no other procedure
    }
  });
  scope.Types.ForEach([&](Entry& entry) {
    if (!entry.IsPublic) return;
    Entry copy = entry;
    copy.Next = nullptr;
    Chain(project.Names[entry.Name].Type, Make(copy));
  });
}

void Scopes::AddReferences(ProjectScope& scope) {
  for (Reference& reference : scope.Project->References) {
    if (VBProject* other = reference.ReferencedProject()) {
      if (other != scope.Project) scope.References.push_back(&Of(*other));
    } else if (reference.ReferenceType != "Line" && !IsStandardLibrary(reference)) {
      scope.MissesReferences = true;
    }
  }
}

// The classic reading keeps a later part of a type in no list of its file.
const Component* Scopes::FirstTypeOf(const ProjectFile& file) {
  if (file.Components.Count() > 0) return file.Components.Item(1);
  const Component* outside = file.Outside();
  return outside ? outside : TypeOpenedIn(file);
}

// The type of the project of which the file holds a part, by the first statement that opens one.
const Component* Scopes::TypeOpenedIn(const ProjectFile& file) {
  const VBProject* project = file.VBProject();
  if (!project || !file.SourceForm) return nullptr;
  TokenScan scan(mSymbols, file.SourceForm->Text, {true});
  while (scan.Next()) {
    for (std::size_t at = 0; at + 1 < scan.Tokens.size(); ++at) {
      if (scan.Tokens[at].Kind != TokenKind::Word) break;
      if (!word::OpensType(scan.Tokens[at].Name)) continue;
      for (const Component& type : project->Components.Listed()) {
        const std::string_view name = type.Name;
        if (mSymbols.Of(name.substr(name.rfind('.') + 1)) == scan.Tokens[at + 1].Name) return &type;
      }
      return nullptr;
    }
  }
  return nullptr;
}

void Scopes::AddTypeWords(ProjectScope& scope, const VBProject& project) {
  for (const Component& type : project.Components.Listed()) {
    std::string_view name = type.Name;
    name = name.substr(name.rfind('.') + 1);
    const Symbol word = mSymbols.Of(WithoutBrackets(name.substr(0, name.find('`'))));
    scope.TypeWords.insert(word);
    if (name.size() < type.Name.size()) scope.NestedWords.insert(word);
  }
}

ProjectScope& Scopes::Of(VBProject& project) {
  std::unique_ptr<ProjectScope>& made = mProjects[&project];
  if (made) return *made;
  made = std::make_unique<ProjectScope>();
  ProjectScope& scope = *made;  // the map may grow from here on
  scope.Project = &project;
  scope.IsLibrary = project.WasReadFromTypeLibrary;
  scope.Own.Name = mSymbols.Of(project.ProjectName);
  scope.Own.Sort = EntrySort::Project;
  scope.Own.Element = &project;
  if (project.LanguageVersion() == lvVisualBasicDotNet) {
    if (!mNetProject) mNetProject = &project;
    for (ProjectFile& file : project.ProjectFiles) {
      if (file.SourceForm) mFiles[file.SourceForm.get()] = &file;
      for (const Component& module : file.Components) mFilesOf[&module].push_back(&file);
      if (file.Components.Count() > 0 || file.Outside()) continue;
      if (const Component* type = TypeOpenedIn(file)) mFilesOf[type].push_back(&file);
    }
    AddTypeWords(scope, project);
    for (const Reference& reference : project.References)
      if (const VBProject* other = reference.ReferencedProject()) AddTypeWords(scope, *other);
    scope.MissesReferences = true;  // assemblies tell their types when these are asked for
  }
  for (const Component& module : std::as_const(project).Components.Listed())
    AddModule(scope, module);
  AddReferences(scope);
  return scope;
}

ProjectScope* Scopes::ScopeOf(const Component& module) {
  VBProject* project = module.VBProject();
  return project ? &Of(*project) : nullptr;
}

const BuiltinMember* Scopes::Global(Symbol name) {
  if (name >= mGlobals.size()) mGlobals.resize(mSymbols.Count() * 2);
  auto& [known, member] = mGlobals[name];
  if (!known) {
    known = true;
    member = mBuiltins.FindGlobal(mSymbols.TextOf(name));
  }
  return member;
}

const std::string* Scopes::LibraryName(std::string_view name) {
  return &mLibraries.emplace(LowerAscii(name), name).first->second;
}

const std::vector<const CodeElement*>& Scopes::LateCandidates(ProjectScope& project, Symbol name) {
  if (mCandidatesOf != &project) {
    mCandidatesOf = &project;
    mCandidates.clear();
    for (const Component& module : std::as_const(*project.Project).Components.Listed()) {
      if (module.FileType == ftModule) continue;
      Of(module).Members.ForEach([&](Entry& entry) {
        if (entry.IsPublic && entry.Sort != EntrySort::EnumMember)
          mCandidates[entry.Name].push_back(entry.Element);
      });
    }
  }
  return mCandidates[name];
}

}  // namespace vendrel
