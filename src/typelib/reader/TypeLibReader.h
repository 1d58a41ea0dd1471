#pragma once
// Opening a type library: a bare file of either format, or a resource of a compiled file.

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "services/ByteSource.h"
#include "typelib/reader/TypeLibInfo.h"

namespace vendrel::typelib {

struct TypeLibOptions {
  /// Code page of the texts, as `CodePage::Find` takes it. Empty: that of the library's language;
  /// "auto": that one too, unless the bytes of the texts tell otherwise.
  std::string CodePage;
  /// Where types of other libraries are sought; null: nowhere.
  std::shared_ptr<LibraryFinder> Finder;
  /// Keeps account of the bytes read, for `TypeLibInfo::Coverage`.
  bool CheckCoverage = false;
  /// Name, id, version and help of the library alone, without its types.
  bool HeaderOnly = false;
};

/// Opens the library of a native path. `\2` or `/2` behind the path picks the resource of that
/// number; without it number 1 is taken. Raises VendrelError 53 when there is no such file, 70 or
/// 75 when it cannot be read, 321 when it holds no library or one whose header is damaged. Damage
/// further in is told in `Messages`.
std::shared_ptr<TypeLibInfo> TypeLibInfoFromFile(const std::string& path,
                                                 const TypeLibOptions& options = {});

/// The same of a file in memory, compiled or bare; `resourceId` 0 stands for 1.
std::shared_ptr<TypeLibInfo> TypeLibInfoFromBytes(std::span<const std::uint8_t> file,
                                                  const TypeLibOptions& options = {},
                                                  int resourceId = 0);

/// Whether a file is a library, or a compiled file with one in it. Raises where it cannot be read,
/// or is a damaged compiled file.
bool HoldsTypeLibrary(ByteSource& file);

/// Numbers of the libraries that a compiled file holds, as stored; empty for other files.
std::vector<int> TypeLibResourceIds(const std::string& path);

/// Library id in braces and upper case of the file, empty when it holds no library. Never fails.
std::string ReadLibraryId(const std::string& nativePath);

/// "5.1.2600.0": the four numbers of a compiled file's version block with `delimiter` between them;
/// empty when it has none. Never fails.
std::string ReadFileVersion(const std::string& nativePath, const std::string& delimiter = ".");

}  // namespace vendrel::typelib
