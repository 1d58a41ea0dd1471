#include "model/CodeElement.h"

#include "core/Ascii.h"
#include "diagnostics/VendrelError.h"

namespace vendrel {

void CodeElement::SetDescription(std::string_view) {
  throw VendrelError(errReadOnlyProperty, std::string(ClassName()) + ".Description");
}

bool TypeMatch(const CodeElement* element, std::string_view className) {
  return element && EqualsNoCaseAscii(element->ClassName(), className);
}

}  // namespace vendrel
