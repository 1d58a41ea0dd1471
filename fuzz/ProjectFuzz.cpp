// A project file of any content, with two modules beside it.

#include "Support.h"
#include "diagnostics/VendrelError.h"

using namespace vendrel;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view input = fuzz::Text(data, size);
  const fuzz::Choice choice = fuzz::TakeChoice(input);
  test::MemoryFiles files{
      {"/p/P.vbp", std::string(input)},
      {"/p/M.bas", "Attribute VB_Name = \"M\"\nPublic Const C = 1\nSub Main()\nEnd Sub\n"},
      {"/p/F.frm", "VERSION 5.00\nBegin VB.Form F\nEnd\nAttribute VB_Name = \"F\"\n"}};
  try {
    const auto project = fuzz::NewProject(choice);
    if (project->Load("/p/P.vbp")) fuzz::Exercise(*project);
  } catch (const VendrelError&) {
    // A clear error is an answer.
  }
  return 0;
}
