#include "cli/UseSets.h"

#include "cli/Options.h"
#include "cli/Tool.h"
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
  const bool isNet = project.LanguageVersion() == lvVisualBasicDotNet;
  if (project.WasReadFromTypeLibrary || (isNet && project.ProjectFiles.Count() == 0))
    throw ToolError(exFailed, project.FileName.NativePath() +
                                  ": is a compiled library, which has no statements; give the "
                                  "project that it was made from");
}

void RefuseDotNet(const VBProject& project) {
  if (project.LanguageVersion() == lvVisualBasicDotNet)
    throw ToolError(exFailed, project.FileName.NativePath() +
                                  ": is VB.NET; what nobody uses is told of Visual Basic 5 and 6 "
                                  "alone, calls shows both");
}

}  // namespace vendrel::cli
