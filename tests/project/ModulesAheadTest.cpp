// Modules read side by side come to what one thread comes to: tree, numbers, what is told, and what
// a host is asked and told, on its own thread and in order.
#include "project/ModulesAhead.h"

#include <gtest/gtest.h>

#include <sstream>
#include <thread>
#include <utility>

#include "output/Dump.h"
#include "project/VBProject.h"
#include "services/Paths.h"
#include "support/DiskFolder.h"
#include "support/MemoryFiles.h"

namespace vendrel {
namespace {

// Twenty modules that reach into their project in every way there is: libraries and types of one
// name, help context IDs, line numbers, tagged comments, files that are missing, duplicate keys.
class ModulesAheadTest : public testing::Test {
 protected:
  ModulesAheadTest() {
    std::string project = "Type=Exe\r\nName=\"Many\"\r\nCondComp=\"Small = 1\"\r\n";
    for (int i = 0; i < 20; ++i) {
      const std::string n = std::to_string(i);
      project += "Module=m" + n + "; m" + n + ".bas\r\n";
      if (i % 7 != 6) mFolder.Write("m" + n + ".bas", ModuleText(i));
    }
    mPath = WindowsPath(mFolder.Write("Many.vbp", project));
  }

  static std::string ModuleText(int i) {
    const std::string n = std::to_string(i);
    std::string text = "Attribute VB_Name = \"m" + n +
                       "\"\r\nAttribute VB_HelpID = " + std::to_string(1000 - i) + "\r\n";
    if (i % 5 == 0) text += "'##PROJECT_REMARKS of m" + n + "\r\n'##SUMMARY m" + n + "\r\n";
    text += "Declare Sub Sleep Lib \"kernel32\" (ByVal ms As Long)\r\n";
    text += "Public Type Shared\r\n  a As Long\r\nEnd Type\r\nPublic Enum Both\r\n  one = m" + n +
            "Base\r\nEnd Enum\r\nPublic Const m" + n + "Base = " + n + "\r\n";
    if (i == 11) text += "Public\r\n";  // a line that fails
    for (int k = 0; k < 30 * (i % 4); ++k)
      text += "#If Small Then\r\nSub S" + std::to_string(k) + "()\r\n" +
              std::to_string((i * 37 + k * 13) % 200) +
              "  x = 1 ' and why\r\nEnd Sub\r\n#End If\r\n";
    return text;
  }

  struct Outcome {
    std::string Seen;
    std::vector<std::int32_t> Loaded, Asked;
    std::string Tags;
    bool OnlyHere = true;  // the host was called on its own thread alone
  };

  Outcome Load(int jobs, const ReadingRules& reading, StepOver answer, bool hearsOfTags) const {
    Workspace workspace;
    workspace.Jobs = jobs;
    const Workspace::Use use(workspace);
    VBProject project;
    project.Reading = reading;
    Outcome outcome;
    const auto here = std::this_thread::get_id();
    project.ComponentLoaded.Add([&](std::int32_t index) {
      outcome.OnlyHere &= std::this_thread::get_id() == here;
      outcome.Loaded.push_back(index);
    });
    project.OnLineFailure = [&](const VendrelError&, std::string_view, std::int32_t line) {
      outcome.OnlyHere &= std::this_thread::get_id() == here;
      outcome.Asked.push_back(line);
      return answer;
    };
    if (hearsOfTags)
      project.NewTaggedComment.Add([&](Block&, TaggedComment& comment, const CodeLine&) {
        outcome.OnlyHere &= std::this_thread::get_id() == here;
        outcome.Tags += comment.TagIdentifier + " " + comment.Text + "\n";
      });
    std::ostringstream seen;
    try {
      project.Load(mPath);
      project.Components.Populate();
      DumpOptions options;
      options.Lines = true;
      Dump(seen, Describe(project), options);
    } catch (const VendrelError& error) {
      seen << error.Text();
    }
    for (const Diagnostic& item : project.Diagnostics)
      seen << item.File << ':' << item.Line << ' ' << item.Text << '\n';
    seen << workspace.State.BlockID << ' ' << workspace.State.CurrentLineNumber << ' '
         << project.HighestHelpContextID();
    outcome.Seen = seen.str();
    return outcome;
  }

  test::DiskFolder mFolder;
  std::string mPath;
};

TEST_F(ModulesAheadTest, ComeToWhatOneThreadComesTo) {
  for (const ReadingRules& reading : {ReadingRules::Classic(), ReadingRules::Complete()})
    for (const auto& [answer, hearsOfTags] :
         {std::pair(StepOver::SkipLine, false), std::pair(StepOver::SkipLine, true),
          std::pair(StepOver::Raise, false)}) {
      const Outcome alone = Load(1, reading, answer, hearsOfTags);
      EXPECT_NE(alone.Tags.empty(), hearsOfTags);
      for (const int jobs : {2, 5}) {
        const Outcome together = Load(jobs, reading, answer, hearsOfTags);
        EXPECT_EQ(together.Tags, alone.Tags) << jobs;
        EXPECT_EQ(together.Seen, alone.Seen) << jobs;
        EXPECT_EQ(together.Loaded, alone.Loaded) << jobs;
        EXPECT_EQ(together.Asked, alone.Asked) << jobs;
        EXPECT_TRUE(together.OnlyHere) << jobs;
      }
    }
}

TEST_F(ModulesAheadTest, ACancelledLoadEndsAndAWalkWithinOneFindsAllModules) {
  Workspace workspace;
  workspace.Jobs = 3;
  const Workspace::Use use(workspace);
  VBProject cancelled, walked;
  for (VBProject* project : {&cancelled, &walked}) {
    project->OnLineFailure = [](const VendrelError&, std::string_view, std::int32_t) {
      return StepOver::SkipLine;
    };
    project->Load(mPath);
  }
  int loaded = 0, known = 0;
  bool isWalking = false;
  cancelled.ComponentLoaded.Add([&](std::int32_t) { cancelled.CancelLoad = ++loaded == 4; });
  cancelled.Components.Populate();
  EXPECT_EQ(loaded, 4);
  walked.ComponentLoaded.Add([&](std::int32_t) {
    if (std::exchange(isWalking, true)) return;
    for (const Component& component : walked.Components) known += component.Blocks.Count() > 0;
  });
  walked.Components.Populate();
  EXPECT_EQ(known, 18);
}

// Files of a host belong to its thread.
TEST(ModulesAhead, AreNotReadFromFilesThatOneThreadAloneMayRead) {
  const test::MemoryFiles files{{"/p/A.vbp", "Type=Exe\r\nModule=a; a.bas\r\nModule=b; b.bas\r\n"},
                                {"/p/a.bas", "Attribute VB_Name = \"a\"\r\n"},
                                {"/p/b.bas", "Attribute VB_Name = \"b\"\r\n"}};
  Workspace workspace;
  workspace.Jobs = 2;
  const auto source = FileSource::Installed();
  const Workspace::Use use(workspace);
  FileSource::Install(source);
  VBProject project;
  project.Load("Z:\\p\\A.vbp");
  EXPECT_FALSE(ModulesAhead::MayRead(project, std::as_const(project.Components).Listed()));
  FileSource::Install(nullptr);
}

}  // namespace
}  // namespace vendrel
