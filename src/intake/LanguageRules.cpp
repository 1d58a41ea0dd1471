#include "intake/LanguageRules.h"

#include "core/Workspace.h"
#include "model/ProjectOptions.h"

namespace vendrel {

SourceRules SourceRules::InForce(const ProjectOptions* options) {
  return {LanguageRules::Of(State().CurrentLanguageVersion),
          options ? options->Reading : ReadingRules::Classic()};
}

}  // namespace vendrel
