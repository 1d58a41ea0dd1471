// A form and its binary companion: the text in front of "==> F.frx <==" is the form.

#include "Support.h"
#include "diagnostics/VendrelError.h"

using namespace vendrel;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view input = fuzz::Text(data, size);
  const fuzz::Choice choice = fuzz::TakeChoice(input);
  auto parts = fuzz::CutFiles(input);
  test::MemoryFiles files{{"/p/F.frm", std::move(parts.front().second)}};
  if (parts.size() > 1) files.Add("/p/F.frx", std::move(parts[1].second));
  try {
    const auto project = fuzz::NewProject(choice);
    if (!project->LoadModule("/p/F.frm")) return 0;
    fuzz::Exercise(*project);
    for (const Component& component : project->Components.Listed())
      for (const VBControl& control : component.AllVBControls) {
        control.QualifiedName();
        control.ControlProperties();
      }
  } catch (const VendrelError&) {
  }
  return 0;
}
