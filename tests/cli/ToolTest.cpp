#include "cli/Tool.h"

#include <gtest/gtest.h>

#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "cli/ProjectSettings.h"
#include "output/Xml.h"
#include "support/MemoryFiles.h"

namespace vendrel::cli {
namespace {

using nlohmann::json;

// What a run of the tool gave.
struct Result {
  int Code = -1;
  std::string Out;
  std::string Err;
};

Result Tool(const std::vector<std::string>& arguments, bool terminal = false) {
  std::vector<const char*> argv{"vendrelmodel"};
  for (const std::string& argument : arguments) argv.push_back(argument.c_str());
  std::ostringstream out, err;
  const Streams streams{out, err, terminal, terminal};
  Result run;
  run.Code = RunTool(static_cast<int>(argv.size()), argv.data(), streams);
  run.Out = out.str();
  run.Err = err.str();
  return run;
}

bool Has(const std::string& text, std::string_view part) {
  return text.find(part) != std::string::npos;
}

constexpr const char* kProject =
    "Type=Exe\r\nModule=modMain; modMain.bas\r\nModule=modGone; modGone.bas\r\nClass=Item; "
    "ITEM.cls\r\nName=\"Shop\"\r\n";
constexpr const char* kModule =
    "Attribute VB_Name = \"modMain\"\r\nOption Explicit\r\nPublic Total As Currency\r\n"
    "Public Enum Colour\r\n  Red = 1\r\nEnd Enum\r\n\r\nPublic Sub Post(ByVal Amount As "
    "Currency)\r\n"
    "  Total = Total + Amount\r\nEnd Sub\r\n";

// A project with one module in place, one missing, and one written in another case.
class ToolOnAProject : public testing::Test {
 protected:
  test::MemoryFiles mFiles{{"/p/Shop.vbp", kProject},
                           {"/p/modMain.bas", kModule},
                           {"/p/Item.cls", "Attribute VB_Name = \"Item\"\r\n"},
                           {"/p/whole/One.vbp", "Type=Exe\r\nModule=m; ..\\modMain.bas\r\n"}};
};

TEST_F(ToolOnAProject, TreeShowsEveryElementWithItsPlace) {
  const Result run = Tool({"tree", "/p/Shop.vbp", "--depth", "4"});
  EXPECT_EQ(run.Code, exDone);
  for (const char* part :
       {"project Shop  (EXE, 3 modules, 1 procedure)  /p/Shop.vbp:1\n",
        "  module modMain  (10 lines, 1 procedure)  /p/modMain.bas:1\n",
        "    variable Public Total As Currency  /p/modMain.bas:3\n",
        "    enum Public Colour  (1 member)  /p/modMain.bas:4\n",
        "      member Red  (1)  /p/modMain.bas:5\n",
        "    procedure Public Sub Post(ByVal Amount As Currency)  /p/modMain.bas:8\n",
        "      parameter Amount As Currency  /p/modMain.bas:8\n", "  module modGone  (missing)"})
    EXPECT_TRUE(Has(run.Out, part)) << part << "\nis not in\n" << run.Out;
  EXPECT_TRUE(Has(run.Err, "warning: ")) << run.Err;
  EXPECT_TRUE(Has(run.Err, "[missing-module]")) << run.Err;
  EXPECT_EQ(Tool({"/p/Shop.vbp", "--depth", "4"}).Out, run.Out) << "a file alone means tree";
}

TEST_F(ToolOnAProject, TreeGoesAsFarAsAsked) {
  EXPECT_FALSE(Has(Tool({"tree", "/p/Shop.vbp", "--depth", "1"}).Out, "module modMain"));
  EXPECT_FALSE(Has(Tool({"tree", "/p/Shop.vbp", "--depth", "2"}).Out, "Post"));
  EXPECT_FALSE(Has(Tool({"tree", "/p/Shop.vbp"}).Out, "parameter"));
  const Result one = Tool({"tree", "/p/Shop.vbp", "--module", "MODMAIN"});
  EXPECT_TRUE(Has(one.Out, "module modMain"));
  EXPECT_FALSE(Has(one.Out, "Item"));
  const Result none = Tool({"tree", "/p/Shop.vbp", "--module", "other"});
  EXPECT_EQ(none.Code, exNo);
  EXPECT_TRUE(Has(none.Err, "no module 'other'"));
}

TEST_F(ToolOnAProject, TreeIsColouredOnATerminalUnlessRefused) {
  EXPECT_TRUE(Has(Tool({"/p/Shop.vbp"}, true).Out, "\033["));
  EXPECT_FALSE(Has(Tool({"/p/Shop.vbp"}).Out, "\033["));
  setenv("NO_COLOR", "1", 1);
  EXPECT_FALSE(Has(Tool({"/p/Shop.vbp"}, true).Out, "\033["));
  unsetenv("NO_COLOR");
}

TEST_F(ToolOnAProject, DumpAndManifestGiveWholeDocuments) {
  const json dump = json::parse(Tool({"dump", "/p/Shop.vbp"}).Out);
  EXPECT_EQ(dump["Class"], "VBProject");
  EXPECT_EQ(dump["Components"].size(), 3u);
  EXPECT_EQ(dump["Components"][0]["FileName"], "Z:\\p\\modMain.bas");
  EXPECT_FALSE(dump["Components"][0]["Blocks"][0].contains("CodeLines"));
  const json lines = json::parse(Tool({"dump", "/p/modMain.bas", "--lines", "--root", "/p"}).Out);
  EXPECT_EQ(lines["Components"][0]["FileName"], "Z:\\root\\modMain.bas");
  EXPECT_EQ(lines["Components"][0]["Blocks"].back()["CodeLines"].back()["Text"], "End Sub");

  XmlDocument document;
  document.LoadXml(Tool({"manifest", "/p/Shop.vbp"}).Out);
  EXPECT_EQ(document.Root().Elements().Count(), 3u);
  document.LoadXml(Tool({"manifest", "/p/Shop.vbp", "--project-only"}).Out);
  EXPECT_EQ(document.Root().Elements().Count(), 0u);
}

TEST_F(ToolOnAProject, CheckCountsAndSaysNoWhenAModuleIsMissing) {
  const Result run = Tool({"check", "/p/Shop.vbp"});
  EXPECT_EQ(run.Code, exNo);
  EXPECT_TRUE(Has(run.Out, "[missing-module]")) << run.Out;
  EXPECT_TRUE(Has(run.Out,
                  "1 projects, 0 projects not read, 3 modules listed, 2 found, 1 found under "
                  "another case, 1 missing, 0 duplicate names, 0 references without a file\n"))
      << run.Out;
  EXPECT_EQ(Tool({"check", "/p/whole"}).Code, exDone);

  mFiles.Add("/p/twice/T.vbp", "Module=m; ..\\modMain.bas\r\nModule=M; ..\\modMain.bas\r\n");
  EXPECT_TRUE(
      Has(Tool({"check", "/p/twice/T.vbp"}).Out,
          "2 modules listed, 1 found, 0 found under another case, 0 missing, 1 duplicate names"));

  const Result folder = Tool({"check", "/p", "--json"});
  EXPECT_EQ(folder.Code, exNo);
  std::istringstream lines(folder.Out);
  json last;
  for (std::string line; std::getline(lines, line);) last = json::parse(line);
  EXPECT_EQ(last["Projects"], 3);
  EXPECT_EQ(last["ModulesListed"], 6);
}

TEST_F(ToolOnAProject, DiagnosticsComeAsAsked) {
  const Result asJson = Tool({"tree", "/p/Shop.vbp", "--diagnostics", "json"});
  const json first = json::parse(asJson.Err.substr(0, asJson.Err.find('\n')));
  EXPECT_TRUE(first.contains("Severity") && first.contains("Text") && first.contains("Line"));
  EXPECT_EQ(Tool({"tree", "/p/Shop.vbp", "--quiet"}).Err, "");
  EXPECT_EQ(Tool({"tree", "/p/Shop.vbp", "--strict"}).Code, exWarnings);
  EXPECT_EQ(Tool({"tree", "/p/whole/One.vbp", "--strict"}).Code, exDone);
}

TEST_F(ToolOnAProject, ResultsGoToAFileThatAppearsWholeOrNotAtAll) {
  const Result run = Tool({"dump", "/p/Shop.vbp", "-o", "/p/out.json"});
  EXPECT_EQ(run.Code, exDone) << run.Err;
  EXPECT_EQ(run.Out, "");
  EXPECT_EQ(mFiles["/p/out.json"], Tool({"dump", "/p/Shop.vbp"}).Out);

  const Result itself = Tool({"dump", "/p/Shop.vbp", "-o", "/p/Shop.vbp"});
  EXPECT_EQ(itself.Code, exUsage);
  EXPECT_EQ(mFiles["/p/Shop.vbp"], kProject);

  const Result nowhere = Tool({"dump", "/p/Shop.vbp", "-o", "/no/folder/out.json"});
  EXPECT_EQ(nowhere.Code, exFailed);
  EXPECT_TRUE(Has(nowhere.Err, "/no/folder/out.json: cannot be written")) << nowhere.Err;
}

TEST_F(ToolOnAProject, OddLinesAreKeptAndTold) {
  mFiles.Add("/p/odd.bas", "Attribute VB_Name = \"odd\"\r\nOption Explicit\r\nPublic\r\nDim a\r\n");
  const Result run = Tool({"tree", "/p/odd.bas"});
  EXPECT_EQ(run.Code, exDone);
  EXPECT_TRUE(Has(run.Out, "variable")) << run.Out;
  EXPECT_TRUE(Has(run.Err, "/p/odd.bas:3: warning: ")) << run.Err;
}

TEST_F(ToolOnAProject, CodePageIsGuessedOnceForTheWholeProject) {
  // A comment, and the name of a module's file, in windows-1251.
  const std::string name = "\xCC\xEE\xE4\xF3\xEB\xFC";
  mFiles.Add("/p/Ru.vbp", "Type=Exe\r\nModule=m; " + name + ".bas\r\nName=\"Ru\"\r\n");
  mFiles.Add("/p/Модуль.bas",
             "Attribute VB_Name = \"m\"\r\n' \xDD\xF2\xEE \xEE\xE1\xFB\xF7\xED\xFB\xE9 "
             "\xF2\xE5\xEA\xF1\xF2 \xED\xE0 \xF0\xF3\xF1\xF1\xEA\xEE\xEC \xFF\xE7\xFB\xEA\xE5\r\n");
  const Result guessed = Tool({"dump", "/p/Ru.vbp"});
  EXPECT_TRUE(Has(guessed.Err, "windows-1251")) << guessed.Err;
  EXPECT_EQ(json::parse(guessed.Out)["Components"][0]["FileName"], "Z:\\p\\Модуль.bas");
  const Result given = Tool({"dump", "/p/Ru.vbp", "--codepage", "1251"});
  EXPECT_EQ(given.Out, guessed.Out);
  EXPECT_FALSE(Has(given.Err, "windows-1251"));
}

TEST(ToolAlone, LinesClassifiesEachLineByItself) {
  const test::MemoryFiles files{
      {"/a.bas", "Public Sub A()\r\n120 x = 1 : y = 2\nPublic\r\n' c\rend"}};
  const Result text = Tool({"lines", "/a.bas"});
  EXPECT_EQ(text.Code, exDone);
  EXPECT_TRUE(Has(text.Out, "/a.bas:1: START_SUB               Public Sub A()\n")) << text.Out;
  EXPECT_TRUE(Has(text.Out, "/a.bas:3: ? ")) << text.Out;

  std::istringstream lines(Tool({"lines", "/a.bas", "--json"}).Out);
  std::vector<json> records;
  for (std::string line; std::getline(lines, line);) records.push_back(json::parse(line));
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
    return Tool(arguments).Out;
  };
  EXPECT_EQ(
      answer({"#If A = 1 And X Then", "--project", "A = 1 : B = 0", "--module", "#Const X = 1"}),
      "True\n");
  EXPECT_EQ(answer({"#If A Then", "--project", "A = 0"}), "False\n");
  EXPECT_EQ(answer({"#If Win32 Then", "--reading", "classic"}), "False\n");
  EXPECT_EQ(answer({"#If Win32 Then"}), "True\n");
  EXPECT_EQ(answer({"#If Win32 Then", "--define", "Win32=0"}), "False\n");
  EXPECT_EQ(answer({"#If Debug Then", "--dotnet", "--reading", "classic"}), "True\n");
  EXPECT_TRUE(Has(answer({"#If A Then", "--project", "A = 1", "--script"}), "Evaluate = (cc1)"));
}

TEST(ToolAlone, WrongUsageAndInputSayWhatAndWhatToDo) {
  const test::MemoryFiles files{{"/p/a.txt", "text"},
                                {"/p/G.vbg", "VBGROUP 5.0\r\n"},
                                {"/p/n.vbproj", "<x/>"},
                                {"/p/l.dll", "MZ"},
                                {"/p/A.vbp", "Type=Exe\r\n"}};
  const struct {
    std::vector<std::string> Arguments;
    int Code;
    const char* Part;
  } cases[] = {
      {{}, exUsage, "subcommand"},
      {{"frob"}, exUsage, "'frob' is neither a command nor a file; commands are tree"},
      {{"tree"}, exUsage, "file"},
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
      {{"tree", "/p/a.txt"}, exFailed, "neither a project (.vbp), nor a module"},
      {{"manifest", "/p/G.vbg"}, exFailed, "project groups come later"},
      {{"tree", "/p/n.vbproj"}, exFailed, "VB.NET projects come later"},
      {{"manifest", "/p/l.dll"}, exFailed, "/p/l.dll: cannot be read: Invalid file format"},
      {{"manifest", "/p"}, exFailed, "folders of projects come later"},
      {{"lines", "/p/none.bas"}, exFailed, "no such file"},
      {{"--version"}, exDone, ""},
      {{"tree", "--help"}, exDone, ""},
  };
  for (const auto& sample : cases) {
    const Result run = Tool(sample.Arguments);
    EXPECT_EQ(run.Code, sample.Code) << testing::PrintToString(sample.Arguments) << run.Err;
    EXPECT_TRUE(Has(run.Err, sample.Part)) << run.Err << "lacks " << sample.Part;
  }
  EXPECT_TRUE(Tool({"--version"}).Out.starts_with("vendrelmodel "));
}

TEST(ToolAlone, OptionsReachTheProject) {
  const test::MemoryFiles files{
      {"/p/a.bas", "Attribute VB_Name = \"a\"\r\nSub S()\r\nDim x\r\nRem why\r\nEnd Sub\r\n"}};
  const auto lineType = [](const std::vector<std::string>& more) {
    std::vector<std::string> arguments{"dump", "/p/a.bas", "--lines"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    const json block = json::parse(Tool(arguments).Out)["Components"][0]["Blocks"].back();
    return block["CodeLines"][2]["LineTypeName"].get<std::string>() + " " +
           std::to_string(block["Variables"].size());
  };
  EXPECT_EQ(lineType({}), "Comment 1");
  EXPECT_EQ(lineType({"--reading", "classic"}), "OTHER 1");
  EXPECT_EQ(lineType({"--set", "remcomments=False"}), "OTHER 1");
  EXPECT_EQ(lineType({"--set", "LoadBlocksOnly=True"}), "Comment 0");
}

TEST(ToolAlone, ManualNamesEveryCommandAndSetting) {
  std::ifstream file(VENDREL_SOURCE_ROOT "/docs/tool.md");
  std::ostringstream manual;
  manual << file.rdbuf();
  for (const std::string_view name : ProjectOptionNames())
    EXPECT_TRUE(Has(manual.str(), "`" + std::string(name) + "`")) << name;
  // Every option that the help of a command names stands in the manual.
  for (const char* command : {"tree", "dump", "manifest", "check", "lines", "evaluate"}) {
    EXPECT_TRUE(Has(manual.str(), "### " + std::string(command))) << command;
    std::istringstream words(Tool({command, "--help"}).Out);
    for (std::string word; words >> word;) {
      if (!word.starts_with("--")) continue;
      word = word.substr(0, word.find_first_of(",="));
      EXPECT_TRUE(Has(manual.str(), word)) << command << " " << word;
    }
  }
}

}  // namespace
}  // namespace vendrel::cli
