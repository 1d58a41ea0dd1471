#pragma once
// The write table: projects of growing size, from tree to disk.

#include "bench/Load.h"

namespace vendrel::bench {

/// Measures and prints the table: writing beside copying the same files. Gives 0.
int RunWrite(const LoadOptions& options);

}  // namespace vendrel::bench
