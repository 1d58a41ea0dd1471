#pragma once
// How foreign code fills a project: an object reached by its ProgID, from this process or from a
// shared library.

#include <cstdint>
#include <string_view>

namespace vendrel {

class VBProject;

/// Fills projects from a source that only it understands.
class NetLoader {
 public:
  virtual ~NetLoader() = default;
  /// Reads `data`, a path or any text, and populates the project through its `net` factories.
  virtual void LoadVBProject(VBProject& project, std::string_view data) = 0;
};

/// Version of this interface: `NetLoader`, the factories, and the layout of the tree they fill.
inline constexpr std::int32_t kNetLoaderVersion = 1;

/// ProgIDs of the library's own objects.
inline constexpr std::string_view kNetLoaderProgId = "VendrelReflectionLoader.Loader";
inline constexpr std::string_view kNetResolverProgId = "VendrelReflectionLoader.Resolver";

/// The module that holds all delegates of a project.
inline constexpr std::string_view kDelegatesModule = "__Delegates";

/// The one entry point of a shared library of loaders. It gives the version of the interface that
/// it was built for, and puts a new loader of that ProgID into `*loader` where `version` is that
/// version and the ProgID is one of its own.
using NetLoaderEntry = std::int32_t (*)(std::int32_t version, const char* progId,
                                        NetLoader** loader);
/// The name under which a shared library exports it.
inline constexpr const char* kNetLoaderEntryName = "VendrelModelCreateLoader";

}  // namespace vendrel
