#pragma once
#include "model/Fwd.h"

namespace vendrel {

/// VB.NET: gathers the procedures that share the name of the current block under one master block.
void CollectOverloads(Component& component);

}  // namespace vendrel
