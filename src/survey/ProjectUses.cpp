#include "survey/ProjectUses.h"

#include "core/CaseFold.h"
#include "diagnostics/Context.h"
#include "uses/Unused.h"
#include "uses/UseBinder.h"

namespace vendrel {

ProjectUses::ProjectUses(VBProject& project) try {
  UseBinder(project).BindAll([this](const NameUse& use) { Take(use); });
}
VENDREL_CONTEXT(project)

void ProjectUses::Take(const NameUse& use) {
  mCalls.Add(use);
  if (const std::string_view library = LibraryOf(use); !library.empty()) CountLibrary(library);
  const auto* control = As<VBControl>(use.Element);
  if (!control) return;
  ++mControls[{control->OwnComponent(), FoldKey(control->ProgID)}];
  CountLibrary(std::string_view(control->ProgID).substr(0, control->ProgID.find('.')));
}

void ProjectUses::CountLibrary(std::string_view library) { ++mLibraries[FoldKey(library)]; }

std::optional<std::int64_t> ProjectUses::OfReference(const Reference& reference) const {
  const std::string name = LibraryNameOf(reference);
  if (name.empty()) return std::nullopt;
  const auto found = mLibraries.find(FoldKey(name));
  return found == mLibraries.end() ? 0 : found->second;
}

std::int64_t ProjectUses::OfControls(const Component& module, std::string_view progID) const {
  const auto found = mControls.find({&module, FoldKey(progID)});
  return found == mControls.end() ? 0 : found->second;
}

}  // namespace vendrel
