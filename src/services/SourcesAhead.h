#pragma once
// Files read side by side before they are asked for.

#include <string>
#include <vector>

namespace vendrel {

/// Has these native paths read into the `SourceCache` of the workspace in use, on `Workspace.Jobs`
/// threads in all. Does nothing with one thread, where the file source in force is not to be called
/// by several, or while no `SourceCache::Scope` is open. A file that cannot be read is left to
/// whoever asks for it.
void ReadSourcesAhead(const std::vector<std::string>& nativePaths);

}  // namespace vendrel
