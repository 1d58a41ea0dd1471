// Where a tagged comment lands.

#include <gtest/gtest.h>

#include "comments/CommentedModule.h"
#include "core/Workspace.h"
#include "support/Projects.h"

namespace vendrel {
namespace {

using test::CommentedModule;

// Lines behind "Option Explicit", and where their comments land.
struct PlacingCase {
  const char* Name;
  const char* Body;
  const char* Landed;
};

void Behind(VBProject& project) { project.TaggedCommentsBeforeElement = false; }
void Preserve(VBProject& project) { project.PreserveOriginalTaggedComments = true; }

void Check(const PlacingCase& c, const CommentedModule::Setup& setup = {}) {
  CommentedModule module("Option Explicit\n" + std::string(c.Body), setup);
  EXPECT_EQ(module.Landed(), c.Landed) << c.Name;
}

TEST(TaggedComments, StandBeforeTheirElement) {
  const PlacingCase cases[] = {
      {"procedure", "'##SUMMARY Opens it.\n'##REMARKS Slow.\nSub F()\nEnd Sub\n",
       "Block F d=Opens it. [##REMARKS=Slow.]\n"},
      {"two lines of one tag", "'##SUMMARY a\n'##SUMMARY b\nSub F()\nEnd Sub\n",
       "Block F d=a<crlf>b\n"},
      {"a bare tag goes on", "'##SUMMARY a\n'## b\nSub F()\nEnd Sub\n", "Block F d=a<crlf>b\n"},
      {"parameters", "'##PARAM a first\n'##PARAM A more\n'##PARAM z lost\nSub F(a, b)\nEnd Sub\n",
       "Parameter a d=first<crlf>more\n"},
      {"variable", "'##SUMMARY The count.\nPublic Count As Long\n",
       "Variable Count d=The count.\n"},
      {"variable by name", "'##VARIABLE_REMARKS b Second.\nDim a, b\n",
       "Variable b [##VARIABLE_REMARKS(b)=Second.]\n"},
      {"event and its parameter",
       "'##SUMMARY Moved.\nEvent Moved(ByVal By As Long)\n'##ED Twice.\n"
       "'##PD By steps\n'##PD by other case\n",
       "EventDeclaration Moved d=Moved.<crlf>Twice.\nParameter By d=steps\n"},
      {"enumeration and members",
       "'##SUMMARY Colours.\nEnum E\nRed '##SUMMARY warm\nBlue\n"
       "'##SUMMARY cold\n'##ENUMERATION_MEMBER_REMARKS Red nice\nEnd Enum\n",
       "Enumeration E d=Colours.\nEnumMember Red d=warm [##ENUMERATION_MEMBER_REMARKS(Red)=nice]\n"
       "EnumMember Blue d=cold\n"},
      {"structure and members",
       "'##SUMMARY Pair.\nPrivate Type T\nA As Long '##SUMMARY left\nEnd Type\n",
       "UDT T d=Pair.\nVariable A d=left\n"},
      {"declare",
       "'##SUMMARY Beeps.\n'##PARAM f hertz\n"
       "Private Declare Function Beep Lib \"kernel32\" (ByVal f As Long) As Long\n",
       "DeclareDeclaration Beep d=Beeps.\nParameter f d=hertz\n"},
      {"interface", "'##INTERFACE_SUMMARY IFoo Shape.\nImplements IFoo\n",
       "Interface IFoo d=Shape.\n"},
      {"module and project", "'##MODULE_SUMMARY All.\n'##PROJECT_SUMMARY Whole.\nDim x\n",
       "VBProject M d=Whole.\nComponent M d=All.\n"},
      {"exclusion",
       "'##EXCLUDE\nPublic x\n'##EXCLUDE\nSub F()\nEnd Sub\n'##EXCLUDE_MODULE\nDim y\n",
       "Component M [##EXCLUDE_MODULE=]\nVariable x excluded\nBlock F excluded\n"},
      {"is new", "'##IS_NEW\nPublic x\n'##MODULE_IS_NEW\nSub F()\n'##BLOCK_IS_NEW\nEnd Sub\n",
       "Component M new [##MODULE_IS_NEW=]\nVariable x new [##IS_NEW=]\n"
       "Block F new [##BLOCK_IS_NEW=]\n"},
      {"nothing follows", "'##SUMMARY lost\n", "waits [##SUMMARY=lost]\n"},
      {"no tag", "'##NOTAG x\n'# x\nSub F()\nEnd Sub\n", ""},
      {"a comment dies with the procedure it stands in",
       "Sub F()\nDim x\n'##VARIABLE_SUMMARY nowhere t\nEnd Sub\nSub G()\nEnd Sub\n", ""},
  };
  for (const PlacingCase& c : cases) Check(c);
}

TEST(TaggedComments, StandBehindTheirElementWhereSoSet) {
  const PlacingCase cases[] = {
      {"procedure", "Sub F()\n'##SUMMARY Opens it.\n'##PARAM a no such\nEnd Sub\n",
       "Block F d=Opens it.\n"},
      {"enumeration", "Enum E\n'##SUMMARY Colours.\nRed\n'##SUMMARY warm\nEnd Enum\n",
       "Enumeration E d=Colours.\nEnumMember Red d=warm\n"},
      {"event", "Event Moved(By)\n'##ED Moved.\n", "EventDeclaration Moved d=Moved.\n"},
      {"behind the statement",
       "Public x As Long '##SUMMARY The x.\nSub F() '##SUMMARY f\n"
       "End Sub\n",
       "Variable x d=The x.\nBlock F d=f\n"},
      {"a variable takes none on the next line", "Public x\n'##SUMMARY gone\nDim y\n", ""},
  };
  for (const PlacingCase& c : cases) Check(c, Behind);
}

TEST(TaggedComments, StayAsTheyAreWherePreserved) {
  const PlacingCase cases[] = {
      {"nothing merges", "'##SUMMARY a\n'##SUMMARY b\n'##EXCLUDE\nSub F()\nEnd Sub\n",
       "Block F [##SUMMARY=a] [##SUMMARY=b] [##EXCLUDE=]\n"},
      {"commands act and are kept", "'##MODULE_IS_COLLECTION\n'##PARAM a x\nSub F(a)\nEnd Sub\n",
       "Component M [##MODULE_IS_COLLECTION=]\nParameter a [##PARAM(a)=x]\n"},
  };
  for (const PlacingCase& c : cases) Check(c, Preserve);
}

TEST(TaggedComments, AtTheHeadOfAModuleDescribeIt) {
  CommentedModule module("'##SUMMARY A class.\n'##REMARKS Old.\n\nOption Explicit\nDim x\n");
  EXPECT_EQ(module.Landed(), "Component M d=A class. [##REMARKS=Old.]\n");
}

TEST(TaggedComments, CommandTheirModule) {
  CommentedModule module(
      "Option Explicit\n"
      "'##IGNORE_REFERENCES stdole, , VBA,STDOLE\n"
      "'##RELATIONSHIP_LEVELS 2.5 deep\n"
      "'##RELATIONSHIP_LEVELS abc\n"
      "'##RELATIONSHIP_LEVELS 0\n"
      "'##MODULE_IS_INTERFACE\n"
      "'##RETAIN_CONTEXT_IDS\n"
      "'##INTERFACE_ALIAS IFoo where it is\n"
      "Implements IFoo\n"
      "'##INTERFACE_ALIAS IFoo path\n"
      "Dim x\n");
  EXPECT_EQ(module.Module->IgnoreReferences, (std::vector<std::string>{"stdole", "VBA"}));
  EXPECT_EQ(module.Module->RelationshipLevels, 2);
  EXPECT_TRUE(module.Module->IsInterface);
  EXPECT_TRUE(module.Project.RetainContextIDs);
  EXPECT_EQ(module.Module->Interfaces.Item("IFoo")->DocumentationLocation, "IFoo path");
}

TEST(TaggedComments, ExcludeReferencesByFileName) {
  CommentedModule module("Option Explicit\n'##EXCLUDE_REFERENCE b.DLL\nDim x\n",
                         [](VBProject& project) {
                           for (const char* name : {"a.dll", "b.dll"}) {
                             auto reference = std::make_shared<Reference>();
                             reference->FileName.SetFullPath(std::string("Z:\\lib\\") + name);
                             project.References.Add(reference);
                           }
                         });
  EXPECT_FALSE(module.Project.References.Item(1)->ExcludeFlag);
  EXPECT_TRUE(module.Project.References.Item(2)->ExcludeFlag);
  EXPECT_EQ(module.Landed(), "");
}

TEST(TaggedComments, AreToldToTheHostBeforeTheyArePlaced) {
  std::string told;
  CommentedModule module(
      "Option Explicit\n'##SUMMARY a\nSub F(x)\n'plain\nEnd Sub '##REMARKS b\n",
      [&](VBProject& project) {
        project.NewTaggedComment.Add([&](Block& block, TaggedComment& tc, const CodeLine& line) {
          told += block.Name() + tc.TagIdentifier + (tc.CodeElement ? "!" : ";") + line.Text + "|";
          tc.Text += "+";
        });
      });
  EXPECT_EQ(told, "##SUMMARY;'##SUMMARY a|F##REMARKS;End Sub '##REMARKS b|");
  EXPECT_EQ(module.Landed(), "Block F d=a+ [##REMARKS=b+]\n");
}

TEST(TaggedComments, GoOnInPlainLinesWhereSoSet) {
  State().AutoAppendUntagged = true;
  CommentedModule module(
      "Option Explicit\n'##SUMMARY a\n' and b\n\n'##PARAM x first\n' half\nSub F(x)\n' no\nEnd "
      "Sub\n");
  EXPECT_EQ(module.Landed(), "Component M d=a and b\nParameter x d=first half\n");
}

TEST(TaggedComments, OfLegacyTagsAreUpgraded) {
  const auto upgrade = [](VBProject& project) { project.SetUpgradeLegacyTaggedcomments(true); };
  Check({"on", "'##ISNEW\nPublic x\n'##BLOCK_REMARKS a\n'##  b\nSub F()\nEnd Sub\n",
         "Variable x new [##IS_NEW=]\nBlock F d= b [##REMARKS=a]\n"},
        upgrade);
  State().mUpgradeLegacyTaggedcomments = false;
  Check({"off", "'##ISNEW\nPublic x\n'##BLOCK_REMARKS a\nSub F()\nEnd Sub\n",
         "Variable x new [##ISNEW=]\nBlock F [##BLOCK_REMARKS=a]\n"});
}

TEST(TaggedComments, LandElsewhereUnderAFlagOfTheReading) {
  const struct {
    const char *Flag, *Body, *Classic, *Flagged;
  } cases[] = {
      {"RemComments", "Rem ##SUMMARY Old style.\nSub F()\nEnd Sub\n", "", "Block F d=Old style.\n"},
      {"CommentsBehindEnd",
       "Sub F(a, b)\nDim n\n'##PARAM b of F\nEnd Sub\n\n'##PARAM a of G\n"
       "'##VARIABLE_SUMMARY n none\n'##RETURNS g\nFunction G(a)\nDim n\nEnd Function\n",
       "Parameter a d=of G\nParameter b d=of F\nVariable n d=none\nBlock G [##RETURNS=g]\n",
       "Parameter b d=of F\nBlock G [##RETURNS=g]\nParameter a d=of G\nVariable n d=none\n"},
      {"ConstantComments", "'##SUMMARY The limit.\n'##REMARKS Fixed.\nConst Limit = 5\nDim Total\n",
       "Variable Total d=The limit. [##REMARKS=Fixed.]\n",
       "Constant Limit d=The limit. [##REMARKS=Fixed.]\n"},
  };
  for (const auto& c : cases) {
    Check({c.Flag, c.Body, c.Classic});
    Check({c.Flag, c.Body, c.Flagged}, test::Reading(c.Flag));
  }
}

}  // namespace
}  // namespace vendrel
