// graph: what is drawn at each level, what ties projects, and the forms for other programs.
#include "support/MemoryFiles.h"
#include "support/ToolRun.h"

namespace vendrel::cli {
namespace {

using nlohmann::json;

std::string Header(const char* name) {
  return "VERSION 1.0 CLASS\r\nAttribute VB_Name = \"" + std::string(name) + "\"\r\n";
}

// Two projects of one name, one of which refers to the other by its path; a third one to the file
// that is made of it.
struct Shops {
  test::MemoryFiles Files{
      {"/e/a/A.vbp",
       "Type=OleDll\r\nClass=Item; Item.cls\r\nClass=IPriced; IPriced.cls\r\nModule=M; M.bas\r\n"
       "Name=\"Shop\"\r\nExeName32=\"Goods.dll\"\r\n"},
      {"/e/a/Item.cls", Header("Item") + "Implements IPriced\r\nImplements Far.Thing\r\n"
                                         "Public Owner As Shop.Item\r\n"},
      {"/e/a/IPriced.cls", Header("IPriced") + "Property Get Price()\r\nEnd Property\r\n"},
      {"/e/a/M.bas", "Attribute VB_Name = \"M\"\r\nSub A(x As Item, y() As Item)\r\nEnd Sub\r\n"},
      {"/e/b/B.vbp",
       "Type=Exe\r\nReference=*\\A..\\a\\A.vbp\r\nForm=F.frm\r\nName=\"Shop\"\r\n"
       "Reference=*\\G{1}#2.0#0#C:\\none.tlb#A \"library\"\r\n"},
      {"/e/b/F.frm",
       "VERSION 5.00\r\nBegin VB.Form F\r\nEnd\r\nAttribute VB_Name = \"F\"\r\n"
       "Dim i As Item\r\nDim n As Nothing2\r\n"},
      {"/e/c/C.vbp",
       "Type=Exe\r\nReference=*\\G{2}#1.0#0#..\\out\\Goods.dll#Goods\r\n"
       "Name=\"Third\"\r\n"}};
};

TEST(Graph, DrawsProjectsModulesOrClasses) {
  const Shops shops;
  const auto graph = [](std::vector<std::string> more) {
    more.insert(more.begin(), {"graph", "/e", "--root", "/e"});
    return RunFor(more);
  };
  EXPECT_EQ(graph({}),
            "Shop (b/B.vbp)\treferences\tShop (a/A.vbp)\t1\n"
            "Shop (b/B.vbp)\treferences\tA \"library\"\t1\n"
            "Third\treferences\tShop (a/A.vbp)\t1\n");
  EXPECT_EQ(graph({"--level", "class"}),
            "Shop.Item\timplements\tShop.IPriced\t1\n"
            "Shop.Item\timplements\tThing\t1\n"
            "Shop.F\tuses\tShop.Item\t1\n");
  EXPECT_THAT(graph({"--level", "module"}),
              AllOf(HasSubstr("Shop.M\tuses\tShop.Item\t2\n"), HasSubstr("\treferences\t")));
  EXPECT_EQ(graph({"--level", "class", "--focus", "f"}), "Shop.F\tuses\tShop.Item\t1\n");
  EXPECT_EQ(graph({"--level", "class", "--focus", "Shop.F", "--depth", "2"}),
            graph({"--level", "class"}));
  EXPECT_EQ(graph({"--focus", "third", "--depth", "0"}), "Third\n");
  EXPECT_THAT(RunFor({"graph", "/e", "--focus", "Nobody"}, exNo), HasSubstr("'Nobody'"));
  RunFor({"graph", "/e", "--depth", "2"}, exUsage);
}

// What modules call each other, counted; what one procedure calls of its own module is no edge.
TEST(Graph, AndInventoryTellWhoCallsWhom) {
  const test::MemoryFiles files{
      {"/k/K.vbp",
       "Type=Exe\nReference=*\\G{1}#1.0#0#C:\\W\\scrrun.dll#Scripting\nReference=*\\G{2}#1.0#0#C:"
       "\\W\\own.dll#Own\nForm=F.frm\nModule=M; M.bas\nName=\"K\"\nStartup=\"F\"\n"},
      {"/k/F.frm",
       "VERSION 5.00\nBegin VB.Form F\nBegin VB.TextBox Box\nEnd\nBegin VB.Label Idle\nEnd\nEnd\n"
       "Attribute VB_Name = \"F\"\nPrivate Sub Form_Load()\nTwice 1\nTwice 2\nOwn\nBox.Text = "
       "Box.Tag\nDim d As New Scripting.Dictionary\nEnd Sub\nPrivate Sub Own()\nTwice 3\nEnd "
       "Sub\n"},
      {"/k/M.bas", "Attribute VB_Name = \"M\"\nSub Twice(n)\nEnd Sub\n"}};
  EXPECT_THAT(RunFor({"graph", "/k/K.vbp", "--level", "module", "--calls"}),
              HasSubstr("K.F\tcalls\tK.M\t3\n"));
  RunFor({"graph", "/k/K.vbp", "--calls"}, exUsage);
  std::map<std::string, json> rows;
  for (const json& row : JsonLines({"inventory", "/k/K.vbp", "--json", "--uses"}))
    if (row.contains("Record"))
      rows[row["Record"].get<std::string>() + " " +
           row.value("QualifiedName", row.value("ProgID", row.value("Name", "")))] = row;
  EXPECT_EQ(rows["procedure K~M~Twice"]["FanIn"], 2);
  EXPECT_EQ(rows["procedure K~F~Form_Load"]["FanOut"], 2);
  EXPECT_EQ(rows["control VB.TextBox"]["Uses"], 2);
  EXPECT_EQ(rows["control VB.Label"]["Uses"], 0);
  EXPECT_EQ(rows["reference Scripting"]["Uses"], 2);
  EXPECT_EQ(rows["reference Own"]["Uses"], "");
  EXPECT_EQ(rows["call "]["Calls"], 3);
}

TEST(Graph, IsWrittenForProgramsThatDraw) {
  const Shops shops;
  const std::string dot = RunFor({"graph", "/e", "--level", "module", "--dot", "--root", "/e"});
  EXPECT_THAT(dot,
              AllOf(StartsWith("digraph code {\n"), HasSubstr("label=\"A \\\"library\\\"\""),
                    HasSubstr("{\n  label=\"Shop (a/A.vbp)\";\n  n0 [label=\"Shop (a/A.vbp)\""),
                    HasSubstr("  n1 -> n2 [style=dashed, arrowhead=empty];\n")));
  EXPECT_THAT(RunFor({"graph", "/e", "--mermaid"}),
              AllOf(StartsWith("graph LR\n"), HasSubstr("([\"A #quot;library#quot;\"])\n")));
  EXPECT_THAT(RunFor({"graph", "/e", "--graphml"}),
              AllOf(HasSubstr("<data key=\"label\">A "), HasSubstr("<data key=\"count\">1</data>"),
                    HasSubstr("</graphml>\n")));
  std::set<std::string> labels;
  for (const json& line : JsonLines({"graph", "/e", "--level", "module", "--json"})) {
    if (line["Record"] == "node")
      EXPECT_TRUE(labels.insert(line["Label"]).second) << line;
    else
      EXPECT_TRUE(labels.contains(line["From"]) && labels.contains(line["To"])) << line;
  }
  EXPECT_EQ(labels.size(), 9u);
}

}  // namespace
}  // namespace vendrel::cli
