#pragma once
// What project files of VB.NET need of XML: elements alone count as children, names of attributes
// are looked up without regard to case.

#include <optional>
#include <string>
#include <string_view>

#include "output/Xml.h"

namespace vendrel {

/// The value of an attribute; nothing where there is none.
std::optional<std::string> AttributeOf(const XmlElement& element, std::string_view name);

/// The same; raises 5 and says what is missing where there is none.
std::string RequiredAttribute(const XmlElement& element, std::string_view name);

/// Whether an element has that name, case ignored.
bool IsNamed(const XmlElement& element, std::string_view name);

}  // namespace vendrel
