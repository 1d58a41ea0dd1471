#pragma once

namespace vendrel {

/// What happens once a workspace, before anything else: the state gets its start values and the one
/// persisted setting is read. Every entry into the library calls it; only the first call acts.
void EnsureStarted();

}  // namespace vendrel
