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
  const char* what = nullptr;
  if (project.WasReadFromTypeLibrary) what = "a compiled library, which has no statements";
  if (project.LanguageVersion() == lvVisualBasicDotNet)
    what = "VB.NET; calls and unused elements are told of Visual Basic 5 and 6";
  if (what) throw ToolError(exFailed, project.FileName.NativePath() + ": is " + what);
}

}  // namespace vendrel::cli
