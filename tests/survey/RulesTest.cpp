// The rules of a check: their page, and each of those that no reader tells.
#include "survey/Rules.h"

#include <fstream>
#include <map>
#include <set>

#include "diagnostics/Diagnostic.h"
#include "support/MemoryFiles.h"
#include "support/SourceRoot.h"
#include "support/ToolRun.h"

namespace vendrel::cli {
namespace {

using nlohmann::json;

std::string WithCapital(std::string_view word) {
  std::string text(word);
  text[0] = static_cast<char>(text[0] - 'a' + 'A');
  return text;
}

TEST(RulesPage, TellsEachRuleWithItsLevelAnExampleAndHowToMendIt) {
  std::ifstream page(test::SourceRoot() + "/docs/rules.md");
  std::map<std::string, std::string> entries;
  std::string* entry = nullptr;
  for (std::string line; std::getline(page, line);) {
    if (line.starts_with("### ")) entry = &entries[line.substr(4)];
    if (line.starts_with("## ")) entry = nullptr;
    if (entry && !line.starts_with("### ")) entry->append(line).append("\n");
  }
  for (const Rule& rule : AllRules()) {
    const std::string& text = entries[std::string(rule.Id)];
    EXPECT_THAT(text, StartsWith(WithCapital(LevelName(rule.Level)) + ". ")) << rule.Id;
    EXPECT_THAT(text, HasSubstr(" [" + std::string(rule.Id) + "]\n\nMend: ")) << rule.Id;
    EXPECT_FALSE(rule.Title.empty()) << rule.Id;
  }
  EXPECT_EQ(entries.size(), AllRules().size());
}

TEST(Rules, HaveTheLevelsOfTheirDiagnostics) {
  std::set<std::string_view> ids;
  for (const Rule& rule : AllRules()) EXPECT_TRUE(ids.insert(rule.Id).second) << rule.Id;
#define VENDREL_EXPECT_LEVEL(id, code, severity, text)                                             \
  EXPECT_EQ(LevelName(FindRule(code)->Level), SeverityName(Severity::severity)) << code;
  VENDREL_DIAGNOSTICS(VENDREL_EXPECT_LEVEL)
#undef VENDREL_EXPECT_LEVEL
  EXPECT_EQ(NearestRule("missing-modul"), "missing-module");
  EXPECT_EQ(NearestRule("nonsense-of-mine"), "");
}

// "line:column rule text" of the findings of a file, without those of the other files.
std::vector<std::string> FindingsIn(const std::string& file, std::vector<std::string> run) {
  run.insert(run.begin(), "check");
  run.insert(run.end(), {"--json", "--root", "/p"});
  std::vector<std::string> found;
  for (const json& line : JsonLines(run)) {
    if (!line.contains("Code") || line["File"] != file) continue;
    found.push_back(std::to_string(line["Line"].get<int>()) + ":" +
                    std::to_string(line["Column"].get<int>()) + " " +
                    line["Code"].get<std::string>() + " " + line["Text"].get<std::string>());
  }
  return found;
}

TEST(Rules, FindWhatNoReaderTells) {
  const std::string name = "Attribute VB_Name = ";
  test::MemoryFiles files{
      {"/p/a/A.vbp", "Type=Exe\r\nModule=M; M.bas\r\nModule=N; N.bas\r\nModule=L; .\\M.bas\r\n"},
      {"/p/a/M.bas", name + "\"M\"\r\n' told\r\n\r\n  Public X\r\n"
                            "Declare Sub Post Lib \"k\" (ByVal a As Long)\r\n"
                            "Declare Sub Same Lib \"k\" (a As Long)\r\n"
                            "Public Property Get P()\r\nEnd Property\r\n"
                            "Public Property Let P(v)\r\nEnd Property\r\n"
                            "'Does it.\r\nSub Told()\r\nEnd Sub\r\n"},
      {"/p/a/N.bas", name + "\"N\"\r\nOption Explicit\r\n"
                            "Private Declare Sub Post Lib \"k\" (a As Long)\r\n"
                            "Declare Sub SAME Lib \"k\" (b As Long)\r\nConst A = 1\n"
                            "Const B = \"'##\"\r\n"},
      {"/p/b/B.vbp", "Type=Exe\r\nModule=N; N.bas\r\nModule=E; E.bas\r\n"},
      {"/p/b/N.bas", name + "\"N\"\r\n' comments\r\n\r\n#If X Then\r\n#End If\r\n"},
      {"/p/b/E.bas", name + "\"N\"\r\n' comments\r\n\r\n#If X Then\r\n#End If\r\n"},
      {"/p/old/U.frm", "VERSION 5.00\r\n"}};
  const auto found = [](const std::string& file, std::vector<std::string> more = {}) {
    more.insert(more.begin(), "/p");
    return FindingsIn(file, more);
  };
  using testing::ElementsAre;
  EXPECT_THAT(found("a/A.vbp"),
              ElementsAre("4:1 module-listed-twice line 2 lists this file already: /p/a/M.bas"));
  EXPECT_THAT(found("a/M.bas"),
              ElementsAre("4:3 option-explicit Option Explicit is missing; a mistyped name is a "
                          "new variable"));
  EXPECT_THAT(found("a/N.bas"),
              ElementsAre("3:21 declare-signatures Declare 'Post' differs from the one in "
                          "/p/a/M.bas, line 5",
                          "5:1 mixed-line-ends lines end in different ways: 5 with CR LF, 1 with "
                          "LF"));
  EXPECT_THAT(found("b/E.bas"),
              ElementsAre("0:0 duplicate-module holds the same text as /p/b/N.bas"));
  EXPECT_THAT(found("old/U.frm"), ElementsAre("0:0 unlisted-module no project lists this module"));
  EXPECT_THAT(found("a/M.bas", {"--rule", "undocumented=note", "--rule", "option-explicit=off"}),
              ElementsAre("4:10 undocumented variable 'X' has no description",
                          "5:13 undocumented Declare 'Post' has no description",
                          "6:13 undocumented Declare 'Same' has no description",
                          "7:21 undocumented property 'P' has no description"));
}

}  // namespace
}  // namespace vendrel::cli
