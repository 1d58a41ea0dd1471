#include "project/VBProject.h"

#include "core/CaseFold.h"
#include "core/ObjectRegistry.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "project/Assembly.h"
#include "project/ScriptEngine.h"
#include "project/VBProjectGroup.h"
#include "services/Startup.h"

namespace vendrel {

void ProjectTypeCache::Add(std::string_view name, std::int32_t number,
                           std::string_view componentName) {
  mEntries.try_emplace(FoldKey(name), Entry{number, std::string(componentName)});
}

const ProjectTypeCache::Entry* ProjectTypeCache::Find(std::string_view name) const {
  const auto found = mEntries.find(FoldKey(name));
  return found == mEntries.end() ? nullptr : &found->second;
}

VBProject::VBProject() {
  EnsureStarted();
  ConnectReaders();
  mWorkspace = &vendrel::Workspace::Current();
  mTypeResolver = std::make_shared<vendrel::TypeResolver>();
  Components.SetVBProject(this);
  Components.ComponentLoaded.Add([this](std::int32_t index) { ComponentLoaded.Raise(index); });
  State().Silent = true;
  ++State().mInstanceIncrement;
  Key = State().Key();
}

VBProject::~VBProject() {
  const Workspace::Use use(Workspace());
  if (--State().mInstanceIncrement == 0) ReleaseScriptEngines();
}

std::string_view VBProject::ProjectTypeDescription() const {
  switch (ProjectType) {
    case ptEXE: return "EXE";
    case ptOleExe: return "ActiveX EXE";
    case ptOleDLL: return "ActiveX DLL";
    case ptControl: return "ActiveX Control";
    default: return {};
  }
}

std::string VBProject::ClsID() const {
  return CompatibleFileName.Exists() ? CompatibleFileName.ClassID() : mCLSID;
}

void VBProject::SetTypeResolver(std::shared_ptr<vendrel::TypeResolver> resolver) try {
  if (!resolver) throw VendrelError(errObjectNotSet, "VBProject.TypeResolver");
  mTypeResolver = std::move(resolver);
}
VENDREL_CONTEXT(*this)

Assembly* VBProject::Assembly() const { return mAssembly.Get(); }
void VBProject::SetAssembly(vendrel::Assembly* assembly) { mAssembly = assembly; }
void VBProject::OwnAssembly(std::shared_ptr<vendrel::Assembly> assembly) {
  mAssembly = assembly.get();
  mOwnAssembly = std::move(assembly);
}

NetResolver* VBProject::NetResolver() {
  const Workspace::Use use(Workspace());
  if (!mNetResolver) {
    mNetResolver = ObjectRegistry::Create<vendrel::NetResolver>(kNetResolverProgId);
    if (mNetResolver) mNetResolver->searchfolders(ReferencePath);
  }
  return mNetResolver.get();
}

bool VBProject::Silent() const { return Workspace().State.Silent; }
void VBProject::SetSilent(bool value) { Workspace().State.Silent = value; }

bool VBProject::UpgradeLegacyTaggedcomments() const {
  return Workspace().State.mUpgradeLegacyTaggedcomments;
}
void VBProject::SetUpgradeLegacyTaggedcomments(bool value) {
  Workspace().State.mUpgradeLegacyTaggedcomments = value;
}
std::string VBProject::TaggedCommentUpgradeFlag() const {
  return Workspace().State.mTaggedCommentUpgradeFlag;
}
void VBProject::SetTaggedCommentUpgradeFlag(std::string_view value) {
  Workspace().State.mTaggedCommentUpgradeFlag = value;
}

void VBProject::LoadedHelpContextID(std::int32_t id) {
  if (id > mHighestHelpContextID) mHighestHelpContextID = id;
}

void VBProject::UnloadSourceCode() try {
  const Workspace::Use use(Workspace());
  for (Component& component : Components) component.UnloadSourceCode();
  for (ProjectFile& file : ProjectFiles) {
    if (Component* outside = file.Outside()) outside->UnloadSourceCode();
    file.SourceForm.reset();
  }
}
VENDREL_CONTEXT(*this)

std::shared_ptr<VBProject> NewVBProject() {
  auto project = std::make_shared<VBProject>();
  project->SetDoNotPopulateComponents(true);
  project->PreserveOriginalTaggedComments = true;
  project->OutputConditionalCompilationBlocks = true;
  project->LoadTypeLibHelpStrings = true;
  project->LoadBlocksOnly = true;
  project->IncludeFlag = true;
  project->SetUpgradeLegacyTaggedcomments(true);
  return project;
}

// Links of the tree to its project, kept by the elements as links to its options.
VBProject* Component::VBProject() const { return static_cast<vendrel::VBProject*>(Project()); }
VBProject* Block::VBProject() const { return static_cast<vendrel::VBProject*>(Project()); }
VBProject* Variable::VBProject() const { return static_cast<vendrel::VBProject*>(Options()); }
VBProject* Library::VBProject() const { return static_cast<vendrel::VBProject*>(Options()); }
VBProject* Components::VBProject() const {
  return static_cast<vendrel::VBProject*>(mProject.Get());
}
VBProject* PropertyGroup::VBProject() const { return Component ? Component->VBProject() : nullptr; }

CompilerConstants& Component::CompilerConstants() {
  if (!mCompilerConstants) mCompilerConstants = std::make_shared<vendrel::CompilerConstants>();
  return *mCompilerConstants;
}
const CompilerConstants& Component::CompilerConstants() const {
  static const vendrel::CompilerConstants none;
  return mCompilerConstants ? *mCompilerConstants : none;
}

}  // namespace vendrel
