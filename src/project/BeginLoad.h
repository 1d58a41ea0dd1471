#pragma once

namespace vendrel {

/// What starts anew with each load of a project, whatever its language: the counters of the state
/// in use, and what is known of the disk.
void BeginLoad();

}  // namespace vendrel
