// Loaders in shared libraries.

#include <dlfcn.h>

#include "core/ObjectRegistry.h"
#include "diagnostics/Context.h"
#include "dotnet/Assemblies.h"
#include "project/NetLoader.h"

namespace vendrel {
namespace {

[[noreturn]] void Refuse(const std::string& path, const std::string& reason) {
  throw VendrelError(errCannotCreate, path + ": " + reason);
}

std::shared_ptr<NetLoader> NewLoader(NetLoaderEntry entry, const std::string& progId) {
  NetLoader* loader = nullptr;
  entry(kNetLoaderVersion, progId.c_str(), &loader);
  return std::shared_ptr<NetLoader>(loader);
}

}  // namespace

void UseLoaderLibrary(const std::string& nativePath, const std::string& progId) try {
  // Stays for the life of the process: the objects that it makes may outlive every caller.
  void* library = dlopen(nativePath.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!library) {
    const char* reason = dlerror();
    Refuse(nativePath, reason ? reason : "cannot be loaded");
  }
  const auto entry = reinterpret_cast<NetLoaderEntry>(dlsym(library, kNetLoaderEntryName));
  if (!entry)
    Refuse(nativePath, std::string("has no entry point ") + kNetLoaderEntryName +
                           "; it is no library of loaders");
  NetLoader* none = nullptr;
  const std::int32_t version = entry(kNetLoaderVersion, "", &none);
  delete none;
  if (version != kNetLoaderVersion)
    Refuse(nativePath, "speaks version " + std::to_string(version) +
                           " of the interface of loaders, this is version " +
                           std::to_string(kNetLoaderVersion) + "; build it anew");
  if (!NewLoader(entry, progId)) Refuse(nativePath, "has no loader " + progId);
  ObjectRegistry::Register<NetLoader>(progId, [entry, progId] { return NewLoader(entry, progId); });
}
VENDREL_CONTEXT(nativePath, progId)

}  // namespace vendrel
