#pragma once
// What properties mean whose declarations do not say so: for documentation that is made from the
// tables of properties.

#include <string_view>

namespace vendrel {

/// A sentence or two on a property of a class: meaning, units, bounds, where the value comes from.
/// Empty for a property whose declaration in its header tells that.
std::string_view MeaningOf(std::string_view className, std::string_view property);

}  // namespace vendrel
