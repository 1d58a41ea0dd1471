#include "cli/ReferencedLibraries.h"

#include "cli/Session.h"

namespace vendrel::cli {

void ReferencedLibraries::Load(VBProject& project) {
  for (Reference& reference : project.References) {
    if (reference.ReferencedProject() || !reference.FileName.Exists()) continue;
    const std::string path = reference.FileName.NativePath();
    const auto [known, isNew] = mLibraries.try_emplace(path);
    const Workspace::Use use(mWorkspace);
    if (isNew && KindOfInput(path) == InputKind::TypeLibrary) {
      auto library = std::make_shared<VBProject>();
      library->Reading = project.Reading;
      library->TypeLibPath = project.TypeLibPath;
      if (library->LoadFromTypeLib(path)) known->second = std::move(library);
    }
    if (known->second) reference.SetReferencedProject(known->second.get());
  }
}

}  // namespace vendrel::cli
