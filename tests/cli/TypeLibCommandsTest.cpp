// The commands on type libraries, from files in memory.

#include <gtest/gtest.h>

#include "services/CodePage.h"
#include "support/MemoryFiles.h"
#include "support/ToolRun.h"
#include "typelib/SampleImages.h"
#include "typelib/TypeLibService.h"

namespace vendrel::cli {
namespace {

using nlohmann::json;
using typelib::test::Image;

std::string Bytes(const Image& image) { return {image.begin(), image.end()}; }

class TypeLibCommands : public testing::Test {
 protected:
  void SetUp() override {
    ConnectLibraryReaders();
    typelib::test::PeBuilder both;
    both.TypeLibraries = {{1, typelib::test::SmallLibrary().Build()},
                          {2, typelib::test::OldLibrary().Build()}};
    mFiles.Add("/t/Both.dll", Bytes(both.Build()));
    mFiles.Add("/t/old.tlb", Bytes(typelib::test::OldLibrary().Build()));
    mFiles.Add("/t/empty.ocx", "");
  }

  test::MemoryFiles mFiles;
};

TEST_F(TypeLibCommands, TreeShowsTheLibraryAsAProject) {
  const std::string expected =
      "project OldLib  (ActiveX DLL, 3 modules, 3 procedures)  /t/old.tlb\n"
      "  class Enumerations\n    enum Public Colours  (2 members)\n"
      "      member Red  (-1)\n      member Deep  (1000000)\n"
      "  class Shade\n  class IBrush  (3 procedures)\n"
      "    property Private Property Get Colour() As Colours\n"
      "    property Public Property Let Colour(ByVal RHS As Long)\n"
      "      parameter RHS As Long\n"
      "    procedure Public Function Paint(ByRef area As Single, Optional ByVal extra As Variant)"
      " As String\n      parameter area As Single\n      parameter extra As Variant\n";
  EXPECT_EQ(RunFor({"/t/old.tlb", "--depth", "4"}), expected);
  EXPECT_THAT(RunFor({"tree", "/t/Both.dll\\2", "--depth", "1"}),
              StartsWith("project OldLib  (ActiveX DLL, 3 modules"));
  EXPECT_THAT(RunFor({"tree", "/t/BOTH.DLL", "--depth", "1"}), StartsWith("project Small "));
}

TEST_F(TypeLibCommands, OtherCommandsTakeItToo) {
  const json dump = json::parse(RunFor({"dump", "/t/old.tlb"}));
  EXPECT_EQ(dump["Components"][2]["Blocks"][2]["Name"], "Paint");
  EXPECT_EQ(dump["Components"][0]["Enumerations"][0]["Members"][0]["TaggedComments"][0]["Text"],
            "The name");
  const json bare =
      json::parse(RunFor({"dump", "/t/old.tlb", "--set", "LoadTypeLibHelpStrings=False"}));
  EXPECT_EQ(bare["Components"][0]["Enumerations"][0]["TaggedComments"], json::array());
  EXPECT_THAT(RunFor({"manifest", "/t/old.tlb"}), HasSubstr("Name=\"Paint\""));
  EXPECT_EQ(
      RunFor({"find", "/t/old.tlb", "Deep"}),
      "OldLib~Enumerations~Colours_EN:Deep\tenumeration-member\tDeep = 1000000\t/t/old.tlb\n");
  EXPECT_THAT(RunFor({"names", "/t/old.tlb"}),
              HasSubstr("OldLib~IBrush~Colour\tproperty\t/t/old.tlb\n"));
  EXPECT_THAT(RunFor({"check", "/t/old.tlb"}),
              StartsWith("1 project, 0 projects not read, 3 modules listed, 3 found,"));
}

TEST_F(TypeLibCommands, TypelibPrintsWhatIsStored) {
  EXPECT_THAT(RunFor({"typelib", "/t/Both.dll/2"}), HasSubstr("enum Colours {"));
  const std::string one = RunFor({"typelib", "/t/Both.dll", "--json"});
  EXPECT_THAT(one, StartsWith("{\n  \"FormatVersion\": 1,\n  \"Tool\": \""));
  EXPECT_EQ(json::parse(one)["Name"], "Small");
  EXPECT_THAT(RunFor({"typelib", "/t/empty.ocx"}, exFailed),
              HasSubstr("/t/empty.ocx: cannot be read"));
  EXPECT_THAT(RunFor({"typelib", "/t/none.ocx"}, exFailed), HasSubstr("no such file"));
}

TEST_F(TypeLibCommands, AFileIsALibraryByWhatItHolds) {
  for (const char* path : {"/t/kept.cmp", "/t/noname", "/t/odd.bas", "/t/both.bak/2"}) {
    const std::string file = std::string(path).substr(0, std::string(path).find("/2"));
    mFiles.Add(file, mFiles[file == path ? "/t/old.tlb" : "/t/Both.dll"]);
    EXPECT_THAT(RunFor({"typelib", path}), HasSubstr("enum Colours {"));
    EXPECT_EQ(json::parse(RunFor({"dump", path}))["ProjectName"], "OldLib") << path;
  }
  mFiles.Add("/t/text.txt", "MSF");
  EXPECT_THAT(RunFor({"dump", "/t/text.txt"}, exFailed),
              HasSubstr("nor does it hold an assembly or a type"));
  RunFor({"typelib", "/t/text.txt"}, exFailed);
}

TEST_F(TypeLibCommands, TextsComeInTheCodePageAskedForOrTold) {
  std::string help;
  CodePage::Named("936").Encode("返回当前文件的名称和大小", help);
  typelib::test::MsftBuilder builder;
  builder.LibraryName = builder.AddName("Lib");
  builder.LibraryHelp = builder.AddString(help);
  mFiles.Add("/t/zh.tlb", Bytes(builder.Build()));
  struct {
    const char* Page;
    bool IsRead;
    bool IsTold;
  } const cases[] = {{"auto", true, true}, {"936", true, false}, {"1252", false, false}};
  for (const auto& item : cases) {
    const ToolRun run = Tool({"dump", "/t/zh.tlb", "--codepage", item.Page});
    EXPECT_EQ(json::parse(run.Out)["Description"] == "返回当前文件的名称和大小", item.IsRead);
    EXPECT_EQ(run.Err.find("cp936 (in place of") != std::string::npos, item.IsTold) << run.Err;
    const std::string listing = RunFor({"typelib", "/t/zh.tlb", "--codepage", item.Page});
    EXPECT_EQ(listing.find("返回") != std::string::npos, item.IsRead);
  }
}

}  // namespace
}  // namespace vendrel::cli
