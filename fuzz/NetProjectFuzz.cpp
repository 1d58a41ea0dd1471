// Any text as a VB.NET project file, by the reader of either form. Behind lines "==> NAME <=="
// stand source files beside it.

#include "Support.h"
#include "diagnostics/VendrelError.h"
#include "dotnet/Sources.h"
#include "project/Solution.h"

using namespace vendrel;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view input = fuzz::Text(data, size);
  const fuzz::Choice choice = fuzz::TakeChoice(input);
  const auto files = fuzz::CutFiles(input);
  test::MemoryFiles memory;
  for (std::size_t i = 0; i < files.size(); ++i)
    memory.Add(i == 0 ? "/p/P.vbproj" : "/p/" + files[i].first, files[i].second);
  ProjectsOfSolution(files.front().second);
  try {
    std::string root;
    const auto project = fuzz::NewProject(choice);
    if (FormOfNetProject("/p/P.vbproj", root) == NetProjectForm::MSBuild)
      project->LoadFromCustom(kMSBuildLoaderProgId, "/p/P.vbproj");
    else
      project->Load("/p/P.vbproj");
    ReferencedProjectFiles(*project);
    ResolveSourceTypes(*project);
    fuzz::Exercise(*project);
    project->OutputFileName.SetFullPath("/q/P.vbproj");
    project->WriteOut();
  } catch (const VendrelError&) {  // a clear error is an answer
  }
  return 0;
}
