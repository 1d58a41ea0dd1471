#include "dotnet/metadata/AssemblyStore.h"

#include <algorithm>

#include "core/CaseFold.h"
#include "diagnostics/VendrelError.h"
#include "dotnet/metadata/MetadataLimits.h"
#include "services/FileSource.h"
#include "services/FileSystemObject.h"

namespace vendrel::metadata {
namespace {

// Where an installed Mono keeps its libraries.
constexpr std::string_view kMonoFolders[] = {"/usr/lib/mono/4.5", "/usr/lib/mono/4.5/Facades",
                                             "/usr/local/lib/mono/4.5",
                                             "/usr/local/lib/mono/4.5/Facades"};
constexpr std::string_view kMonoCaches[] = {"/usr/lib/mono/gac", "/usr/local/lib/mono/gac"};
// Names under which the core types go in different systems.
constexpr std::string_view kCoreNames[] = {"mscorlib", "System.Private.CoreLib", "System.Runtime",
                                           "netstandard"};
constexpr std::string_view kExtensions[] = {".dll", ".exe", ".winmd"};

bool IsCoreName(std::string_view name) {
  return std::any_of(std::begin(kCoreNames), std::end(kCoreNames),
                     [&](std::string_view core) { return EqualsNoCase(core, name); });
}

// A name that could lead out of its folder names no file.
bool IsPlainName(std::string_view name) {
  return !name.empty() && name.size() < 256 &&
         name.find_first_of("/\\:") == std::string_view::npos &&
         std::none_of(name.begin(), name.end(), [](char c) { return c >= 0 && c < ' '; });
}

std::string FolderOf(const std::string& nativePath) {
  const std::size_t slash = nativePath.rfind('/');
  return slash == std::string::npos ? std::string() : nativePath.substr(0, slash);
}

std::string KeyOf(const AssemblyIdentity& identity, const std::string& folder) {
  return FoldKey(identity.Name) + " " + identity.VersionText() + " " + folder;
}

// For a person: sources name assemblies without a version.
std::string ShownIdentity(const AssemblyIdentity& identity) {
  const std::string name = CleanName(identity.Name);
  const bool isAnyVersion = std::all_of(std::begin(identity.Version), std::end(identity.Version),
                                        [](auto part) { return part == 0; });
  return isAnyVersion ? name : name + " " + identity.VersionText();
}

std::uint64_t VersionNumber(const AssemblyIdentity& identity) {
  std::uint64_t number = 0;
  for (const std::uint16_t part : identity.Version) number = number << 16 | part;
  return number;
}

}  // namespace

const AssemblyFile* AssemblyStore::Open(const std::string& nativePath) {
  if (const auto known = mByPath.find(nativePath); known != mByPath.end() && known->second)
    return known->second;
  return Add(OpenImage(nativePath));
}

const AssemblyFile* AssemblyStore::Add(std::shared_ptr<const Image> image) {
  if (mFiles.size() >= kMaxAssemblies)
    throw VendrelError(errInvalidFileFormat, "too many assemblies refer to each other");
  mFiles.push_back(std::make_unique<AssemblyFile>(std::move(image)));
  const AssemblyFile* file = mFiles.back().get();
  mByPath[file->Image->Path()] = file;
  return file;
}

const AssemblyFile* AssemblyStore::Reference(const AssemblyFile& from, std::uint32_t row) {
  return Named(from.Image->Reference(row), FolderOf(from.Image->Path()));
}

const AssemblyFile* AssemblyStore::Named(const AssemblyIdentity& identity,
                                         const std::string& folder) {
  const std::string key = KeyOf(identity, folder);
  if (const auto known = mByIdentity.find(key); known != mByIdentity.end()) return known->second;
  const AssemblyFile* file = IsPlainName(identity.Name) ? Search(identity, folder) : nullptr;
  if (!file && IsCoreName(identity.Name)) {
    AssemblyIdentity core = identity;
    core.Name = kCoreNames[0];
    file = Search(core, folder);
  }
  mByIdentity[key] = file;
  if (!file && OnMissing) OnMissing(ShownIdentity(identity));
  return file;
}

// The version asked for, else the highest; of equal ones the first that is met.
const AssemblyFile* AssemblyStore::Search(const AssemblyIdentity& identity,
                                          const std::string& folder) {
  const AssemblyFile* best = nullptr;
  std::uint64_t bestVersion = 0;
  for (const std::string& each : FoldersFor(folder, identity.Name)) {
    const AssemblyFile* file = TryOpen(each, identity.Name);
    if (!file) continue;
    const AssemblyIdentity found = file->Image->Identity();
    if (!EqualsNoCase(found.Name, identity.Name)) continue;
    if (VersionNumber(found) == VersionNumber(identity)) return file;
    if (best && VersionNumber(found) <= bestVersion) continue;
    best = file;
    bestVersion = VersionNumber(found);
  }
  return best;
}

std::vector<std::string> AssemblyStore::FoldersFor(const std::string& folder,
                                                   const std::string& name) const {
  std::vector<std::string> folders;
  if (!folder.empty()) folders.push_back(folder);
  folders.insert(folders.end(), mFolders.begin(), mFolders.end());
  folders.insert(folders.end(), std::begin(kMonoFolders), std::end(kMonoFolders));
  for (const std::string_view cache : kMonoCaches) {
    const std::string versions = std::string(cache) + "/" + name;
    std::vector<FolderEntry> entries;
    if (FileSource::Current().List(versions, entries) != 0) continue;
    for (const FolderEntry& entry : entries) folders.push_back(versions + "/" + entry.Name);
  }
  return folders;
}

const AssemblyFile* AssemblyStore::TryOpen(const std::string& folder, const std::string& name) {
  for (const std::string_view extension : kExtensions) {
    const std::string path = folder + "/" + name + std::string(extension);
    if (const auto known = mByPath.find(path); known != mByPath.end()) {
      if (known->second) return known->second;
      continue;
    }
    const AssemblyFile* file = nullptr;
    try {
      const FileSystemObject place(path);
      if (place.Exists() && !place.IsFolder()) file = Open(place.NativePath());
    } catch (const VendrelError&) {
      // A file of that name that is no assembly: another may follow.
    }
    mByPath[path] = file;
    if (file) return file;
  }
  return nullptr;
}

const AssemblyFile* AssemblyStore::Module(const AssemblyFile& from, std::string_view name) {
  if (!IsPlainName(name)) return nullptr;
  const std::string path = FolderOf(from.Image->Path()) + "/" + std::string(name);
  if (const auto known = mByPath.find(path); known != mByPath.end()) return known->second;
  const AssemblyFile* file = nullptr;
  try {
    const FileSystemObject place(path);
    if (place.Exists() && !place.IsFolder()) file = Open(place.NativePath());
  } catch (const VendrelError&) {
    // Told below like one that is not there.
  }
  if (!file && OnMissing) OnMissing("module " + CleanName(name));
  return mByPath[path] = file;
}

TypeHandle AssemblyStore::Resolve(const AssemblyFile& from, Token type, int depth) {
  if (!type || depth > kMaxNesting) return {};
  if (type.Of == tTypeDef) return {&from, type.Row};
  if (type.Of != tTypeRef) return {};
  const Image& image = *from.Image;
  const std::string_view name = image.Text(tTypeRef, 1, type.Row);
  const std::string_view space = image.Text(tTypeRef, 2, type.Row);
  const Token scope = image.Tables().Coded(tTypeRef, 0, type.Row, cResolutionScope);
  if (scope.Of == tTypeRef) {
    const TypeHandle around = Resolve(from, scope, depth + 1);
    if (!around) return {};
    for (const std::uint32_t nested : around.File->Image->NestedIn(around.Row))
      if (around.File->Image->Text(tTypeDef, 1, nested) == name) return {around.File, nested};
    return {};
  }
  const AssemblyFile* file = &from;
  if (scope && scope.Of == tAssemblyRef) file = Reference(from, scope.Row);
  if (scope && scope.Of == tModuleRef) file = Module(from, image.Text(tModuleRef, 0, scope.Row));
  return file ? Find(*file, space, name, 0) : TypeHandle{};
}

TypeHandle AssemblyStore::Find(const AssemblyFile& file, std::string_view space,
                               std::string_view name, int depth) {
  const Image& image = *file.Image;
  if (const std::uint32_t row = image.FindType(space, name)) return {&file, row};
  const std::uint32_t exported = depth < kMaxForwards ? image.FindExported(space, name) : 0;
  if (exported == 0) return {};
  const Token other = image.Tables().Coded(tExportedType, 4, exported, cImplementation);
  const AssemblyFile* owner = nullptr;
  if (other.Of == tAssemblyRef && other) owner = Reference(file, other.Row);
  if (other.Of == tFile && other) owner = Module(file, image.Text(tFile, 1, other.Row));
  return owner ? Find(*owner, space, name, depth + 1) : TypeHandle{};
}

TypeHandle AssemblyStore::FindByFullName(const AssemblyFile& file, std::string_view name) {
  // Every dot may part the namespace from the type or a type from one nested in it.
  for (std::size_t dot = name.rfind('.');; dot = name.rfind('.', dot - 1)) {
    const bool isWhole = dot == std::string_view::npos;
    const std::string_view space = isWhole ? std::string_view() : name.substr(0, dot);
    std::string_view rest = isWhole ? name : name.substr(dot + 1);
    TypeHandle type = Find(file, space, rest.substr(0, rest.find('.')));
    while (type && rest.find('.') != std::string_view::npos) {
      rest.remove_prefix(rest.find('.') + 1);
      TypeHandle inner;
      for (const std::uint32_t nested : type.File->Image->NestedIn(type.Row))
        if (type.File->Image->Text(tTypeDef, 1, nested) == rest.substr(0, rest.find('.')))
          inner = {type.File, nested};
      type = inner;
    }
    if (type || isWhole || dot == 0) return type;
  }
}

}  // namespace vendrel::metadata
