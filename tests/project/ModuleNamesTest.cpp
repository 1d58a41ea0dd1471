#include "project/ModuleNames.h"

#include <gtest/gtest.h>

#include "services/SourceCache.h"
#include "support/MemoryFiles.h"

namespace vendrel {
namespace {

TEST(ModuleNames, AFileTellsItsNameByTheAttributeElseByTheHeadOfItsForm) {
  const std::string form = "VERSION 5.00\r\nBegin VB.Form frmHead \r\nEnd\r\n";
  const std::string late = form + std::string(100'000, '\'') + "\r\n";
  struct {
    std::string Bytes;
    std::string Name;
  } const cases[] = {
      {form + "Attribute VB_Name = \"frmMain\"\r\nOption Explicit", "frmMain"},
      {late + "Attribute VB_Name = \"frmLate\"", "frmLate"},
      {form, "frmHead "},
      {"Begin VB.Form frmHead\r\n", ""},
      {"version 5.00\nbegin vb.form frmLf\nEnd\nATTRIBUTE vb_name = \"m\"\n", "m"},
      {"Attribute VB_Name = \"cr\"\rAttribute VB_Name = \"second\"\r", "cr"},
      // Not at the beginning of a line, and not that attribute.
      {"x Attribute VB_Name = \"no\"\nAttribute VB_NameX = \"no\"\nAttribute VB_Name = \"yes\"",
       "yes"},
      {"Attribute VB_Name = \"a", ""},
      {"Attribute VB_Name = \"a\"", "a"},
      {"Attribute VB_Name ", ""},
      {"Caption = \"\xE9\"\r\nAttribute VB_Name = \"plain\"\r\n", "plain"},
      {"Attribute VB_Name = \"caf\xE9\"\r\n", "caf\u00E9"},
      {"Attribute VB_Name = \"caf\xC3\xA9\"\r\n", "caf\u00E9"},
      // A byte further down tells that the file is no UTF-8.
      {"Attribute VB_Name = \"\xC3\xA9\"\r\n' \xE9\r\n", "\u00C3\u00A9"},
      {"\xEF\xBB\xBF"
       "Attribute VB_Name = \"marked\"\r\n",
       "marked"},
      {std::string("\xFF\xFE"
                   "A\0t\0t\0r\0i\0b\0u\0t\0e\0 \0V\0B\0_\0N\0a\0m\0e\0 \0=\0 \0\"\0w\0"
                   "\"\0",
                   48),
       "w"},
      {"", ""},
  };
  test::MemoryFiles files{{"/p/A.frm", ""}};
  for (const auto& item : cases) {
    files.Change("/p/A.frm", [&](std::string& bytes) { bytes = item.Bytes; });
    EXPECT_EQ(GetComponentName("/p/a.FRM"), item.Name) << item.Bytes.substr(0, 200);
  }
  EXPECT_EQ(GetComponentName("/p/none.frm"), "");
  EXPECT_EQ(GetComponentName("/p"), "");
}

TEST(ModuleNames, InALoadAFileIsSeenAsItWasAndAfterwardsAnew) {
  test::MemoryFiles files{{"/p/A.frm", "Attribute VB_Name = \"old\"\r\n"}};
  const auto change = [&] {
    files.Change("/p/A.frm", [](std::string& bytes) { bytes = "Attribute VB_Name = \"new\"\r\n"; });
    files.Add("/p/B.frm", "Attribute VB_Name = \"late\"\r\n");
  };
  {
    const SourceCache::Scope load;
    EXPECT_EQ(GetComponentName("/p/A.frm"), "old");
    EXPECT_EQ(GetComponentName("/p/B.frm"), "");
    change();
    files.ForgetCalls();
    EXPECT_EQ(GetComponentName("/p/A.frm"), "old");
    EXPECT_EQ(GetComponentName("/p/B.frm"), "");
    EXPECT_TRUE(files.Calls().empty());
  }
  EXPECT_EQ(GetComponentName("/p/A.frm"), "new");
  EXPECT_EQ(GetComponentName("/p/B.frm"), "late");
}

}  // namespace
}  // namespace vendrel
