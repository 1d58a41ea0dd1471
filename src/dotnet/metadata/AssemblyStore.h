#pragma once
// The files that refer to each other, opened once each, and the types that stand behind references.

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "dotnet/metadata/MetadataSignatures.h"

namespace vendrel::metadata {

/// One opened file.
struct AssemblyFile {
  explicit AssemblyFile(std::shared_ptr<const metadata::Image> image)
      : Image(std::move(image)), Types(*Image) {}
  std::shared_ptr<const metadata::Image> Image;
  Signatures Types;
};

/// A type of a file; row 0: none.
struct TypeHandle {
  const AssemblyFile* File = nullptr;
  std::uint32_t Row = 0;
  explicit operator bool() const { return Row != 0; }
  bool operator==(const TypeHandle&) const = default;
  auto operator<=>(const TypeHandle&) const = default;
  /// "Shop.List`1.Node"
  const std::string& Name() const { return File->Types.Names().Of({tTypeDef, Row}); }
};

/// Opens files and follows references. What cannot be found is told once and not sought again.
class AssemblyStore {
 public:
  /// `folders` (of this machine) are searched behind the folder of the referring file and in front
  /// of those of an installed Mono.
  explicit AssemblyStore(std::vector<std::string> folders = {}) : mFolders(std::move(folders)) {}

  /// Called with name and version of each assembly that is not found.
  std::function<void(const std::string&)> OnMissing;

  /// Raises 53, 75 or 321.
  const AssemblyFile* Open(const std::string& nativePath);
  const AssemblyFile* Add(std::shared_ptr<const Image> image);
  /// The assembly behind a row of AssemblyRef; null if it is not found.
  const AssemblyFile* Reference(const AssemblyFile& from, std::uint32_t row);
  /// By name, as a reference in a file of `folder` would be found; null if it is not.
  const AssemblyFile* Named(const AssemblyIdentity& identity, const std::string& folder);
  /// The definition behind a row of TypeDef or TypeRef.
  TypeHandle Resolve(const AssemblyFile& from, Token type) { return Resolve(from, type, 0); }
  /// A type by its name, also where the file only says who else has it.
  TypeHandle Find(const AssemblyFile& file, std::string_view space, std::string_view name) {
    return Find(file, space, name, 0);
  }
  /// The same by a dotted name, types around it included.
  TypeHandle FindByFullName(const AssemblyFile& file, std::string_view name);

 private:
  TypeHandle Resolve(const AssemblyFile& from, Token type, int depth);
  TypeHandle Find(const AssemblyFile& file, std::string_view space, std::string_view name,
                  int depth);
  const AssemblyFile* Search(const AssemblyIdentity& identity, const std::string& folder);
  const AssemblyFile* TryOpen(const std::string& folder, const std::string& name);
  const AssemblyFile* Module(const AssemblyFile& from, std::string_view name);
  std::vector<std::string> FoldersFor(const std::string& folder, const std::string& name) const;

  std::vector<std::string> mFolders;
  std::vector<std::unique_ptr<AssemblyFile>> mFiles;
  std::unordered_map<std::string, const AssemblyFile*> mByPath, mByIdentity;
};

}  // namespace vendrel::metadata
