// Modules read the short way against the same modules with each line sent through all stages.

#include "intake/vb6/PlainLines.h"

#include <gtest/gtest.h>

#include "bench/Dice.h"
#include "intake/ModuleIntake.h"
#include "output/Dump.h"
#include "support/Projects.h"

namespace vendrel {
namespace {

std::string Loaded(const std::string& file, const std::string& text, bool complete, bool shortWay) {
  test::TestProject project({{file, text}}, complete ? test::Complete() : test::Prepare());
  project.Project->OnLineFailure = [](const VendrelError&, std::string_view, std::int32_t) {
    return StepOver::SkipLine;
  };
  Component& component = *project.Project->Components.Listed().begin();
  component.Intake().TakesPlainLines = shortWay;
  component.Load();
  std::string shown = test::Describe(component);
  for (const Block& block : component.Blocks) {
    shown += block.Name() + ": " + test::ShowLines(block) + block.CommentBuffer() + "\n";
    if (const auto& comment = block.LastTaggedComment())
      shown += comment->TagIdentifier + "|" + comment->Text + "|" +
               std::to_string(comment->LineIndex) + "|" + std::to_string(comment->SourceLine);
  }
  return shown + test::Told(project.Project->Diagnostics);
}

std::string RandomBody(bench::Dice& dice) {
  static constexpr const char* kLines[] = {
      "",
      "  ",
      "' a comment",
      "'",
      "' goes on _",
      "'##SUMMARY about it",
      "##",
      "'## x",
      "Public Sub A(b As Long, c)",
      "Private Function F() As String ' of F",
      "Property Get P() As Long",
      "Property Set P(v As Object)",
      "Property Let Q(v)",
      "End Sub",
      "End Function ' ends",
      "End Property",
      "Attribute A.VB_Description = \"text\"",
      "  Dim x As Long ' of x",
      "  Dim y, z",
      "  x = 1",
      "\tx = 2\t' why",
      "  x = \"a:b\": y = 3",
      "  If x Then Dim w",
      "  If x Then",
      "  End If",
      "  Case 1 ' one",
      "  Exit Sub",
      "  Foo _",
      "    a, b",
      "10 Bar",
      "lbl:",
      "#If Win32 Then",
      "#Else",
      "#End If",
      "Private Type T",
      "  m As Long",
      "End Type",
      "Enum E",
      "  One = 1 ' first",
      "End Enum",
      "Event Ev(a)",
      "Implements I",
      "Rem a remark",
      "  Static s As Long",
      "Sub One(): x = 1: End Sub",
  };
  std::string body;
  for (int i = dice.Between(3, 40); i > 0; --i) body += std::string(dice.Pick(kLines)) + "\n";
  return body;
}

TEST(PlainLinesTest, TheShortWayLeadsToTheSameTree) {
  for (int seed = 0; seed < 600; ++seed) {
    bench::Dice dice(static_cast<std::uint64_t>(seed));
    const std::string body = RandomBody(dice);
    const std::string file = seed % 2 == 0 ? "M.bas" : "C.cls";
    for (const bool complete : {false, true}) {
      const std::string expected = Loaded(file, body, complete, false);
      ASSERT_EQ(test::FirstDifference(expected, Loaded(file, body, complete, true)), "")
          << seed << (complete ? " complete\n" : " classic\n") << body;
    }
  }
}

TEST(PlainLinesTest, ALoadInTwoStepsGoesOnWhereItStopped) {
  test::TestProject project({{"M.bas", "Dim a\nSub S()\n  x = 1\n' last\nEnd Sub\n"}});
  Component& component = *project.Project->Components.Listed().begin();
  component.Load(true);
  component.Load();
  EXPECT_EQ(component.Blocks.Count(), 3u);
  EXPECT_EQ(component.Blocks.Item("S")->CodeLines->Count(), 4);
  EXPECT_EQ(component.Blocks.Item("S")->LastTaggedComment()->Text, "");
}

// What the intake kept of a block that was read is given back; a client may still add lines.
TEST(PlainLinesTest, ABlockTakesLinesLongAfterItWasRead) {
  test::TestModule module("M.bas", "Dim a\nSub S()\n  x = 1\nEnd Sub\nSub T()\nEnd Sub\n");
  Block& block = *module->Blocks.Item("S");
  block.AddLine("  Dim late");
  block.AddLine("' a comment behind the end");
  EXPECT_EQ(block.Variables->Item("late")->LineIndex, 4);
  EXPECT_EQ(block.LastTaggedComment()->LineIndex, 5);
  EXPECT_EQ(block.CodeLines->Count(), 5);
}

}  // namespace
}  // namespace vendrel
