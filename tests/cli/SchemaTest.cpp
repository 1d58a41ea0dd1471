// What the tool writes as JSON, held against the schema that it prints.
#include <cstdlib>
#include <set>

#include "output/Describe.h"
#include "support/DiskFolder.h"
#include "support/SourceRoot.h"
#include "support/ToolRun.h"

namespace vendrel::cli {
namespace {

using nlohmann::json;

const std::string kSamples = test::SourceRoot() + "/samples";

void ForEachObject(const json& value, const std::function<void(const json&)>& visit) {
  if (value.is_object()) visit(value);
  if (value.is_structured())
    for (const auto& child : value) ForEachObject(child, visit);
}

TEST(JsonSchema, FitsWhatEveryCommandWrites) {
  const std::string ledger = kSamples + "/Ledger/Ledger.vbp", group = kSamples + "/Ledger.vbg";
  const std::string assembly = test::SourceRoot() + "/tests/dotnet/data/Shop.dll";
  const std::string one = kSamples + "/Ledger/modMain.bas",
                    other = kSamples + "/Ledger/modRates.bas";
  const std::vector<std::vector<std::string>> runs = {
      {"dump", ledger, "--lines", "--root", kSamples},
      {"dump", group, "--brief"},
      {"dump", kSamples, "--comparable"},
      {"dump", assembly},
      {"names", ledger},
      {"tags"},
      {"find", kSamples, "p*"},
      {"uses", group, "--declarations", "--all-branches"},
      {"uses", group, "--summary"},
      {"controls", ledger, "--properties"},
      {"comments", group},
      {"check", kSamples, "--verbose"},
      {"calls", group},
      {"calls", ledger, "Main", "--depth", "0"},
      {"calls", group, "--modules"},
      {"calls", group, "--fan"},
      {"unused", group},
      {"members", ledger, "Account", "--private"},
      {"help-ids", ledger},
      {"resolve", ledger, "Account"},
      {"lines", one},
      {"diff", one, other},
      {"roundtrip", kSamples},
      {"assembly", assembly},
      {"graph", group, "--level", "module"},
      {"inventory", kSamples, assembly, "--near-duplicates"},
  };
  const test::DiskFolder folder;
  int number = 0;
  const auto keep = [&](const std::string& command, const std::string& text) {
    const std::string name = std::to_string(number++) + command;
    folder.Write(name + ".json", text);
    folder.Write(name + ".schema.json", RunFor({"schema", command}));
  };
  for (std::vector<std::string> run : runs) {
    if (run.front() != "dump") run.push_back("--json");
    const ToolRun ran = Tool(run);
    EXPECT_EQ(ran.Code, run.front() == "diff" ? exNo : exDone) << ran.Err;
    keep(run.front(), ran.Out);
  }
  keep("diagnostics", Tool({"tree", "/none.vbp", "--diagnostics", "json"}).Err);
  keep("diagnostics", Tool({"tree", "--nonsense", "--diagnostics=json"}).Err);
  if (std::system("python3 -c 'import jsonschema' 2>/dev/null") != 0)
    GTEST_SKIP() << "no validator is installed (Debian's package: python3-jsonschema)";
  EXPECT_EQ(
      std::system(("python3 " + test::SourceRoot() + "/tests/cli/validate_json.py " + folder.Path())
                      .c_str()),
      0);
}

TEST(JsonSchema, OfAllCommandsHoldsThatOfEach) {
  const json all = json::parse(RunFor({"schema"}));
  for (const char* command : {"dump", "names", "check"}) {
    const json one = json::parse(RunFor({"schema", command}));
    for (const auto& [name, schema] : one["$defs"].items())
      EXPECT_EQ(all["$defs"][name], schema) << name;
  }
  EXPECT_FALSE(json::parse(RunFor({"schema", "names"}))["$defs"].contains("Block"));
  ToolEnding(exUsage, {"schema", "nonsense"});
}

// Two projects of one name, procedures of a property, Declares of one function.
TEST(JsonDump, NamesPlacesAndWordsCanBeTrusted) {
  const test::DiskFolder folder;
  const std::string module =
      "Attribute VB_Name = \"M\"\r\nPrivate Declare Sub S Lib \"k\" (ByVal a As Long)\r\n"
      "'  \xC3\xA9\r\nProperty Get P()\r\nEnd Property\r\n  Property Let P(v)\r\nx = 1: y = 2\r\n"
      "End Property\r\n";
  for (const char* place : {"a", "b"}) {
    folder.Write(std::string(place) + "/P.vbp",
                 "Type=Exe\r\nModule=M; M.bas\r\nModule=N; N.bas\r\nName=\"Same\"\r\n");
    folder.Write(std::string(place) + "/M.bas", module);
    folder.Write(std::string(place) + "/N.bas",
                 "Attribute VB_Name = \"N\"\r\nDeclare Sub S Lib \"k\" (ByVal a As Long)\r\n");
  }
  std::set<std::string> names;
  std::vector<json> lets;
  for (const json& project : JsonLines({"dump", folder.Path(), "--lines", "--root", folder.Path()}))
    ForEachObject(project, [&](const json& object) {
      if (!object.contains("UniqueName")) return;
      EXPECT_TRUE(names.insert(object["UniqueName"]).second) << object["UniqueName"];
      if (object["Class"] == "Block" && object["BlockTypeName"] == "btPropertyLet")
        lets.push_back(object);
    });
  ASSERT_EQ(lets.size(), 2u);
  EXPECT_EQ(lets[1]["UniqueName"], "Same~M~P#4");
  EXPECT_EQ(lets[1]["File"], "b/M.bas");
  EXPECT_EQ(lets[1]["Line"], 6);
  EXPECT_EQ(lets[1]["Column"], 16);
  EXPECT_EQ(lets[1]["CodeLines"][1]["Line"], 7);
  std::set<std::string> listed;
  for (const json& name : JsonLines({"names", folder.Path(), "--json"}))
    EXPECT_TRUE(listed.insert(name["UniqueName"]).second) << name;
  for (const std::string& name : listed) EXPECT_TRUE(names.contains(name)) << name;
}

// A word beside a number must not meet another property.
TEST(JsonDump, NoTwoMembersHaveOneName) {
  for (const ClassDescription* description : AllClasses()) {
    std::set<std::string> keys{"Class", "UniqueName", "File", "Line", "Column"};
    for (const PropertyDescription& property : description->AllProperties) {
      EXPECT_TRUE(keys.emplace(property.Name).second) << description->Name << property.Name;
      if (property.Names.empty()) continue;
      EXPECT_TRUE(keys.insert(std::string(property.Name) + "Name").second) << property.Name;
    }
  }
}

}  // namespace
}  // namespace vendrel::cli
