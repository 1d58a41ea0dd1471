// A documentation file of any content for a small tree: cut, rewritten, placed and inherited.

#include "Support.h"
#include "diagnostics/VendrelError.h"
#include "model/Events.h"
#include "project/Assembly.h"

using namespace vendrel;

namespace {

std::shared_ptr<VBProject> NewTree(const fuzz::Choice& choice) {
  auto project = fuzz::NewProject(choice);
  project->SetLanguageVersion(lvVisualBasicDotNet);
  project->ProjectName = "P";
  project->Components.DoNotPopulate = true;
  const auto base = project->netCreateComponent(lsFullyLoadedNoCode, "N.B", "PUBLIC", ftClass,
                                                "N.B", false, false, {});
  const auto own = project->netCreateComponent(lsFullyLoadedNoCode, "N.C", "PUBLIC", ftClass,
                                               "N.C,N.B", false, false, "N.B");
  for (const auto& component : {base, own}) {
    Block* go =
        component->netCreateBlock(btSub, "Go", "PUBLIC", {}, component == base,
                                  component == base ? "" : "N.B", false, true, false, false);
    go->netCreateParameter("what", "System.String", {}, false);
    component->netCreateField("f", "System.Int32", "PUBLIC", false, true, {}, true);
    component->netCreateEvent("E", "System.EventHandler", true, {})
        ->netCreateParameter("sender", "System.Object", {}, false);
  }
  return project;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view input = fuzz::Text(data, size);
  const fuzz::Choice choice = fuzz::TakeChoice(input);
  const test::MemoryFiles files{{"/p/P.dll", ""}, {"/p/P.xml", std::string(input)}};
  const auto project = NewTree(choice);
  const auto assembly = std::make_shared<Assembly>();
  assembly->FileName.SetFullPath("/p/P.dll");
  assembly->TieOwner(project.get());
  project->OwnAssembly(assembly);
  try {
    assembly->IntegrateCommentFile(*project, nullptr, true, false);
    assembly->PopulateInheritedComments(*project, nullptr, true);
    fuzz::Exercise(*project);
  } catch (const VendrelError&) {
  }
  return 0;
}
