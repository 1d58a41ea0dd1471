#include "output/HelpIDs.h"

#include <gtest/gtest.h>

#include <limits>
#include <sstream>

#include "diagnostics/VendrelError.h"
#include "support/Projects.h"

namespace vendrel {
namespace {

using test::TestProject;

constexpr const char* kClass =
    "Attribute VB_Exposed = True\n"
    "Public Field As Long\nPrivate Hidden As Long\nEvent Changed()\n"
    "Public Sub Act()\nEnd Sub\nPrivate Sub Inner()\nEnd Sub\n"
    "Public Property Get Size() As Long\nEnd Property\n"
    "Public Property Let Size(v As Long)\nEnd Property\n";

// A project of a public class and a standard module, with the IDs that its source has.
class HelpIDs : public testing::Test {
 protected:
  HelpIDs() { mProject.Project->Components.Populate(); }

  VBProject& Project() { return *mProject.Project; }
  Component& Class() { return *mProject.Project->Components.Item("C"); }
  Block& Procedure(const char* name) { return *Class().Blocks.Item(name); }

  // "ID name" of every element that has one.
  std::string Map() {
    std::string text;
    for (const HelpTopic& topic : HelpTopicsOf(Project()))
      text += std::to_string(topic.HelpContextID) + " " + topic.Element->QualifiedName() + "\n";
    return text;
  }

  TestProject mProject{{{"C.cls", kClass}, {"M.bas", "Public Sub Main()\nEnd Sub\n"}},
                       test::Complete()};
};

TEST_F(HelpIDs, GoToPublicElementsInOrder) {
  Project().AssignHelpContextIDs(1000);
  EXPECT_EQ(Map(),
            "1000 P\n1002 P~C\n1003 P~C~Changed_EV\n1004 P~C~Field\n1005 P~C~Act\n"
            "1006 P~C~Size\n");
  EXPECT_TRUE(Project().HelpContextIDsAssigned);
  EXPECT_EQ(Project().CurrentHelpContextID, 1006);
  for (const Block* block : Class().Blocks.Named("Size")) EXPECT_EQ(block->HelpContextID, 1006);
  EXPECT_EQ(Procedure("Inner").HelpContextID, 0);
}

TEST_F(HelpIDs, BeginAboveTheHighestOneSeen) {
  struct Case {
    std::int32_t Highest, OfProject, BeginAt;
    bool Force, Retain;
    std::int32_t Expected;
  };
  const Case cases[] = {{2000, 0, 1000, false, false, 2001},
                        {10, 0, 1000, false, false, 1000},
                        {10, 5000, 1000, false, false, 5001},
                        {2000, 0, 1000, true, true, 2001},
                        {2000, 5000, 1000, true, false, 1000}};
  for (const Case& c : cases) {
    VBProject project;
    project.LoadedHelpContextID(c.Highest);
    project.HelpContextID = c.OfProject;
    project.RetainContextIDs = c.Retain;
    project.AssignHelpContextIDs(c.BeginAt, c.Force);
    const bool numbered = c.OfProject == 0 || (c.Force && !c.Retain);
    EXPECT_EQ(project.HelpContextID, numbered ? c.Expected : c.OfProject);
    EXPECT_EQ(project.CurrentHelpContextID, c.Expected + (numbered ? 1 : 0)) << c.Expected;
  }
}

TEST_F(HelpIDs, StayWhatTheyAreUnlessForced) {
  Procedure("Act").HelpContextID = 7;
  Project().AssignHelpContextIDs(100);
  EXPECT_EQ(Procedure("Act").HelpContextID, 7);
  const std::string first = Map();
  Project().AssignHelpContextIDs(100);
  EXPECT_EQ(Map(), first);
  Project().RetainContextIDs = true;
  Project().AssignHelpContextIDs(500, true);
  EXPECT_EQ(Map(), first);
  Project().RetainContextIDs = false;
  Project().AssignHelpContextIDs(500, true);
  EXPECT_EQ(Project().HelpContextID, 500);
  EXPECT_EQ(Procedure("Act").HelpContextID, 505);
}

TEST_F(HelpIDs, OfASecondCallNeverRepeatThoseOfTheFirst) {
  Project().AssignHelpContextIDs(100);
  Procedure("Act").HelpContextID = 0;
  Project().AssignHelpContextIDs(100);
  EXPECT_EQ(Procedure("Act").HelpContextID, 108);
}

TEST_F(HelpIDs, OfAPropertyAreOneWhicheverProcedureHadIt) {
  for (const BlockTypeEnum type : {btPropertyGet, btPropertyLet}) {
    TestProject project({{"C.cls", kClass}}, test::Complete());
    project.Project->Components.Populate();
    Component& module = *project.Project->Components.Item("C");
    module.Blocks.FirstOfType(type)->HelpContextID = 42;
    project.Project->AssignHelpContextIDs(1);
    for (const Block* block : module.Blocks.Named("Size")) EXPECT_EQ(block->HelpContextID, 42);
  }
}

TEST_F(HelpIDs, AreNotGivenToModulesWithoutPublicSurface) {
  for (const FileTypeEnum type : {ftModule, ftForm, ftClass}) {
    Component component;
    component.SetVBProject(&Project());
    component.FileType = type;
    component.Access = "PUBLIC";
    component.AssignHelpContextIDs();
    EXPECT_EQ(component.HelpContextID != 0, type == ftClass);
    const std::int32_t given = component.HelpContextID;
    component.Access = "Public";
    component.AssignHelpContextIDs(true);
    EXPECT_EQ(component.HelpContextID, given);
  }
  Project().CurrentHelpContextID = std::numeric_limits<std::int32_t>::max();
  EXPECT_THROW(Class().AssignHelpContextIDs(true), VendrelError);
  Block alone;
  alone.AssignHelpContextIDs(true);
}

TEST_F(HelpIDs, BecomeDefinesWithNamesOfTheirOwn) {
  Project().AssignHelpContextIDs(1);
  Block& other = Procedure("Inner");
  other.SetName("Ac\xC3\xA9t");
  Block& more = Procedure("Act");
  more.SetName("Ac\xC3\xA8t");
  other.HelpContextID = 90;
  std::ostringstream out;
  WriteHelpHeader(out, HelpTopicsOf(Project()));
  EXPECT_EQ(out.str(),
            "#define IDH_P 1\r\n#define IDH_P_C 3\r\n#define IDH_P_C_Changed_EV 4\r\n"
            "#define IDH_P_C_Field 5\r\n#define IDH_P_C_Ac__t 6\r\n#define IDH_P_C_Size 7\r\n"
            "#define IDH_P_C_Ac__t_2 90\r\n");
}

}  // namespace
}  // namespace vendrel
