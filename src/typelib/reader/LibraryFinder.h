#pragma once
// Where the types of other libraries come from.

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "typelib/reader/TypeReference.h"

namespace vendrel::typelib {

class TypeLibInfo;

/// Finds the library that an import names. Libraries found belong to the finder.
class LibraryFinder {
 public:
  virtual ~LibraryFinder() = default;
  /// The library, or null. `importer` is the one that holds the import.
  virtual const TypeLibInfo* Find(const LibraryImport& import, const TypeLibInfo& importer) = 0;
};

/// Native path of the file that settings name for a library, empty if they name none: library id
/// in braces, major and minor version, language.
using SettingsLookUp = std::function<std::string(const std::string& libraryId, int majorVersion,
                                                 int minorVersion, unsigned lcid)>;

/// Looks in the settings, then for the stored leaf name beside the importing file and in the search
/// path, then there for any file that holds a library of that id. Each folder is listed once and
/// each library opened once.
class FileLibraryFinder final : public LibraryFinder {
 public:
  explicit FileLibraryFinder(std::vector<std::string> searchPath = {}, SettingsLookUp settings = {},
                             std::string codePage = {});
  ~FileLibraryFinder() override;

  const TypeLibInfo* Find(const LibraryImport& import, const TypeLibInfo& importer) override;

 private:
  struct Folder {
    /// Folded leaf name to path.
    std::map<std::string, std::string> Files;
    /// Library id to path, made when a leaf name did not help.
    std::map<std::string, std::string> ById;
    bool Scanned = false;
  };

  const TypeLibInfo* OpenChecked(const std::string& path, const Guid& id);
  const TypeLibInfo* Open(const std::string& path);
  std::vector<std::string> FoldersFor(const TypeLibInfo& importer) const;
  Folder& ListFolder(const std::string& path);
  void ScanFolder(Folder& folder);
  const TypeLibInfo* Search(const LibraryImport& import, const TypeLibInfo& importer);

  std::vector<std::string> mSearchPath;
  SettingsLookUp mSettings;
  std::string mCodePage;
  std::map<std::string, std::shared_ptr<TypeLibInfo>> mOpened;
  std::map<std::string, Folder> mFolders;
  std::map<std::string, const TypeLibInfo*> mFound;
};

}  // namespace vendrel::typelib
