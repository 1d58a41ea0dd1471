#pragma once

namespace vendrel {

/// From now on error reports show elements with all of their own properties, or no longer. For a
/// host that looks for a fault: taking them costs time while a failure passes.
void TraceElementsWhole(bool whole);

}  // namespace vendrel
