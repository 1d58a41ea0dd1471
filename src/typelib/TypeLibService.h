#pragma once
// The type library reading service: how the system comes to the library behind a path. It is looked
// up by its ProgID, so a host can put an object of its own in its place.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "services/FileSystemObject.h"
#include "typelib/reader/TypeLibInfo.h"

namespace vendrel {

inline constexpr std::string_view kTypeLibProgId = "TLI.TLIApplication";

/// Opens type libraries.
class TLIApplication {
 public:
  virtual ~TLIApplication() = default;

  /// Folders (paths of this machine) in which libraries that others refer to are sought.
  std::vector<std::string> SearchPath;

  /// The library of a file, by a path in Windows form or of this machine; `\2` behind it picks the
  /// second of a compiled file. Raises, or gives null, where there is none.
  virtual std::shared_ptr<const typelib::TypeLibInfo> TypeLibInfoFromFile(
      const std::string& Path) = 0;
  /// Name of that library, without reading its types where that is possible.
  virtual std::string LibraryName(const std::string& Path);

  /// The code page of the texts of all libraries from now on, as `TypeLibOptions::CodePage`.
  static std::string& TextPage();
  /// A new object of the service that is registered: this system's own unless a host has put
  /// another in its place.
  static std::shared_ptr<TLIApplication> New();
};

/// Registers this system's own service, unless a host has put another in its place, and lets files
/// and references of the workspace in use ask libraries for ids and names.
void ConnectLibraryReaders();

/// The numbers of the version block of a compiled file with a delimiter between them: "5.1.2600.0".
/// Empty if there is no such file or block.
std::string FileVersion(const FileSystemObject& file, std::string_view delimiter = ".");

}  // namespace vendrel
