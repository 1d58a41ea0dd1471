#include "cli/Tool.h"

#include <re2/re2.h>

#include "cli/ProjectSettings.h"
#include "output/Xml.h"
#include "support/MemoryFiles.h"
#include "support/SourceRoot.h"
#include "support/ToolRun.h"

namespace vendrel::cli {
namespace {

using nlohmann::json;

constexpr const char* kProject =
    "Type=Exe\r\nModule=modMain; modMain.bas\r\nModule=modGone; modGone.bas\r\nClass=Item; "
    "ITEM.cls\r\nName=\"Shop\"\r\n";
constexpr const char* kSmallModule =
    "Attribute VB_Name = \"modMain\"\r\nOption Explicit\r\nPublic Total As Currency\r\n"
    "Public Enum Colour\r\n  Red = 1\r\nEnd Enum\r\n\r\nPublic Sub Post(ByVal Amount As "
    "Currency)\r\n"
    "  Total = Total + Amount\r\nEnd Sub\r\n";

// A project with one module in place, one missing, and one written in another case.
class ToolOnAProject : public testing::Test {
 protected:
  test::MemoryFiles mFiles{{"/p/Shop.vbp", kProject},
                           {"/p/modMain.bas", kSmallModule},
                           {"/p/Item.cls", "Attribute VB_Name = \"Item\"\r\n"},
                           {"/p/whole/One.vbp", "Type=Exe\r\nModule=m; ..\\modMain.bas\r\n"}};
};

TEST_F(ToolOnAProject, TreeShowsEveryElementWithItsPlace) {
  const ToolRun run = ToolEnding(exDone, {"tree", "/p/Shop.vbp", "--depth", "4"});
  for (const char* part :
       {"project Shop  (EXE, 3 modules, 1 procedure)  /p/Shop.vbp:1\n",
        "  module modMain  (10 lines, 1 procedure)  /p/modMain.bas:1\n",
        "    variable Public Total As Currency  /p/modMain.bas:3\n",
        "    enum Public Colour  (1 member)  /p/modMain.bas:4\n",
        "      member Red  (1)  /p/modMain.bas:5\n",
        "    procedure Public Sub Post(ByVal Amount As Currency)  /p/modMain.bas:8\n",
        "      parameter Amount As Currency  /p/modMain.bas:8\n", "  module modGone  (missing)"})
    EXPECT_THAT(run.Out, HasSubstr(part));
  EXPECT_THAT(run.Err, HasSubstr("warning: "));
  EXPECT_THAT(run.Err, HasSubstr("[missing-module]"));
  EXPECT_EQ(RunFor({"/p/Shop.vbp", "--depth", "4"}), run.Out) << "a file alone means tree";
}

TEST_F(ToolOnAProject, TreeGoesAsFarAsAsked) {
  EXPECT_THAT(RunFor({"tree", "/p/Shop.vbp", "--depth", "1"}), Not(HasSubstr("module modMain")));
  EXPECT_THAT(RunFor({"tree", "/p/Shop.vbp", "--depth", "2"}), Not(HasSubstr("Post")));
  EXPECT_THAT(RunFor({"tree", "/p/Shop.vbp"}), Not(HasSubstr("parameter")));
  EXPECT_THAT(RunFor({"tree", "/p/Shop.vbp", "--module", "MODMAIN"}),
              AllOf(HasSubstr("module modMain"), Not(HasSubstr("Item"))));
  EXPECT_THAT(RunFor({"tree", "/p/Shop.vbp", "--module", "other"}, exNo),
              HasSubstr("no module 'other'"));
}

TEST_F(ToolOnAProject, TreeIsColouredOnATerminalUnlessRefused) {
  EXPECT_THAT(Tool({"/p/Shop.vbp"}, {.Terminal = true}).Out, HasSubstr("\033["));
  EXPECT_THAT(RunFor({"/p/Shop.vbp"}), Not(HasSubstr("\033[")));
  setenv("NO_COLOR", "1", 1);
  EXPECT_THAT(Tool({"/p/Shop.vbp"}, {.Terminal = true}).Out, Not(HasSubstr("\033[")));
  unsetenv("NO_COLOR");
}

TEST_F(ToolOnAProject, DumpAndManifestGiveWholeDocuments) {
  const json dump = json::parse(RunFor({"dump", "/p/Shop.vbp"}));
  EXPECT_EQ(dump["Class"], "VBProject");
  EXPECT_EQ(dump["Components"].size(), 3u);
  EXPECT_EQ(dump["Components"][0]["FileName"], "Z:\\p\\modMain.bas");
  EXPECT_FALSE(dump["Components"][0]["Blocks"][0].contains("CodeLines"));
  const json lines = json::parse(RunFor({"dump", "/p/modMain.bas", "--lines", "--root", "/p"}));
  EXPECT_EQ(lines["Components"][0]["FileName"], "Z:\\root\\modMain.bas");
  EXPECT_EQ(lines["Components"][0]["Blocks"].back()["CodeLines"].back()["Text"], "End Sub");

  XmlDocument document;
  document.LoadXml(RunFor({"manifest", "/p/Shop.vbp"}));
  EXPECT_EQ(document.Root().Elements().Count(), 3u);
  document.LoadXml(RunFor({"manifest", "/p/Shop.vbp", "--project-only"}));
  EXPECT_EQ(document.Root().Elements().Count(), 0u);
}

TEST_F(ToolOnAProject, CheckCountsAndSaysNoWhenAModuleIsMissing) {
  const ToolRun run = ToolEnding(exNo, {"check", "/p/Shop.vbp"});
  EXPECT_THAT(run.Out, HasSubstr("[missing-module]"));
  EXPECT_THAT(
      run.Out,
      HasSubstr("1 project, 0 projects not read, 3 modules listed, 2 found, 1 found under "
                "another case, 1 missing, 0 unreadable, 0 duplicate names, 0 references without a "
                "file\n"));
  ToolEnding(exDone, {"check", "/p/whole"});

  mFiles.Add("/p/twice/T.vbp", "Module=m; ..\\modMain.bas\r\nModule=M; ..\\modMain.bas\r\n");
  EXPECT_THAT(
      Tool({"check", "/p/twice/T.vbp"}).Out,
      HasSubstr("2 modules listed, 1 found, 0 found under another case, 0 missing, 0 unreadable, 1 "
                "duplicate name,"));

  EXPECT_EQ(Tool({"check", "/p/Shop.vbp", "--quiet"}).Out, run.Out);
  mFiles.Add("/p/G.vbg", "VBGROUP 5.0\r\nProject=whole\\One.vbp\r\nProject=No.vbp\r\n");
  const ToolRun group = ToolEnding(exFailed, {"check", "/p/G.vbg"});
  EXPECT_THAT(group.Out, AllOf(HasSubstr("/p/G.vbg:3: warning: project of the group not found: "
                                         "/p/No.vbp [missing-project]\n"),
                               HasSubstr("1 project, 1 project not read, 1 module listed")));
  const json last = JsonLines({"check", "/p", "--json"}, exNo).back();
  EXPECT_EQ(last["Projects"], 3);
  EXPECT_EQ(last["ModulesListed"], 6);
}

TEST_F(ToolOnAProject, DiagnosticsComeAsAsked) {
  const ToolRun asJson = Tool({"tree", "/p/Shop.vbp", "--diagnostics", "json"});
  const json first = json::parse(asJson.Err.substr(0, asJson.Err.find('\n')));
  EXPECT_TRUE(first.contains("Severity") && first.contains("Text") && first.contains("Line"));
  EXPECT_EQ(Tool({"tree", "/p/Shop.vbp", "--quiet"}).Err, "");
  ToolEnding(exWarnings, {"tree", "/p/Shop.vbp", "--strict"});
  ToolEnding(exDone, {"tree", "/p/whole/One.vbp", "--strict"});
}

TEST_F(ToolOnAProject, ResultsGoToAFileThatAppearsWholeOrNotAtAll) {
  const ToolRun run = ToolEnding(exDone, {"dump", "/p/Shop.vbp", "-o", "/p/out.json"});
  EXPECT_EQ(run.Out, "");
  EXPECT_EQ(mFiles["/p/out.json"], RunFor({"dump", "/p/Shop.vbp"}));

  ToolEnding(exUsage, {"dump", "/p/Shop.vbp", "-o", "/p/Shop.vbp"});
  EXPECT_EQ(mFiles["/p/Shop.vbp"], kProject);

  EXPECT_THAT(RunFor({"dump", "/p/Shop.vbp", "-o", "/no/folder/out.json"}, exFailed),
              HasSubstr("/no/folder/out.json: cannot be written"));
}

TEST_F(ToolOnAProject, OddLinesAreKeptAndTold) {
  mFiles.Add("/p/odd.bas", "Attribute VB_Name = \"odd\"\r\nOption Explicit\r\nPublic\r\nDim a\r\n");
  const ToolRun run = ToolEnding(exDone, {"tree", "/p/odd.bas"});
  EXPECT_THAT(run.Out, HasSubstr("variable"));
  EXPECT_THAT(run.Err, HasSubstr("/p/odd.bas:3: warning: "));
}

TEST_F(ToolOnAProject, CodePageIsGuessedOnceForTheWholeProject) {
  // A comment, and the name of a module's file, in windows-1251.
  const std::string name = "\xCC\xEE\xE4\xF3\xEB\xFC";
  mFiles.Add("/p/Ru.vbp", "Type=Exe\r\nModule=m; " + name + ".bas\r\nName=\"Ru\"\r\n");
  mFiles.Add("/p/Модуль.bas",
             "Attribute VB_Name = \"m\"\r\n' \xDD\xF2\xEE \xEE\xE1\xFB\xF7\xED\xFB\xE9 "
             "\xF2\xE5\xEA\xF1\xF2 \xED\xE0 \xF0\xF3\xF1\xF1\xEA\xEE\xEC \xFF\xE7\xFB\xEA\xE5\r\n");
  const ToolRun guessed = Tool({"dump", "/p/Ru.vbp"});
  EXPECT_THAT(guessed.Err, HasSubstr("windows-1251 (1 of 1 listed files"));
  EXPECT_EQ(json::parse(guessed.Out)["Components"][0]["FileName"], "Z:\\p\\Модуль.bas");
  const ToolRun given = Tool({"dump", "/p/Ru.vbp", "--codepage", "1251"});
  EXPECT_EQ(given.Out, guessed.Out);
  EXPECT_THAT(given.Err, Not(HasSubstr("windows-1251")));
}

TEST(ToolAlone, LinesClassifiesEachLineByItself) {
  const test::MemoryFiles files{
      {"/a.bas", "Public Sub A()\r\n120 x = 1 : y = 2\nPublic\r\n' c\rend"}};
  EXPECT_THAT(RunFor({"lines", "/a.bas"}),
              AllOf(HasSubstr("/a.bas:1: START_SUB               Public Sub A()\n"),
                    HasSubstr("/a.bas:3: ? ")));

  const auto records = JsonLines({"lines", "/a.bas", "--json"});
  ASSERT_EQ(records.size(), 5u);
  EXPECT_EQ(records[0]["LineType"], 11);
  EXPECT_EQ(records[0]["StatementPart"], "Public Sub A()");
  EXPECT_EQ(records[1]["MoreLines"], true);
  EXPECT_GE(records[1]["CurrentLineNumber"], 120);
  EXPECT_TRUE(records[2].contains("Failure"));
  EXPECT_EQ(records[3]["CommentPart"], "c");
}

TEST(ToolAlone, EvaluateAnswersAndShowsItsScript) {
  const auto answer = [](std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "evaluate");
    return RunFor(arguments);
  };
  EXPECT_EQ(
      answer({"#If A = 1 And X Then", "--project", "A = 1 : B = 0", "--module", "#Const X = 1"}),
      "True\n");
  EXPECT_EQ(answer({"#If A Then", "--project", "A = 0"}), "False\n");
  EXPECT_EQ(answer({"#If Win32 Then", "--reading", "classic"}), "False\n");
  EXPECT_EQ(answer({"#If Win32 Then"}), "True\n");
  EXPECT_EQ(answer({"#If Win32 Then", "--define", "Win32=0"}), "False\n");
  EXPECT_EQ(answer({"#If Debug Then", "--dotnet", "--reading", "classic"}), "True\n");
  EXPECT_THAT(answer({"#If A Then", "--project", "A = 1", "--script"}),
              HasSubstr("Evaluate = (cc1)"));
}

TEST(ToolAlone, WrongUsageAndInputSayWhatAndWhatToDo) {
  const test::MemoryFiles files{{"/p/a.txt", "text"},
                                {"/p/bad.xml", "<r><c></r>"},
                                {"/p/n.vbproj", "<x/>"},
                                {"/p/l.dll", "MZ"},
                                {"/p/A.vbp", "Type=Exe\r\n"}};
  const struct {
    std::vector<std::string> Arguments;
    int Code;
    const char* Part;
  } cases[] = {
      {{}, exUsage, "say what is to be done; vendrelmodel --help"},
      {{"frob"}, exUsage, "'frob' is neither a command nor a file; commands are tree"},
      {{"tree"}, exUsage, "tree: needs FILE; vendrelmodel tree --help"},
      {{"tre", "/p/A.vbp"}, exUsage, "did you mean 'tree'?"},
      {{"tree", "/p/A.vbp", "--dept", "2"},
       exUsage,
       "does not take --dept; did you mean '--depth'?"},
      {{"tree", "/p/A.vbp", "--color", "pink"}, exUsage, "--color"},
      {{"tree", "/p/A.vbp", "--depth", "0"}, exUsage, "--depth"},
      {{"tree", "/p/A.vbp", "--set", "NoSuch=True"}, exUsage, "NoSuch"},
      {{"tree", "/p/A.vbp", "--set", "LoadBlocksOnly=maybe"}, exUsage, "True or False"},
      {{"tree", "/p/A.vbp", "--define", "X"}, exUsage, "--define Name=Value"},
      {{"tree", "/p/A.vbp", "--codepage", "no-such"}, exUsage, "'no-such'"},
      {{"tree", "/p/A.vbp", "--drive", "CC=/x"}, exUsage, "--drive"},
      {{"tree", "/p/A.vbp", "--reading", "fast"}, exUsage, "--reading"},
      {{"tree", "/p/A.vbp", "--tags", "/p/none.json"}, exFailed, "/p/none.json"},
      {{"tree", "/p/none.vbp"}, exFailed, "/p/none.vbp: no such file"},
      {{"/p/none.vbp"}, exFailed, "no such file"},
      {{"tree", "/p/a.txt"}, exFailed, "neither a project (.vbp, .vbproj), nor a module"},
      {{"tree", "/p/A.vbp", "--comment-file", "/p/bad.xml"},
       exFailed,
       "vendrelmodel: --comment-file: /p/bad.xml: line 1, column 9"},
      {{"tree", "/p/A.vbp", "--tags", "/p/a.txt"}, exFailed, "--tags: /p/a.txt: line 1"},
      {{"find", "/p/A.vbp", "[z"}, exUsage, "'[z' is no pattern"},
      {{"uses", "/p/A.vbp", "[z"}, exUsage, "'[z' is no pattern"},
      {{"lines", "/p"}, exFailed, "/p: a folder has no lines"},
      {{"tree", "/p/n.vbproj"}, exFailed, "no project: its root is <x>"},
      {{"manifest", "/p/l.dll"}, exFailed, "vendrelmodel: /p/l.dll: cannot be read: "},
      {{"typelib", "/p/a.txt"}, exFailed, "/p/a.txt: cannot be read: not a type library\n"},
      {{"lines", "/p/none.bas"}, exFailed, "no such file"},
      {{"--version"}, exDone, ""},
      {{"tree", "--help"}, exDone, ""},
  };
  for (const auto& sample : cases) {
    EXPECT_THAT(ToolEnding(sample.Code, sample.Arguments).Err, HasSubstr(sample.Part));
  }
  EXPECT_TRUE(RunFor({"--version"}).starts_with("vendrelmodel "));
}

TEST_F(ToolOnAProject, OptionsStandBeforeTheCommandOrBehind) {
  const ToolRun behind = Tool({"tree", "/p/Shop.vbp", "--quiet", "--depth", "1"});
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{"--quiet", "tree", "--depth", "1", "/p/Shop.vbp"},
        {"--depth", "1", "--quiet", "tree", "/p/Shop.vbp"},
        {"--depth=1", "--quiet", "/p/Shop.vbp"},
        {"--quiet", "--depth", "1", "/p/Shop.vbp"}}) {
    const ToolRun before = Tool(arguments);
    EXPECT_EQ(before.Out, behind.Out) << testing::PrintToString(arguments);
    EXPECT_EQ(before.Err + behind.Err, "");
  }
  EXPECT_THAT(RunFor({"--quiet", "frob"}, exUsage), HasSubstr("'frob' is neither"));
}

