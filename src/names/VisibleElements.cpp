// What a project sees without naming a module: modules of its own and of others, and what standard
// modules make public.

#include <algorithm>
#include <unordered_map>
#include <vector>

#include "core/CaseFold.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "project/VBProjectGroup.h"

namespace vendrel {
namespace {

void EnterUnder(Components& visible, const std::shared_ptr<Component>& component,
                const std::string& key) {
  if (key.empty() || !visible.HasKey(key)) visible.Add(component, key);
}

/// Enters the modules of `project` that `wanted` takes and whose name is free, each under its name
/// and under "Project.Name".
template <typename Filter>
void EnterModules(Components& visible, VBProject& project, Filter wanted) {
  project.Components.Populate();
  for (std::size_t i = 1; i <= project.Components.Count(); ++i) {
    const std::shared_ptr<Component> component = project.Components.Share(i);
    if (!wanted(*component) || visible.HasKey(component->Name)) continue;
    EnterUnder(visible, component, component->Name);
    EnterUnder(visible, component, project.ProjectName + "." + component->Name);
  }
}

bool Any(const Component&) { return true; }
bool IsPublic(const Component& component) { return component.AccessType() == atPublic; }
bool IsPublicClass(const Component& component) {
  return component.Access == "PUBLIC" &&
         (component.FileType == ftClass || component.FileType == ftUserControl ||
          component.FileType == ftUserDocument);
}

std::string FileKey(const FileSystemObject& file) {
  return FoldKey(file.FolderPath() + file.LeafName());
}

/// The other projects of the group by what references know of them: library id and file.
class ReferencedProjects {
 public:
  explicit ReferencedProjects(const std::vector<VBProject*>& projects) {
    for (std::size_t i = 0; i < projects.size(); ++i) {
      const std::string classId = projects[i]->ClsID();
      if (!classId.empty()) mByIdentity[FoldKey(classId)].push_back(i);
      mByIdentity[FileKey(projects[i]->FileName)].push_back(i);
    }
  }
  /// Positions of the projects that a reference means, ascending, each once.
  std::vector<std::size_t> MatchesOf(const Reference& reference) const {
    std::vector<std::size_t> matches;
    for (const std::string& key : {FoldKey(reference.ClsID()), FoldKey(reference.StoredCLSID),
                                   FileKey(reference.FileName)}) {
      const auto found = mByIdentity.find(key);
      if (found != mByIdentity.end())
        matches.insert(matches.end(), found->second.begin(), found->second.end());
    }
    std::sort(matches.begin(), matches.end());
    matches.erase(std::unique(matches.begin(), matches.end()), matches.end());
    return matches;
  }

 private:
  std::unordered_map<std::string, std::vector<std::size_t>> mByIdentity;
};

void EnterFromGroup(Components& visible, VBProject& project, const VBProjectGroup& group) {
  std::vector<VBProject*> others;
  for (VBProject& other : group.VBProjects())
    if (&other != &project) others.push_back(&other);
  if (project.WasReadFromTypeLibrary) {
    for (VBProject* other : others) EnterModules(visible, *other, Any);
    return;
  }
  const ReferencedProjects referenced(others);
  for (const Reference& reference : project.References)
    for (const std::size_t i : referenced.MatchesOf(reference))
      EnterModules(visible, *others[i], IsPublicClass);
  for (VBProject* other : others) EnterModules(visible, *other, IsPublic);
}

}  // namespace

Components& VBProject::AllVisibleComponents() try {
  const Workspace::Use use(Workspace());
  if (mVisibleComponents) return *mVisibleComponents;
  const auto visible = std::make_shared<vendrel::Components>();
  // The modules in it are loaded, or not, by their own projects.
  visible->DoNotPopulate = true;
  EnterModules(*visible, *this, Any);
  if (const vendrel::VBProjectGroup* group = VBProjectGroup())
    EnterFromGroup(*visible, *this, *group);
  mVisibleComponents = visible;
  return *mVisibleComponents;
}
VENDREL_CONTEXT(*this)

std::shared_ptr<Variables> VBProject::GlobalVariables() try {
  const Workspace::Use use(Workspace());
  auto variables = std::make_shared<Variables>();
  for (Component& component : Components) {
    if (component.FileType != ftModule) continue;
    Block* declarations = component.Blocks.FirstOfType(btDeclarations);
    Variables* own = declarations ? declarations->Variables.IfAny() : nullptr;
    for (std::size_t i = 1; own && i <= own->Count(); ++i)
      if (own->Item(i)->Access == "PUBLIC") variables->Add(own->Share(i), own->Item(i)->Name);
  }
  return variables;
}
VENDREL_CONTEXT(*this)

std::shared_ptr<Blocks> VBProject::GlobalBlocks() try {
  const Workspace::Use use(Workspace());
  auto blocks = std::make_shared<Blocks>();
  for (Component& component : Components) {
    if (component.FileType != ftModule) continue;
    for (std::size_t i = 1; i <= component.Blocks.Count(); ++i) {
      const std::shared_ptr<Block> block = component.Blocks.Share(i);
      if (block->BlockType() != btDeclarations && block->BlockType() != btAttributes)
        blocks->Add(block, block->Name());
    }
  }
  return blocks;
}
VENDREL_CONTEXT(*this)

}  // namespace vendrel
