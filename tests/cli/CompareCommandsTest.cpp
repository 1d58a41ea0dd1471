// diff, roundtrip and build, on files of this machine.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>

#include "services/FileSource.h"
#include "support/DiskFolder.h"
#include "support/Services.h"
#include "support/ToolRun.h"

namespace vendrel::cli {
namespace {

namespace fs = std::filesystem;

class CompareCommands : public testing::Test, public test::DiskFolder {
 protected:
  CompareCommands() {
    Write("A/P.vbp",
          "Type=Exe\r\nReference=*\\G{X}#2.0#0#C:\\a.tlb#A \"Lib\"\r\nModule=M; M.bas\r\n"
          "Form=sub\\F.frm\r\nModule=N; sub\\M.bas\r\nName=\"P\"\r\n\r\n[Other]\r\nKey=1\r\n");
    Write("A/M.bas",
          "Attribute VB_Name = \"M\"\r\n#If Win32 Then\r\nDim a, b As Long\r\n#End If\r\n"
          "Sub Main(): a = 1: End Sub\r\n");
    Write("A/sub/M.bas", "Attribute VB_Name = \"N\"\nFunction F()\nF = 1\nEnd Function");
    Write("A/sub/F.frm",
          "VERSION 5.00\r\nBegin VB.Form F\r\n  Icon = \"F.frx\":0000\r\nEnd\r\n"
          "Attribute VB_Name = \"F\"\r\nPrivate Sub Form_Load()\r\nEnd Sub\r\n");
    Write("A/sub/F.frx", "x");
  }

