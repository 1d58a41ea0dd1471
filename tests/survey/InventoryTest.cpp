#include "survey/Inventory.h"

#include "support/MemoryFiles.h"
#include "support/Projects.h"
#include "support/ToolRun.h"

namespace vendrel::cli {
namespace {

using nlohmann::json;

std::string Lines(int count, const std::string& text) {
  std::string lines;
  for (int i = 0; i < count; ++i) lines += text + std::to_string(i) + "\r\n";
  return lines;
}

// Two projects that share a module, one that nobody lists, one equal and one nearly equal to it.
struct Estate {
  const std::string Shared =
      "Attribute VB_Name = \"S\"\r\n' told _\r\n further\r\nDeclare Sub Beep Lib \"kernel32\" "
      "()\r\n\r\n"
      "Sub A()\r\n" +
      Lines(20, "  x = ") + "End Sub\r\n";
  test::MemoryFiles Files{
      {"/e/a/A.vbp", "Type=Exe\r\nModule=S; ..\\S.bas\r\nModule=G; Gone.bas\r\nName=\"A\"\r\n"},
      {"/e/b/B.vbp",
       "Type=OleDll\r\nModule=S; ..\\S.bas\r\nModule=T; T.bas\r\nForm=F.frm\r\n"
       "Reference=*\\G{1}#2.0#0#C:\\none.tlb#None\r\nName=\"B\"\r\n"},
      {"/e/S.bas", Shared},
      {"/e/b/T.bas", Shared},
      {"/e/b/F.frm",
       "VERSION 5.00\r\nBegin VB.Form F\r\n  Begin VB.Label L\r\n  End\r\nEnd\r\n"
       "Attribute VB_Name = \"F\"\r\nSub B()\r\n  If a Then\r\n    For i = 1 To 2: For j = 1 To "
       "2\r\n"
       "      If b Then c = 1 Else d = 2\r\n    Next i, j\r\n  ElseIf e Then\r\n    Select Case "
       "f\r\n"
       "      Case 1, _\r\n        2\r\n      Case Else\r\n    End Select\r\n  End If\r\n"
       "  Set o = CreateObject( \"Scripting.Dictionary\") ' While\r\n  Set p = GetObject(, "
       "\"Excel.Application\")\r\n"
       "  Set q = CreateObject(Name)\r\nEnd Sub\r\n"},
      {"/e/old/U.bas", "Attribute VB_Name = \"U\"\nSub A()\n" + Lines(20, "x = ") + "End Sub\n"}};
};

std::vector<json> RowsOf(const std::string& record, const std::vector<std::string>& run) {
  std::vector<json> rows;
  for (const json& row : JsonLines(run))
    if (row["Record"] == record) rows.push_back(row);
  return rows;
}

TEST(Inventory, CountsEachModuleOnceAndTellsWhatNobodyLists) {
  const Estate estate;
  const auto rows = [](const std::string& record) {
    return RowsOf(record, {"inventory", "/e", "--json", "--root", "/e"});
  };
  const auto projects = rows("project");
  ASSERT_EQ(projects.size(), 2u);
  EXPECT_EQ(projects[0]["Missing"], 1);
  EXPECT_EQ(projects[1]["File"], "b/B.vbp");
  const auto modules = rows("module");
  ASSERT_EQ(modules.size(), 3u);
  EXPECT_EQ(modules[0], json::parse(R"({"Record":"module","Name":"S","Kind":"standard module",
      "File":"S.bas","Code":23,"Comment":2,"Blank":1,"Header":1,"Procedures":1,
      "CodePage":"ASCII","LineEnds":"CR LF","Projects":2})"));
  const auto procedures = rows("procedure");
  EXPECT_EQ(procedures.back()["QualifiedName"], "B~F~B");
  EXPECT_EQ(procedures.back()["Lines"], 16);
  EXPECT_EQ(procedures.back()["Complexity"], 7);
  EXPECT_EQ(procedures.back()["Nesting"], 3);
  EXPECT_EQ(rows("unlisted"),
            (std::vector<json>{{{"Record", "unlisted"}, {"File", "old/U.bas"}, {"Lines", 23}}}));
  EXPECT_EQ(rows("shared").size(), 1u);
  EXPECT_EQ(rows("equal")[0]["EqualTo"], "S.bas");
  EXPECT_EQ(rows("library")[0]["Library"], "kernel32.dll");
  EXPECT_EQ(rows("reference")[0]["Found"], false);
  const auto progIDs = rows("progid");
  ASSERT_EQ(progIDs.size(), 2u);
  EXPECT_EQ(progIDs[0]["ProgID"], "Scripting.Dictionary");
  EXPECT_EQ(progIDs[1]["Line"], 20);
}

TEST(Inventory, FindsModulesThatAreNearlyEqual) {
  const Estate estate;
  const auto near = RowsOf(
      "near", {"inventory", "/e", "/e/old/U.bas", "--json", "--near-duplicates", "--root", "/e"});
  ASSERT_EQ(near.size(), 2u);
  EXPECT_EQ(near[0]["File"], "old/U.bas");
  EXPECT_GE(near[0]["Percent"], 80);
}

// Two types in a file, one of them in the other; lines outside of both count for the project.
TEST(Inventory, CountsTypesOfVBNetAndTheLinesAroundThem) {
  const test::MemoryFiles files{
      {"/n/N.vbproj",
       "<Project><PropertyGroup><AssemblyName>N</AssemblyName><OutputType>Exe</OutputType>"
       "</PropertyGroup><ItemGroup><Compile Include=\"A.vb\" /><Reference Include=\"Far, "
       "Version=1.0\" /><PackageReference Include=\"Pack\" Version=\"2.0\" "
       "/></ItemGroup></Project>"},
      {"/n/A.vb",
       "' told\nImports System\n\nPublic Class A\n  Structure B\n    Dim x As Integer\n"
       "  End Structure\n  Sub S()\n    Try\n      If x Then\n      End If\n"
       "    Catch e As Exception\n    End Try\n  End Sub\nEnd Class\n"}};
  const auto rows = [](const std::string& record) {
    return RowsOf(record, {"inventory", "/n", "--json", "--root", "/n"});
  };
  const auto projects = rows("project");
  ASSERT_EQ(projects.size(), 1u);
  EXPECT_EQ(projects[0]["Kind"], "VB.NET program");
  EXPECT_EQ(projects[0]["Code"], 13);
  EXPECT_EQ(projects[0]["Comment"], 1);
  EXPECT_EQ(projects[0]["Procedures"], 1);
  std::set<std::string> kinds;
  for (const json& module : rows("module")) kinds.insert(module["Kind"]);
  EXPECT_EQ(kinds, (std::set<std::string>{"class", "structure"}));
  EXPECT_EQ(rows("procedure")[0]["Complexity"], 3);
  EXPECT_EQ(rows("procedure")[0]["Nesting"], 2);
  EXPECT_TRUE(rows("equal").empty());
  const auto references = rows("reference");
  ASSERT_EQ(references.size(), 2u);
  EXPECT_EQ(references[0]["Name"], "Far");
  EXPECT_EQ(references[0]["Found"], false);
  EXPECT_EQ(references[1]["Found"], "");
}

TEST(Inventory, ShowsTheLargestToPeopleAndAllToPrograms) {
  const Estate estate;
  const std::string text = RunFor({"inventory", "/e"});
  EXPECT_THAT(text, HasSubstr("# 3 modules\nName\tKind\tFile\tCode\t"));
  EXPECT_THAT(text, HasSubstr("# 1 module files that no project lists\n"));
  EXPECT_THAT(RunFor({"inventory", "/e", "--csv"}),
              HasSubstr("\r\nprogid,Excel.Application,GetObject,"));
  EXPECT_THAT(RunFor({"inventory", "/e", "--html"}), HasSubstr("<td>Scripting.Dictionary</td>"));
}

TEST(Inputs, AreAsManyAsAreNamed) {
  const Estate estate;
  EXPECT_EQ(JsonLines({"names", "/e/a/A.vbp", "/e/b/B.vbp", "--kind", "project", "--json"}).size(),
            2u);
  EXPECT_THAT(RunFor({"find", "/e/a/A.vbp", "/e/b/B.vbp", "B"}), HasSubstr("B~F~B"));
  EXPECT_THAT(RunFor({"controls", "/e/a/A.vbp", "/e/b/B.vbp", "F"}), HasSubstr("VB.Label L"));
  const ToolRun run = ToolEnding(exFailed, {"tree", "/e/none.vbp", "/e/a/A.vbp"});
  EXPECT_THAT(run.Out, HasSubstr("A.vbp"));
  EXPECT_THAT(run.Err, HasSubstr("/e/none.vbp: no such file"));
  const auto counts = JsonLines({"check", "/e/none.vbp", "/e/b", "--json"}, exFailed).back();
  EXPECT_EQ(counts["Projects"], 1);
  EXPECT_EQ(counts["ProjectsNotRead"], 1);
  EXPECT_THAT(RunFor({"find", "/e/a/A.vbp"}, exUsage), HasSubstr("say the name to look for"));
}

TEST(Inputs, MayBeAListOrAFolderOfModules) {
  const Estate estate;
  std::istringstream list("/e/a/A.vbp\r\n\n/e/b/B.vbp\n");
  std::ostringstream out, err;
  const char* const argv[] = {"vendrelmodel", "names", "--kind", "project", "-"};
  EXPECT_EQ(RunTool(5, argv, {out, err, false, false, nullptr, &list}), exDone) << err.str();
  EXPECT_THAT(out.str(), AllOf(HasSubstr("A\tproject"), HasSubstr("B\tproject")));
  EXPECT_THAT(RunFor({"names", "-"}, exUsage), HasSubstr("no list to read"));

  test::MemoryFiles exported{
      {"/x/code/M.bas", "Attribute VB_Name = \"M\"\r\nSub A()\r\nEnd Sub\r\n"},
      {"/x/code/C.cls", "Attribute VB_Name = \"C\"\r\nDim m As M\r\n"},
      {"/x/code/more/M.bas", "Attribute VB_Name = \"M\"\r\n"}};
  const ToolRun run = ToolEnding(exDone, {"names", "/x/code"});
  EXPECT_THAT(run.Out, AllOf(HasSubstr("code~M~A\t"), HasSubstr("code~C\t")));
  EXPECT_THAT(run.Err, HasSubstr("duplicate"));
}

}  // namespace
}  // namespace vendrel::cli
