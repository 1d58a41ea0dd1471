#include "cli/ShownText.h"

#include "support/MemoryFiles.h"
#include "support/ToolRun.h"

namespace vendrel::cli {
namespace {

TEST(ShownText, WritesOutWhatWouldDisturbATerminalOrATable) {
  const std::pair<std::string, const char*> cases[] = {
      {"plain Ж 漢", "plain Ж 漢"},
      {"a\tb\r\nc", "a\\tb\\r\\nc"},
      {"\x1B[31m\x07\x7F", "\\e[31m\\x07\\x7F"},
      {"\xC2\x9B and \xE2\x80\xA8", "\\u009B and \\u2028"},
      {"\xE2\x80\xAE\xE2\x81\xA6", "\\u202E\\u2066"},
      {"\x9B", "\\x9B"},
      {"C:\\Windows\\system32", "C:\\Windows\\system32"},
      {"\\\\server\\share", "\\\\server\\share"},
      {"C:\\temp\\a", "C:\\\\temp\\\\a"},
      {"C:\\x1B", "C:\\\\x1B"},
      {"C:\\Windows\t", "C:\\\\Windows\\t"}};
  for (const auto& [text, shown] : cases) EXPECT_EQ(Shown(text), shown);
}

TEST(ShownText, ShowsADeclarationAsSourceCouldHaveIt) {
  const std::pair<std::string, const char*> cases[] = {
      {"Const A = \"C:\\temp\"", "Const A = \"C:\\temp\""},
      {"Sub\tA(s = \"x\ty\")", "Sub A(s = \"x\" & vbTab & \"y\")"},
      {"\"\t\"", "vbTab"},
      {"\"\r\n\x1Bz\", b", "vbCrLf & Chr$(27) & \"z\", b"},
      {"\"a\xE2\x80\xAE\"", "\"a\" & ChrW$(&H202E)"},
      {"\"a\"\"\t\"\"\"", "\"a\"\"\" & vbTab & \"\"\"\""},
      {"Q\x1Bx", "QChr$(27)x"}};
  for (const auto& [source, shown] : cases) EXPECT_EQ(ShownSource(source), shown) << source;
}

class HostileFiles : public testing::Test {
 protected:
  test::MemoryFiles mFiles{
      {"/p/P.vbp",
       "Type=Exe\r\nModule=m; m.bas\r\nModule=g; gone\x1B[2J.bas\r\nName=\"P\x1B[31m\"\r\n"},
      {"/p/m.bas",
       "Attribute VB_Name = \"m\"\r\nOption Explicit\r\nPublic Const E = \"a\x1B[31m\x07\"\r\n"
       "Public Q\x1Bx As Long\r\n'##SUMMARY hi\x1B]0;x\x07there\r\nPublic Sub A(Optional s = "
       "\"\x1B[0m\")\r\n  x = \"\x1B[32m\"\r\nEnd Sub\r\nPublic\r\nPublic \x1B\r\n"
       "' \xE2\x80\xAE turned\r\n"}};
};

TEST_F(HostileFiles, ReachNoTableNoOutlineAndNoMessageRaw) {
  for (const char* command :
       {"tree", "names", "check", "comments", "controls", "help-ids", "structure"}) {
    const ToolRun run = Tool({command, "/p/P.vbp"});
    EXPECT_EQ((run.Out + run.Err).find_first_of("\x1B\x07"), std::string::npos) << command;
  }
  EXPECT_THAT(RunFor({"names", "/p/P.vbp"}), HasSubstr("P\\e[31m~m~Q\\ex\tvariable\t/p/m.bas:4\n"));
  EXPECT_THAT(RunFor({"find", "/p/P.vbp", "A"}),
              HasSubstr("\tPublic Sub A(Optional s = Chr$(27) & \"[0m\")\t"));
  EXPECT_THAT(Tool({"tree", "/p/P.vbp"}).Err, HasSubstr("gone\\e[2J.bas"));
  EXPECT_THAT(RunFor({"comments", "/p/P.vbp"}), HasSubstr(": hi\\e]0;x\\x07there\n"));
}

TEST_F(HostileFiles, ReachATerminalWrittenOutButAFileAsTheyAre) {
  EXPECT_THAT(RunFor({"lines", "/p/m.bas"}), HasSubstr("x = \"\x1B[32m\""));
  const ToolRun shown = Tool({"lines", "/p/m.bas"}, {.Terminal = true});
  EXPECT_THAT(shown.Out, HasSubstr("  x = \"\\e[32m\"\n"));
  EXPECT_EQ(shown.Out.find_first_of("\x1B\x07\r"), std::string::npos);
  EXPECT_THAT(RunFor({"html", "/p/m.bas"}), HasSubstr("\x1B[32m"));
  EXPECT_THAT(Tool({"html", "/p/m.bas"}, {.Terminal = true}).Out, Not(HasSubstr("\x1B")));
}

TEST_F(HostileFiles, TellTheLinesWhoseDirectionIsTurned) {
  EXPECT_THAT(Tool({"tree", "/p/P.vbp"}).Err,
              HasSubstr("/p/m.bas:11: warning: U+202E changes the order in which this line is "
                        "shown; what is read may not be what runs [direction-control]\n"));
}

}  // namespace
}  // namespace vendrel::cli
