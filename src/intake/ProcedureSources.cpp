#include "intake/ProcedureSources.h"

#include "core/Ascii.h"

namespace vendrel {
namespace {

// Bytes of the longest name that the language allows, 255 characters.
constexpr std::size_t kLongestName = 4 * 255;

CodeElement* NamedSource(Component& component, std::string_view prefix) {
  if (VBControl* control = component.AllVBControls.Item(prefix)) return control;
  Block* declarations = component.Blocks.FirstOfType(btDeclarations);
  if (!declarations || !declarations->Variables.IfAny()) return nullptr;
  Variable* variable = declarations->Variables->Item(prefix);
  return variable && variable->IsWithEvents ? variable : nullptr;
}

CodeElement* SourceOf(Component& component, std::string_view prefix) {
  const std::string_view header = component.EventProcedureHeader();
  if (!header.empty() && EqualsNoCaseAscii(prefix, header.substr(0, header.size() - 1)))
    return &component;
  return NamedSource(component, prefix);
}

// Calls `found` with the parts of a name that may be a source, the longest first, until it is true.
template <typename Found>
void ForEachPrefix(std::string_view name, bool longest, Found found) {
  if (!longest) {
    const std::size_t first = name.find('_');
    if (first != std::string_view::npos) found(name.substr(0, first));
    return;
  }
  std::size_t at = name.rfind('_', kLongestName);
  while (at != std::string_view::npos && at > 0 && !found(name.substr(0, at)))
    at = name.rfind('_', at - 1);
}

}  // namespace

std::string_view InterfaceOfName(Component& component, std::string_view name, bool longest) {
  std::string_view interface;
  if (component.Interfaces.Count() == 0) return interface;
  ForEachPrefix(name, longest, [&](std::string_view prefix) {
    if (component.Interfaces.HasKey(prefix)) {
      interface = prefix;
      return true;
    }
    return longest && NamedSource(component, prefix) != nullptr;
  });
  return interface;
}

CodeElement* EventSourceOfName(Component& component, std::string_view name, bool longest) {
  CodeElement* source = nullptr;
  ForEachPrefix(name, longest, [&](std::string_view prefix) {
    source = SourceOf(component, prefix);
    return source != nullptr;
  });
  return source;
}

}  // namespace vendrel
