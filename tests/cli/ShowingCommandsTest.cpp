// The commands that show a project to readers: html, members, help-ids.

#include <gtest/gtest.h>

#include "support/MemoryFiles.h"
#include "support/ToolRun.h"

namespace vendrel::cli {
namespace {

using nlohmann::json;

class ShowingCommands : public testing::Test {
 protected:
  test::MemoryFiles mFiles{
      {"/g/Shop.vbp",
       "Type=OleDll\r\nClass=Item; Item.cls\r\nModule=modMain; modMain.bas\r\n"
       "Module=modGone; modGone.bas\r\nName=\"Shop\"\r\n"},
      {"/g/modMain.bas", "Attribute VB_Name = \"modMain\"\r\nSub Main()\r\nEnd Sub\r\n"},
      {"/g/Item.cls",
       "VERSION 1.0 CLASS\r\nAttribute VB_Name = \"Item\"\r\nAttribute VB_Exposed = True\r\n"
       "Implements IShape\r\nEvent Sold()\r\nPublic Enum Colour\r\n  Red\r\nEnd Enum\r\n"
       "Public Property Get Size() As Long\r\nEnd Property\r\n"
       "Public Property Let Size(ByVal v As Long)\r\nEnd Property\r\n"
       "Public Sub Post()\r\nEnd Sub\r\nPrivate Sub Inner()\r\nEnd Sub\r\n"
       "Private Sub IShape_Draw()\r\nEnd Sub\r\n"}};
};

TEST_F(ShowingCommands, HtmlShowsAProcedureAModuleOrEverything) {
  const std::string post = RunFor({"html", "/g/Shop.vbp", "Post"});
  EXPECT_TRUE(post.starts_with("<CODE>\r\n<a name=\"Shop~Item~Post\"></a>")) << post;
  for (const char* name : {"Item~Post", "shop~item~post"})
    EXPECT_EQ(RunFor({"html", "/g/Shop.vbp", name}), post) << name;
  const std::string size = RunFor({"html", "/g/Shop.vbp", "Size"});
  for (const char* part : {">Get</font> Size()", ">Let</font> Size("})
    EXPECT_THAT(size, HasSubstr(part));
  const std::string module = RunFor({"html", "/g/Shop.vbp", "modMain"});
  EXPECT_THAT(module, HasSubstr("Attribute VB_Name"));
  EXPECT_THAT(module, Not(HasSubstr("Item")));
  const std::string all = RunFor({"html", "/g/Shop.vbp"});
  EXPECT_THAT(all, HasSubstr("<a name=\"Shop~Item\">"));
  EXPECT_THAT(all, HasSubstr(module));
  EXPECT_THAT(RunFor({"html", "/g/Shop.vbp", "None"}, exNo), HasSubstr("'None'"));
}

TEST_F(ShowingCommands, HtmlMakesAPageWithAnIndex) {
  const std::string page = RunFor({"html", "/g/Shop.vbp", "--page"});
  for (const char* part :
       {"<title>Shop.vbp</title>", "<a href=\"#m1\">Shop~Item</a>", "<section id=m2>",
        "<h2>modMain<small>/g/modMain.bas</small></h2>", "<a id=\"Shop~Item~Post\"></a>"})
    EXPECT_THAT(page, HasSubstr(part));
  EXPECT_TRUE(page.ends_with("</html>\n"));
  const std::string post = RunFor({"html", "/g/Item.cls", "Post", "--page"});
  EXPECT_THAT(post, HasSubstr("counter-reset:line 12"));
}

TEST_F(ShowingCommands, MembersAreThoseThatUsersSee) {
  EXPECT_EQ(RunFor({"members", "/g/Shop.vbp", "item"}),
            "Colour\tenums\tPUBLIC Enum Colour\t/g/Item.cls:6\n"
            "Sold\tevents\tPUBLIC Event Sold()\t/g/Item.cls:5\n"
            "Size\tproperties\tPublic Property Get Size() As Long\t/g/Item.cls:9\n"
            "Post\tmethods\tPublic Sub Post()\t/g/Item.cls:13\n");
  EXPECT_EQ(RunFor({"members", "/g/Shop.vbp", "Shop~Item", "--interface", "IShape", "--private"}),
            "Colour\tenums\tPUBLIC Enum Colour\t/g/Item.cls:6\n"
            "Sold\tevents\tPUBLIC Event Sold()\t/g/Item.cls:5\n"
            "IShape_Draw\tmethods\tPrivate Sub IShape_Draw()\t/g/Item.cls:17\n");
  const json member =
      JsonLines({"members", "/g/Shop.vbp", "Item", "--kind", "methods", "--json"}).at(0);
  EXPECT_EQ(member["Name"], "Post");
  EXPECT_EQ(member["QualifiedName"], "Shop~Item~Post");
  const ToolRun none =
      ToolEnding(exDone, {"members", "/g/Shop.vbp", "modMain", "--kind", "collections"});
  EXPECT_EQ(none.Out, "");
  EXPECT_THAT(none.Err, HasSubstr("modMain has no public collections; --private"));
  EXPECT_THAT(RunFor({"members", "/g/Shop.vbp", "None"}, exNo), HasSubstr("'None'"));
  RunFor({"members", "/g/Shop.vbp", "Item", "--kind", "procedures"}, exUsage);
}

TEST_F(ShowingCommands, LinesAndStructureTakeSeveralPaths) {
  const auto lines = JsonLines({"lines", "/g/Item.cls", "/g/Shop.vbp", "--json"});
  EXPECT_EQ(lines.front()["File"], "/g/Item.cls");
  EXPECT_EQ(lines.back()["File"], "/g/Shop.vbp");
  const ToolRun run = ToolEnding(exFailed, {"lines", "/none.bas", "/g/Shop.vbp"});
  EXPECT_THAT(run.Err, HasSubstr("/none.bas: no such file"));
  EXPECT_THAT(run.Out, HasSubstr("/g/Shop.vbp:1: "));
  mFiles.Add("/h/A.vbp", "Type=Exe\r\nName=\"A\"\r\n");
  mFiles.Add("/h/G.vbg", "VBGROUP 5.0\r\nProject=A.vbp\r\n");
  const std::string both = RunFor({"structure", "/g/Shop.vbp", "/h/G.vbg", "--dot"});
  EXPECT_THAT(both, AllOf(HasSubstr("label=\"Shop\""), HasSubstr("label=\"A\"")));
}

// What is told on the way is an object too.
TEST_F(ShowingCommands, RemarksAreObjectsWhereDiagnosticsAre) {
  for (const std::vector<std::string>& run :
       {std::vector<std::string>{"members", "/g/Shop.vbp", "modMain", "--kind", "collections"},
        std::vector<std::string>{"help-ids", "/g/Shop.vbp", "--begin", "5", "--set",
                                 "LoadBlocksOnly=False"}}) {
    auto asJson = run;
    asJson.insert(asJson.end(), {"--diagnostics", "json"});
    std::istringstream told(ToolEnding(exDone, asJson).Err);
    for (std::string line; std::getline(told, line);)
      EXPECT_EQ(json::parse(line)["Column"] > 0, json::parse(line)["Line"] > 0) << line;
  }
}

TEST_F(ShowingCommands, HelpIDsAreAMapInThreeForms) {
  EXPECT_EQ(RunFor({"help-ids", "/g/Shop.vbp"}), "");
  const std::vector<std::string> assign{"help-ids", "/g/Shop.vbp", "--begin", "100"};
  EXPECT_EQ(RunFor(assign),
            "100\tShop\t/g/Shop.vbp\n102\tShop~Item\t/g/Item.cls:2\n"
            "103\tShop~Item~Sold_EV\t/g/Item.cls:5\n104\tShop~Item~Size\t/g/Item.cls:9\n"
            "105\tShop~Item~Post\t/g/Item.cls:13\n");
  auto asHeader = assign, asJson = assign;
  asHeader.push_back("--header");
  asJson.push_back("--json");
  EXPECT_THAT(RunFor(asHeader), HasSubstr("#define IDH_Shop_Item_Post 105\r\n"));
  EXPECT_EQ(JsonLines(asJson).front(), json::parse(R"({"HelpContextID":100,"UniqueName":"Shop",
                "QualifiedName":"Shop","File":"/g/Shop.vbp","Line":0,"Column":0})"));
  RunFor({"help-ids", "/g/Shop.vbp", "--force"}, exUsage);
  RunFor({"help-ids", "/g/Shop.vbp", "--begin", "0"}, exUsage);
}

TEST_F(ShowingCommands, HelpIDsAreWrittenIntoTheSource) {
  mFiles.Add("/g/Shop.vbp", "Type=OleDll\r\nClass=Item; Item.cls\r\nName=\"Shop\"\r\n");
  const std::string map = RunFor({"help-ids", "/g/Shop.vbp", "--begin", "100", "--write"});
  EXPECT_THAT(map, HasSubstr("105\tShop~Item~Post"));
  const std::string source = mFiles["/g/Item.cls"];
  for (const char* line :
       {"\r\nAttribute VB_HelpID = 102\r\n", "Attribute Sold.VB_HelpID = 103\r\n",
        "Attribute Post.VB_HelpID = 105\r\n"})
    EXPECT_THAT(source, HasSubstr(line));
  EXPECT_THAT(mFiles["/g/Shop.vbp"], HasSubstr("HelpContextID=\"100\""));
  // Lines have moved, the numbers are the same.
  std::istringstream before(map), after(RunFor({"help-ids", "/g/Shop.vbp"}));
  for (std::string a, b; std::getline(before, a);) {
    std::getline(after, b);
    EXPECT_EQ(a.substr(0, a.rfind('\t')), b.substr(0, b.rfind('\t')));
  }
  // Once all have numbers nothing is written.
  const std::string backup = mFiles["/g/SourceBackup/Item.cls"];
  const ToolRun again =
      ToolEnding(exDone, {"help-ids", "/g/Shop.vbp", "--begin", "100", "--write"});
  EXPECT_THAT(again.Err, HasSubstr("/g/Shop.vbp: no help ID was given, so nothing is written: "));
  EXPECT_EQ(mFiles["/g/SourceBackup/Item.cls"], backup);
  RunFor({"help-ids", "/g/Item.cls", "--begin", "100", "--write"}, exUsage);
  RunFor({"help-ids", "/g/Shop.vbp", "--write"}, exUsage);
}

}  // namespace
}  // namespace vendrel::cli
