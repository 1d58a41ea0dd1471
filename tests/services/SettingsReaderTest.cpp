#include "services/SettingsReader.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "core/Workspace.h"
#include "diagnostics/Diagnostic.h"
#include "services/Startup.h"
#include "support/MemoryFiles.h"
#include "support/Services.h"

namespace vendrel {
namespace {

using namespace std::string_literals;
using test::MemoryFiles;

constexpr const char* Version5 =
    "Windows Registry Editor Version 5.00\r\n\r\n"
    "[HKEY_CLASSES_ROOT\\TypeLib\\{ABC}\\2.0\\0\\win32]\r\n"
    "@=\"C:\\\\Lib\\\\a \\\"b\\\".tlb\"\r\n"
    "\"Path\"=hex(2):25,00,53,00,79,00,73,00,74,00,65,00,6d,00,52,00,6f,00,6f,00,74,\\\r\n"
    "  00,25,00,5c,00,78,00,00,00\r\n"
    "\"Count\"=dword:0000001f\r\n"
    "\"List\"=hex(7):61,00,00,00,62,00,00,00,00,00\r\n"
    "\"Raw\"=hex:01,02\r\n"
    "\"Gone\"=\"x\"\r\n"
    "\"Gone\"=-\r\n"
    "[HKEY_CLASSES_ROOT\\TypeLib\\{ABC}\\10.0]\r\n"
    "[HKEY_CLASSES_ROOT\\TypeLib\\{DEF}\\1.0]\r\n"
    "@=\"d\"\r\n"
    "[-HKEY_CLASSES_ROOT\\TypeLib\\{DEF}]\r\n"
    "[HKEY_CURRENT_USER\\Software\\Classes\\Over]\r\n@=\"user\"\r\n"
    "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\Over]\r\n@=\"machine\"\r\n"
    "[HKEY_LOCAL_MACHINE\\Software\\Wow6432Node\\Classes\\Only32]\r\n@=\"32\"\r\n";

constexpr const char* Layer =
    "WINE REGISTRY Version 2\n;; All keys relative to \\\\Machine\n\n#arch=win32\n\n"
    "[Software\\\\Classes\\\\TypeLib\\\\{ABC}\\\\3.0] 1234567\n#time=1d0\n"
    "@=\"C:\\\\windows\\\\x.tlb\"\n\"Uni\"=\"\\x0416\\xe4\"\n\"E\"=str(2):\"%windir%\\\\y\"\n"
    "\"N\"=dword:00000010\n";

class Settings : public testing::Test {
 protected:
  void Use(const char* variable) { setenv("VENDRELMODEL_REGISTRY", variable, 1); }
  ~Settings() override { unsetenv("VENDRELMODEL_REGISTRY"); }
  std::string Read(HiveEnum hive, std::string_view key, std::string_view value = "") {
    return mReader.ReadValue(hive, key, value);
  }
  SettingsReader mReader;
};

TEST_F(Settings, ReadEachKindOfValue) {
  const MemoryFiles files{{"/a.reg", Version5}};
  Use("/a.reg");
  const char* key = "typelib\\{abc}\\2.0\\0\\Win32";
  EXPECT_EQ(Read(HKEY_CLASSES_ROOT, key), "C:\\Lib\\a \"b\".tlb");
  EXPECT_EQ(Read(HKEY_CLASSES_ROOT, key, "PATH"), "C:\\windows\\x");
  EXPECT_EQ(Read(HKEY_CLASSES_ROOT, key, "count"), "31");
  EXPECT_EQ(Read(HKEY_CLASSES_ROOT, key, "List"), "a\nb");
  EXPECT_EQ(Read(HKEY_CLASSES_ROOT, key, "Raw"), "");
  EXPECT_EQ(Read(HKEY_CLASSES_ROOT, key, "Gone"), "");
  EXPECT_EQ(Read(HKEY_CLASSES_ROOT, "none", "none"), "");
  EXPECT_EQ(Read(HKEY_CLASSES_ROOT, "TypeLib\\{DEF}\\1.0"), "");
  EXPECT_EQ(Read(HKEY_CLASSES_ROOT, "Over"), "user");
  EXPECT_EQ(Read(HKEY_LOCAL_MACHINE, "Software\\Classes\\Over"), "machine");
  EXPECT_EQ(Read(HKEY_CLASSES_ROOT, "Only32"), "32");
  EXPECT_EQ(mReader.SubKeys(HKEY_CLASSES_ROOT, "TYPELIB\\{abc}"),
            (std::vector<std::string>{"10.0", "2.0"}));
  EXPECT_EQ(mReader.SubKeys(HKEY_CLASSES_ROOT, "TypeLib"), (std::vector<std::string>{"{ABC}"}));
}

TEST_F(Settings, ReadEachFormOfFileAndSeeTheVariableChange) {
  std::string wide = "\xFF\xFE";
  for (const char* c = Version5; *c; ++c) wide += {*c, '\0'};
  const MemoryFiles files{
      {"/wide.reg", wide},
      {"/four.reg", "REGEDIT4\n\n[HKEY_CLASSES_ROOT\\K]\n@=hex(2):43,3a,5c,e4,00\n"},
      {"/system.reg", Layer},
      {"/user.reg",
       "WINE REGISTRY Version 2\n;; All keys relative to \\\\User\\\\S-1-5-21-0-0-0-1000\n\n"
       "[Software\\\\Mine] 1\n\"a\"=\"b\"\n"}};
  EXPECT_EQ(Read(HKEY_CLASSES_ROOT, "Over"), "");
  Use("/wide.reg");
  EXPECT_EQ(Read(HKEY_CLASSES_ROOT, "Over"), "user");
  Use("/system.reg:/user.reg::/four.reg:/wide.reg");
  EXPECT_EQ(Read(HKEY_CLASSES_ROOT, "K"), "C:\\ä");
  const char* key = "TypeLib\\{abc}\\3.0";
  EXPECT_EQ(Read(HKEY_CLASSES_ROOT, key), "C:\\windows\\x.tlb");
  EXPECT_EQ(Read(HKEY_CLASSES_ROOT, key, "uni"), "Жä");
  EXPECT_EQ(Read(HKEY_CLASSES_ROOT, key, "E"), "C:\\windows\\y");
  EXPECT_EQ(Read(HKEY_CLASSES_ROOT, key, "N"), "16");
  EXPECT_EQ(Read(HKEY_CURRENT_USER, "Software\\mine", "A"), "b");
  EXPECT_EQ(mReader.SubKeys(HKEY_CLASSES_ROOT, "TypeLib\\{abc}"),
            (std::vector<std::string>{"10.0", "2.0", "3.0"}));
}

TEST_F(Settings, SurviveAnyInput) {
  const std::string odd[] = {"",
                             "[",
                             "[]",
                             "[\\",
                             "@",
                             "@=",
                             "\"",
                             "\"a",
                             "\"a\"=hex(2",
                             "\"a\"=hex:,,,",
                             "[k]\n\"a\"=\"\\",
                             "[k]\n@=hex(7):zz,\\",
                             "[k]\n@=str(2",
                             "[-]",
                             "[k]\n@=:",
                             "WINE REGISTRY Version 2\n[a\\",
                             "WINE REGISTRY Version 2\n[a]\n@=\"\\x\\9\\777\"",
                             "[k]\n\"a\\",
                             "[HKEY_USERS\\S-1-5-21-"};
  for (const std::string& text : odd)
    for (const char* header : {"", "Windows Registry Editor Version 5.00\n", "REGEDIT4\n"})
      for (const char* tail : {"", "\n@=\"v\"\n"}) {
        const RegistryFile file(*SourceText::Decode(header + text + tail, CodePage::Default()));
        std::map<std::string, std::string> names;
        file.SubKeys("", names);
        EXPECT_EQ(file.Value("no", "thing"), nullptr);
      }
}

TEST_F(Settings, AMissingFileIsToldAndTheOthersRead) {
  const MemoryFiles files{{"/a.reg", Version5}};
  Diagnostics told;
  const DiagnosticScope scope(&told, "");
  Use("/none.reg:/a.reg");
  EXPECT_EQ(Read(HKEY_CLASSES_ROOT, "Over"), "user");
  EXPECT_EQ(told.CountOf(DiagnosticCode::UnreadableFile), 1u);
}

TEST(Startup, TakesOverTheOneSettingOnlyIfItSaysTrue) {
  EnsureStarted();
  for (const char* answer : {"True", "true", "1", ""}) {
    const test::OneSetting setting(HKEY_CURRENT_USER, "Software\\Vendrelsoft\\VendrelModel_V2",
                                   "AutoAppendUntagged", answer);
    State().Reset();
    EXPECT_EQ(State().AutoAppendUntagged, std::string_view(answer) == "True") << answer;
  }
  State().CurrentLineNumber = 7;
  EnsureStarted();
  EXPECT_EQ(State().CurrentLineNumber, 7);
}

}  // namespace
}  // namespace vendrel
