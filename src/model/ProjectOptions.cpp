#include "model/ProjectOptions.h"

#include "core/ProcessState.h"

namespace vendrel {

void ProjectOptions::SetLanguageVersion(LanguageVersionEnum language) {
  mLanguageVersion = language;
  State().CurrentLanguageVersion = language;
  State().CurrentReading = Reading;
}

const ProjectOptions& ProjectOptions::Defaults() {
  static const ProjectOptions defaults;
  return defaults;
}

}  // namespace vendrel
