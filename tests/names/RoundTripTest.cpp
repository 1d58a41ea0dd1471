// The law of names: what a qualified name is read back to is the element that has it. Names that
// clash, or that the format cannot express, are listed here one by one.

#include <gtest/gtest.h>

#include <map>
#include <set>

#include "core/Ascii.h"
#include "names/NameCheck.h"
#include "names/NameWalk.h"
#include "project/VBProjectGroup.h"
#include "services/Paths.h"
#include "support/Projects.h"
#include "support/SourceRoot.h"

namespace vendrel {
namespace {

using test::MemoryFiles;

std::string Numbered(std::string_view text, int number) {
  return ReplaceAll(text, "%", std::to_string(number));
}

// Every kind of element, and names that look like others.
constexpr const char* kClass =
    "VERSION 1.0 CLASS\r\n"
    "Attribute VB_Name = \"Class%\"\r\n"
    "Implements IShape%\r\n"
    "Public Event Moved%(ByVal By As Long, ByVal More As Long)\r\n"
    "Public Enum Colour%\r\n  Red%\r\n  Blue%\r\nEnd Enum\r\n"
    "Private Type Pair%\r\n  First As Long\r\n  Second As String\r\nEnd Type\r\n"
    "Private Declare Sub Beep% Lib \"kernel32\" (ByVal Hertz As Long, ByVal Time As Long)\r\n"
    "Private Const Limit% = 5, Other% = 6\r\n"
    "Private x%_EN As Long, y%() As String\r\n"
    "\r\n"
    "Public Property Get Size%(ByVal Unit As Long) As Long\r\n  Dim result As Long\r\nEnd "
    "Property\r\n"
    "Public Property Let Size%(ByVal Unit As Long, ByVal value As Long)\r\n"
    "  Dim result As Long\r\n  Dim change As Long\r\nEnd Property\r\n"
    "Public Property Set Owner%(ByVal value As Object)\r\nEnd Property\r\n"
    "Public Function Walk%(ByVal Steps As Long) As Boolean\r\n"
    "  Const Pace = 2\r\n  Dim i As Long, j As Long\r\nEnd Function\r\n"
    "Public Sub Paint%_I(ByVal c As Long)\r\nEnd Sub\r\n"
    "Public Sub Paint%_PL(ByVal c As Long)\r\n  Dim d As Long\r\nEnd Sub\r\n"
    "Public Sub \xc3\x84ndern%(ByVal \xc3\xa4 As Long)\r\nEnd Sub\r\n";

constexpr const char* kForm =
    "VERSION 5.00\r\n"
    "Begin VB.Form Form%\r\n"
    "  Begin VB.Frame Box\r\n"
    "    Begin VB.CommandButton cmd\r\n      Index = 0\r\n    End\r\n"
    "    Begin VB.CommandButton cmd\r\n      Index = 1\r\n    End\r\n"
    "  End\r\n"
    "  Begin VB.Label lbl\r\n  End\r\n"
    "End\r\n"
    "Attribute VB_Name = \"Form%\"\r\n"
    "Private Sub cmd_Click(Index As Integer)\r\nEnd Sub\r\n";

void AddProject(MemoryFiles& files, int number, int classes) {
  std::string lines = "Type=Exe\r\n";
  for (int i = 1; i <= classes; ++i) {
    lines += Numbered("Class=Class%; Class%.cls\r\nForm=Form%.frm\r\n", i);
    const std::string folder = "/g/p" + std::to_string(number) + "/";
    files.Add(folder + Numbered("Class%.cls", i), Numbered(kClass, i));
    files.Add(folder + Numbered("Form%.frm", i), Numbered(kForm, i));
  }
  files.Add(Numbered("/g/p%/P.vbp", number), lines + Numbered("Name=\"Project%\"\r\n", number));
}

class RoundTripTest : public testing::Test {
 protected:
  void Load(const ReadingRules& reading) {
    std::string group = "VBGROUP 5.0\r\n";
    for (int number = 1; number <= 3; ++number) {
      AddProject(mFiles, number, 4);
      group += Numbered("Project=p%\\P.vbp\r\n", number);
    }
    mFiles.Add("/g/G.vbg", group);
    mGroup.BeforeLoad = [&](VBProject& project) {
      project.Reading = reading;
      project.LoadBlocksOnly = false;
    };
    ASSERT_TRUE(mGroup.Load("/g/G.vbg"));
    for (VBProject& project : mGroup.VBProjects()) project.Components.Populate();
  }
  /// Names of the third project that do not lead back when asked for from the first one, by kind,
  /// without numbers, each once.
  std::string Unsure(NameState state) {
    VBProject& from = *mGroup.VBProjects().Item(1);
    VBProject& to = *mGroup.VBProjects().Item(3);
    from.Reading = to.Reading;
    std::map<std::string_view, std::set<std::string>> names;
    ForEachNamedElement(to, [&](CodeElement& element) {
      ++mCount;
      if (StateOfName(from, element) != state) return;
      std::string name = element.QualifiedName();
      std::erase_if(name, [](char c) { return c >= '0' && c <= '9'; });
      names[KindOf(element)].insert(name);
    });
    std::string text;
    for (const auto& [kind, ofKind] : names) {
      text += std::string(kind) + ":";
      for (const std::string& name : ofKind) text += " " + name;
      text += "\n";
    }
    return text;
  }

