#pragma once
// What loads of assemblies and of sets share.

#include <memory>
#include <pugixml.hpp>
#include <string_view>

#include "project/Assembly.h"

namespace vendrel {

/// The attribute of that name, case ignored; an empty one if there is none.
pugi::xml_attribute AttributeOf(const pugi::xml_node& element, std::string_view name);

/// The project for an assembly that is about to be loaded: as its set makes them.
std::shared_ptr<VBProject> NewProjectFor(const Assembly& assembly);

/// The modules of a project as they are listed, loaded or not; nothing is loaded.
inline const KeyedCollection<Component>& TypesOf(const VBProject& project) {
  return project.Components.Listed();
}

}  // namespace vendrel
