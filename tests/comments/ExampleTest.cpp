#include <gtest/gtest.h>

#include "comments/CommentedModule.h"
#include "core/Workspace.h"
#include "diagnostics/Diagnostic.h"
#include "model/Example.h"
#include "support/Boxes.h"

namespace vendrel {
namespace {

using test::CommentedModule;

TEST(Example, ReadsItsParameters) {
  Example example;
  example.Load(
      "key=k, for = \"P~M~F\" ,caption=A,B, caption=no, inline=TRUE, LANGUAGE=C#, template=t");
  EXPECT_EQ(example.Key + "|" + example.RelatedElement + "|" + example.Caption + "|" +
                example.Language + "|" + example.Template,
            "k|P~M~F|A|C#|t");
  EXPECT_TRUE(example.InLine);
  Example other;
  other.Load("for=x, caption=y, InLine=yes");
  EXPECT_FALSE(other.InLine);
  EXPECT_EQ(other.Language, "Visual Basic");
}

TEST(Example, TellsMissingParametersInTheirOrder) {
  const auto boxes = test::InstallBoxes();
  State().Silent = false;
  Example example;
  example.Load("key=1");
  const std::string expected =
      "Missing parameter|Missing example parameter 'for' in the tagged comment 'key=1'.  "
      "Processing will continue.|48\n"
      "Missing parameter|Missing example parameter 'caption' in the tagged comment 'key=1'.  "
      "Processing will continue.|48\n";
  EXPECT_EQ(boxes->Said, expected);
  State().Silent = true;
  example.Load("");
  EXPECT_EQ(boxes->Said, expected);
  EXPECT_EQ(example.Caption, "");
}

TEST(Example, GoesFromItsProcedureToTheElementItIsFor) {
  CommentedModule module(
      "Option Explicit\n"
      "'##MODULE_IS_EXAMPLE for=M~M, caption=Whole\n"
      "Public x As Long\n"
      "'##IS_EXAMPLE for=M~M~F, caption=Use of F\n"
      "'##SUMMARY Shows F.\n"
      "Sub Demo()\nEnd Sub\n"
      "'##BLOCK_IS_EXAMPLE for=M~M~Demo2, caption=Self\n"
      "Sub Demo2()\nEnd Sub\n"
      "'##IS_EXAMPLE for=M~M~None, caption=Lost\n"
      "Sub F()\nEnd Sub\n");
  VBProject& project = module.Project;
  EXPECT_TRUE(module.Module->IsExample);
  ASSERT_EQ(project.Examples->Count(), 4u);
  project.ResolveExamples();
  ASSERT_EQ(project.Examples->Count(), 1u);
  EXPECT_EQ(project.Examples->Item(1)->Caption, "Lost");
  EXPECT_EQ(module.Module->Examples->Item(1)->Caption, "Whole");
  const Example* demo = module.Module->Blocks.Item("F")->Examples->Item(1);
  ASSERT_NE(demo, nullptr);
  EXPECT_EQ(demo->mDescription, "Shows F.");
  EXPECT_EQ(demo->RelatedItem(), module.Module->Blocks.Item("Demo"));
  EXPECT_EQ(demo->TaggedComments(), &*module.Module->Blocks.Item("Demo")->TaggedComments);
  EXPECT_EQ(module.Module->Blocks.Item("Demo2")->Examples->Item(1)->Name(), "Self");
}

TEST(Example, OfNoProcedureIsToldAndDropped) {
  CommentedModule module("Option Explicit\nPublic x '##IS_EXAMPLE caption=a\n");
  EXPECT_EQ(module.Project.Examples->Count(), 0u);
  EXPECT_EQ(module.Project.Diagnostics.CountOf(DiagnosticCode::MissingExampleParameter), 1u);
}

}  // namespace
}  // namespace vendrel
