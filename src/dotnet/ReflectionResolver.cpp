// The resolver of type names over assemblies that the library registers.

#include <unordered_map>

#include "core/ObjectRegistry.h"
#include "diagnostics/Context.h"
#include "dotnet/Assemblies.h"
#include "dotnet/KnownTypes.h"
#include "dotnet/TypeBuilder.h"
#include "services/Startup.h"

namespace vendrel {

namespace {

using namespace metadata;

class ReflectionResolver final : public NetResolver {
 public:
  ReflectionResolver() : mStore(NewAssemblyStore({})) {}

  void searchfolders(const std::vector<std::string>& folders) override {
    if (!mHasTypes && !mHasCore) mStore = NewAssemblyStore(folders);
  }
  void addassembly(std::string_view assembly) override;
  void addglobalnamespace(std::string_view name) override {
    mGlobal.push_back(KnownTypes::FrontOf(name));
    Forget();
  }
  void addnamespace(std::string_view name) override {
    mOfFile.push_back(KnownTypes::FrontOf(name));
    mHere = nullptr;
  }
  void clearnamespaces() override {
    mOfFile.clear();
    mHere = nullptr;
  }
  std::string resolvedtypename(std::string_view name) override {
    const TypeHandle type = Lookup(name);
    return type ? type.Name() : std::string(name);
  }
  bool mayhavetype(std::string_view word) override {
    NeedCore();
    return mTypes.HasWord(word);
  }
  Component* loadtype(std::string_view name, const std::shared_ptr<VBProject>& project) override;

 private:
  struct Loaded {
    std::shared_ptr<VBProject> Project;
    std::shared_ptr<Component> Module;
  };
  void Know(const AssemblyFile* file) {
    if (!file || !mTypes.Add(*file)) return;
    mHasTypes = true;
    Forget();
  }
  // Answers hold for the assemblies and imports that they were given with.
  void Forget() {
    mAsked.clear();
    mHere = nullptr;
  }
  void NeedCore();
  TypeHandle Search(std::string_view name);
  TypeHandle Lookup(std::string_view name);

  std::shared_ptr<AssemblyStore> mStore;
  KnownTypes mTypes;
  std::vector<KnownTypes::Front> mGlobal, mOfFile;
  // By the imports of a file, then by name; empty: there is none.
  std::unordered_map<std::string, std::unordered_map<std::string, TypeHandle>> mAsked;
  std::unordered_map<std::string, TypeHandle>* mHere = nullptr;  // of the imports in force
  std::unordered_map<std::string, Loaded> mLoaded;
  bool mHasTypes = false;
  bool mHasCore = false;
};

// A path, or a name with or without version and the rest ("System.Data, Version=1.0").
void ReflectionResolver::addassembly(std::string_view assembly) {
  const FileSystemObject file(assembly);
  if (file.Exists() && !file.IsFolder()) {
    Know(mStore->Open(file.NativePath()));
    return;
  }
  AssemblyIdentity identity;
  identity.Name = assembly.substr(0, assembly.find(','));
  Know(mStore->Named(identity, {}));
}

void ReflectionResolver::NeedCore() {
  if (mHasCore) return;
  mHasCore = true;
  AssemblyIdentity core;
  core.Name = "mscorlib";
  Know(mStore->Named(core, {}));
}

// The same names are asked for in one place of a file after the other.
TypeHandle ReflectionResolver::Lookup(std::string_view name) {
  if (name.empty()) return {};
  NeedCore();
  if (!mTypes.HasWord(name.substr(name.rfind('.') + 1))) return {};
  if (!mHere) {
    std::string imports;
    for (const KnownTypes::Front& space : mOfFile) imports.append(space.Exact).append("\n");
    mHere = &mAsked[imports];
  }
  std::string key(name);
  if (const auto known = mHere->find(key); known != mHere->end()) return known->second;
  return mHere->emplace(std::move(key), Search(name)).first->second;
}

// The name as it is, then behind each import of the file and of the project.
TypeHandle ReflectionResolver::Search(std::string_view name) {
  const KnownTypes::Front whole;
  std::vector<const KnownTypes::Front*> fronts{&whole};
  for (const auto* imports : {&mOfFile, &mGlobal})
    for (const KnownTypes::Front& space : *imports) fronts.push_back(&space);
  return mTypes.Find(name, fronts, *mStore);
}

Component* ReflectionResolver::loadtype(std::string_view name,
                                        const std::shared_ptr<VBProject>& project) try {
  const TypeHandle type = Lookup(name);
  if (!type) return nullptr;
  Loaded& loaded = mLoaded[type.Name()];
  if (!loaded.Project) {
    const DiagnosticScope scope(&project->Diagnostics,
                                FileSystemObject(type.File->Image->Path()).FullPath());
    project->Components.DoNotPopulate = true;
    loaded = {project, TypeBuilder(*project, mStore, type.File->Image->Size()).Build(type)};
  }
  return loaded.Module.get();
} catch (const DataError& error) {
  throw VendrelError(errInvalidFileFormat, error.what());
}
VENDREL_CONTEXT(name)

}  // namespace

void ConnectNetLoaders() {
  if (!ObjectRegistry::Has(kNetLoaderProgId))
    ObjectRegistry::Register<NetLoader>(kNetLoaderProgId, NewReflectionLoader);
  if (!ObjectRegistry::Has(kNetResolverProgId))
    ObjectRegistry::Register<NetResolver>(kNetResolverProgId,
                                          [] { return std::make_shared<ReflectionResolver>(); });
}

}  // namespace vendrel
