#include "comments/CommentFile.h"

#include <gtest/gtest.h>

#include <sstream>

#include "comments/CommentedModule.h"
#include "support/Projects.h"
#include "support/Raised.h"

namespace vendrel {
namespace {

using test::CommentedModule;

constexpr const char* kBody =
    "Option Explicit\nImplements IFoo\nPublic Event Moved(ByVal By)\nEnum E\nRed\nBlue\nEnd Enum\n"
    "Private Type T\nA As Long\nB As Long\nEnd Type\nPublic x As Long\nSub F(p)\nEnd Sub\n";

void Apply(CommentedModule& module, const std::string& file) {
  module.Files.Add("/p/c.xml", file);
  module.Project.CommentFile.SetFullPath("Z:\\p\\c.xml");
  module.Project.ApplyCommentFile();
}

std::string Item(const char* eid, const char* tid, const char* q, const char* text) {
  return std::string("<c eid=\"") + eid + "\" tid=\"" + tid + "\" q=\"" + q + "\">" + text +
         "</c>\n";
}

TEST(ApplyCommentFile, PlacesCommentsByName) {
  CommentedModule module(kBody);
  Apply(module, "<?xml version=\"1.0\"?><!-- any --><root>\n" +
                    Item("M~M~F", "##SUMMARY", "", "a &lt;b&gt;<![CDATA[ & c]]>") +
                    Item("M~M~F:p", "##PARAM", "p", "parameter") +
                    Item("M~M~E_EN", "##ENUMERATION_SUMMARY", "", "enum") +
                    Item("M~M~E_EN:Red", "##ENUMERATION_MEMBER_SUMMARY", "Red", "red") +
                    Item("M~M~T_UT:A", "##STRUCTURE_MEMBER_SUMMARY", "A", "left") +
                    Item("M~M~x", "##REMARKS", "", "var") +
                    Item("M~M~Moved_EV:By", "##PARAM", "By", "steps") +
                    Item("M~M~IFoo_I", "##SUMMARY", "", "shape") +
                    Item("M~M", "##MODULE_SUMMARY", "", "module") +
                    Item("M", "##PROJECT_SUMMARY", "", "project") +
                    Item("M~M~None", "##SUMMARY", "", "nobody") + "<c>no name</c>" +
                    Item("M", "##SUMMARY", "", "fits nowhere") + "</root>");
  EXPECT_EQ(
      module.Landed(),
      "VBProject M d=project\nComponent M d=module\nParameter By d=steps\n"
      "Enumeration E d=enum\nEnumMember Red d=red\nVariable A d=left\nInterface IFoo d=shape\n"
      "Variable x [##REMARKS=var]\nBlock F d=a <b> & c\nParameter p d=parameter\n");
  EXPECT_EQ(test::Told(module.Project.Diagnostics),
            "12 element-not-found\n13 element-not-found\n13 comment-unplaced\n");
}

TEST(ApplyCommentFile, RefusesWhatIsNotWellFormedAndAppliesNothing) {
  const std::string good = Item("M~M~F", "##SUMMARY", "", "a");
  const struct {
    std::string File, Reason;
  } cases[] = {
      {"<r>\n" + good + "  <c>x</d></r>", "line 3, column "},
      {"<r>\n" + good, "line 2, column "},
      {"<r>\n" + good + "</r>\n<r/>", "line 4, column 2: a second root element"},
      {"<r>\n" + good + "<c>A & B</c></r>", "line 3, column 6: \"&\""},
      {"", "line 1, column 1: "},
  };
  for (const auto& c : cases) {
    CommentedModule module(kBody);
    std::string text;
    EXPECT_NE(test::Raised([&] { Apply(module, c.File); }, &text), 0) << c.File;
    EXPECT_NE(text.find("Z:\\p\\c.xml: " + c.Reason), std::string::npos) << text;
    EXPECT_EQ(module.Landed(), "");
  }
}

TEST(ApplyCommentFile, PassesOverAMissingFile) {
  CommentedModule module(kBody);
  module.Project.CommentFile.SetFullPath("Z:\\p\\none.xml");
  module.Project.ApplyCommentFile();
  EXPECT_EQ(module.Landed(), "");
}

// Written from a source where every comment is kept, and applied to the same source without them.
TEST(WriteCommentFile, IsReadBackOntoTheSameElements) {
  const auto preserve = [](VBProject& project) { project.PreserveOriginalTaggedComments = true; };
  CommentedModule source(
      "'##SUMMARY Class.\n'##REMARKS Old & \"odd\" <b>.\n\nOption Explicit\n'##INTERFACE_REMARKS "
      "IFoo i\n"
      "Implements IFoo\n'##SUMMARY Moved.\n'##PARAM By steps\nPublic Event Moved(ByVal By)\n"
      "'##REMARKS enum\nEnum E\nRed '##REMARKS r\nBlue\nEnd Enum\n"
      "'##REMARKS udt\nPrivate Type T\nA As Long '##REMARKS a\nB As Long\nEnd Type\n"
      "'##EXCLUDE\nPublic x As Long\n'##REMARKS  f\n'##PARAM p par\nSub F(p)\nEnd Sub\n",
      preserve);
  std::ostringstream file;
  WriteCommentFile(source.Project, file);
  CommentedModule target(kBody, preserve);
  Apply(target, file.str());
  EXPECT_EQ(target.Project.Diagnostics.Count(), 0u);
  EXPECT_EQ(target.Landed(),
            "Component M [##MODULE_SUMMARY=Class.] [##MODULE_REMARKS=Old & \"odd\" <b>.]\n"
            "EventDeclaration Moved [##SUMMARY=Moved.]\nParameter By [##PARAM(By)=steps]\n"
            "Enumeration E [##ENUMERATION_REMARKS=enum]\n"
            "EnumMember Red [##ENUMERATION_MEMBER_REMARKS(Red)=r]\n"
            "UDT T [##STRUCTURE_REMARKS=udt]\nVariable A [##STRUCTURE_MEMBER_REMARKS(A)=a]\n"
            "Interface IFoo [##INTERFACE_REMARKS(IFoo)=i]\nVariable x [##EXCLUDE=]\n"
            "Block F [##REMARKS= f]\nParameter p [##PARAM(p)=par]\n");
}

// Several elements may bear one name, constants have comments, and commands stand in lists twice.
TEST(WriteCommentFile, GivesBackWhatElementsOfOneNameHold) {
  const auto complete = [](VBProject& project) {
    project.Reading = ReadingRules::Complete();
    project.PreserveOriginalTaggedComments = true;
  };
  CommentedModule source(
      "'##SUMMARY Limit.\nConst K = 1\n'##SUMMARY Let.\n'##PARAM v Value.\n'##PARAM i Let.\n"
      "Property Let P(i, v)\nEnd Property\n"
      "'##SUMMARY Get.\n'##IS_NEW\nProperty Get P(i)\nEnd Property\n",
      complete);
  const std::string before = source.Landed();
  std::ostringstream file;
  WriteCommentFile(source.Project, file);
  EXPECT_EQ(source.Landed(), before);
  CommentedModule target(
      "Const K = 1\nProperty Let P(i, v)\nEnd Property\nProperty Get P(i)\nEnd Property\n",
      complete);
  Apply(target, file.str());
  EXPECT_EQ(target.Project.Diagnostics.Count(), 0u);
  EXPECT_EQ(target.Landed(), before);
  std::ostringstream again;
  WriteCommentFile(target.Project, again);
  EXPECT_EQ(again.str(), file.str());
  Apply(target, "<r>" + Item("M~M~K", "##MEMBER", "", "x") + "</r>");
  EXPECT_EQ(target.Project.Diagnostics.begin()->Text,
            "tagged comment ##MEMBER for M~M~K found no element");
}

}  // namespace
}  // namespace vendrel
