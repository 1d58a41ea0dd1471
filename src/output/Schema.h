#pragma once
// What a dump of the tree may hold, as definitions of a JSON Schema (2020-12), made from what the
// classes say of themselves.

#include <nlohmann/json.hpp>

namespace vendrel {

/// The definitions ("$defs") of all classes, of code lines and of properties of controls.
nlohmann::ordered_json SchemaOfClasses();

}  // namespace vendrel
