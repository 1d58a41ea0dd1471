#include "names/NameCheck.h"

#include "core/CaseFold.h"
#include "diagnostics/Context.h"
#include "names/NameWalk.h"

namespace vendrel {

NameState StateOfName(VBProject& project, const CodeElement& element) {
  const std::string name = element.QualifiedName();
  const CodeElement* found = project.GetObjectByName(name);
  if (found == &element) return NameState::Leads;
  return found && EqualsNoCase(found->QualifiedName(), name) ? NameState::Clashes : NameState::Lost;
}

std::vector<UnsureName> UnsureNames(VBProject& project) try {
  std::vector<UnsureName> unsure;
  ForEachNamedElement(project, [&](CodeElement& element) {
    const NameState state = StateOfName(project, element);
    if (state != NameState::Leads)
      unsure.push_back({element.QualifiedName(), KindOf(element), state});
  });
  return unsure;
}
VENDREL_CONTEXT(project)

}  // namespace vendrel
