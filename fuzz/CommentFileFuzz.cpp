// A comment file of any content for a small project, applied and written again.

#include <sstream>

#include "Support.h"
#include "comments/CommentFile.h"
#include "diagnostics/VendrelError.h"

using namespace vendrel;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view input = fuzz::Text(data, size);
  const fuzz::Choice choice = fuzz::TakeChoice(input);
  test::MemoryFiles files{
      {"/p/P.vbp", "Type=Exe\nClass=C; C.cls\nName=\"P\"\n"},
      {"/p/C.cls",
       "Attribute VB_Name = \"C\"\nPublic Event E(ByVal x As Long)\nPublic v As Long\n"
       "Enum N\n  one\nEnd Enum\nSub S(ByVal a As Long)\nEnd Sub\n"},
      {"/p/c.xml", std::string(input)}};
  try {
    const auto project = fuzz::NewProject(choice);
    if (!project->Load("/p/P.vbp")) return 0;
    project->Components.Populate();
    project->CommentFile.SetFullPath("/p/c.xml");
    project->ApplyCommentFile();
    project->ResolveExamples();
    std::ostringstream out;
    WriteCommentFile(*project, out);
    fuzz::Exercise(*project);
  } catch (const VendrelError&) {
  }
  return 0;
}
