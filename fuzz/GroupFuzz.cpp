// A group file of any content beside two projects, one of which refers to the other.

#include "Support.h"
#include "diagnostics/VendrelError.h"
#include "project/VBProjectGroup.h"

using namespace vendrel;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  test::MemoryFiles files{
      {"/g/G.vbg", std::string(fuzz::Text(data, size))},
      {"/g/A.vbp", "Type=Exe\nReference=*\\AB.vbp\nModule=M; M.bas\nName=\"A\"\n"},
      {"/g/B.vbp", "Type=OleDll\nModule=M; M.bas\nName=\"B\"\n"},
      {"/g/M.bas", "Attribute VB_Name = \"M\"\nPublic x As B.M\n"}};
  try {
    VBProjectGroup group;
    if (!group.Load("/g/G.vbg")) return 0;
    for (VBProject& project : group.VBProjects()) {
      fuzz::Exercise(project);
      TypeClassEnum found = TypeClassEnum(0);
      project.ResolveType(project.Components.Item(1), "B.M", found);
      project.AllVisibleComponents();
    }
    group.Structure();
  } catch (const VendrelError&) {
  }
  return 0;
}
