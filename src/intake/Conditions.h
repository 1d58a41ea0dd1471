#pragma once
#include <string_view>

#include "model/Fwd.h"

namespace vendrel {

struct ModuleIntake;

/// What a directive does to the open conditions and the constants of the module.
void UpdateConditions(Component& component, ModuleIntake& intake, std::string_view statement);

}  // namespace vendrel