  std::string Run(const std::vector<std::string>& arguments, int code) {
    const ToolRun run = ToolEnding(code, arguments);
    mErr = run.Err;
    return run.Out;
  }
  std::string mErr;
};

TEST_F(CompareCommands, DiffTellsWhatMovedAndChanged) {
  fs::copy(Path("A"), Path("B"), fs::copy_options::recursive);
  EXPECT_EQ(Run({"diff", Path("A/P.vbp"), Path("B/P.vbp")}, exDone), "");
  EXPECT_EQ(Run({"diff", Path("A"), Path("B")}, exDone), "");
  fs::rename(Path("B/M.bas"), Path("B/sub/Moved.bas"));
  Write("B/P.vbp",
        "Type=Exe\r\nReference=*\\G{X}#2.0#0#C:\\a.tlb#A \"Lib\"\r\nModule=M; sub\\Moved.bas\r\n"
        "Form=sub\\F.frm\r\nModule=N; sub\\M.bas\r\nName=\"P\"\r\n\r\n[Other]\r\nKey=1\r\n");
  Write("B/sub/M.bas", "Attribute VB_Name = \"N\"\nFunction F() As Long\nF = 1\nEnd Function");
  const std::string changes = Run({"diff", Path("A/P.vbp"), Path("B/P.vbp")}, exNo);
  EXPECT_THAT(changes, HasSubstr("moved\tmodule\tP~M\t" + Path("B/sub/Moved.bas")));
  EXPECT_THAT(changes, HasSubstr("\nchanged\tprocedure\tP~N~F\t" + Path("B/sub/M.bas:2") + "\n\t"));
  EXPECT_THAT(changes, HasSubstr("\tReturnType: \"Variant\" -> \"Long\"\n"));
  EXPECT_THAT(changes, HasSubstr("  - Function F()\n  + Function F() As Long\n"));
  for (const auto& line : JsonLines({"diff", Path("A/P.vbp"), Path("B/P.vbp"), "--json"}, exNo))
    EXPECT_TRUE(line.contains("Change"));
  fs::remove(Path("B/P.vbp"));
  Write("B/Q.vbp", "Type=Exe\r\nName=\"Q\"\r\n");
  const std::string projects = Run({"diff", Path("A"), Path("B")}, exNo);
  EXPECT_THAT(projects, HasSubstr("gone\tproject\tP\t"));
  EXPECT_THAT(projects, HasSubstr("added\tproject\tQ\t"));
  Run({"diff", Path("A"), Path("B/Q.vbp")}, exUsage);
}

TEST_F(CompareCommands, DiffTellsAChangedProcedureOnce) {
  Write("a/m.bas",
        "Attribute VB_Name = \"m\"\nOption Explicit\nDim k As Long\n\n"
        "Sub F(a As Long)\nDim i As Long\nx = 1\nEnd Sub\nSub G()\nx = 2\nEnd Sub\n");
  Write("b/m.bas",
        "Attribute VB_Name = \"m\"\nOption Explicit\nOption Base 1\nDim k As Long\n\n"
        "Sub F(a As Date, b)\nx = 1\nEnd Sub\nSub G()\nx = 3\nEnd Sub\n");
  EXPECT_EQ(Run({"diff", Path("a/m.bas"), Path("b/m.bas")}, exNo),
            "changed\tmodule\tm~m\t" + Path("b/m.bas") +
                "\tOptionBase: \"0\" -> \"1\"\n"
                "text\tdeclarations\tm~m.declarations\t" +
                Path("b/m.bas:2") +
                "\n  + Option Base 1\n"
                "changed\tprocedure\tm~m~F\t" +
                Path("b/m.bas:6") +
                "\n\tDefinitionLine: \"Sub F(a As Long)\" -> \"Sub F(a As Date, b)\"\n"
                "\tparameter a: VariableType: \"Long\" -> \"Date\"\n"
                "\tparameter b added\n\tlocal-variable i gone\n"
                "  - Sub F(a As Long)\n  - Dim i As Long\n  + Sub F(a As Date, b)\n"
                "text\tprocedure\tm~m~G\t" +
                Path("b/m.bas:9") + "\n  - x = 2\n  + x = 3\n");
  const auto entries = JsonLines({"diff", Path("a/m.bas"), Path("b/m.bas"), "--json"}, exNo);
  ASSERT_EQ(entries.size(), 4u);
  EXPECT_EQ(entries[2]["Kind"], "procedure");
  EXPECT_EQ(entries[2]["Parts"].size(), 5u);
}

TEST_F(CompareCommands, DiffLeavesCommentsAndBlankLinesOutUnlessAsked) {
  Write("a/m.bas",
        "Attribute VB_Name = \"m\"\n' old _\n x = 9\n\nSub F()\nx = 1 ' one\ny = \"'\"\nEnd Sub\n");
  Write("b/m.bas",
        "Attribute VB_Name = \"m\"\n\n' new\nSub F() ' ##SUMMARY told\n'##REMARKS more\n"
        "Rem z\nx = 1\n\ny = \"'\" ' and\nEnd Sub\n");
  EXPECT_EQ(Run({"diff", Path("a/m.bas"), Path("b/m.bas")}, exDone), "");
  EXPECT_EQ(mErr, "no difference\n");
  EXPECT_THAT(Run({"diff", Path("a"), Path("b"), "--comments"}, exNo),
              HasSubstr("  - x = 1 ' one\n  - y = \"'\"\n"));
}

TEST_F(CompareCommands, DiffFindsCodeUnderAnotherNameOrInAnotherModule) {
  const std::string body = "Dim i As Long\nFor i = 1 To 9\nDebug.Print i\nNext\n";
  const auto procedure = [&](const std::string& name, const std::string& more) {
    return "Function " + name + "()\n" + body + more + name + " = 1\nEnd Function\n";
  };
  std::string many;
  for (int i = 0; i < 40; ++i) many += "k = " + std::to_string(i) + "\n";
  Write("a/P.vbp", "Type=Exe\nModule=M; M.bas\nModule=O; O.bas\nName=\"P\"\n");
  Write("a/M.bas", "Attribute VB_Name = \"M\"\n" + procedure("Count", "") +
                       procedure("Walk", "a = 2\nb = 3\n") +
                       "Property Get V()\nV = 1\na = 7\nb = 8\nc = 9\nEnd Property\n"
                       "Sub Gone()\nd = 1\ne = 2\nf = 3\nEnd Sub\n");
  Write("a/O.bas", "Attribute VB_Name = \"O\"\nSub S()\ng = 1\nh = 2\nEnd Sub\nSub T()\n" + many +
                       "End Sub\n");
  Write("b/P.vbp", "Type=Exe\nModule=M; M.bas\nModule=Q; Q.bas\nName=\"P\"\n");
  Write("b/M.bas", "Attribute VB_Name = \"M\"\n" + procedure("Total", "") +
                       "Property Get W()\nW = 1\na = 7\nb = 8\nc = 9\nEnd Property\n");
  Write("b/Q.bas", "Attribute VB_Name = \"Q\"\nSub S()\ng = 1\nh = 2\nEnd Sub\nSub T()\n" + many +
                       "End Sub\n" + procedure("Walk", "a = 2\nb = 4\n"));
  const std::string changes = Run({"diff", Path("a"), Path("b"), "--no-text"}, exNo);
  EXPECT_THAT(changes, HasSubstr("renamed\tprocedure\tP~M~Count\t" + Path("b/M.bas:2") +
                                 "\n\tName: \"Count\" -> \"Total\"\n"));
  EXPECT_THAT(changes, HasSubstr("renamed\tproperty\tP~M~V\t"));
  EXPECT_THAT(changes, HasSubstr("moved\tprocedure\tP~M~Walk\t" + Path("b/Q.bas:48") +
                                 "\tModule: \"M\" -> \"Q\"\n"));
  EXPECT_THAT(changes, HasSubstr("gone\tprocedure\tP~M~Gone\t"));
  EXPECT_THAT(changes, HasSubstr("renamed\tmodule\tP~O\t" + Path("b/Q.bas")));
  EXPECT_THAT(changes, Not(HasSubstr("added")));
  EXPECT_THAT(mErr, HasSubstr("1 procedure renamed"));
}

TEST_F(CompareCommands, DiffComparesRevisionsOfARepository) {
  const auto git = [&](const std::string& arguments) {
    const std::string command = "git -C '" + Path("r") + "' -c user.name=a -c user.email=a@b " +
                                arguments + " >/dev/null 2>&1";
    return std::system(command.c_str());
  };
  if (std::system("git --version >/dev/null 2>&1") != 0) GTEST_SKIP() << "needs git";
  fs::create_directories(Path("r"));
  ASSERT_EQ(git("init"), 0);
  Write("r/p/P.vbp", "Type=Exe\nModule=M; ..\\s\\M.bas\nName=\"P\"\n");
  Write("r/s/M.bas", "Attribute VB_Name = \"M\"\nSub Main()\nx = 1\nEnd Sub\n");
  ASSERT_EQ(git("add -A") + git("commit -m one") + git("tag v1"), 0);
  Write("r/s/M.bas", "Attribute VB_Name = \"M\"\nSub Main()\nx = 2\nEnd Sub\nSub N()\nEnd Sub\n");
  Write("r/p/Q.bas", "Attribute VB_Name = \"Q\"\n");
  ASSERT_EQ(git("add -A") + git("commit -m two"), 0);
  Write("r/s/M.bas", "Attribute VB_Name = \"M\"\nSub N()\nEnd Sub\n");
  const std::string project = Path("r/p/P.vbp");
  const std::string here = Run({"diff", project, "--git", "v1"}, exNo);
  EXPECT_THAT(here, HasSubstr("gone\tprocedure\tP~M~Main\tv1:s/M.bas:2\n"));
  EXPECT_THAT(here, HasSubstr("added\tprocedure\tP~M~N\t" + Path("r/s/M.bas:2")));
  EXPECT_EQ(Run({"diff", Path("r"), "--git", "v1", "HEAD"}, exNo),
            "text\tprocedure\tP~M~Main\tHEAD:s/M.bas:2\n  - x = 1\n  + x = 2\n"
            "added\tprocedure\tP~M~N\tHEAD:s/M.bas:5\n");
  EXPECT_EQ(Run({"diff", Path("r/s/M.bas"), "--git", "HEAD", "HEAD"}, exDone), "");
  EXPECT_THAT(ReadWholeFile(Path("r/s/M.bas")), Not(HasSubstr("Main")));
  EXPECT_EQ(git("diff --cached --quiet"), 0);
  const auto told = [&](const std::vector<std::string>& arguments, const std::string& what) {
    ToolRun run = Tool(arguments);
    EXPECT_NE(run.Code, exDone);
    EXPECT_THAT(run.Err, HasSubstr(what));
    EXPECT_EQ(std::count(run.Err.begin(), run.Err.end(), '\n'), 1) << run.Err;
  };
  told({"diff", project, "--git", "v9"}, "no revision 'v9' in " + Path("r"));
  told({"diff", project, "--git=--all"}, "is no revision");
  told({"diff", Path("r/p/Q.bas"), "--git", "v1"}, "Q.bas: not there in revision 'v1'");
  told({"diff", Path("A/P.vbp"), "--git", "v1"}, "no git repository holds it");
  told({"diff", Path("A/P.vbp")}, "a second path, or --git REV");
  test::NotedRuns noGit;
  noGit.OnRun = [] { throw VendrelError(errFileNotFound); };
  told({"diff", project, "--git", "v1"}, "git cannot be started");
}

TEST_F(CompareCommands, RoundtripTellsLostBytesButNotWhatIsRebuilt) {
  const std::string complete = Run({"roundtrip", Path("A/P.vbp")}, exDone);
  EXPECT_THAT(complete, Not(HasSubstr("bytes\t")));
  EXPECT_THAT(complete, HasSubstr("rebuilt\t" + Path("A/P.vbp:5") + "\t- Module=N; sub\\M.bas\n"));
  EXPECT_THAT(complete, Not(HasSubstr("Module=M")));
  EXPECT_THAT(mErr,
              HasSubstr("1 project, 3 modules, 3 of them byte for byte the same; 0 differences"));
  EXPECT_EQ(Run({"roundtrip", Path("A/sub/F.frm")}, exDone), "");
  const std::string classic = Run({"roundtrip", Path("A"), "--reading", "classic"}, exNo);
  EXPECT_THAT(classic, HasSubstr("bytes\t" + Path("A/sub/M.bas:1") +
                                 "\n  - \"Attribute VB_Name = \\\"N\\\"\\n\"\n"));
}

TEST_F(CompareCommands, BuildShowsTheLogOfAnyCommand) {
  const std::string compiler = Path("my compiler");
  Write("my compiler",
        "#!/bin/sh\nprintf '%s\\n' \"$@\" > '" + Path("arguments") +
            "'\nfor last; do :; done\nlog=$(printf '%s' \"$last\" | sed 's/^Z://;s/\\\\/\\//g')\n"
            "cp '" +
            Path("log") + "' \"$log\"\n");
  chmod(compiler.c_str(), 0755);
  const std::string name = "-a \"b\" ;$(touch x) c.vbp";
  fs::copy(Path("A/P.vbp"), Path("A/" + name));
  Write("log", "Build of 'P.exe' succeeded.\r\n");
  const std::vector<std::string> command{"build", Path("A/" + name), "--compiler",
                                         '"' + compiler + '"'};
  EXPECT_EQ(Run(command, exDone), "Build of 'P.exe' succeeded.\n");
  const std::string arguments = ReadWholeFile(Path("arguments"));
  EXPECT_THAT(arguments.substr(0, arguments.find('\n')), EndsWith("\\A\\" + name));
  Write("log", "Variable not defined\r\n");
  EXPECT_EQ(Run(command, exNo), "Variable not defined\n");
  Run({"build", Path("A/P.vbp"), "--compiler", "true"}, exNo);
  EXPECT_THAT(mErr, HasSubstr("wrote no log"));
  Run({"build", Path("A/P.vbp"), "--compiler", Path("none")}, exFailed);
  Run({"build", Path("A/P.vbp")}, exUsage);
  Run({"build", Path("A/M.bas"), "--compiler", "true"}, exUsage);
}

}  // namespace
}  // namespace vendrel::cli
