#include "cli/UseSets.h"

#include "cli/Options.h"
#include "cli/Tool.h"
#include "core/Ascii.h"
#include "project/VBProjectGroup.h"

namespace vendrel::cli {

std::vector<VBProject*> ProjectsTogether(VBProject& project) {
  VBProjectGroup* group = project.VBProjectGroup();
  if (!group) return {&project};
  std::vector<VBProject*> all;
  for (VBProject& member : group->AllVBProjects()) all.push_back(&member);
  if (all.empty() || all.front() != &project) all.clear();
  return all;
}

void RefuseWithoutStatements(const VBProject& project) {
  const bool isAssembly = project.LanguageVersion() == lvVisualBasicDotNet &&
                          !EndsWithNoCaseAscii(project.FileName.FullPath(), ".vbproj") &&
                          project.ProjectFiles.Count() == 0;
  if (project.WasReadFromTypeLibrary || isAssembly)
    throw ToolError(exFailed, project.FileName.NativePath() +
                                  ": is a compiled library, which has no statements; give the "
                                  "project that it was made from");
}

}  // namespace vendrel::cli
