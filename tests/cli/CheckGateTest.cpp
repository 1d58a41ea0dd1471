// check as a gate: levels, settings files, baselines, and the forms for other programs.

#include "support/DiskFolder.h"
#include "support/MemoryFiles.h"
#include "support/SourceRoot.h"
#include "support/ToolRun.h"

namespace vendrel::cli {
namespace {

using nlohmann::json;

class CheckGate : public testing::Test {
 protected:
  std::string Check(std::vector<std::string> more, int code) {
    more.insert(more.begin(), {"check", "/p"});
    const ToolRun run = ToolEnding(code, more);
    return code == exUsage ? run.Err : run.Out;
  }

  test::MemoryFiles mFiles{
      {"/p/A.vbp", "Type=Exe\r\nModule=M; M.bas\r\nModule=G; gone.bas\r\n"},
      {"/p/M.bas", "Attribute VB_Name = \"M\"\r\n'##SUMARY x\r\nSub A()\r\nEnd Sub\r\n"},
      {"/p/sub/B.vbp", "Type=Exe\r\nModule=M; M.bas\r\n"},
      {"/p/sub/M.bas", "Attribute VB_Name = \"M\"\r\nSub B()\r\nEnd Sub\r\n"},
  };
};

TEST_F(CheckGate, EndsByTheLevelsOfWhatIsTold) {
  const std::string off = "missing-module=off";
  const struct {
    std::vector<std::string> More;
    int Code;
  } cases[] = {
      {{}, exNo},
      {{"--rule", off}, exDone},
      {{"--rule", "missing-module=warning", "--strict"}, exWarnings},
      {{"--rule", off, "--strict"}, exWarnings},
      {{"--rule", off, "--rule", "unknown-tag=note", "--strict"}, exDone},
      {{"--rule", off, "--rule", "option-explicit=error"}, exNo},
      {{"--rule", "missing-modul=off"}, exUsage},
      {{"--rule", "missing-module=bad"}, exUsage},
      {{"--write-baseline"}, exUsage},
      {{"--sarif", "--json"}, exUsage},
      {{"--annotations", "nobody"}, exUsage},
  };
  for (const auto& sample : cases) Check(sample.More, sample.Code);
  EXPECT_THAT(Check({"--rule", "missing-modul=off"}, exUsage),
              HasSubstr("did you mean 'missing-module'?"));
  EXPECT_THAT(Check({"--rule", "option-explicit=error"}, exNo),
              HasSubstr("/p/sub/M.bas:2: error: Option Explicit is missing"));
  mFiles.Add("/p/Bad.vbp", "none");
  Check({}, exFailed);
  Check({"--rule", "unread-project=note", "--rule", off}, exDone);
}

TEST_F(CheckGate, TellsWhereAMissingModuleMayBe) {
  mFiles.Add("/p/old/GONE.bas", "");
  EXPECT_THAT(Check({}, exNo), HasSubstr("A.vbp:3: warning: module file not found: /p/gone.bas; "
                                         "/p/old/GONE.bas bears that name [missing-module]\n"));
}

TEST_F(CheckGate, AsksTheSettingsNearestToTheFile) {
  mFiles.Add("/.vendrelmodel.toml",
             "[rules]\nmissing-module = \"off\"\noption-explicit = \"error\"\n");
  mFiles.Add("/p/sub/.vendrelmodel.toml", "[rules]\noption-explicit = \"warning\"\n");
  const std::string told = Check({}, exNo);
  EXPECT_THAT(told, AllOf(Not(HasSubstr("missing-module")), HasSubstr("/p/M.bas:3: error: Option"),
                          HasSubstr("/p/sub/M.bas:2: warning: Option")));
  EXPECT_THAT(Check({"--rule", "option-explicit=note"}, exDone), HasSubstr("/p/M.bas:3: note: "));
  mFiles.Add("/p/.vendrelmodel.toml", "[check]\nstrict = true\n");
  Check({"--rule", "option-explicit=note"}, exWarnings);
}

TEST_F(CheckGate, TellsWrongSettingsWithTheirLine) {
  const struct {
    const char* Text;
    const char* Told;
  } cases[] = {
      {"[rules]\n\nmissing-modul = \"off\"\n",
       "/p/.vendrelmodel.toml:3: no rule is named 'missing-modul'; did you mean 'missing-module'?"},
      {"[rules]\ntold = 3\n", ":2: 'told' is set to one of off, note, warning or error"},
      {"[rules]\ntold = \"loud\"\n", ":2: 'told' is set to one of"},
      {"rules = 3\n", ":1: 'rules' is a table"},
      {"\n[rule]\n",
       ":2: 'rule' is no table of settings; those are [rules], [check], [assess] and "},
      {"[unused]\nused = \"A\"\n", ":2: 'used' is no setting of [unused]"},
      {"[check]\nstrict = 1\n", ":2: 'strict' is no setting of [check]"},
      {"[rules]\ntold = \n", ":2: no TOML: "},
  };
  for (const auto& sample : cases) {
    mFiles.Add("/p/.vendrelmodel.toml", sample.Text);
    EXPECT_THAT(Check({}, exUsage), HasSubstr(sample.Told));
  }
}

TEST(CheckBaseline, HidesWhatIsKnownWhereverItsLineIs) {
  const test::DiskFolder folder;  // results go to the disk
  folder.Write("A.vbp", "Type=Exe\nModule=M; M.bas\nModule=G; gone.bas\n");
  const std::string module = "Attribute VB_Name = \"M\"\nOption Explicit\n'##SUMARY x\n";
  folder.Write("M.bas", module);
  const std::string known = folder.Path("known.json");
  const auto check = [&](int code, std::vector<std::string> more) {
    more.insert(more.begin(), {"check", folder.Path(), "--baseline", known});
    return ToolEnding(code, more);
  };
  EXPECT_THAT(check(exFailed, {}).Err, HasSubstr("--write-baseline makes a new one"));
  const ToolRun written = check(exDone, {"--write-baseline"});
  EXPECT_THAT(written.Err, HasSubstr("2 findings written to "));
  EXPECT_THAT(written.Out, AllOf(StartsWith("1 project,"), HasSubstr(", 2 findings known\n")));
  EXPECT_THAT(check(exDone, {}).Out, StartsWith("1 project,"));
  // Lines move and are indented; a second one of the same words is new.
  folder.Write("M.bas", "Attribute VB_Name = \"M\"\nOption Explicit\n\n\n  '##SUMARY   x\n");
  EXPECT_THAT(check(exDone, {}).Out, StartsWith("1 project,"));
  folder.Write("M.bas", module + "'##SUMARY x\n");
  EXPECT_THAT(check(exDone, {}).Out,
              AllOf(HasSubstr("M.bas:4: warning: ##SUMARY"), Not(HasSubstr("M.bas:3:"))));
  folder.Write("sub/.vendrelmodel.toml", "[check]\nbaseline = \"../known.json\"\n");
  folder.Write("sub/A.vbp", "Type=Exe\n");
  EXPECT_THAT(RunFor({"check", folder.Path() + "/sub/A.vbp", folder.Path()}),
              HasSubstr("2 findings known"));
  EXPECT_THAT(
      RunFor({"check", folder.Path(), "--baseline", folder.Path("M.bas"), "--write-baseline"},
             exUsage),
      HasSubstr("M.bas is there, and is no baseline"));
  folder.Write("known.json", "{}");
  EXPECT_THAT(check(exFailed, {}).Err, HasSubstr("known.json"));
}

TEST_F(CheckGate, WritesALogThatProgramsRead) {
  const json log = json::parse(Check({"--sarif", "--root", "/p"}, exNo));
  EXPECT_EQ(log["version"], "2.1.0");
  const json& run = log["runs"][0];
  EXPECT_EQ(run["originalUriBaseIds"]["SRCROOT"]["uri"], "file:///p/");
  EXPECT_EQ(run["invocations"][0]["executionSuccessful"], true);
  const json& rules = run["tool"]["driver"]["rules"];
  std::vector<std::string> places;
  for (const json& result : run["results"]) {
    EXPECT_EQ(rules[result["ruleIndex"].get<std::size_t>()]["id"], result["ruleId"]);
    EXPECT_TRUE(result["partialFingerprints"].is_object());
    if (result["locations"].empty()) continue;
    const json& place = result["locations"][0]["physicalLocation"];
    places.push_back(place["artifactLocation"]["uri"].get<std::string>() + " " +
                     place["region"].dump() + " " + result["level"].get<std::string>());
  }
  EXPECT_THAT(places, testing::ElementsAre(R"(A.vbp {"startColumn":1,"startLine":3} warning)",
                                           R"(M.bas {"startColumn":2,"startLine":2} warning)",
                                           R"(M.bas {"startColumn":1,"startLine":3} note)",
                                           R"(sub/M.bas {"startColumn":1,"startLine":2} note)"));
}

TEST_F(CheckGate, WritesWhatBuildServersRead) {
  mFiles.Add("/p/B.vbp", "Type=Exe\r\nModule=G; b,100%.bas\r\n");
  const std::string github = Check({"--annotations", "github", "--root", "/p"}, exNo);
  EXPECT_THAT(
      github,
      AllOf(HasSubstr("::warning file=M.bas,line=2,col=2,title=unknown-tag::##SUMARY is"),
            HasSubstr("::notice file=sub/M.bas,line=2,col=1,title=option-explicit::"),
            HasSubstr("module file not found: /p/b,100%25.bas\n"), HasSubstr("3 projects, ")));
  EXPECT_EQ(Check({"--annotations", "auto", "--root", "/p"}, exNo).substr(0, 10),
            github.substr(0, 10));
  const std::string azure = Check({"--annotations", "azure", "--root", "/p"}, exNo);
  EXPECT_THAT(azure,
              AllOf(HasSubstr("##vso[task.logissue type=warning;sourcepath=B.vbp;linenumber=2;"
                              "columnnumber=1;code=missing-module;]module file not found: "
                              "/p/b,100%AZP25.bas\n"),
                    HasSubstr("\nsub/M.bas:2: note: Option Explicit is missing;")));
  const json gitlab = json::parse(Check({"--annotations", "gitlab", "--root", "/p"}, exNo));
  EXPECT_EQ(gitlab[0]["check_name"], "missing-module");
  EXPECT_EQ(gitlab[0]["severity"], "minor");
  EXPECT_EQ(gitlab[0]["location"], json::parse(R"({"path":"A.vbp","lines":{"begin":3}})"));
  std::set<std::string> fingerprints;
  for (const json& entry : gitlab) EXPECT_TRUE(fingerprints.insert(entry["fingerprint"]).second);
}

}  // namespace
}  // namespace vendrel::cli
