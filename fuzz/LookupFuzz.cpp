// Any text as a qualified name, a type name and a bare name of one project.

#include "Support.h"
#include "diagnostics/VendrelError.h"
#include "names/NameLookup.h"

using namespace vendrel;

namespace {

constexpr const char* kClass =
    "Attribute VB_Name = \"C\"\nImplements I\nPublic Event Moved(ByVal x As Long)\n"
    "Public Enum Colour\n  Red\nEnd Enum\nPrivate Type Pair\n  First As Long\nEnd Type\n"
    "Private Declare Sub Beep Lib \"kernel32\" (ByVal Hertz As Long)\nPublic Const Limit = 5\n"
    "Private v_EN As Long\nPublic Property Get Size() As Long\nEnd Property\n"
    "Public Sub Paint_I(ByVal c As Colour)\n  Dim d As Pair\nEnd Sub\n";

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static std::shared_ptr<VBProject> projects[2];
  if (!projects[0]) {
    test::MemoryFiles files{{"/p/P.vbp", "Type=Exe\nClass=C; C.cls\nClass=I; I.cls\nName=\"P\"\n"},
                            {"/p/C.cls", kClass},
                            {"/p/I.cls", "Attribute VB_Name = \"I\"\nSub S()\nEnd Sub\n"}};
    for (const bool classic : {true, false}) {
      auto& project = projects[classic ? 0 : 1];
      project = fuzz::NewProject({classic, false});
      project->Load("/p/P.vbp");
      project->Components.Populate();
    }
  }
  const std::string_view name = fuzz::Text(data, size);
  for (const auto& project : projects) {
    try {
      if (CodeElement* element = project->GetObjectByName(name)) element->QualifiedName();
      if (CodeElement* element = project->GetObjectByName("P~C~" + std::string(name)))
        element->QualifiedName();
      TypeClassEnum found = TypeClassEnum(0);
      project->ResolveType(project->Components.Item(1), name, found);
      project->FindEnum(name, project->Components.Item(1));
    } catch (const VendrelError&) {
    }
  }
  return 0;
}
