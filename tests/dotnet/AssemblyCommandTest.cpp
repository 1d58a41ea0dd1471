#include "dotnet/SampleAssemblies.h"
#include "support/DiskFolder.h"
#include "support/ToolRun.h"

namespace vendrel::cli {
namespace {

using test::DataPath;

TEST(AssemblyCommand, NamesComeOneALine) {
  const std::string names = RunFor({"assembly", DataPath("Shop.dll")});
  EXPECT_THAT(names, StartsWith("T:Shop.Days\nF:Shop.Days.None\nF:Shop.Days.Monday\n"));
  EXPECT_THAT(names, Not(HasSubstr("mSecret")));
  EXPECT_THAT(RunFor({"assembly", "--private", DataPath("Shop.dll")}), HasSubstr("mSecret"));
  EXPECT_THAT(RunFor({"assembly", "--inherited", DataPath("Shop.dll")}),
              HasSubstr("\nM:Shop.Base.Store`1.Close\n"));
}

TEST(AssemblyCommand, JsonTellsMore) {
  nlohmann::json highest, names;
  for (const auto& entry : JsonLines({"assembly", "--json", DataPath("Shop.dll")})) {
    if (entry["Name"] == "F:Shop.Price.Highest") highest = entry;
    if (entry["Name"] == "T:Shop.Names") names = entry;
  }
  EXPECT_EQ(highest["Kind"], "constant");
  EXPECT_EQ(highest["Value"], "-12.50");
  EXPECT_EQ(names["Type"], "Shop.Goods{System.String}");
  EXPECT_EQ(names["IsSealed"], true);
}

TEST(AssemblyCommand, ReferencesAreFoundInFoldersThatAreNamed) {
  const test::DiskFolder folder;
  const auto bytes = test::DataBytes("Shop.dll");
  const std::string alone = folder.Write("Shop.dll", bytes);
  const ToolRun without = ToolEnding(exDone, {"assembly", "--inherited", alone});
  EXPECT_THAT(without.Err, HasSubstr("assembly ShopBase not found"));
  const auto told =
      nlohmann::json::parse(Tool({"assembly", "--inherited", "--diagnostics", "json", alone}).Err);
  EXPECT_EQ(told["Code"], "missing-assembly");
  EXPECT_EQ(told["File"], alone);
  EXPECT_THAT(without.Out, Not(HasSubstr("Store`1.Close")));
  const ToolRun with =
      ToolEnding(exDone, {"assembly", "--inherited", "--reference-path", DataPath(""), alone});
  EXPECT_THAT(with.Out, HasSubstr("M:Shop.Base.Store`1.Close"));
}

TEST(AssemblyCommand, DocumentationIsHeldAgainstTheTree) {
  EXPECT_THAT(RunFor({"assembly", "--check-docs", DataPath("Shop.dll")}),
              HasSubstr("names found (100.0 %)"));
  const test::DiskFolder folder;
  const std::string file = folder.Write("Shop.dll", test::DataBytes("Shop.dll"));
  EXPECT_THAT(RunFor({"assembly", "--check-docs", file}, exFailed),
              HasSubstr("no documentation file"));
  folder.Write("SHOP.XML",
               "<doc><members><member name=\"T:Shop.Price\"/><member name=\"T:Shop.None\"/>"
               "<member name=\"N:Shop\"/></members></doc>");
  EXPECT_THAT(ToolEnding(exNo, {"assembly", "--check-docs", file}).Out,
              AllOf(HasSubstr("not found: T:Shop.None (the assembly has no such name)"),
                    HasSubstr("1 of 2 names found (50.0 %)")));
  // Those of further languages stand in folders of their own.
  const std::string other = folder.Write("other/Shop.dll", test::DataBytes("Shop.dll"));
  folder.Write("other/zh-Hans/shop.xml",
               "<doc><members><member name=\"T:Shop.Price\"/></members></doc>");
  folder.Write("other/readme/shop.xml",
               "<doc><members><member name=\"T:Shop.None\"/></members></doc>");
  EXPECT_THAT(RunFor({"assembly", "--check-docs", other}), HasSubstr("1 of 1 names"));
}

TEST(AssemblyCommand, EveryReadingCommandTakesAnAssembly) {
  const std::string file = DataPath("Shop.dll");
  EXPECT_THAT(RunFor({file}), AllOf(HasSubstr("Shop.Price"), HasSubstr("Highest")));
  EXPECT_THAT(RunFor({"names", file}), HasSubstr("\nShop~Shop.Price~op_Addition:b\t"));
  EXPECT_THAT(RunFor({"dump", file}), HasSubstr("\"Shop.Goods`1\""));
  EXPECT_THAT(RunFor({"tree", "--as", "typelib", file}, exFailed), HasSubstr("cannot be read"));
}

TEST(AssemblyCommand, OtherFilesAreRefusedInOneWord) {
  const test::DiskFolder folder;
  auto native = test::DataBytes("ShopBase.dll");
  const std::size_t at = native[0x3C] + native[0x3D] * 256u + 24 + 96 + 8 * 14;
  for (std::size_t i = 0; i < 4; ++i) native[at + i] = 0;
  const std::string node = folder.Write("addon.node", native);
  for (const char* command : {"tree", "assembly"})
    EXPECT_THAT(RunFor({command, node}, exFailed), HasSubstr("native code"));
  EXPECT_THAT(RunFor({"assembly", folder.Path("none.dll")}, exFailed), HasSubstr("no such file"));
}

}  // namespace
}  // namespace vendrel::cli
