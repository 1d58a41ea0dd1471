// Where a plain comment goes.

#include <gtest/gtest.h>

#include "names/NameWalk.h"
#include "support/Projects.h"

namespace vendrel {
namespace {

using test::TestModule;

// "element: text" for everything that has a description.
std::string Descriptions(Component& component) {
  std::string text;
  ForEachNamedElement(component, [&](CodeElement& element) {
    const LateText* about = element.UnTaggedDescriptionField();
    if (!about || about->empty()) return;
    text +=
        (&element == &component ? "module" : element.ElementName()) + ": " + about->str() + "\n";
  });
  return text;
}

struct PlacementCase {
  const char* Body;
  const char* Expected;
};

void ExpectDescriptions(const std::vector<PlacementCase>& cases,
                        const test::Prepare& prepare = {}) {
  for (const PlacementCase& c : cases) {
    TestModule module("M.bas", c.Body, prepare);
    EXPECT_EQ(Descriptions(*module), c.Expected) << c.Body;
    for (const Block& block : module->Blocks) {
      EXPECT_EQ(block.CommentBuffer(), "") << c.Body;
      EXPECT_TRUE(!block.Name().empty() || block.UnTaggedDescription.empty()) << c.Body;
    }
  }
}

TEST(CommentPlacementTest, TheHeaderOfTheModuleEndsAtABlankLine) {
  ExpectDescriptions({{"' one\n' two\n\nDim a\n", "module: one<crlf>two\n"},
                      {"' one _\n' two\n\nDim a\n", ""},  // a continued comment is one statement
                      {"' one\n' two\nDim a\n", "a: one<crlf>two\n"},
                      {"Option Explicit\n' one\n\nDim a\n", "module: one\n"},
                      {"Dim a\n' late\n\nDim b\n", ""},
                      {"' one\n\n' two\n\nDim a\n", "module: one<crlf>two\n"},
                      {"' one\nOption Explicit\n\nDim a\n", ""}});
}

TEST(CommentPlacementTest, AProcedureIsDescribedAboveTheFirstAndUnderItsHeader) {
  ExpectDescriptions(
      {{"' above\nSub S()\nEnd Sub\n", "S: above\n"},
       {"Dim a\n' above\nSub S()\nEnd Sub\n", "S: above\n"},
       {"Dim a\n' above\n\nSub S()\nEnd Sub\n", ""},
       {"Sub S()\n' one\n' two\n  x = 1\n' three\nEnd Sub\n' behind\n", "S: one<crlf>two\n"},
       {"Sub S()\n' one\n  Dim x\n' two\nEnd Sub\n", "S: one\n"},
       {"Sub S()\n' one\n\n' two\nEnd Sub\n", "S: one<crlf>two\n"},
       {"Sub S() ' trailing\nEnd Sub\n", ""},
       // Between two procedures: neither, unless the first holds no statement.
       {"Sub S()\n  x = 1\nEnd Sub\n' between\nSub T()\nEnd Sub\n", ""},
       {"Sub S()\nEnd Sub\n' between\nSub T()\nEnd Sub\n", "S: between\n"},
       {"Sub S()\n  x = 1\nEnd Sub\n' between\n\nSub T()\n' in\nEnd Sub\n", "T: in\n"}});
}

TEST(CommentPlacementTest, DeclarationsTakeWhatStandsAboveOrBehind) {
  ExpectDescriptions({{"Dim a, b ' first only\n", "a: first only\n"},
                      {"' above\nDim a ' behind\n", "a: behind\n"},
                      {"Dim z\n' above\nEnum E\n  x ' no\nEnd Enum\n", "E: above\n"},
                      {"Dim z\n' above\nPublic Type T\n  x As Long\nEnd Type\n", "T: above\n"},
                      {"Dim z\n' above\nEvent E()\n", "E: above\n"},
                      {"Dim z\n' above\nConst A = 1\n", ""},
                      {"Dim z\n' above\nDeclare Sub S Lib \"k\" ()\n", ""},
                      {"Dim z\n' above\nImplements I\n", ""},
                      {"Dim z\n' above\nAttribute z.VB_X = 1\nDim a\n", "a: above\n"},
                      {"Sub S()\n  x = 1\n  Dim q ' local\nEnd Sub\n", "q: local\n"}});
}

TEST(CommentPlacementTest, LeadingCommentsBelongToWhatFollowsInTheCompleteReading) {
  const test::Prepare leading = test::Reading("LeadingComments");
  ExpectDescriptions({{"Sub S()\n  x = 1\nEnd Sub\n' between\n' both\nSub T()\nEnd Sub\n",
                       "T: between<crlf>both\n"},
                      {"Sub S()\nEnd Sub\n' between\nSub T()\nEnd Sub\n", "T: between\n"},
                      {"Sub S()\nEnd Sub\n' between\n\nSub T()\nEnd Sub\n", ""},
                      {"Sub S()\nEnd Sub\n' a\n\n' b\nSub T()\nEnd Sub\n", "T: b\n"},
                      {"Sub S()\n' in\n  x = 1\nEnd Sub\n' above\nSub T()\n' in T\nEnd Sub\n",
                       "S: in\nT: above<crlf>in T\n"},
                      {"Dim z\n' above\nConst A = 1\n", "A: above\n"},
                      {"Dim z\n' above\nDeclare Sub S Lib \"k\" ()\n", "S: above\n"},
                      {"Dim z\n' above\nImplements I\n", "I: above\n"},
                      {"' one\nOption Explicit\n\nDim a\n", "module: one\n"},
                      {"' above\nSub S()\nEnd Sub\n", "S: above\n"}},
                     leading);
}

TEST(CommentPlacementTest, RemLinesAreCommentsInTheCompleteReading) {
  ExpectDescriptions({{"Sub S()\nRem note\nEnd Sub\n", ""}});
  ExpectDescriptions({{"Sub S()\nRem note\nEnd Sub\n", "S: note\n"}}, test::Reading("RemComments"));
}

}  // namespace
}  // namespace vendrel
