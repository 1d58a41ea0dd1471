#include <gtest/gtest.h>
#include <unistd.h>

#include "core/Workspace.h"
#include "diagnostics/VendrelError.h"
#include "services/Procedures.h"
#include "services/SortedList.h"
#include "services/TextUtility.h"
#include "support/MemoryFiles.h"
#include "support/Services.h"

namespace vendrel {
namespace {

using test::MemoryFiles;
using Strings = std::vector<std::string>;

TEST(TextUtility, CutsFields) {
  const TextUtility& utility = TextUtility::Default();
  EXPECT_EQ(utility.Field("a;b", ";", 2), "b");
  EXPECT_EQ(utility.Field("a", ";", 1), "a");
  EXPECT_EQ(utility.Field("a", ";", 2), "");
  EXPECT_EQ(utility.Field("a#b", "#", 99), "");
  EXPECT_EQ(utility.Field("", "#", 1), "");
  EXPECT_EQ(utility.Field("a##b", "#", 2), "");
  EXPECT_EQ(utility.Field("a; b; c", "; ", 3), "c");
  EXPECT_EQ(utility.Field("abc", "", 1), "abc");
  EXPECT_EQ(utility.Field("abc", "b", 0), "");
  EXPECT_EQ(utility.SplitToCollection("a,,b,", ","), (Strings{"a", "", "b", ""}));
  EXPECT_EQ(utility.SplitToArray("", ","), Strings{});
  EXPECT_EQ(utility.LeftPart("a:z:y"), "a");
  EXPECT_EQ(utility.RightPart("a:z:y"), "z:y");
  EXPECT_EQ(utility.LeftPart("a"), "a");
  EXPECT_EQ(utility.RightPart("a"), "");
}

TEST(TextUtility, GivesTheTextOfAnyValue) {
  EXPECT_EQ(TextUtility::ToText(nullptr), "");
  EXPECT_EQ(TextUtility::ToText(std::optional<int>()), "");
  EXPECT_EQ(TextUtility::ToText(true), "True");
  EXPECT_EQ(TextUtility::ToText(-12), "-12");
  EXPECT_EQ(TextUtility::ToText("x"), "x");
  EXPECT_EQ(TextUtility::ToText(0.1), "0.1");
  EXPECT_EQ(TextUtility::ToText(-0.0), "0");
  EXPECT_EQ(TextUtility::ToText(100000.0), "100000");
  EXPECT_EQ(TextUtility::ToText(1e20), "1E+20");
  EXPECT_EQ(TextUtility::ToText(1.0 / 3), "0.333333333333333");
}

TEST(SortedList, OrdersWithoutCaseAndKeepsEqualKeysInOrder) {
  SortedList<int> list;
  list.Add("b", 1);
  list.Add("C", 2);
  list.Add("B", 3);
  list.Add("a", 4);
  EXPECT_EQ(list.Items(), (std::vector<int>{4, 1, 3, 2}));
}

TEST(Procedures, SafeFileNameReplacesWhatMayNotStand) {
  EXPECT_EQ(SafeFileName("A:B/C?"), "A-B-C ");
  EXPECT_EQ(SafeFileName("\\a*\"b\"<c>|d"), "-a 'b' c ;d");
  EXPECT_EQ(SafeFileName("Größe"), "Größe");
}

TEST(Procedures, FileCopyAnswersAndNeverRaises) {
  MemoryFiles files{{"/a/Big.bin", std::string(700000, 'x')}, {"/b/old", "old"}};
  EXPECT_TRUE(FileCopy("Z:\\a\\big.bin", "/b/new.bin"));
  EXPECT_EQ(files["/b/new.bin"], files["/a/Big.bin"]);
  EXPECT_EQ(State().FileCopy_LastError, "");
  const struct {
    const char *From, *To, *Error;
  } cases[] = {
      {"/a/none", "/b/x", "53 "}, {"/a/Big.bin", "/none/x", "75 "},
      {"/a", "/b/x", "75 "},      {"/a/Big.bin", "/a/BIG.BIN", "70 "},
      {"Q:\\a", "/b/x", "75 "},   {"/a/Big.bin", "/b", "75 "},
  };
  for (const auto& c : cases) {
    EXPECT_FALSE(FileCopy(c.From, c.To)) << c.From;
    EXPECT_EQ(State().FileCopy_LastError.substr(0, 3), c.Error) << State().FileCopy_LastError;
    EXPECT_GT(State().FileCopy_LastError.size(), 6u);
  }
  EXPECT_TRUE(FileCopy("/a/Big.bin", "/b/old"));
  EXPECT_EQ(State().FileCopy_LastError, "");
}

TEST(Procedures, TellTheHost) {
  EXPECT_NE(CurrentEXEName().find("vendrelmodel_tests"), std::string::npos);
  EXPECT_EQ(StrZToStr(std::string_view("ab\0cd", 5)), "ab");
  EXPECT_TRUE(IsNT());
  EXPECT_EQ(ProcFromProcID(getpid()), getpid());
  EXPECT_EQ(ModFromProcID(-5), 0);
}

TEST(ProcessRunner, CommandLinesAreCutByTheWindowsRules) {
  const std::pair<std::string_view, Strings> cases[] = {
      {"", {}},
      {"  vb.exe /make  x.vbp ", {"vb.exe", "/make", "x.vbp"}},
      {"\"C:\\Program Files\\vb.exe\" \"a b.vbp\"", {"C:\\Program Files\\vb.exe", "a b.vbp"}},
      {"\"C:\\x\\\" y", {"C:\\x\\", "y"}},
      {"p a\\\\b d\"e f\"g h", {"p", "a\\\\b", "de fg", "h"}},
      {"p a\\\\\\\"b c d", {"p", "a\\\"b", "c", "d"}},
      {"p a\\\\\\\\\"b c\" d e", {"p", "a\\\\b c", "d", "e"}},
      {"p \"\" x", {"p", "", "x"}},
      {"p \"say \"\"hi\"\" now\"", {"p", "say \"hi\" now"}},
      {"p \"open end", {"p", "open end"}},
      {"p C:\\out\\", {"p", "C:\\out\\"}},
  };
  for (const auto& [line, arguments] : cases) EXPECT_EQ(SplitCommandLine(line), arguments) << line;
}

TEST(ProcessRunner, StartsProgramsAndGivesTheirExitCode) {
  ProcessRunner& runner = ProcessRunner::Current();
  EXPECT_EQ(runner.Run({"sh", "-c", "exit 7"}, {}), 7);
  EXPECT_EQ(runner.Run({"sh", "-c", "test \"$(pwd)\" = /"}, {"/", true}), 0);
  EXPECT_EQ(runner.Run({"sh", "-c", "kill -9 $$"}, {}), 137);
  EXPECT_THROW(runner.Run({"/no/such/program"}, {}), VendrelError);
  EXPECT_THROW(runner.Run({}, {}), VendrelError);

  test::NotedRuns noted;
  noted.OnRun = [] { throw VendrelError(errFileNotFound); };
  const MemoryFiles files{{"/bin/Tool", "x"}};
  ExecCmd("\"z:\\BIN\\tool\" /a \"b c\"");
  ExecCmd("");
  EXPECT_EQ(noted.Arguments, (std::vector<Strings>{{"/bin/Tool", "/a", "b c"}}));
}

}  // namespace
}  // namespace vendrel
