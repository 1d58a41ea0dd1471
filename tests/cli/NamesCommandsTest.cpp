// The commands that look for names, and those that take several projects.

#include <gtest/gtest.h>

#include "support/MemoryFiles.h"
#include "support/ToolRun.h"

namespace vendrel::cli {
namespace {

using nlohmann::json;

constexpr const char* kMainModule =
    "Attribute VB_Name = \"modMain\"\r\n"
    "Private Declare Sub Beep Lib \"kernel32\" (ByVal Hertz As Long)\r\n"
    "Public Enum Colour\r\n  Red = 1\r\nEnd Enum\r\n"
    "Public Property Get Size(ByVal Unit As Long) As Colour\r\nEnd Property\r\n"
    "Public Property Let Size(ByVal Unit As Long, ByVal value As Colour)\r\nEnd Property\r\n"
    "Public Sub Post(Optional ByVal Amount As Currency = 1)\r\n  Dim i As Long\r\nEnd Sub\r\n";
constexpr const char* kForm =
    "VERSION 5.00\r\nBegin VB.Form frmMain\r\n  Caption = \"Main\"\r\n"
    "  Begin VB.Frame Box\r\n    Left = 10\r\n    Top = 20\r\n"
    "    Begin VB.CommandButton cmd\r\n      Caption = \"Go\"\r\n      Index = 3\r\n    End\r\n"
    "  End\r\nEnd\r\nAttribute VB_Name = \"frmMain\"\r\n";

class NamesCommands : public testing::Test {
 protected:
  test::MemoryFiles mFiles{
      {"/g/G.vbg", "VBGROUP 5.0\r\nProject=Shop.vbp\r\nProject=lib\\Lib.vbp\r\nProject=No.vbp\r\n"},
      {"/g/Shop.vbp",
       "Type=Exe\r\nReference=*\\Alib\\Lib.vbp\r\nReference=*\\G{X}#2.0#0#C:\\a.tlb#A \"Lib\"\r\n"
       "Module=modMain; modMain.bas\r\nForm=frmMain.frm\r\nName=\"Shop\"\r\n"},
      {"/g/modMain.bas", kMainModule},
      {"/g/frmMain.frm", kForm},
      {"/g/lib/Lib.vbp", "Type=OleDll\r\nClass=Item; Item.cls\r\nName=\"Lib\"\r\n"},
      {"/g/lib/Item.cls",
       "VERSION 1.0 CLASS\r\nAttribute VB_Name = \"Item\"\r\nPublic Price As Currency\r\n"}};
};

TEST_F(NamesCommands, NamesListsEachNameWithKindAndPlace) {
  const ToolRun names = ToolEnding(exDone, {"names", "/g/G.vbg"});
  for (const char* line :
       {"Shop\tproject\t/g/Shop.vbp\n", "Shop~kernel32.dll_LIB\tlibrary\t/g/modMain.bas:2\n",
        "Shop~modMain~Colour_EN:Red\tenumeration-member\t/g/modMain.bas:4\n",
        "Shop~modMain~Size\tproperty\t/g/modMain.bas:6\n",
        ("Shop~modMain~Size:Unit\tparameter\t/g/modMain.bas:8\t"
         "clashes with an earlier name\n"),
        "Shop~modMain~Post~i\tlocal-variable\t/g/modMain.bas:11\n",
        "Shop~frmMain~cmd(3)\tcontrol\t/g/frmMain.frm:7\n",
        "Lib~Item~Price\tvariable\t/g/lib/Item.cls:3\n"})
    EXPECT_THAT(names.Out, HasSubstr(line));
  EXPECT_THAT(names.Err, HasSubstr("missing-project"));
  EXPECT_EQ(RunFor({"names", "/g/Shop.vbp", "--kind", "enumeration"}),
            "Shop~modMain~Colour_EN\tenumeration\t/g/modMain.bas:3\n");
  const json unsure = JsonLines({"names", "/g/Shop.vbp", "--unsure", "--json"}).at(0);
  EXPECT_EQ(unsure["QualifiedName"], "Shop~modMain~Size:Unit");
  EXPECT_EQ(unsure["Remark"], "clashes with an earlier name");
}

TEST_F(NamesCommands, FindTakesQualifiedAndBareNamesAndPatterns) {
  const std::string post =
      "Shop~modMain~Post\tprocedure\tPublic Sub Post(Optional ByVal Amount As Currency = 1)\t"
      "/g/modMain.bas:10\n";
  const std::pair<const char*, std::string> cases[] = {
      {"shop~modmain~post", post},
      {"post", post},
      {"p?st", post},
      {"*~P?st", post},
      {"red", "Shop~modMain~Colour_EN:Red\tenumeration-member\tRed = 1\t/g/modMain.bas:4\n"},
      {"i", "Shop~modMain~Post~i\tlocal-variable\tDim i As Long\t/g/modMain.bas:11\n"},
      {"beep",
       "Shop~kernel32.dll_LIB~Beep_DEC\tdeclare\tPRIVATE Declare Sub Beep Lib \"kernel32.dll\" "
       "(ByVal Hertz As Long)\t/g/modMain.bas:2\n"},
      {"Lib~Item~Price", "Lib~Item~Price\tvariable\tPUBLIC Price As Currency\t/g/lib/Item.cls:3\n"},
      {"box", "Shop~frmMain~Box\tcontrol\tBegin VB.Frame Box\t/g/frmMain.frm:4\n"}};
  for (const auto& [name, expected] : cases)
    EXPECT_EQ(RunFor({"find", "/g/G.vbg", name}), expected) << name;
  EXPECT_EQ(RunFor({"find", "/g", "item", "--kind", "module"}),
            "Lib~Item\tmodule\tPRIVATE module Item\t/g/lib/Item.cls:2\n");
  const json whole = JsonLines({"find", "/g/G.vbg", "Post", "--json"}).at(0);
  EXPECT_EQ(whole["Class"], "Block");
  EXPECT_EQ(whole["Parameters"][0]["DefaultValue"], "1");
  EXPECT_THAT(RunFor({"find", "/g/G.vbg", "nowhere"}, exNo), HasSubstr("'nowhere'"));
  RunFor({"find", "/g/G.vbg", "post", "--kind", "event"}, exNo);
  RunFor({"find", "/g/G.vbg", "post", "--kind", "sub"}, exUsage);
}

TEST_F(NamesCommands, ResolveTellsWhatATypeIs) {
  EXPECT_EQ(RunFor({"resolve", "/g/Shop.vbp", "Colour"}),
            "enumeration of another module\tShop~modMain~Colour_EN\t/g/modMain.bas:3\n");
  EXPECT_EQ(RunFor({"resolve", "/g/Shop.vbp", "colour", "--from", "MODMAIN"}),
            "enumeration of the module\tShop~modMain~Colour_EN\t/g/modMain.bas:3\n");
  EXPECT_EQ(RunFor({"resolve", "/g/Shop.vbp", "Long"}), "intrinsic type\n");
  EXPECT_EQ(RunFor({"resolve", "/g/G.vbg", "Item", "--from", "modMain"}),
            "module of another project\tLib~Item\t/g/lib/Item.cls:2\n");
  const json item = JsonLines({"resolve", "/g/G.vbg", "Item", "--json"}).at(0);
  EXPECT_EQ(item["TypeClass"], "tcOtherProjectModule");
  RunFor({"resolve", "/g/Shop.vbp", "Item"}, exNo);
  EXPECT_THAT(RunFor({"resolve", "/g/Shop.vbp", "Long", "--from", "x"}, exNo),
              HasSubstr("no module 'x'"));
}

TEST_F(NamesCommands, ControlsShowsTheTree) {
  EXPECT_EQ(RunFor({"controls", "/g/Shop.vbp"}),
            "VB.Form frmMain \"Main\" at 0,0  /g/frmMain.frm:2\n"
            "  VB.Frame Box at 10,20  /g/frmMain.frm:4\n"
            "    VB.CommandButton cmd(3) \"Go\" at 0,0  /g/frmMain.frm:7\n");
  const json form = JsonLines({"controls", "/g/G.vbg", "frmMain", "--json"}).at(0);
  EXPECT_EQ(form["VBControls"][0]["VBControls"][0]["Caption"], "Go");
  EXPECT_EQ(RunFor({"controls", "/g/Shop.vbp", "--properties"}),
            "VB.Form frmMain \"Main\" at 0,0  /g/frmMain.frm:2\n"
            "    Caption = \"Main\"\n"
            "  VB.Frame Box at 10,20  /g/frmMain.frm:4\n"
            "      Left = 10\n"
            "      Top = 20\n"
            "    VB.CommandButton cmd(3) \"Go\" at 0,0  /g/frmMain.frm:7\n"
            "        Caption = \"Go\"\n"
            "        Index = 3\n");
  const json whole = JsonLines({"controls", "/g/Shop.vbp", "--properties", "--json"}).at(0);
  EXPECT_EQ(whole["VBControls"][0]["Properties"][1]["Value"], "20");
  EXPECT_FALSE(form["VBControls"][0].contains("Properties"));
  RunFor({"controls", "/g/Shop.vbp", "nowhere"}, exNo);
  RunFor({"controls", "/g/lib/Lib.vbp"}, exNo);
}

TEST_F(NamesCommands, StructureDrawsProjectsAndReferences) {
  EXPECT_EQ(RunFor({"structure", "/g"}),
            "<Projects>\n"
            "  <Project ProjectName=\"Lib\" FullyQualifiedPath=\"Z:\\g\\lib\\Lib.vbp\">\n"
            "    <Parent ProjectName=\"Shop\" />\n"
            "  </Project>\n"
            "  <Project ProjectName=\"Shop\" FullyQualifiedPath=\"Z:\\g\\Shop.vbp\">\n"
            "    <Child ProjectName=\"Lib\" />\n"
            "  </Project>\n"
            "</Projects>\n");
  EXPECT_EQ(RunFor({"structure", "/g/G.vbg", "--dot"}),
            "digraph projects {\n"
            "  n0 [label=\"Shop\", shape=box];\n"
            "  n1 [label=\"Lib\", shape=box];\n"
            "  n2 [label=\"A \\\"Lib\\\"\"];\n"
            "  n0 -> n1;\n"
            "  n0 -> n2;\n"
            "}\n");
  EXPECT_EQ(RunFor({"structure", "/g/G.vbg", "--mermaid"}),
            "graph LR\n"
            "  n0[\"Shop\"]\n"
            "  n1[\"Lib\"]\n"
            "  n2([\"A #quot;Lib#quot;\"])\n"
            "  n0 --> n1\n"
            "  n0 --> n2\n");
}

TEST_F(NamesCommands, TreeAndDumpTakeGroupsAndFolders) {
  for (const char* path : {"/g/G.vbg", "/g"}) {
    const std::string tree = RunFor({"tree", path, "--depth", "1"});
    EXPECT_THAT(tree, HasSubstr("project Shop "));
    EXPECT_THAT(tree, HasSubstr("project Lib "));
  }
  const json group = json::parse(RunFor({"dump", "/g/G.vbg", "--comparable"}));
  EXPECT_EQ(group["Class"], "VBProjectGroup");
  ASSERT_EQ(group["VBProjects"].size(), 2u);
  const json alone = json::parse(RunFor({"dump", "/g/lib/Lib.vbp", "--comparable"}));
  EXPECT_EQ(group["VBProjects"][1], alone) << "a project looks alike alone and in its group";
  EXPECT_EQ(JsonLines({"dump", "/g/lib", "--comparable"}).at(0), alone);
}

}  // namespace
}  // namespace vendrel::cli