  MemoryFiles mFiles;
  VBProjectGroup mGroup;
  std::size_t mCount = 0;
};

TEST_F(RoundTripTest, EveryNameLeadsBackInTheCompleteReading) {
  Load(ReadingRules::Complete());
  EXPECT_EQ(Unsure(NameState::Lost), "");
  // The Get's parameter stands for both: the format names a property, not its procedures.
  EXPECT_EQ(Unsure(NameState::Clashes), "parameter: Project~Class~Size:Unit\n");
  EXPECT_GT(mCount, 2 * 4 * 40u);
}

TEST_F(RoundTripTest, OnlyTheListedNamesAreLostInTheClassicReading) {
  Load(ReadingRules::Classic());
  EXPECT_EQ(Unsure(NameState::Lost),
            "constant: Project~Class~Limit Project~Class~Other Project~Class~Pace\n"
            "control: Project~Form~Box Project~Form~Form Project~Form~cmd() Project~Form~lbl\n"
            "declare: Project~kernel.dll_LIB~Beep_DEC\n"
            "library: Project~kernel.dll_LIB\n"
            "local-variable: Project~Class~change Project~Class~d Project~Class~i Project~Class~j"
            " Project~Class~result\n"
            "parameter: Project~Class~Paint_I:c Project~Class~Paint_PL:c Project~Class~Size:value"
            " Project~kernel.dll_LIB~Beep_DEC:Hertz Project~kernel.dll_LIB~Beep_DEC:Time\n"
            "procedure: Project~Class~Paint_I Project~Class~Paint_PL\n"
            "variable: Project~Class~x_EN\n");
}

TEST(UnsureNames, AreThoseThatClash) {
  test::TestProject project(
      {{"M.bas",
        "Private Declare Sub Beep Lib \"kernel32\" (ByVal Hertz As Long)\n"
        "Private Type A\n  b As Long\nEnd Type\nPrivate Sub A_UT(ByVal b As Long)\nEnd Sub\n"},
       {"N.bas", "Private Declare Sub Beep Lib \"kernel32\" (ByVal Hertz As Long)\n"}},
      test::Complete());
  project.Project->Components.Populate();
  std::string told;
  for (const UnsureName& name : UnsureNames(*project.Project)) {
    EXPECT_EQ(name.State, NameState::Clashes);
    told += std::string(name.Kind) + " " + name.QualifiedName + "\n";
  }
  EXPECT_EQ(told,
            "type P~M~A_UT\n"
            "type-member P~M~A_UT:b\n"
            "declare P~kernel32.dll_LIB~Beep_DEC\n"
            "parameter P~kernel32.dll_LIB~Beep_DEC:Hertz\n");
}

TEST(SampleNames, LeadBackButOneThatClashes) {
  VBProjectGroup group;
  std::size_t count = 0;
  group.BeforeLoad = [](VBProject& project) {
    project.Reading = ReadingRules::Complete();
    project.LoadBlocksOnly = false;
  };
  ASSERT_TRUE(group.Load(WindowsPath(test::SourceRoot() + "/samples/Ledger.vbg")));
  std::string unsure;
  for (VBProject& project : group.VBProjects()) {
    project.Components.Populate();
    ForEachNamedElement(project, [&](const CodeElement&) { ++count; });
    for (const UnsureName& name : UnsureNames(project))
      unsure +=
          name.QualifiedName + (name.State == NameState::Clashes ? " clashes\n" : " is lost\n");
  }
  EXPECT_EQ(unsure, "Reports~ReportBuilder~Alignment:Column clashes\n");
  EXPECT_GT(count, 300u);
}

}  // namespace
}  // namespace vendrel
