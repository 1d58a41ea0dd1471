#include <csignal>
#include <map>
#include <random>

#include "cli/Interrupts.h"
#include "cli/UnifiedDiff.h"
#include "support/MemoryFiles.h"
#include "support/ToolRun.h"

namespace vendrel::cli {
namespace {

constexpr const char* kWrittenModule =
    "Attribute VB_Name = \"M\"\nSub A()\n#If False Then\n  x = 1\n#End If\n  y = 2\nEnd Sub";

class WriteCommand : public testing::Test {
 protected:
  // What a run writes; `answer` is what a person types, null: nobody is there.
  std::string Run(std::vector<std::string> arguments, int code = exDone,
                  const char* answer = nullptr) {
    arguments.insert(arguments.begin(), "write");
    const ToolRun run = ToolEnding(code, arguments, {.Answer = answer});
    mErr = run.Err;
    return run.Out;
  }

  void SetUp() override {
    for (const std::string& path : mFiles.Paths()) mFiles.Remove(path);
    for (const char* folder : {"/g/SourceBackup", "/out/A", "/out/A_2", "/out"})
      mFiles.Remove(folder);
    for (const auto& [path, bytes] : kFilesBefore) mFiles.Add(path, bytes);
  }

  std::string mErr;
  test::MemoryFiles mFiles;
  const std::vector<std::pair<std::string, std::string>> kFilesBefore{
      {"/g/G.vbg", "VBGROUP 5.0\r\nProject=A.vbp\r\nProject=lib\\A.vbp\r\n"},
      {"/g/A.vbp", "Type=Exe\r\nModule=M; M.bas\r\nModule=Gone; Gone.bas\r\nName=\"A\"\r\n"},
      {"/g/M.bas", kWrittenModule},
      {"/g/lib/A.vbp", "Type=OleDll\r\nClass=C; C.cls\r\nName=\"L\"\r\n"},
      {"/g/lib/C.cls", "VERSION 1.0 CLASS\r\nAttribute VB_Name = \"C\"\r\n"}};
};

TEST_F(WriteCommand, WritesACopyAndLeavesTheSourceAlone) {
  const std::string project = mFiles["/g/A.vbp"];
  EXPECT_EQ(Run({"/g/A.vbp", "--to", "/out/deep"}),
            "/out/deep/A.vbp: 1 module and project file written\n");
  EXPECT_EQ(mFiles["/out/deep/M.bas"], kWrittenModule);
  EXPECT_EQ(mFiles["/g/A.vbp"], project);
  EXPECT_FALSE(mFiles.Has("/g/SourceBackup"));
  Run({"/g/A.vbp", "--to", "/only", "--only-project-file"});
  EXPECT_TRUE(mFiles.Has("/only/A.vbp"));
  EXPECT_FALSE(mFiles.Has("/only/M.bas"));
}

TEST_F(WriteCommand, InPlaceAsksFirst) {
  Run({"/g/A.vbp", "--in-place"}, exUsage);
  EXPECT_THAT(mErr, HasSubstr("--yes"));
  Run({"/g/A.vbp", "--in-place"}, exNo, "n\n");
  EXPECT_FALSE(mFiles.Has("/g/SourceBackup"));
  Run({"/g/A.vbp", "--in-place"}, exDone, "y\n");
  EXPECT_EQ(mFiles["/g/SourceBackup/M.bas"], kWrittenModule);
  Run({"/g/G.vbg", "--in-place", "--yes"});
  EXPECT_TRUE(mFiles.Has("/g/lib/SourceBackup/C.cls"));
}

TEST_F(WriteCommand, OptionsReachTheWriter) {
  Run({"/g/A.vbp", "--to", "/out", "--line-numbers", "100:10", "--resolve-conditionals"});
  EXPECT_EQ(
      mFiles["/out/M.bas"],
      "Attribute VB_Name = \"M\"\nSub A()\n"
      "      ' Commented by vbTrapline (Directives are parsed out as part of build)  #If False "
      "Then\n"
      "      ' Commented by vbTrapline (#IF or #ELSEIF statement evaluates to false)    x = 1\n"
      "      ' Commented by vbTrapline (Directives are parsed out as part of build)  #End If\n"
      "100     y = 2\nEnd Sub");
  Run({"/g/A.vbp", "--to", "/out", "--line-numbers", "100:0"}, exUsage);
  Run({"/g/A.vbp", "--to", "/out", "--line-numbers", "100"}, exUsage);
  Run({"/g/A.vbp"}, exUsage);
  Run({"/g/A.vbp", "--to", "/g"}, exUsage);
  Run({"/g/M.bas", "--to", "/out", "--only-project-file"}, exUsage);
}

TEST_F(WriteCommand, ADryRunWritesNothingAndShowsTheDifference) {
  const auto before = mFiles.Paths();
  const std::string shown =
      Run({"/g/A.vbp", "--in-place", "--dry-run", "--line-numbers", "100:10"});
  EXPECT_EQ(mFiles.Paths(), before);
  EXPECT_EQ(mFiles["/g/M.bas"], kWrittenModule);
  EXPECT_THAT(
      shown,
      HasSubstr("changed /g/M.bas\n--- /g/M.bas\n+++ /g/M.bas\n@@ -1,7 +1,7 @@\n Attribute "
                "VB_Name = \"M\"\n Sub A()\n-#If False Then\n-  x = 1\n-#End If\n-  y = 2\n"
                "+      #If False Then\n+100     x = 1\n+      #End If\n+110     y = 2\n End "
                "Sub\n\\ No newline at end of file\n"));
  EXPECT_THAT(shown, HasSubstr("copy /g/SourceBackup/M.bas\n"));
  EXPECT_THAT(Run({"/g/A.vbp", "--to", "/out", "--dry-run"}), HasSubstr("new /out/M.bas\n"));
  EXPECT_FALSE(mFiles.Has("/out"));
  mFiles.Add("/out/M.bas", "' there");
  EXPECT_THAT(
      Run({"/g/A.vbp", "--to", "/out", "--dry-run"}),
      HasSubstr("changed /out/M.bas\n--- /out/M.bas\n+++ /out/M.bas\n@@ -1,1 +1,7 @@\n-' there\n"));
  mFiles.Add("/out/M.bas", kWrittenModule);
  EXPECT_THAT(Run({"/g/A.vbp", "--to", "/out", "--dry-run"}), HasSubstr("same /out/M.bas\n"));
}

TEST_F(WriteCommand, EachProjectOfAGroupGetsAFolderAndTheGroupItsFile) {
  mFiles.Add("/g/G.vbg",
             "VBGROUP 5.0\r\nStartupProject=A.vbp\n\"Odd\xFF\"\r\nProject=\"lib\\A.vbp\"\r\n"
             "Project=Gone.vbp");
  const std::string shown = Run({"/g/G.vbg", "--to", "/out"});
  EXPECT_THAT(shown, HasSubstr("/out/A_2/A.vbp: 1 module and project file written, from "
                               "/g/lib/A.vbp\n"));
  EXPECT_THAT(shown, EndsWith("/out/G.vbg: group file written\n"));
  EXPECT_EQ(mFiles["/out/A/M.bas"], kWrittenModule);
  EXPECT_TRUE(mFiles.Has("/out/A_2/C.cls"));
  EXPECT_EQ(mFiles["/out/G.vbg"],
            "VBGROUP 5.0\r\nStartupProject=A\\A.vbp\n\"Odd\xFF\"\r\nProject=\"A_2\\A.vbp\"\r\n"
            "Project=Gone.vbp");
  EXPECT_THAT(Run({"/g/G.vbg", "--to", "/out", "--dry-run"}), HasSubstr("same /out/G.vbg\n"));
}

TEST_F(WriteCommand, ProjectFilesOfOneNameInAFolderKeepApart) {
  const std::string first = "Type=Exe\r\nName=\"A\"\r\n", other = "Type=Exe\r\nName=\"B\"\r\n";
  mFiles.Add("/d/A.vbp", first);
  mFiles.Add("/d/a.vbp", other);
  EXPECT_THAT(Run({"/d", "--to", "/out"}),
              HasSubstr("/out/a_2/a.vbp: project file written, from /d/a.vbp\n"));
  EXPECT_EQ(mFiles["/out/A/A.vbp"] + mFiles["/out/a_2/a.vbp"], first + other);
  Run({"/d", "--in-place", "--yes"});
  EXPECT_EQ(mFiles["/d/SourceBackup/A.vbp"] + mFiles["/d/SourceBackup/a_2.vbp"], first + other);
  EXPECT_EQ(mFiles["/d/A.vbp.bak"] + mFiles["/d/a.vbp_2.bak"], first + other);
  mFiles.Add("/out/a_2/a.vbp", "");
  Run({"/d/", "--to", "/out"}, exUsage);
  EXPECT_THAT(mErr, HasSubstr("another folder; 1 file had been written before"));
}

TEST_F(WriteCommand, AModuleIsWrittenAlone) {
  mFiles.Add("/g/F.frm", "VERSION 5.00\r\nAttribute VB_Name = \"F\"\r\nSub A()\r\nx\r\nEnd Sub");
  mFiles.Add("/g/F.frx", "companion");
  EXPECT_EQ(Run({"/g/F.frm", "--to", "/out", "--line-numbers", "10:1"}),
            "/out/F.frm: 1 module written, 1 file copied\n");
  EXPECT_THAT(mFiles["/out/F.frm"], HasSubstr("\r\n10    x\r\n"));
  EXPECT_TRUE(mFiles.Has("/out/F.frx"));
  const std::string before = mFiles["/g/F.frm"];
  EXPECT_EQ(Run({"/g/F.frm", "--in-place", "--yes", "--line-numbers", "10:1"}),
            "/g/F.frm: 1 module written, backups in /g/SourceBackup\n");
  EXPECT_EQ(mFiles["/g/F.frm"], mFiles["/out/F.frm"]);
  EXPECT_EQ(mFiles["/g/SourceBackup/F.frm"], before);
  mFiles.FailOn("/g/SourceBackup/F.frm", EACCES);
  EXPECT_EQ(Run({"/g/F.frm", "--in-place", "--yes"}, exFailed), "/g/F.frm: nothing written\n");
  EXPECT_THAT(mErr, HasSubstr("Backup file copy error (F.frm)"));
}

// By whatever path: each line is a project, options, and a source that would be written over.
TEST_F(WriteCommand, NoSourceIsEverWrittenOver) {
  mFiles.Add("/g/sub/B.vbp", "Type=Exe\r\nForm=..\\F.frm\r\nRelatedDoc=N.txt\r\nName=\"B\"\r\n");
  mFiles.Add("/g/F.frm", "VERSION 5.00\r\nAttribute VB_Name = \"F\"\r\n");
  mFiles.Add("/g/F.frx", "of the form");
  mFiles.Add("/g/sub/N.txt", "a document");
  mFiles.Link("/linked", "/g");
  mFiles.Link("/o/M.bas", "/g/M.bas");
  mFiles.Link("/frx/F.frx", "/g/sub/N.txt");
  mFiles.Add("/frx/other", "so that the folder is there");
  mFiles.Add("/o/other", "and this one");
  const std::vector<std::string> runs[] = {
      {"/g/A.vbp", "--to", "/linked"},
      {"/g/sub/B.vbp", "--to", "/g"},
      {"/g/A.vbp", "--to", "/o"},
      {"/g/A.vbp", "--to", "/o", "--dry-run"},
      {"/g/sub/B.vbp", "--to", "/frx"},
      {"/g/M.bas", "--to", "/o"},
      {"/g/A.vbp", "--to", "/q", "-o", "/g/M.bas"},
      {"/g/A.vbp", "--to", "/q", "-o", "/o/M.bas"},
      {"/g/sub/B.vbp", "--in-place", "-o", "/g/F.frm"},
  };
  std::map<std::string, std::string> before;
  for (const std::string& path : mFiles.Paths()) before[path] = mFiles[path];
  for (std::vector<std::string> run : runs) {
    SCOPED_TRACE(testing::PrintToString(run));
    run.push_back("--yes");
    Run(run, exUsage);
    EXPECT_THAT(mErr, HasSubstr("name another"));
    for (const auto& [path, bytes] : before) EXPECT_EQ(mFiles[path], bytes) << path;
    EXPECT_EQ(mFiles.Paths().size(), before.size());
  }
  for (const char* command : {"dump", "names", "html", "check"}) {
    ToolEnding(exUsage, {command, "/g/A.vbp", "-o", "/o/M.bas"});
    EXPECT_EQ(mFiles["/g/M.bas"], kWrittenModule);
  }
  mFiles.Add("/g/SourceBackup/C.cls", "' a source");
  mFiles.Add("/g/A.vbp", "Type=Exe\r\nModule=M; M.bas\r\nClass=C; SourceBackup\\C.cls\r\n");
  Run({"/g/A.vbp", "--in-place", "--yes"}, exUsage);
  EXPECT_THAT(mErr, HasSubstr("lies where the backups"));
}

TEST_F(WriteCommand, WhatIsThereAndDiffersAsks) {
  Run({"/g/G.vbg", "--to", "/out"});
  Run({"/g/G.vbg", "--to", "/out"});  // the same bytes
  mFiles.Add("/out/A_2/C.cls", "' mine");
  mFiles.Remove("/out/A/M.bas");
  for (const char* answer : {static_cast<const char*>(nullptr), "n\n"}) {
    Run({"/g/G.vbg", "--to", "/out"}, answer ? exNo : exUsage, answer);
    EXPECT_THAT(mErr, HasSubstr("/out/A_2/C.cls"));
    EXPECT_EQ(mFiles["/out/A_2/C.cls"], "' mine");
    EXPECT_FALSE(mFiles.Has("/out/A/M.bas")) << "no other project was written either";
  }
  Run({"/g/G.vbg", "--to", "/out"}, exDone, "y\n");
  EXPECT_EQ(mFiles["/out/A_2/C.cls"], mFiles["/g/lib/C.cls"]);
  EXPECT_EQ(mFiles["/out/A/M.bas"], kWrittenModule);
  mFiles.Add("/out/A/M.bas", "");
  Run({"/g", "--to", "/out", "--yes"});
  EXPECT_EQ(mFiles["/out/A/M.bas"], kWrittenModule);
}

// To look first gives no other numbers and no other names.
TEST_F(WriteCommand, LookingFirstChangesNothing) {
  mFiles.Add("/g/A.vbp", "Type=Exe\r\nModule=M; M.bas\r\nModule=N; n\\M.bas\r\n");
  mFiles.Add("/g/n/M.bas", "Attribute VB_Name = \"N\"\nSub B()\n  z = 1\nEnd Sub");
  mFiles.Add("/g/n/M.txt", "beside it");
  mFiles.Add("/b/other", "");
  for (const char* folder : {"/a", "/b"})
    EXPECT_THAT(Run({"/g/A.vbp", "--to", folder, "--line-numbers", "100:10"}),
                EndsWith(": 2 modules and project file written, 1 file copied\n"));
  for (const char* name : {"/M.bas", "/M_2.bas", "/M.txt", "/A.vbp"})
    EXPECT_EQ(mFiles["/a" + std::string(name)], mFiles["/b" + std::string(name)]) << name;
  EXPECT_THAT(mFiles["/b/M_2.bas"], HasSubstr("120"));
  mFiles.Add("/g/lib/A.vbp", "Type=Exe\r\nModule=O; ..\\n\\M.bas\r\nName=\"L\"\r\n");
  Run({"/g/G.vbg", "--to", "/c", "--line-numbers", "100:10"});
  Run({"/g/G.vbg", "--to", "/c", "--line-numbers", "100:10"});  // all the same: nothing is asked
}

TEST_F(WriteCommand, TheNextProjectIsWrittenWhenOneFails) {
  mFiles.AddFolder("/out/A/A.vbp");
  for (const char* input : {"/g/G.vbg", "/g"}) {
    EXPECT_THAT(Run({input, "--to", "/out"}, exFailed),
                HasSubstr("/out/A_2/A.vbp: 1 module and project file written, from "));
    EXPECT_THAT(mErr, AllOf(HasSubstr("/g/A.vbp: cannot be written: "),
                            HasSubstr("not written, or not whole: 1 of 2 projects: /g/A.vbp\n")));
  }
}

TEST_F(WriteCommand, AFailureSaysWhatWasWrittenBefore) {
  mFiles.Add("/g/A.vbp", "Type=Exe\r\nModule=M; M.bas\r\nModule=N; N.bas\r\nName=\"A\"\r\n");
  mFiles.Add("/g/N.bas", "' n");
  Run({"/g/A.vbp", "--in-place", "--yes"});
  mFiles.ForgetCalls();
  Run({"/g/A.vbp", "--in-place", "--yes"});
  int n = 0;
  while (mFiles.Calls()[static_cast<std::size_t>(n)] != "Rename /g/N.bas") ++n;
  mFiles.FailAt(n + 1, ENOSPC);
  Run({"/g/A.vbp", "--in-place", "--yes"}, exFailed);
  EXPECT_EQ(mErr,
            "vendrelmodel: /g/A.vbp: cannot be written: Disk full: /g/N.bas; 1 file had been "
            "written before, and what was there lies in /g/SourceBackup\n");
}

// The files of a run that is stopped before each of its calls: nothing stays beside them.
TEST_F(WriteCommand, ASignalLeavesNothingBehind) {
  const std::vector<std::string> runs[] = {
      {"write", "/g/A.vbp", "--in-place", "--yes"},
      {"write", "/g/G.vbg", "--to", "/out", "-o", "/g/told"},
      {"dump", "/g/A.vbp", "-o", "/g/told"},
  };
  for (const auto& run : runs) {
    SCOPED_TRACE(testing::PrintToString(run));
    std::size_t stopped = 0;
    for (int n = 1, reached = 1; reached && !HasFailure(); ++n) {
      SetUp();
      mFiles.ForgetCalls();
      mFiles.ActAt(n, [] { NoteSignal(SIGTERM); });
      const ToolRun ended = Tool(run);
      reached = mFiles.Calls().size() >= static_cast<std::size_t>(n);
      for (const std::string& path : mFiles.Paths())
        EXPECT_EQ(path.find(".vendrel-"), std::string::npos) << path;
      if (ended.Code != SignalBase + SIGTERM) continue;
      ++stopped;
      EXPECT_THAT(ended.Err, HasSubstr("interrupted (Terminated); "));
      EXPECT_FALSE(mFiles.Has("/g/told"));
      const bool nothing = ended.Err.find("nothing was written") != std::string::npos;
      EXPECT_TRUE(!nothing || mFiles.Paths().size() == 5 || mFiles.Has("/g/SourceBackup"));
    }
    EXPECT_GT(stopped, 10u);
    NoteSignal(0);
  }
}

TEST_F(WriteCommand, AWritingRunRemovesWhatKilledOnesLeft) {
  const std::string left = "/g/.vendrel-123-4.tmp";
  const std::string kept[] = {"/g/.vendrel-123-5.tmp", "/g/.vendrel-1-2-3.tmp", "/g/.vendrel-.tmp",
                              "/g/.vendrel-12-x.tmp", "/g/lib/.vendrel-1-1.tmp"};
  for (const std::string& path : kept) mFiles.Add(path, "");
  mFiles.Add(left, "");
  mFiles.Lock(kept[0]);  // somebody writes it
  Run({"/g/A.vbp", "--in-place", "--dry-run"});
  Run({"/g/A.vbp", "--to", "/out"});
  ToolEnding(exDone, {"dump", "/g/A.vbp", "-o", "/g/told"});
  EXPECT_TRUE(mFiles.Has(left));
  Run({"/g/A.vbp", "--in-place", "--yes"});
  EXPECT_FALSE(mFiles.Has(left));
  for (const std::string& path : kept) EXPECT_TRUE(mFiles.Has(path)) << path;
}

TEST_F(WriteCommand, WhatIsRefusedEndsWithAFailure) {
  mFiles.Add("/out/M.bas", "", 0444);
  Run({"/g/A.vbp", "--to", "/out"}, exFailed);
  EXPECT_THAT(mErr, HasSubstr("[write-refused]"));
  mFiles.AddFolder("/g/SourceBackup/M.bas");
  Run({"/g/A.vbp", "--in-place", "--yes"}, exFailed);
  EXPECT_THAT(mErr, HasSubstr("Backup file copy error (M.bas)"));
}

std::string TextOf(const std::vector<int>& lines) {
  std::string text;
  for (const int line : lines) text += std::to_string(line) + "\n";
  return text;
}

TEST(UnifiedDiff, ItsChangesMakeTheNewTextOfTheOld) {
  std::mt19937 random(7);
  const auto any = [&](std::size_t below) { return random() % below; };
  for (int round = 0; round < 300; ++round) {
    const std::size_t kinds = 2 + any(40);
    std::vector<int> oldLines(any(60)), newLines;
    for (int& line : oldLines) line = static_cast<int>(any(kinds));
    for (const int line : oldLines) {
      if (any(4) == 0) newLines.push_back(static_cast<int>(any(kinds)));
      if (any(4) != 0) newLines.push_back(line);
    }
    std::vector<int> made;
    std::size_t at = 0;
    for (const LineChange& change : CompareLines(TextOf(oldLines), TextOf(newLines))) {
      EXPECT_TRUE(change.OldCount + change.NewCount > 0);
      while (at < change.OldLine) made.push_back(oldLines[at++]);
      at += change.OldCount;
      for (std::size_t i = 0; i < change.NewCount; ++i)
        made.push_back(newLines[change.NewLine + i]);
    }
    while (at < oldLines.size()) made.push_back(oldLines[at++]);
    ASSERT_EQ(made, newLines) << TextOf(oldLines) << "--\n" << TextOf(newLines);
  }
}

TEST(UnifiedDiff, ShowsThreeLinesAroundAndLineEnds) {
  std::ostringstream out;
  EXPECT_EQ(WriteUnifiedDiff(out, "a", "1\n2\n3\n4\n5\n6\n7\n8\n9\n0\nx\ny\n", "b",
                             "1\n2\n3\n4\nfive\n6\n7\n8\n9\n0\nx\ny"),
            2u);
  EXPECT_EQ(
      out.str(),
      "--- a\n+++ b\n@@ -2,11 +2,11 @@\n 2\n 3\n 4\n-5\n+five\n 6\n 7\n 8\n 9\n 0\n x\n-y\n+y\n"
      "\\ No newline at end of file\n");
  std::ostringstream none;
  EXPECT_EQ(WriteUnifiedDiff(none, "a", "1\n", "b", "1\n"), 0u);
  EXPECT_EQ(none.str(), "");
}

TEST(UnifiedDiff, FarApartTextsTakeLittleTime) {
  std::string oldText, newText;
  for (int i = 0; i < 100000; ++i) {
    oldText += "a" + std::to_string(i % 1000) + "\n";
    newText += "b" + std::to_string(i % 999) + "\n";
  }
  EXPECT_EQ(CompareLines(oldText, newText).size(), 1u);
}

}  // namespace
}  // namespace vendrel::cli
