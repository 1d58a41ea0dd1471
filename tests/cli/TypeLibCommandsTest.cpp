// The commands on type libraries, from files in memory.

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "cli/Tool.h"
#include "services/Startup.h"
#include "support/MemoryFiles.h"
#include "typelib/SampleImages.h"

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
  std::string Run(const std::vector<std::string>& arguments, int code = exDone) {
    std::vector<const char*> argv{"vendrelmodel"};
    for (const std::string& argument : arguments) argv.push_back(argument.c_str());
    std::ostringstream out, err;
    EXPECT_EQ(RunTool(static_cast<int>(argv.size()), argv.data(), {out, err}), code) << err.str();
    return code == exDone ? out.str() : err.str();
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
  EXPECT_EQ(Run({"/t/old.tlb", "--depth", "4"}), expected);
  const std::string second = Run({"tree", "/t/Both.dll\\2", "--depth", "1"});
  EXPECT_TRUE(second.starts_with("project OldLib  (ActiveX DLL, 3 modules")) << second;
  EXPECT_TRUE(Run({"tree", "/t/BOTH.DLL", "--depth", "1"}).starts_with("project Small "));
}

TEST_F(TypeLibCommands, OtherCommandsTakeItToo) {
  const json dump = json::parse(Run({"dump", "/t/old.tlb"}));
  EXPECT_EQ(dump["Components"][2]["Blocks"][2]["Name"], "Paint");
  EXPECT_EQ(dump["Components"][0]["Enumerations"][0]["Members"][0]["TaggedComments"][0]["Text"],
            "The name");
  EXPECT_EQ(
      json::parse(Run(
          {"dump", "/t/old.tlb", "--set",
           "LoadTypeLibHelpStrings=False"}))["Components"][0]["Enumerations"][0]["TaggedComments"]
          .size(),
      0u);
  EXPECT_NE(Run({"manifest", "/t/old.tlb"}).find("Name=\"Paint\""), std::string::npos);
  EXPECT_EQ(
      Run({"find", "/t/old.tlb", "Deep"}),
      "OldLib~Enumerations~Colours_EN:Deep\tenumeration-member\tDeep = 1000000\t/t/old.tlb\n");
  EXPECT_NE(Run({"names", "/t/old.tlb"}).find("OldLib~IBrush~Colour\tproperty\t/t/old.tlb\n"),
            std::string::npos);
  EXPECT_TRUE(Run({"check", "/t/old.tlb"})
                  .starts_with("1 projects, 0 projects not read, 3 modules "
                               "listed, 3 found,"));
}

TEST_F(TypeLibCommands, TypelibPrintsWhatIsStored) {
  const std::string listing = Run({"typelib", "/t/Both.dll/2"});
  EXPECT_NE(listing.find("enum Colours {"), std::string::npos) << listing;
  EXPECT_EQ(json::parse(Run({"typelib", "/t/Both.dll", "--json"}))["Name"], "Small");
  EXPECT_NE(Run({"typelib", "/t/empty.ocx"}, exFailed).find("/t/empty.ocx: cannot be read"),
            std::string::npos);
  EXPECT_NE(Run({"typelib", "/t/none.ocx"}, exFailed).find("no such file"), std::string::npos);
}

}  // namespace
}  // namespace vendrel::cli
