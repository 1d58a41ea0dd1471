#include "output/Difference.h"

#include <gtest/gtest.h>

#include "diagnostics/VendrelError.h"
#include "model/VBControl.h"
#include "project/VBProjectGroup.h"
#include "support/Projects.h"

namespace vendrel {
namespace {

using test::TestProject;

constexpr DifferenceOptions kAll{};

// What differs, one line each: change, element, property, values, line in the second tree.
std::string Differences(ElementRef before, ElementRef after, const DifferenceOptions& options) {
  std::string text;
  std::size_t told = 0;
  const std::size_t count = Compare(before, after, options, [&](const Change& change) {
    text.append(ChangeName(change.Kind)).append(" ").append(change.Element);
    if (!change.Property.empty())
      text.append(" ")
          .append(change.Property)
          .append(" '" + change.Before + "' '" + change.After + "'");
    text += "\n";
    ++told;
  });
  EXPECT_EQ(count, told);
  return text;
}

std::string Differences(const std::string& before, const std::string& after,
                        const DifferenceOptions& options = kAll) {
  const auto load = [](const std::string& body) {
    auto project =
        std::make_unique<TestProject>(TestProject::Modules{{"M.bas", body}}, test::Complete());
    project->Project->Components.Populate();
    return project;
  };
  const auto first = load(before);
  const auto second = load(after);
  return Differences(Describe(*first->Project), Describe(*second->Project), options);
}

TEST(Difference, TellsWhatIsAddedGoneAndChangedByElement) {
  const std::string base =
      "Public Const Limit = 5\nPrivate mTotal As Long\n"
      "Public Property Get Size() As Long\n  Size = mTotal\nEnd Property\n"
      "Public Property Let Size(ByVal v As Long)\n  mTotal = v\nEnd Property\n";
  const struct {
    std::string From, To, Expected;
  } cases[] = {
      {"", "", ""},
      {"Limit = 5", "Limit = 6",
       "text P~M.declarations CodeLines 'Public Const Limit = 5\n' 'Public Const Limit = 6\n'\n"
       "changed P~M~Limit Value '5' '6'\n"},
      {"Private mTotal As Long\n", "Private mTotal As Long\nPrivate mOther As Long\n",
       "text P~M.declarations CodeLines '' 'Private mOther As Long\n'\nadded P~M~mOther\n"},
      {"  mTotal = v", "  mTotal = v * 2",
       "text P~M~Size CodeLines '  mTotal = v\n' '  mTotal = v * 2\n'\n"},
      {"Public Property Get Size() As Long\n  Size = mTotal\nEnd Property\n", "",
       "changed P~M~Size PropertyGetBlock 'P~M~Size' ''\ngone P~M~Size\n"},
      {"  mTotal = v\nEnd Property\n",
       "  mTotal = v\nEnd Property\nPublic Property Get Both()\nEnd Property\n"
       "Public Property Let Both(v)\nEnd Property\n",
       "added P~M~Both\nadded P~M~Both\n"},
  };
  for (const auto& c : cases) {
    std::string changed = base;
    if (!c.From.empty()) changed.replace(changed.find(c.From), c.From.size(), c.To);
    EXPECT_EQ(Differences(base, changed), c.Expected);
    EXPECT_EQ(Differences(changed, base).empty(), c.From.empty());
  }
}

TEST(Difference, LeavesOutWhatIsNotAskedFor) {
  const std::string before = "Dim a\nSub S()\nEnd Sub\n";
  const std::string after = "Dim a\n\nSub S()\n  a = 1\nEnd Sub\n";
  EXPECT_EQ(Differences(before, after, {.Lines = false}), "");
  EXPECT_NE(Differences(before, after, {.Lines = false, .Places = true}).find("SourceLine '3' '4'"),
            std::string::npos);
}

TEST(Difference, ShowsAListWholeWhereOnlyItsOrderChanged) {
  const std::string a = "Attribute S.VB_A = 1\n", b = "Attribute S.VB_B = 2\n";
  EXPECT_EQ(Differences("Sub S()\n" + a + b + "End Sub\n", "Sub S()\n" + b + a + "End Sub\n",
                        {.Lines = false}),
            "changed P~M~S Attributes '" + a + b + "' '" + b + a + "'\n");
}

TEST(Difference, PairsControlsOfAnyDepthAndRefusesOtherClasses) {
  const auto chain = [](int depth) {
    std::string text;
    for (int i = 0; i < depth; ++i) text += "Begin VB.Frame f" + std::to_string(i) + "\r\n";
    for (int i = 0; i < depth; ++i) text += "End\r\n";
    return text;
  };
  test::MemoryFiles files{
      {"/p/P.vbp", "Type=Exe\r\nForm=F.frm\r\nName=\"P\"\r\n"},
      {"/q/P.vbp", "Type=Exe\r\nForm=sub\\F.frm\r\nName=\"P\"\r\n"},
      {"/p/F.frm", "VERSION 5.00\r\n" + chain(3000) + "Attribute VB_Name = \"F\"\r\n"},
      {"/q/sub/F.frm", "VERSION 5.00\r\n" + chain(3000) + "Attribute VB_Name = \"F\"\r\n"}};
  VBProject first, second;
  for (VBProject* project : {&first, &second}) {
    project->Reading = ReadingRules::Complete();
    ASSERT_TRUE(project->Load(project == &first ? "/p/P.vbp" : "/q/P.vbp"));
    project->Components.Populate();
  }
  ASSERT_NE(first.Components.Item(1)->VBControl, nullptr);
  EXPECT_EQ(Differences(Describe(first), Describe(second), kAll),
            "moved P~F FileName 'F.frm' 'sub\\F.frm'\n");
  VBControl* innermost = second.Components.Item(1)->AllVBControls.Item(1);
  innermost->Caption = "other";
  EXPECT_EQ(Differences(Describe(first), Describe(second), {.Paths = false}),
            "changed P~F~f2999 Caption '' 'other'\n");
  EXPECT_THROW(Compare(Describe(first), Describe(*innermost), kAll, [](const Change&) {}),
               VendrelError);
}

}  // namespace
}  // namespace vendrel
