// Any bytes as an assembly that is loaded as a project, dumped, walked and asked for by the names
// that its elements have. Behind a line "==> NAME <==" another file lies beside it.

#include <cstdint>

#include "Support.h"
#include "diagnostics/VendrelError.h"
#include "model/Events.h"

using namespace vendrel;

namespace {

void AskByNames(const VBProject& project) {
  std::size_t names = 0;
  for (const Component& component : project.Components.Listed()) {
    project.GetObjectFromDotNetName(component.DotNetName());
    for (const Block& block : component.Blocks)
      if (++names < 200) project.GetObjectFromDotNetName(block.DotNetName());
    for (const EventDeclaration& event : component.EventDeclarations)
      if (++names < 400) project.GetObjectFromDotNetName(event.DotNetName());
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view input = fuzz::Text(data, size);
  const auto files = fuzz::CutFiles(input);
  test::MemoryFiles memory;
  for (std::size_t i = 0; i < files.size(); ++i)
    memory.Add(i == 0 ? "/input.dll" : "/" + files[i].first, files[i].second);
  fuzz::Choice choice;
  choice.Classic = size % 2 == 1;
  const auto project = fuzz::NewProject(choice);
  project->LoadPrivateMembers = size % 3 == 0;
  try {
    project->LoadFromAssembly("/input.dll");
  } catch (const VendrelError&) {
    return 0;  // a clear error is an answer
  }
  AskByNames(*project);
  fuzz::Exercise(*project);
  return 0;
}
