#include <random>

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

  std::string mErr;
  test::MemoryFiles mFiles{
      {"/g/G.vbg", "VBGROUP 5.0\r\nProject=A.vbp\r\nProject=lib\\A.vbp\r\n"},
      {"/g/A.vbp", "Type=Exe\r\nModule=M; M.bas\r\nModule=Gone; Gone.bas\r\nName=\"A\"\r\n"},
      {"/g/M.bas", kWrittenModule},
      {"/g/lib/A.vbp", "Type=OleDll\r\nClass=C; C.cls\r\nName=\"L\"\r\n"},
      {"/g/lib/C.cls", "VERSION 1.0 CLASS\r\nAttribute VB_Name = \"C\"\r\n"}};
};

TEST_F(WriteCommand, WritesACopyAndLeavesTheSourceAlone) {
  const std::string project = mFiles["/g/A.vbp"];
  EXPECT_EQ(Run({"/g/A.vbp", "--to", "/out/deep"}),
            "/out/deep/A.vbp: 2 modules and project file written\n");
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
  Run({"/g/M.bas", "--to", "/out"}, exUsage);
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
  EXPECT_THAT(Run({"/g/A.vbp", "--to", "/out", "--dry-run"}), HasSubstr("same /out/M.bas\n"));
  EXPECT_FALSE(mFiles.Has("/out"));
}

TEST_F(WriteCommand, EachProjectOfAGroupGetsAFolder) {
  Run({"/g/G.vbg", "--to", "/out"});
  EXPECT_EQ(mFiles["/out/A/M.bas"], kWrittenModule);
  EXPECT_TRUE(mFiles.Has("/out/A_2/A.vbp"));
  EXPECT_TRUE(mFiles.Has("/out/A_2/C.cls"));
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
