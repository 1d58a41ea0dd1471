#pragma once
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "model/Fwd.h"

namespace vendrel {

/// Resolves .NET type names; an outside object, reached by the ProgID
/// "VendrelReflectionLoader.Resolver".
class NetResolver {
 public:
  virtual ~NetResolver() = default;
  /// Makes an assembly known, by path or name.
  virtual void addassembly(std::string_view assembly) = 0;
  /// A project-wide import.
  virtual void addglobalnamespace(std::string_view name) = 0;
  /// An import of the file now scanned.
  virtual void addnamespace(std::string_view name) = 0;
  /// Forgets the imports of the file.
  virtual void clearnamespaces() = 0;
  /// Full .NET name of a type, given assemblies and imports.
  virtual std::string resolvedtypename(std::string_view name) = 0;
  /// False where no type of any namespace has this word, case ignored, behind its last dot: then
  /// nothing else need be asked. True where that is not known.
  virtual bool mayhavetype(std::string_view /*word*/) { return true; }
  /// Folders (of this machine) in which assemblies are sought.
  virtual void searchfolders(const std::vector<std::string>& /*folders*/) {}
  /// Builds a type in the given project; null if unknown.
  virtual Component* loadtype(std::string_view name, const std::shared_ptr<VBProject>& project) = 0;
};

}  // namespace vendrel
