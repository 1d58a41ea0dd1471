#pragma once
// The library's own loader of assemblies, for those who want more than a project of one.

#include <memory>
#include <string>
#include <vector>

#include "dotnet/metadata/AssemblyStore.h"

namespace vendrel {

class NetLoader;
class VBProject;

/// A store that looks in those folders (of this machine) and tells what it does not find as a
/// diagnostic of the load at hand.
std::shared_ptr<metadata::AssemblyStore> NewAssemblyStore(const std::vector<std::string>& folders);

/// A loader such as the library registers.
std::shared_ptr<NetLoader> NewReflectionLoader();

/// Fills a project from the types of a file. Raises 53, 75 or 321.
void LoadAssembly(VBProject& project, const std::string& nativePath);

/// Takes the loader of that ProgID from a shared library, for `VBProject::LoadFromCustom`. Raises
/// 429, and says why, where the library cannot be loaded, has no entry point, was built for another
/// version of the interface or does not know the ProgID. Runs code of that library: never called
/// because a project names one.
void UseLoaderLibrary(const std::string& nativePath, const std::string& progId);

/// Registers the loader and the resolver of assemblies in the workspace in use, unless a host has
/// put its own in their place.
void ConnectNetLoaders();
/// The same for the loader of project files with a root `Project`.
void ConnectMSBuildLoader();

}  // namespace vendrel
