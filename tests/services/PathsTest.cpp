#include "services/Paths.h"

#include <gtest/gtest.h>

#include "diagnostics/VendrelError.h"
#include "services/FolderCache.h"

namespace vendrel {
namespace {

struct Drives {
  Drives() {
    DriveMap::Current().SetFromText("C=/home/me/c");
    DriveMap::Current().SetFromText("d:=/home/me/c/data/");
  }
  ~Drives() { DriveMap::Current().Reset(); }
};

TEST(Paths, TurnIntoWindowsFormAndBack) {
  const Drives drives;
  const struct {
    std::string_view Native, Windows;
  } cases[] = {
      {"/", "Z:\\"},
      {"/src/a/A.vbp", "Z:\\src\\a\\A.vbp"},
      {"/src/a/", "Z:\\src\\a\\"},
      {"/home/me/c", "C:\\"},
      {"/home/me/c/x.bas", "C:\\x.bas"},
      {"/home/me/cc/x.bas", "Z:\\home\\me\\cc\\x.bas"},
      {"/home/me/c/data/x", "D:\\x"},
      {"/a/Größe.bas", "Z:\\a\\Größe.bas"},
      {"/a/b\\c",
       "Z:\\a\\b\xEF\x81\x9C"
       "c"},
      {"/a/\xF1.bas", "Z:\\a\\\xEF\x83\xB1.bas"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(WindowsPath(c.Native), c.Windows) << c.Native;
    const std::string back = NativePath(c.Windows);
    EXPECT_EQ(back, c.Native == "/home/me/c" ? "/home/me/c/" : c.Native) << c.Windows;
  }
  EXPECT_EQ(NativePath("c:/x/y"), "/home/me/c/x/y");
  EXPECT_EQ(NativePath("Q:\\x"), "");
  EXPECT_EQ(NativePath("\\\\server\\share\\x"), "");
  EXPECT_EQ(NativePath("x\\y"), "");
  EXPECT_THROW(DriveMap::Current().SetFromText("C"), VendrelError);
  EXPECT_THROW(DriveMap::Current().SetFromText("1=/x"), VendrelError);
  EXPECT_THROW(DriveMap::Current().SetFromText("C=x"), VendrelError);
}

TEST(Paths, AreNormalised) {
  const std::pair<std::string_view, std::string_view> cases[] = {
      {"C:\\a\\b.bas", "C:\\a\\b.bas"},
      {"C:/a/../b.bas", "C:\\b.bas"},
      {"C:\\a\\.\\b", "C:\\a\\b"},
      {"C:\\..\\..\\b", "C:\\b"},
      {"C:\\a\\\\b", "C:\\a\\b"},
      {"C:\\a\\b\\..", "C:\\a\\"},
      {"..\\a\\..\\b", "..\\b"},
      {"..\\..\\b", "..\\..\\b"},
      {"C:\\", "C:\\"},
      {"\\\\s\\h\\..\\x", "\\\\s\\h\\x"},
      {"\\\\?\\C:\\x", "C:\\x"},
      {"", ""},
      {"C:\\a\\", "C:\\a\\"},
  };
  for (const auto& [given, expected] : cases) EXPECT_EQ(NormalPath(given), expected) << given;
}

TEST(Paths, ResolveAgainstAFolderAndComeBack) {
  const struct {
    std::string_view Folder, Path, Full, Relative;
  } cases[] = {
      {"C:\\p\\q\\", "a.bas", "C:\\p\\q\\a.bas", "a.bas"},
      {"C:\\p\\q\\", "..\\lib\\a.bas", "C:\\p\\lib\\a.bas", "..\\lib\\a.bas"},
      {"C:\\p\\q\\", "sub/a.bas", "C:\\p\\q\\sub\\a.bas", "sub\\a.bas"},
      {"C:\\p\\q\\", "D:\\a.bas", "D:\\a.bas", "D:\\a.bas"},
      {"C:\\p\\q\\", "\\w\\a.bas", "C:\\w\\a.bas", "..\\..\\w\\a.bas"},
      {"C:\\p\\q\\", "c:\\P\\x.bas", "c:\\P\\x.bas", "..\\x.bas"},
      {"C:\\p\\q\\", "C:x.bas", "C:\\x.bas", "..\\..\\x.bas"},
      {"C:\\", "a\\b.bas", "C:\\a\\b.bas", "a\\b.bas"},
      {"\\\\s\\h\\p\\", "..\\x", "\\\\s\\h\\x", "..\\x"},
      {"C:\\Tamaño\\", "..\\TAMAÑO\\x", "C:\\TAMAÑO\\x", "x"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(ResolvePath(c.Folder, c.Path), c.Full) << c.Path;
    EXPECT_EQ(RelativePath(c.Folder, c.Full), c.Relative) << c.Path;
  }
}

TEST(Paths, MatchPatternsOfStarsAndQuestionMarks) {
  const struct {
    std::string_view Leaf, Pattern;
    bool Matches;
  } cases[] = {
      {"A.VBP", "*.vbp", true},
      {"A.vbpx", "*.vbp", false},
      {"readme", "*.*", true},
      {"readme", "*", true},
      {"Form1", "form1.*", true},
      {"Form1.frx", "Form1.*", true},
      {"Form10.frx", "Form1.*", false},
      {"abc", "a?c", true},
      {"aéc", "A?C", true},
      {"ac", "a?c", false},
      {"aXbXc", "a*X*c", true},
      {"", "*", true},
      {"aaaaaaaaab", "*a*a*a*c", false},
  };
  for (const auto& c : cases)
    EXPECT_EQ(MatchesPattern(c.Leaf, c.Pattern), c.Matches) << c.Leaf << " " << c.Pattern;
  EXPECT_FALSE(MatchesPattern(std::string(20000, 'a'), "*a*a*a*a*b"));
}

TEST(Paths, ShortNamesMayStandForLongOnes) {
  const struct {
    std::string_view Name, Short;
    bool Could;
  } cases[] = {
      {"Program Files", "PROGRA~1", true},    {"ProgramData", "progra~2", true},
      {"Programs", "PROGRA~1", false},        {"Module Main.bas", "MODULE~1.BAS", true},
      {"Module Main.bas", "MODULE~1", false}, {"Module Main.cls", "MODULE~1.BAS", false},
      {"a+b.bas", "A_B~1.BAS", true},         {"Main.frmx", "MAIN~1.FRM", true},
      {"Program Files", "PROGR~10", true},    {"Program Files", "PROGRA~X", false},
      {"Program Files", "~1", false},         {"Program Files", "PROGRAMF~1", false},
  };
  for (const auto& c : cases)
    EXPECT_EQ(CouldHaveShortName(c.Name, c.Short), c.Could) << c.Name << " " << c.Short;
}

}  // namespace
}  // namespace vendrel
