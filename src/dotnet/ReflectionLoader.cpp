// The loader of assemblies that the library registers, and how a project asks for a loader.

#include "core/CaseFold.h"
#include "core/ObjectRegistry.h"
#include "core/ProcessState.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "dotnet/Assemblies.h"
#include "dotnet/TypeBuilder.h"
#include "services/FolderCache.h"

namespace vendrel {
namespace {

class ReflectionLoader final : public NetLoader {
 public:
  void LoadVBProject(VBProject& project, std::string_view data) override {
    LoadAssembly(project, FileSystemObject(data).NativePath());
  }
};

NetLoader& Required(const std::shared_ptr<NetLoader>& loader, std::string_view progId) {
  if (!loader)
    throw VendrelError(errCannotCreate, "no loader is registered as " + std::string(progId));
  return *loader;
}

}  // namespace

std::shared_ptr<metadata::AssemblyStore> NewAssemblyStore(const std::vector<std::string>& folders) {
  auto store = std::make_shared<metadata::AssemblyStore>(folders);
  store->OnMissing = [](const std::string& name) {
    Report(DiagnosticCode::MissingAssembly, {name});
  };
  return store;
}

void LoadAssembly(VBProject& project, const std::string& nativePath) try {
  const FileSystemObject place(nativePath);
  const DiagnosticScope scope(&project.Diagnostics, place.FullPath());
  const auto store = NewAssemblyStore(project.ReferencePath);
  const metadata::AssemblyFile* file = store->Open(nativePath);
  for (const std::string& message : file->Image->Messages())
    Report(DiagnosticCode::AssemblyPart, {message});
  const metadata::AssemblyIdentity identity = file->Image->Identity();
  if (project.ProjectName.empty()) project.ProjectName = metadata::CleanName(identity.Name);
  project.ProjectType = EqualsNoCase(place.Extension(), "exe") ? ptOleExe : ptOleDLL;
  project.mMajorVersion = std::to_string(identity.Version[0]);
  project.mMinorVersion = std::to_string(identity.Version[1]);
  project.mIncrement = std::to_string(identity.Version[2]);
  project.Components.DoNotPopulate = true;  // there are no files to read
  TypeBuilder(project, store, file->Image->Size()).BuildAll(*file);
}
VENDREL_CONTEXT(nativePath, trace::Me(project))

void VBProject::LoadFromAssembly(std::string_view AssemblyFileName) try {
  ForgetFolders();
  SetLanguageVersion(lvVisualBasicDotNet);
  State().Silent = true;
  const FileSystemObject file(AssemblyFileName);
  if (file.Extension() == "vbproj") {
    LoadDotNet(file.FullPath());
    return;
  }
  const auto loader = ObjectRegistry::Create<NetLoader>(kNetLoaderProgId);
  Required(loader, kNetLoaderProgId).LoadVBProject(*this, AssemblyFileName);
}
VENDREL_CONTEXT(AssemblyFileName, *this)

void VBProject::LoadFromCustom(std::string_view ProgID, std::string_view Data) try {
  const auto loader = ObjectRegistry::Create<NetLoader>(ProgID);
  Required(loader, ProgID).LoadVBProject(*this, Data);
}
VENDREL_CONTEXT(ProgID, Data, *this)

std::shared_ptr<NetLoader> NewReflectionLoader() { return std::make_shared<ReflectionLoader>(); }

}  // namespace vendrel
