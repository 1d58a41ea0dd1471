#pragma once
// Names of elements as they are shown. (`ShortName` is in text/Identifiers.h.)

#include <string>

#include "model/CodeElement.h"

namespace vendrel {

/// Name of the namespace that an element, or what it belongs to, stands in; empty if none, or for
/// no element.
std::string GetObjectNamespace(const CodeElement* Element);

/// "Module.Name"; of a module its name.
std::string FullName(const CodeElement* Element);

/// The name of an element as seen from another one: the short name if the namespace of one begins
/// with that of the other, else the full name. Empty if either is missing.
std::string SmartName(const CodeElement* Element, const CodeElement* Reference);

}  // namespace vendrel
