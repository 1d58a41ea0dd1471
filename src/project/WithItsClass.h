#pragma once
// Use of an element as an object of its own class, whichever that is.

#include <type_traits>

#include "project/Assembly.h"
#include "project/VBProjectGroup.h"

namespace vendrel {

/// Calls `use` with the element if objects of that class are elements.
template <typename Class, typename Use>
void UseAs(const CodeElement& element, Use& use) {
  if constexpr (std::is_base_of_v<CodeElement, Class>) use(static_cast<const Class&>(element));
}

/// Calls `use` with the element as an object of its own class.
template <typename Use>
void WithItsClass(const CodeElement& element, Use use) {
  switch (element.Kind()) {
#define VENDREL_CASE(Class, word, named, scope)                                                    \
  case ElementKind::Class: return UseAs<Class>(element, use);
    VENDREL_ELEMENT_KINDS(VENDREL_CASE)
#undef VENDREL_CASE
    case ElementKind::None: return;
  }
}

}  // namespace vendrel
