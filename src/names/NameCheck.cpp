#include "names/NameCheck.h"

#include "core/CaseFold.h"
#include "diagnostics/Context.h"
#include "names/NameWalk.h"

namespace vendrel {

NameState StateOfName(VBProject& project, const CodeElement& element) {
  return StateOfName(project, element, element.QualifiedName());
}

NameState StateOfName(VBProject& project, const CodeElement& element, const std::string& name) {
  const CodeElement* found = project.GetObjectByName(name);
  if (found == &element) return NameState::Leads;
  return found && EqualsNoCase(found->QualifiedName(), name) ? NameState::Clashes : NameState::Lost;
}

std::vector<UnsureName> UnsureNames(VBProject& project) try {
  std::vector<UnsureName> unsure;
  ForEachNamedElement(project, [&](CodeElement& element) {
    std::string name = element.QualifiedName();
    const NameState state = StateOfName(project, element, name);
    if (state != NameState::Leads) unsure.push_back({std::move(name), KindOf(element), state});
  });
  return unsure;
}
VENDREL_CONTEXT(project)

}  // namespace vendrel
