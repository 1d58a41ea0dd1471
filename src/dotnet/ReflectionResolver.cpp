// The resolver of type names over assemblies that the library registers.

#include <unordered_map>

#include "core/CaseFold.h"
#include "core/ObjectRegistry.h"
#include "diagnostics/Context.h"
#include "dotnet/Assemblies.h"
#include "dotnet/TypeBuilder.h"
#include "services/Startup.h"

namespace vendrel {

namespace {

using namespace metadata;

// The types of one file that others can use, by their folded full names.
class TypeIndex {
 public:
  explicit TypeIndex(const AssemblyFile& file) : mFile(&file) {
    const Image& image = *file.Image;
    for (std::uint32_t row = 2; row <= image.Tables().Rows(tTypeDef); ++row) try {
        if (!IsHiddenType(image, row) && IsVisibleType(image, row))
          mRows.emplace(FoldKey(TypeHandle{&file, row}.Name()), row);
      } catch (const DataError&) {
        // A type whose name cannot be read is not asked for.
      }
  }
  TypeHandle Find(const std::string& folded) const {
    const auto found = mRows.find(folded);
    return found == mRows.end() ? TypeHandle{} : TypeHandle{mFile, found->second};
  }
  const AssemblyFile& File() const { return *mFile; }

 private:
  const AssemblyFile* mFile;
  std::unordered_map<std::string, std::uint32_t> mRows;
};

class ReflectionResolver final : public NetResolver {
 public:
  ReflectionResolver() : mStore(NewAssemblyStore({})) {}

  void searchfolders(const std::vector<std::string>& folders) override {
    if (mIndexes.empty() && !mHasCore) mStore = NewAssemblyStore(folders);
  }
  void addassembly(std::string_view assembly) override;
  void addglobalnamespace(std::string_view name) override {
    mGlobal.emplace_back(name);
    Forget();
  }
  void addnamespace(std::string_view name) override {
    mOfFile.emplace_back(name);
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
  Component* loadtype(std::string_view name, const std::shared_ptr<VBProject>& project) override;

 private:
  struct Loaded {
    std::shared_ptr<VBProject> Project;
    std::shared_ptr<Component> Module;
  };
  void Know(const AssemblyFile* file) {
    if (!file) return;
    for (const TypeIndex& index : mIndexes)
      if (&index.File() == file) return;
    mIndexes.emplace_back(*file);
    Forget();
  }
  // Answers hold for the assemblies and imports that they were given with.
  void Forget() {
    mAsked.clear();
    mHere = nullptr;
  }
  TypeHandle LookupWhole(std::string_view name);
  TypeHandle Search(std::string_view name);
  TypeHandle Lookup(std::string_view name);

  std::shared_ptr<AssemblyStore> mStore;
  std::vector<TypeIndex> mIndexes;
  std::vector<std::string> mGlobal, mOfFile;
  // By the imports of a file, then by name; empty: there is none.
  std::unordered_map<std::string, std::unordered_map<std::string, TypeHandle>> mAsked;
  std::unordered_map<std::string, TypeHandle>* mHere = nullptr;  // of the imports in force
  std::unordered_map<std::string, Loaded> mLoaded;
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

TypeHandle ReflectionResolver::LookupWhole(std::string_view name) {
  const std::string folded = FoldKey(name);
  for (const TypeIndex& index : mIndexes) {
    if (const TypeHandle type = index.Find(folded)) return type;
    // A file may say that another has the type now.
    if (const TypeHandle type = mStore->FindByFullName(index.File(), name);
        type && IsVisibleType(*type.File->Image, type.Row))
      return type;
  }
  return {};
}

// The same names are asked for in one place of a file after the other.
TypeHandle ReflectionResolver::Lookup(std::string_view name) {
  if (name.empty()) return {};
  if (!mHasCore) {
    mHasCore = true;
    AssemblyIdentity core;
    core.Name = "mscorlib";
    Know(mStore->Named(core, {}));
  }
  if (!mHere) {
    std::string imports;
    for (const std::string& space : mOfFile) imports.append(space).append("\n");
    mHere = &mAsked[imports];
  }
  std::string key(name);
  if (const auto known = mHere->find(key); known != mHere->end()) return known->second;
  return mHere->emplace(std::move(key), Search(name)).first->second;
}

// The name as it is, then behind each import of the file and of the project.
TypeHandle ReflectionResolver::Search(std::string_view name) {
  if (const TypeHandle type = LookupWhole(name)) return type;
  for (const auto* imports : {&mOfFile, &mGlobal})
    for (const std::string& space : *imports)
      if (const TypeHandle type = LookupWhole(space + "." + std::string(name))) return type;
  return {};
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
