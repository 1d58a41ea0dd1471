// Every call on files may fail, at any time, with any error: each load ends as documented, what was
// read is a sound tree, and the next load is as if nothing had happened.

#include <gtest/gtest.h>

#include <sstream>

#include "core/ProcessState.h"
#include "names/NameWalk.h"
#include "output/Dump.h"
#include "project/VBProjectGroup.h"
#include "support/MemoryFiles.h"

namespace vendrel {
namespace {

constexpr int kErrors[] = {ENOSPC, EIO, ESTALE, EMFILE, EACCES};

class Faults : public testing::Test {
 protected:
  Faults()
      : mFiles{
            {"/p/G.vbg", "VBGROUP 5.0\r\nStartupProject=P.vbp\r\nProject=Lib/L.vbp\r\n"},
            {"/p/P.vbp",
             "Type=Exe\r\nReference=*\\ALib\\L.vbp\r\nForm=F.frm\r\nClass=C; sub\\C.cls\r\n"
             "Module=M; M.bas\r\nName=\"P\"\r\n"},
            {"/p/Lib/L.vbp", "Type=OleDll\r\nModule=N; N.bas\r\nName=\"L\"\r\n"},
            {"/p/Lib/N.bas", "Attribute VB_Name = \"N\"\r\nPublic Enum E\r\n  a\r\nEnd Enum\r\n"},
            {"/p/F.frm",
             "VERSION 5.00\r\nBegin VB.Form F\r\n  Caption = $\"F.frx\":0003\r\n"
             "  Begin VB.Menu m\r\n  End\r\nEnd\r\nAttribute VB_Name = \"F\"\r\n"
             "Private Sub m_Click()\r\nEnd Sub\r\n"},
            {"/p/F.frx", std::string("\1\2\3\0\0hello\xEB", 11)},
            {"/p/sub/C.cls",
             "VERSION 1.0 CLASS\r\nBEGIN\r\nEND\r\nAttribute VB_Name = \"C\"\r\n"
             "'##SUMMARY a class\r\nPublic Sub S(ByVal x As E)\r\nEnd Sub\r\n"},
            {"/p/M.bas",
             "Attribute VB_Name = \"M\"\r\nSub Main()\r\n  Dim a As C\r\nEnd Sub\r\n"}} {}

  // Everything that a load gives, as text.
  std::string Load() {
    State().Reset();
    State().Silent = true;
    std::ostringstream out;
    VBProjectGroup group;
    group.BeforeLoad = [](VBProject& project) { project.Reading = ReadingRules::Complete(); };
    try {
      if (!group.Load("/p/G.vbg")) return "no group";
      for (VBProject& project : group.VBProjects()) {
        project.Components.Populate();
        Dump(out, Describe(project), {.Lines = true, .Identity = false});
        ForEachNamedElement(project, [&](const CodeElement& element) {
          project.GetObjectByName(element.QualifiedName());
        });
        project.UnloadSourceCode();
      }
    } catch (const VendrelError& failure) {
      return failure.Text();
    }
    return out.str();
  }

  test::MemoryFiles mFiles;
};

TEST_F(Faults, OfTheNthCallLeaveASoundTreeAndASoundProcess) {
  const std::string whole = Load();
  ASSERT_NE(whole.find("\"hello\""), std::string::npos) << whole;
  for (const int error : kErrors) {
    int n = 1;
    for (;; ++n) {
      mFiles.ForgetCalls();
      mFiles.FailAt(n, error);
      const std::string text = Load();
      const auto calls = mFiles.Calls().size();
      mFiles.FailAt(0, 0);
      ASSERT_FALSE(text.empty()) << "call " << n;
      ASSERT_EQ(Load(), whole) << "behind a failure " << error << " of call " << n;
      if (calls < static_cast<std::size_t>(n)) break;
    }
    EXPECT_GT(n, 20);
  }
}

TEST_F(Faults, OfOneFileCostThatFileAlone) {
  const std::string whole = Load();
  const struct {
    const char* File;
    const char* Lost;
    const char* Kept;
  } rows[] = {{"/p/M.bas", "\"Name\": \"Main\"", "\"Name\": \"S\""},
              {"/p/sub/C.cls", "\"Name\": \"S\"", "\"Name\": \"Main\""},
              {"/p/F.frx", "\"hello\"", "\"Name\": \"m_Click\""},
              {"/p/Lib/L.vbp", "\"ProjectName\": \"L\"", "\"Name\": \"Main\""}};
  for (const auto& row : rows) {
    for (const int error : kErrors) {
      mFiles.FailOn(row.File, error);
      const std::string text = Load();
      EXPECT_NE(whole.find(row.Lost), std::string::npos);
      EXPECT_EQ(text.find(row.Lost), std::string::npos) << row.File << " " << error;
      EXPECT_NE(text.find(row.Kept), std::string::npos) << row.File << " " << error;
      mFiles.FailOn(row.File, 0);
    }
  }
  EXPECT_EQ(Load(), whole);
}

TEST_F(Faults, DevicesAndPipesAreNoModules) {
  mFiles.AddPipe("/p/pipe.bas");
  mFiles.Add("/p/G.vbg", "VBGROUP 5.0\r\nProject=Q.vbp\r\n");
  mFiles.Add("/p/Q.vbp", "Type=Exe\r\nModule=X; pipe.bas\r\nModule=M; M.bas\r\nName=\"Q\"\r\n");
  VBProject project;
  ASSERT_TRUE(project.Load("/p/Q.vbp"));
  project.Components.Populate();
  EXPECT_EQ(project.Diagnostics.CountOf(DiagnosticCode::UnreadableFile), 1u);
  EXPECT_NE(project.Components.Item("M")->Blocks.Item("Main"), nullptr);
}

}  // namespace
}  // namespace vendrel
