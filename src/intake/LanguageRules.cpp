#include "intake/LanguageRules.h"

#include "core/Workspace.h"
#include "model/ProjectOptions.h"

namespace vendrel {

const LanguageRules& LanguageRules::Of(LanguageVersionEnum language, const ReadingRules& reading) {
  if (language != lvVisualBasicDotNet) return ClassicLanguage();
  return reading.NetMembers ? CompleteNetLanguage() : NetLanguage();
}

SourceRules SourceRules::InForce(const ProjectOptions* options) {
  const ReadingRules& reading = options ? options->Reading : ReadingRules::Classic();
  return {LanguageRules::Of(State().CurrentLanguageVersion, reading), reading};
}

}  // namespace vendrel