TEST_F(ToolOnAProject, TreeShowsHowThingsAreDeclared) {
  mFiles.Add("/p/d.frm",
             "VERSION 5.00\r\nBegin VB.Form d\r\n  Begin VB.Timer Clock\r\n  End\r\nEnd\r\n"
             "Attribute VB_Name = \"d\"\r\nOption Explicit\r\n"
             "Private WithEvents Watch As Item\r\nDim a As Long, List As New Collection\r\n"
             "Private Declare Function Beep Lib \"kernel32\" (ByVal Hertz As Long) As Long\r\n"
             "Private Sub Clock_Timer()\r\n  Dim x As _\r\n    New Item\r\nEnd Sub\r\n"
             "Private Sub Watch_Sold()\r\nEnd Sub\r\nPrivate Sub Form_Load()\r\nEnd Sub\r\n");
  const std::string tree = RunFor({"tree", "/p/d.frm", "--depth", "4"});
  for (const char* part :
       {"variable Private WithEvents Watch As Item  /", "variable Private a As Long  /",
        "variable Private List As New Collection  /", "variable x As New Item  /",
        "declare Private Function Beep Lib \"kernel32.dll\" (ByVal Hertz As Long) As Long  /",
        "Clock_Timer()  (event of Clock, 1 variable)  /", "Watch_Sold()  (event of Watch)  /",
        "Form_Load()  (event of d)  /"})
    EXPECT_THAT(tree, HasSubstr(part));
  EXPECT_THAT(RunFor({"find", "/p/d.frm", "List"}),
              HasSubstr("\tPRIVATE List As New Collection\t"));
}

