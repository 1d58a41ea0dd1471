// A module is loaded, written, and loaded again. In the complete reading each byte comes out again,
// and the second tree is the first; in the classic one the second write equals the first.

#include <cstdlib>
#include <sstream>

#include "Support.h"
#include "diagnostics/VendrelError.h"
#include "output/Dump.h"

using namespace vendrel;

namespace {

// The tree as text, without what differs from load to load.
std::string TreeOf(const VBProject& project) {
  std::ostringstream out;
  DumpOptions options;
  options.Lines = true;
  options.Identity = options.Places = false;
  Dump(out, Describe(project), options);
  return out.str();
}

std::shared_ptr<VBProject> Load(const fuzz::Choice& choice, const std::string& folder) {
  auto project = fuzz::NewProject(choice);
  if (!project->Load(folder + "P.vbp")) return nullptr;
  project->Components.Populate();
  return project;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view input = fuzz::Text(data, size);
  fuzz::Choice choice = fuzz::TakeChoice(input);
  choice.DotNet = false;
  const bool form = input.starts_with("VERSION 5");
  const std::string leaf = form ? "M.frm" : "M.cls";
  test::MemoryFiles files{{"/p/P.vbp", (form ? "Type=Exe\r\nForm=" : "Type=Exe\r\nClass=M; ") +
                                           leaf + "\r\nName=\"P\"\r\n"},
                          {"/p/" + leaf, std::string(input)}};
  files.AddFolder("/q");
  files.AddFolder("/r");
  try {
    const auto first = Load(choice, "/p/");
    if (!first) return 0;
    const std::string tree = TreeOf(*first);
    first->OutputFileName.SetFolderPath("/q");
    first->WriteOut();
    if (!files.Has("/q/" + leaf)) return 0;  // empty or binary: nothing was read
    if (!choice.Classic && files["/q/" + leaf] != input) std::abort();
    const auto second = Load(choice, "/q/");
    if (!second) std::abort();
    if (!choice.Classic && TreeOf(*second) != tree) std::abort();
  } catch (const VendrelError&) {
  }
  return 0;
}
