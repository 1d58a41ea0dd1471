#include "dotnet/NetXml.h"

#include "core/Ascii.h"
#include "diagnostics/VendrelError.h"

namespace vendrel {

std::optional<std::string> AttributeOf(const XmlElement& element, std::string_view name) {
  for (const pugi::xml_attribute attribute : element.Node().attributes())
    if (EqualsNoCaseAscii(attribute.name(), name)) return attribute.value();
  return std::nullopt;
}

std::string RequiredAttribute(const XmlElement& element, std::string_view name) {
  if (std::optional<std::string> value = AttributeOf(element, name)) return *value;
  throw VendrelError(errInvalidArgument, "the element <" + element.Name() +
                                             "> of the project file needs an attribute " +
                                             std::string(name));
}

bool IsNamed(const XmlElement& element, std::string_view name) {
  return EqualsNoCaseAscii(element.Name(), name);
}

}  // namespace vendrel