TEST_F(ToolOnAProject, MessagesNameAPathOnce) {
  mFiles.Add("/p/odd/empty.bas", "");
  mFiles.Add("/p/odd/O.vbp", "Type=Exe\r\nModule=e; empty.bas\r\nModule=n; none.bas\r\n");
  const std::string err = Tool({"tree", "/p/odd/O.vbp"}).Err;
  EXPECT_THAT(err, HasSubstr("/p/odd/empty.bas: warning: the file is empty [empty-module]\n"));
  EXPECT_THAT(err, Not(HasSubstr("Z:\\")));
}

TEST(ToolAlone, OptionsReachTheProject) {
  const test::MemoryFiles files{
      {"/p/a.bas", "Attribute VB_Name = \"a\"\r\nSub S()\r\nDim x\r\nRem why\r\nEnd Sub\r\n"}};
  const auto lineType = [](const std::vector<std::string>& more) {
    std::vector<std::string> arguments{"dump", "/p/a.bas", "--lines"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    const json block = json::parse(RunFor(arguments))["Components"][0]["Blocks"].back();
    return block["CodeLines"][2]["LineTypeName"].get<std::string>() + " " +
           std::to_string(block["Variables"].size());
  };
  EXPECT_EQ(lineType({}), "Comment 1");
  EXPECT_EQ(lineType({"--reading", "classic"}), "OTHER 1");
  EXPECT_EQ(lineType({"--set", "remcomments=False"}), "OTHER 1");
  EXPECT_EQ(lineType({"--set", "LoadBlocksOnly=True"}), "Comment 0");
}

TEST(ToolAlone, ManualNamesEveryCommandAndSetting) {
  std::string manual;
  for (const std::string page : {"tool", "writing", "compare"})
    manual += ReadWholeFile(test::SourceRoot() + "/docs/" + page + ".md");
  for (const std::string_view name : ProjectOptionNames())
    EXPECT_NE(manual.find("`" + std::string(name) + "`"), std::string::npos) << name;
  // Every option that the help of a command names stands in the manual.
  const std::string commands = RunFor({"frob"}, exUsage);
  std::istringstream names(commands.substr(commands.find(" are ") + 5));
  for (std::string command; names >> command;) {
    std::erase(command, ',');
    EXPECT_TRUE(RE2::PartialMatch(manual, "\n### [a-z, -]*" + command)) << command;
    std::istringstream words(RunFor({command, "--help"}));
    for (std::string word; words >> word;) {
      if (!word.starts_with("--")) continue;
      const std::string option = word.substr(0, word.find_first_of(",=;"));
      EXPECT_NE(manual.find(option), std::string::npos) << command << " " << option;
    }
  }
}

}  // namespace
}  // namespace vendrel::cli
