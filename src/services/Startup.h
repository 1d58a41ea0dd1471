#pragma once

namespace vendrel {

/// What happens once a workspace, before anything else: the state gets its start values and the one
/// persisted setting is read. Every entry into the library calls it; only the first call acts.
void EnsureStarted();

/// Lets references and files ask type libraries for names and ids, and registers the service that
/// opens them. Part of the start; stands with the reader of libraries.
void ConnectLibraryReaders();

/// Registers the loader and the resolver of assemblies, unless a host has put its own in their
/// place. Part of the start; stands with the reader of assemblies.
void ConnectNetLoaders();

}  // namespace vendrel
