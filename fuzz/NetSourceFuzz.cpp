// VB.NET source, cut into files by lines "==> NAME <==", loaded as a project, resolved, printed and
// written. In the complete reading each byte comes out again.

#include <cstdlib>

#include "Support.h"
#include "diagnostics/VendrelError.h"
#include "dotnet/Sources.h"

using namespace vendrel;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view input = fuzz::Text(data, size);
  const fuzz::Choice choice = fuzz::TakeChoice(input);
  const auto files = fuzz::CutFiles(input);
  test::MemoryFiles memory;
  std::string listed;
  for (std::size_t i = 0; i < files.size() && i < 9; ++i) {
    const std::string leaf = std::to_string(i) + ".vb";
    memory.Add("/p/" + leaf, files[i].second);
    listed += "<File RelPath='" + leaf + "' BuildAction='Compile'/>";
  }
  memory.Add("/p/P.vbproj",
             "<VisualStudioProject><V><Build><Settings RootNamespace='R' AssemblyName='P'/></Build>"
             "<Files><Include>" +
                 listed + "</Include></Files></V></VisualStudioProject>");
  const auto project = fuzz::NewProject(choice);
  try {
    if (!project->Load("/p/P.vbproj")) return 0;
    if (size % 2 == 0) ResolveSourceTypes(*project);
    fuzz::Exercise(*project);
    const auto again = fuzz::NewProject(choice);
    again->Load("/p/P.vbproj");
    again->OutputFileName.SetFullPath("/q/P.vbproj");
    again->WriteOut();
  } catch (const VendrelError&) {
    return 0;
  }
  for (std::size_t i = 0; !choice.Classic && i < files.size() && i < 9; ++i) {
    const std::string leaf = std::to_string(i) + ".vb";
    if (memory["/q/" + leaf] != memory["/p/" + leaf]) std::abort();
  }
  return 0;
}
