#include "model/ProjectOptions.h"

#include "core/Workspace.h"

namespace vendrel {

void ProjectOptions::SetLanguageVersion(LanguageVersionEnum language) {
  mLanguageVersion = language;
  Workspace().State.CurrentLanguageVersion = language;
}

const ProjectOptions& ProjectOptions::Defaults() {
  static const ProjectOptions defaults;
  return defaults;
}

}  // namespace vendrel
