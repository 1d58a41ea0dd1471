#include "model/ProjectOptions.h"

#include "core/Workspace.h"

namespace vendrel {

void ProjectOptions::SetLanguageVersion(LanguageVersionEnum language) {
  mLanguageVersion = language;
  ProcessState& state = Workspace().State;
  state.CurrentLanguageVersion = language;
  state.CurrentReading = Reading;
}

const ProjectOptions& ProjectOptions::Defaults() {
  static const ProjectOptions defaults;
  return defaults;
}

}  // namespace vendrel
