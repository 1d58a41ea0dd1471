#pragma once
// Files read side by side before they are asked for.

#include <string>
#include <vector>

namespace vendrel {

/// Has these native paths read into the `SourceCache` of the workspace in use, on `Workspace.Jobs`
/// threads in all. Does nothing with one thread, or where the file source in force is not to be
/// called by several. A file that cannot be read is left to whoever asks for it. To be called while
/// a `SourceCache::Scope` is open.
void ReadSourcesAhead(const std::vector<std::string>& nativePaths);

}  // namespace vendrel
