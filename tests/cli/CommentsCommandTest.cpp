#include <gtest/gtest.h>

#include "support/MemoryFiles.h"
#include "support/ToolRun.h"

namespace vendrel::cli {
namespace {

class CommentsCommand : public testing::Test {
 protected:
  test::MemoryFiles mFiles{
      {"/p/m.bas",
       "Attribute VB_Name = \"m\"\nOption Explicit\n'##SUMMARY Counts.\n"
       "'##PARAM a first\n'##PARAM z gone\n'##IGNORE_REFERENCES x\nSub F(a)\n"
       "End Sub\n'##SUMMARY lost\n"},
      {"/p/c.xml", "<r><c eid=\"m~m~F\" tid=\"##REMARKS\">From outside.</c></r>"},
      {"/p/bad.xml", "<r><c></r>"}};
};

TEST_F(CommentsCommand, ListsEachCommentWithItsElement) {
  EXPECT_EQ(RunFor({"comments", "/p/m.bas", "--comment-file", "/p/c.xml"}),
            "/p/m.bas:3: ##SUMMARY -> m~m~F: Counts.\n"
            "/p/m.bas:4: ##PARAM a -> m~m~F:a: first\n"
            "/p/m.bas:5: ##PARAM z -> unplaced: gone\n"
            "/p/m.bas:6: ##IGNORE_REFERENCES -> m~m: x\n"
            "/p/m.bas:9: ##SUMMARY -> unplaced: lost\n"
            "/p/c.xml: ##REMARKS -> m~m~F: From outside.\n");
  const auto unplaced = JsonLines({"comments", "/p/m.bas", "--unplaced", "--json"});
  ASSERT_EQ(unplaced.size(), 2u);
  EXPECT_EQ(unplaced[0]["Qualifier"], "z");
  EXPECT_TRUE(unplaced[1]["CodeElement"].is_null());
}

TEST_F(CommentsCommand, WritesAFileThatDescribesTheSameElements) {
  mFiles.Add("/p/written.xml", RunFor({"comments", "/p/m.bas", "--as-comment-file"}));
  mFiles.Add("/p/m.bas", "Attribute VB_Name = \"m\"\nOption Explicit\nSub F(a)\nEnd Sub\n");
  const auto dump =
      nlohmann::json::parse(RunFor({"dump", "/p/m.bas", "--comment-file", "/p/written.xml"}));
  const auto& block = dump["Components"][0]["Blocks"].back();
  EXPECT_EQ(block["TaggedDescription"], "Counts.");
  EXPECT_EQ(block["Parameters"][0]["Description"], "first");
}

TEST_F(CommentsCommand, TakesGroupsAndFolders) {
  mFiles.Add("/p/A.vbp", "Type=Exe\r\nModule=m; m.bas\r\nName=\"A\"\r\n");
  mFiles.Add("/p/B.vbp", "Type=Exe\r\nModule=m; m.bas\r\nName=\"B\"\r\n");
  mFiles.Add("/p/G.vbg", "VBGROUP 5.0\r\nProject=A.vbp\r\nProject=B.vbp\r\n");
  for (const char* path : {"/p/G.vbg", "/p"}) {
    const std::string list = RunFor({"comments", path});
    for (const char* line :
         {"/p/m.bas:3: ##SUMMARY -> A~m~F: Counts.\n", "/p/m.bas:3: ##SUMMARY -> B~m~F: Counts.\n"})
      EXPECT_THAT(list, HasSubstr(line));
    EXPECT_EQ(JsonLines({"comments", path, "--json"}).size(), 10u);
    const std::string file = RunFor({"comments", path, "--as-comment-file"});
    EXPECT_THAT(file, AllOf(HasSubstr("eid=\"A~m~F\""), HasSubstr("eid=\"B~m~F\"")));
    const std::string manifest = RunFor({"manifest", path});
    EXPECT_TRUE(manifest.starts_with("<?xml version=\"1.0\"?>\n<Projects>\n")) << manifest;
    EXPECT_EQ(manifest.find("<?xml", 1), std::string::npos);
    EXPECT_THAT(manifest, HasSubstr("ProjectName=\"B\""));
  }
}

TEST_F(CommentsCommand, RefusesACommentFileThatIsMissingOrNotWellFormed) {
  EXPECT_THAT(RunFor({"tree", "/p/m.bas", "--comment-file", "/p/none.xml"}, exFailed),
              HasSubstr("none.xml"));
  EXPECT_THAT(RunFor({"tree", "/p/m.bas", "--comment-file", "/p/bad.xml"}, exFailed),
              HasSubstr("line 1, column"));
}

}  // namespace
}  // namespace vendrel::cli
