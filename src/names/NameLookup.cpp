#include "names/NameLookup.h"

#include "core/CaseFold.h"
#include "model/Component.h"
#include "model/Namespace.h"
#include "text/Identifiers.h"

namespace vendrel {
namespace {

std::string NameOf(const Namespace* space) { return space ? space->Name : std::string(); }

std::string NamespaceOfModule(const CodeElement* element) {
  const Component* component = element ? element->OwnComponent() : nullptr;
  return component ? NameOf(component->Namespace.Get()) : std::string();
}

const CodeElement* ParentOf(const CodeElement* element) {
  if (const auto* variable = As<Variable>(element)) return variable->Parent.Get();
  if (const auto* parameter = As<Parameter>(element)) return parameter->Parent.Get();
  return nullptr;
}

}  // namespace

std::string GetObjectNamespace(const CodeElement* Element) {
  if (const auto* component = As<Component>(Element)) return NameOf(component->Namespace.Get());
  if (const auto* block = As<Block>(Element)) return NameOf(block->Namespace());
  const std::string name = NamespaceOfModule(Element);
  return name.empty() ? NamespaceOfModule(ParentOf(Element)) : name;
}

std::string FullName(const CodeElement* Element) {
  if (!Element) return {};
  const Component* component = Element->OwnComponent();
  if (!component || component == Element) return Element->ElementName();
  return component->Name + "." + Element->ElementName();
}

std::string SmartName(const CodeElement* Element, const CodeElement* Reference) {
  if (!Element || !Reference) return {};
  const std::string own = FoldKey(GetObjectNamespace(Element));
  const std::string other = FoldKey(GetObjectNamespace(Reference));
  if (own.starts_with(other) || other.starts_with(own))
    return std::string(ShortName(Element->ElementName()));
  return FullName(Element);
}

}  // namespace vendrel
