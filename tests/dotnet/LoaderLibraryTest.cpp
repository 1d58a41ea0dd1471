// Loaders in shared libraries: the sample, and one that speaks another version of the interface.
#include "support/DiskFolder.h"
#include "support/ToolRun.h"

namespace vendrel::cli {
namespace {

TEST(LoaderLibrary, ALoaderOfOnesOwnFillsAProject) {
  const test::DiskFolder folder;
  const std::string outline = folder.Write("outline.txt", "Shop.Goods Add Find\nShop.Names\n");
  EXPECT_THAT(RunFor({"--loader", VENDREL_SAMPLE_LOADER, "--custom", "Outline.Loader=" + outline}),
              AllOf(HasSubstr("Shop.Goods"), HasSubstr("Find"), HasSubstr("Shop.Names")));
  EXPECT_THAT(
      RunFor({"dump", "--loader", VENDREL_SAMPLE_LOADER, "--custom=Outline.Loader=" + outline}),
      HasSubstr("\"Shop.Goods\""));
}

TEST(LoaderLibrary, WhatIsNoLoaderIsRefused) {
  const test::DiskFolder folder;
  const std::string text = folder.Write("text.so", "no library");
  const std::pair<std::string, const char*> rows[] = {
      {VENDREL_FOREIGN_LOADER, "speaks version 99 of the interface"},
      {text, "text.so"},
      {folder.Path("none.so"), "none.so"},
  };
  for (const auto& [library, reason] : rows)
    EXPECT_THAT(RunFor({"tree", "--loader", library, "--custom", "Some.Loader=x"}, exFailed),
                HasSubstr(reason));
  EXPECT_THAT(
      RunFor({"tree", "--loader", VENDREL_SAMPLE_LOADER, "--custom", "Other.Loader=x"}, exFailed),
      HasSubstr("has no loader Other.Loader"));
  EXPECT_THAT(RunFor({"tree", "--custom", "No.Such=x"}, exFailed), HasSubstr("No.Such"));
  EXPECT_THAT(RunFor({"tree", "--custom", "NoData"}, exUsage), HasSubstr("--custom"));
}

}  // namespace
}  // namespace vendrel::cli
