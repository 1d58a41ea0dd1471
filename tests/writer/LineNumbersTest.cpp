#include "writer/LineNumbers.h"

#include <gtest/gtest.h>

#include "core/Workspace.h"
#include "support/Projects.h"

namespace vendrel::test {
namespace {

struct Numbering {
  std::string Tag = "100:10";
  const char* Flags = "";
  bool PerModule = false;
};

// The written text of modules M1, M2 ... in "/out", without their first line, one behind the other.
std::string Numbered(const std::vector<std::string>& bodies, const Numbering& numbering) {
  std::string lines = "Type=Exe\r\n";
  MemoryFiles files;
  for (std::size_t i = 1; i <= bodies.size(); ++i) {
    const std::string name = "M" + std::to_string(i);
    lines += "Module=" + name + "; " + name + ".bas\r\n";
    files.Add("/p/" + name + ".bas",
              WithCrLf("Attribute VB_Name = \"" + name + "\"\n" + bodies[i - 1]));
  }
  files.Add("/p/P.vbp", lines);
  VBProject project;
  project.Reading = ReadingRules::Classic();
  Reading(numbering.Flags)(project);
  EXPECT_TRUE(project.Load("/p/P.vbp"));
  project.OutputFileName.SetFolderPath("/out");
  project.Tags["fvbOutputLineNumbers"] = numbering.Tag;
  project.LineNumberPerModule = numbering.PerModule;
  project.WriteOut();
  std::string text;
  for (std::size_t i = 1; i <= bodies.size(); ++i) {
    const std::string module = files["/out/M" + std::to_string(i) + ".bas"];
    text += module.substr(module.find('\n') + 1);
  }
  std::erase(text, '\r');
  return text;
}

TEST(LineNumbering, StatementsAreNumberedAndTheFirstCaseIsNot) {
  EXPECT_EQ(
      Numbered({"Sub A()\nx = 1\nSelect Case x\nCase 1\ny = 2\nCase 2\nEnd Select\nEnd Sub\n"}, {}),
      "Sub A()\n100   x = 1\n110   Select Case x\n      Case 1\n120   y = 2\n130   Case 2\n"
      "140   End Select\nEnd Sub\n");
}

TEST(LineNumbering, ContinuationsCommentsAndDeclarationsMoveRight) {
  EXPECT_EQ(
      Numbered({"Sub A(a, _\n  b)\n\n' c\nDim x\nx = a + _\n\tb + _\n  1\nExit Sub\nEnd Sub\n"},
               {}),
      "      Sub A(a, _\n  b)\n\n      ' c\n      Dim x\n100   x = a + _\n      \tb + _\n"
      "        1\n      Exit Sub\nEnd Sub\n");
}

TEST(LineNumbering, ALineWithANumberKeepsItAndTheCountGoesOn) {
  EXPECT_EQ(Numbered({"Sub A()\n5 x = 1\nx = 2\nEnd Sub\n"}, {}),
            "Sub A()\n      5 x = 1\n100   x = 2\nEnd Sub\n");
}

TEST(LineNumbering, TheIntervalCountsEligibleLinesOfEachBlock) {
  EXPECT_EQ(Numbered({"Sub A()\na\nb\nc\nd\nEnd Sub\nSub B()\ne\nEnd Sub\n"}, {"100:10.3"}),
            "Sub A()\n100   a\nb\nc\n130   d\nEnd Sub\nSub B()\n140   e\nEnd Sub\n");
}

TEST(LineNumbering, LongNumbersWidenTheirSpacers) {
  EXPECT_EQ(Numbered({"Sub A()\nx = _\n1\ny = 2\nEnd Sub\n"}, {"99990:10"}),
            "Sub A()\n99990 x = _\n       1\n100000 y = 2\nEnd Sub\n");
}

TEST(LineNumbering, RunsOnOverModulesOrBeginsAnew) {
  const std::vector<std::string> modules{"Sub A()\na\nb\nEnd Sub\n", "Sub B()\nc\nEnd Sub\n"};
  EXPECT_EQ(Numbered(modules, {}),
            "Sub A()\n100   a\n110   b\nEnd Sub\nSub B()\n120   c\nEnd Sub\n");
  EXPECT_EQ(Numbered(modules, {"100:10", "", true}),
            "Sub A()\n100   a\n110   b\nEnd Sub\nSub B()\n100   c\nEnd Sub\n");
}

TEST(LineNumbering, NeverRunsBackwardBehindNumbersOfTheSource) {
  EXPECT_EQ(Numbered({"Sub A()\n500 x\ny\nEnd Sub\n"}, {}),
            "Sub A()\n      500 x\n510   y\nEnd Sub\n");
  EXPECT_GT(State().CurrentLineNumber, 500);
}

TEST(LineNumbering, AModuleCanStayFreeOfNumbersAndAnIntervalOfNoughtFails) {
  TestModule module("M.bas", "Sub A()\nx\nEnd Sub\n");
  VBProject& project = *module.Project;
  project.OutputFileName.SetFolderPath("/out");
  project.Tags["FVBOutputLineNumbers"] = "1:1.0";
  EXPECT_THROW(project.WriteOut(), VendrelError);
  EXPECT_FALSE(module.Files.Has("/out/M.bas"));
  module->NoLineNumbers = true;
  project.WriteOut();
  EXPECT_NE(module.Files["/out/M.bas"].find("\r\nx\r\n"), std::string::npos);
  project.AddLineNumbers = true;
  project.Tags.clear();
  project.WriteOut();
  EXPECT_FALSE(project.AddLineNumbers) << "without the tag the switch is put off";
}

constexpr const char* kHard =
    "Sub A()\nDone: x = 1\n100: y = 1\na = 1 : b = _\n2\nSelect Case x\nCase 1\n"
    "Select Case y\nCase 2\nz\nEnd Select\nCase 3\nEnd Select\n#If 1 Then\nq\n#End If\nEnd Sub\n"
    "#If 0 Then\nEnum E\nF = 1\nEnd Enum\n#End If\n";

TEST(LineNumbering, TheCompleteReadingKeepsAwayFromPlacesTheCompilerRefuses) {
  EXPECT_EQ(
      Numbered({kHard}, {"10:10", "NumberableLines KeepDirectives KeepLinesBehindSeparators"}),
      "Sub A()\n      Done: x = 1\n      100: y = 1\n10    a = 1 : b = _\n      2\n"
      "20    Select Case x\n      Case 1\n30    Select Case y\n      Case 2\n40    z\n"
      "50    End Select\n60    Case 3\n70    End Select\n      #If 1 Then\n80    q\n"
      "      #End If\nEnd Sub\n      #If 0 Then\n      Enum E\n      F = 1\n      End Enum\n"
      "      #End If\n");
  const std::string classic =
      Numbered({kHard}, {"10:10", "KeepDirectives KeepLinesBehindSeparators"});
  EXPECT_NE(classic.find("10    Done: x = 1\n"), std::string::npos) << classic;
  EXPECT_NE(classic.find("   2\n"), std::string::npos) << classic;
}

}  // namespace
}  // namespace vendrel::test
