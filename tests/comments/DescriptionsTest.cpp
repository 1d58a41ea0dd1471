#include "comments/AppendDescription.h"

#include <gtest/gtest.h>

#include "comments/CommentedModule.h"
#include "core/Workspace.h"
#include "model/PropertyGroup.h"

namespace vendrel {
namespace {

using test::CommentedModule;

TEST(AppendDescription, ChangesAllItsArguments) {
  VBProject project;
  State().CurrentLanguageVersion = lvVisualBasicDotNet;
  std::string description = "a", text = " _ b";
  int wrap = wrapLineBreak;
  EXPECT_EQ(project.AppendDescription(description, text, wrap), "a b");
  EXPECT_EQ(text, "b");
  EXPECT_EQ(wrap, wrapSpace);
  text.clear();
  EXPECT_EQ(project.AppendDescription(description, text, wrap), "a b  ");
  EXPECT_EQ(text, " ");
}

TEST(AppendDescription, AppendsATextToItself) {
  std::string text = "ab";
  AppendDescription(text, text, int(wrapLineBreak));
  EXPECT_EQ(text, "ab<crlf>ab");
}

TEST(MergedTaggedDescription, PutsTheCommentsInFront) {
  TaggedComments comments;
  for (const char* source : {"##REMARKS x", "##SEEALSO n", "##remarks y"})
    comments.Add(test::Parsed(source));
  const auto merged = [&](const char* description, const char* tag, bool onlyIfBlank,
                          bool overwrite) {
    return MergedTaggedDescription(description, comments, tag, onlyIfBlank, overwrite);
  };
  EXPECT_EQ(merged("d", "##REMARKS", false, false), "x y d");
  EXPECT_EQ(merged("d", "##Remarks", false, true), "x y");
  EXPECT_EQ(merged("d", "##REMARKS", true, true), "d");
  EXPECT_EQ(merged("", "##REMARKS", true, false), "x y  ") << "an empty description is one blank";
  EXPECT_EQ(merged("d", "##NONE", false, true), "d");
}

TEST(MergeTaggedComment, ReachesEveryKindOfElement) {
  CommentedModule module(
      "Option Explicit\n'##MODULE_REMARKS m\n'##SEEALSO no\nDim x '##REMARKS x\n"
      "'##REMARKS e\nEvent Moved()\n'##REMARKS c\nEnum E\nRed '##REMARKS r\nEnd Enum\n"
      "'##REMARKS t\nPrivate Type T\nA As Long '##REMARKS a\nEnd Type\n"
      "'##REMARKS f\nSub F()\nEnd Sub\n"
      "'##REMARKS g\nPublic Property Get P()\nEnd Property\n"
      "'##REMARKS l\nPublic Property Let P(v)\nEnd Property\n");
  module.Project.MergeTaggedComment("##REMARKS", false, true);
  std::string described;
  ForEachCommentedElement(module.Project, [&](CodeElement& element) {
    const LateText* text = element.TaggedDescriptionField();
    if (text && !text->empty()) described += element.ElementName() + "=" + text->str() + " ";
  });
  EXPECT_EQ(described, "Moved=e E=c Red=r T=t A=a F=f P=g<p>l</p> ");
  module.Project.MergeTaggedComment("##MODULE_REMARKS", false, true);
  EXPECT_EQ(module.Module->TaggedDescription, "m");
}

TEST(Descriptions, CountPlainCommentsWhereTheProjectDoes) {
  CommentedModule module(
      "Option Explicit\nPublic x 'plain\n'##VARIABLE_SUMMARY x tagged\nEnum E\nRed 'warm\nEnd "
      "Enum\n"
      "Declare Sub S Lib \"l\" () 'plain\nDim y\n' plain\nSub F()\nEnd Sub\n",
      [](VBProject& project) { project.UnTaggedEnumerations = true; });
  Variable& x = *module.Module->BlockOfType(btDeclarations)->Variables->Item("x");
  DeclareDeclaration& declare = *module.Module->Declarations.Item("S");
  EXPECT_EQ(x.Description(), "tagged");
  EXPECT_EQ(declare.Description(), "");
  EnumMember& red = *module.Module->Enumerations.Item("E")->Members().Item("Red");
  red.TaggedDescription = "tagged";
  EXPECT_EQ(red.Description(), "warm<crlf>tagged") << "the plain text of a member comes first";
  declare.UnTaggedDescription = "plain";
  const Block& block = *module.Module->Blocks.Item("F");
  EXPECT_EQ(block.Description(), "");
  module.Project.UnTaggedVariables = module.Project.UnTaggedModules = true;
  module.Project.UnTaggedBlocks = true;
  EXPECT_EQ(x.Description(), "tagged<crlf>plain");
  EXPECT_EQ(declare.Description(), "plain") << "counted with the modules";
  EXPECT_EQ(block.Description(), "plain");
}

}  // namespace
}  // namespace vendrel
