// What the statements and declarations of a module have in them that does not move with it.

#include "survey/Assessment.h"

#include "services/FileSource.h"
#include "support/MemoryFiles.h"
#include "support/SourceRoot.h"
#include "support/ToolRun.h"

namespace vendrel::cli {
namespace {

using nlohmann::json;

struct AssessCase {
  // Declarations, and lines of a procedure "Sub S(d As Date, Optional a As Long)".
  std::string Declarations, Lines;
  // "id subject" of each finding, sorted.
  std::vector<std::string> Found;
};

const std::vector<AssessCase>& AssessCases() {
  static const std::vector<AssessCase> cases{
      {"Dim o As Object, f As Form", "", {"late-binding f", "late-binding o"}},
      {"", "Set a = CreateObject(\"A.B\"): b = x.CreateObject(1)", {"late-binding createobject"}},
      {"Dim v, w As Variant\nPrivate Type T\nu\nEnd Type",
       "",
       {"variant u", "variant v", "variant w"}},
      {"Function F()\nEnd Function", "", {"variant F"}},
      {"", "If a Then GoSub 10 ' GoSub", {"gosub GoSub"}},
      {"", "10: On Error Resume Next: On Error GoTo 0", {"resume-next On Error Resume Next"}},
      {"DefInt A-Z", "", {"def-type defint"}},
      {"Private Declare Sub Wait Lib \"kernel32\" Alias \"Sleep\" (ByVal n As Long)",
       "Wait 1: x.Wait 2\nCall Wait(3)",
       {"api-call Sleep", "api-call Sleep"}},
      {"Private Declare Sub GetObject Lib \"gdi32\" (ByVal n As Long)",
       "GetObject 1",
       {"api-call GetObject"}},
      {"Private Declare Sub Beep Lib \"User\" ()\n#If Win16 Then\n#End If",
       "",
       {"sixteen-bit Beep", "sixteen-bit Win16"}},
      {"",
       "a = VarPtr(b) + StrPtr(\"VarPtr\")\nc AddressOf S",
       {"pointer addressof", "pointer strptr", "pointer varptr"}},
      {"",
       "Open \"f\" For Input As #1: Line Input #1, s: Print #1, s: Print s\nClose #1: Kill \"f\"",
       {"file-access close", "file-access input", "file-access kill", "file-access open",
        "file-access print"}},
      {"Dim Dir As Long", "a = Dir + x.EOF: Name = 1: Name b As c", {"file-access name"}},
      {"", "SaveSetting \"a\", \"b\", \"c\", 1", {"registry-access savesetting"}},
      {"",
       "Printer.Print 1: Printer.EndDoc: Set x = Printers(0)",
       {"default-member Printers", "printing printer", "printing printer", "printing printers"}},
      {"", "DoEvents\nn = DoEvents()\nx DoEvents:=1", {"do-events doevents", "do-events doevents"}},
      {"",
       "Text1 = \"a\": Text1.Text = \"b\": Set x = Text1: y = Text1 & rs!Name\nf Text1: i! = 1",
       {"default-member !Name", "default-member Text1", "default-member Text1"}},
      {"Sub P(ParamArray z())\nEnd Sub", "", {"param-array z"}},
      {"Option Base 1\nDim m(1 To 3) As Long, n(0 To 2, -1 To 1) As Long, k(5) As Long",
       "ReDim Preserve q(1 To x)\nReDim q(0 To 9): For i = 1 To 3: Next",
       {"array-base Option Base 1", "array-base m", "array-base n", "array-base q"}},
      {"",
       "a = CDbl(Now): b = d + 1: c = x.Date - 1\ne = Now() - d: s = Date + \" \": t = DateAdd(d)",
       {"date-number d", "date-number now", "date-number now"}},
  };
  return cases;
}

std::vector<std::string> FindingsOf(const AssessCase& one) {
  const test::MemoryFiles files{
      {"/p/F.frm",
       "VERSION 5.00\nBegin VB.Form F\nBegin VB.TextBox Text1\nEnd\nEnd\nAttribute VB_Name = "
       "\"F\"\n" +
           one.Declarations + "\nPrivate Sub S(d As Date, Optional a As Long)\n" + one.Lines +
           "\nEnd Sub\n"}};
  std::vector<std::string> found;
  for (const json& row : JsonLines({"assess", "/p/F.frm", "--json", "--places"}))
    if (row["Record"] == "finding")
      found.push_back(row["Hindrance"].get<std::string>() + " " +
                      row["Subject"].get<std::string>());
  std::sort(found.begin(), found.end());
  return found;
}

TEST(Assessment, FindsWhatDoesNotMove) {
  std::set<std::string> kinds{"missing-file"};
  for (const AssessCase& one : AssessCases()) {
    EXPECT_EQ(FindingsOf(one), one.Found) << one.Declarations << "\n" << one.Lines;
    for (const std::string& found : one.Found) kinds.insert(found.substr(0, found.find(' ')));
  }
  EXPECT_EQ(kinds.size(), kHindranceCount);
}

struct MovingEstate {
  test::MemoryFiles Files{
      {"/e/A.vbp",
       "Type=Exe\nModule=M; M.bas\nReference=*\\G{1}#2.0#0#C:\\none.tlb#None\nName=\"A\"\n"},
      {"/e/B.vbp", "Type=Exe\nModule=M; M.bas\nName=\"B\"\n"},
      {"/e/M.bas",
       "Attribute VB_Name = \"M\"\nDeclare Sub Sleep Lib \"kernel32\" (ByVal n As Long)\n"
       "' DoEvents\nSub A(ByVal n As Long, v)\n  DoEvents: _\n    Sleep n\n  GoSub L\nL:\nEnd "
       "Sub\n"}};
};

std::vector<json> RowsNamed(const std::string& record, const std::vector<std::string>& run) {
  std::vector<json> rows;
  for (const json& row : JsonLines(run))
    if (row["Record"] == record) rows.push_back(row);
  return rows;
}

TEST(Assessment, WeighsModulesOnceAndShowsPlaces) {
  const MovingEstate estate;
  const std::vector<std::string> run{"assess", "/e", "--json", "--places", "--root", "/e"};
  const auto modules = RowsNamed("module", run);
  ASSERT_EQ(modules.size(), 1u);
  // variant 1, do-events 3, api-call 3, gosub 8, on 7 lines of code.
  EXPECT_EQ(modules[0]["Points"], 15);
  EXPECT_EQ(modules[0]["Code"], 7);
  EXPECT_EQ(modules[0]["Score"], 100 * 15 / 22);
  EXPECT_EQ(modules[0]["VariantPercent"], 50);
  const auto projects = RowsNamed("project", run);
  ASSERT_EQ(projects.size(), 2u);
  EXPECT_EQ(projects[0]["Points"], 25);
  EXPECT_EQ(projects[1]["Points"], 15);
  const auto apis = RowsNamed("api", run);
  ASSERT_EQ(apis.size(), 1u);
  EXPECT_EQ(apis[0], json::parse(R"({"Record":"api","Library":"kernel32","Function":"Sleep",
      "Declares":1,"Calls":1,"Modules":1,"Replacement":"System.Threading.Thread.Sleep"})"));
  for (const json& row : RowsNamed("finding", run))
    if (row["Hindrance"] == "gosub") {
      EXPECT_EQ(row["Line"], 7);
      EXPECT_EQ(row["Element"], "A~M~A");
    }
  EXPECT_EQ(RowsNamed("module", {"assess", "/e", "--json", "--weight", "gosub=0"})[0]["Points"], 7);
  EXPECT_THAT(RunFor({"assess", "/e", "--weight", "gosubs=1"}, exUsage), HasSubstr("'gosubs'"));
  EXPECT_THAT(RunFor({"assess", "/e", "--weight=gosub=x"}, exUsage), HasSubstr("from 0 to 1000"));
  test::MemoryFiles settings{{"/e/.vendrelmodel.toml", "[assess]\ngosub = 2\n"},
                             {"/e/A.vbp", estate.Files["/e/A.vbp"]},
                             {"/e/M.bas", estate.Files["/e/M.bas"]}};
  EXPECT_EQ(RowsNamed("module", {"assess", "/e", "--json"})[0]["Points"], 9);
  settings.Add("/e/.vendrelmodel.toml", "[assess]\ngosubs = 2\n");
  EXPECT_THAT(RunFor({"assess", "/e"}, exUsage), HasSubstr(".vendrelmodel.toml:2: 'gosubs'"));
}

TEST(Assessment, IsWrittenInEachForm) {
  const MovingEstate estate;
  EXPECT_THAT(RunFor({"assess", "/e"}), HasSubstr("# 2 projects\n"));
  EXPECT_THAT(RunFor({"assess", "/e", "--csv"}), HasSubstr("\r\nname,doevents,do-events,1,1,"));
  EXPECT_THAT(RunFor({"assess", "/e", "--html"}), HasSubstr("<td>do-events</td>"));
}

TEST(Assessment, HasAPageWithEachKindAndItsWeight) {
  const std::string page = ReadWholeFile(test::SourceRoot() + "/docs/assess.md");
  for (const HindranceRow& row : kHindrances)
    EXPECT_THAT(page, HasSubstr("| `" + std::string(row.Id) + "` | " + std::to_string(row.Weight) +
                                " | " + std::string(row.What) + " |"));
  for (const RuntimeName& name : RuntimeNames()) EXPECT_EQ(FindRuntimeName(name.Name), &name);
}

}  // namespace
}  // namespace vendrel::cli
