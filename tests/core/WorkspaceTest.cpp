// Each workspace has parts of its own, and what was made in one stays there.
#include "core/Workspace.h"

#include <gtest/gtest.h>

#include "project/VBProject.h"
#include "services/CodePage.h"
#include "support/MemoryFiles.h"

namespace vendrel {
namespace {

TEST(Workspace, IsInUseUntilItsScopeEnds) {
  Workspace first, second;
  EXPECT_EQ(&Workspace::Current(), &Workspace::Process());
  {
    const Workspace::Use outer(first);
    {
      const Workspace::Use inner(second);
      EXPECT_EQ(&Workspace::Current(), &second);
      FileOptions::Current().CodePage = "cp932";
    }
    EXPECT_EQ(&Workspace::Current(), &first);
    EXPECT_EQ(FileOptions::Current().CodePage, "");
  }
  EXPECT_EQ(&Workspace::Current(), &Workspace::Process());
}

struct Noted {
  ~Noted() { Ends->push_back(Name); }
  std::string* Ends = nullptr;
  char Name = ' ';
};
struct NotedFirst : Noted {};
struct NotedSecond : Noted {};

TEST(Workspace, DropsItsPartsInTheOppositeOrder) {
  std::string ends;
  {
    Workspace workspace;
    const auto note = [&](Noted& part, char name) {
      part.Ends = &ends;
      part.Name = name;
    };
    note(workspace.Get<NotedFirst>(), '1');
    note(workspace.Get<NotedSecond>(), '2');
    EXPECT_EQ(&workspace.Get<NotedFirst>(), &workspace.Get<NotedFirst>());
  }
  EXPECT_EQ(ends, "21");
}

// A project reads and counts where it was made, whatever is in use when it loads.
TEST(Workspace, IsThatOfAProjectForItsWholeLife) {
  Workspace workspace;
  // Other tests may hold projects of the process's own workspace, so its count need not be 0.
  const auto before = Workspace::Process().State.mInstanceIncrement;
  std::shared_ptr<VBProject> project;
  {
    const Workspace::Use use(workspace);
    project = std::make_shared<VBProject>();
  }
  test::MemoryFiles elsewhere{{"/p/P.vbp", "Name=\"Elsewhere\"\r\n"}};
  EXPECT_FALSE(project->Load("Z:\\p\\P.vbp")) << "that file is not in its workspace";
  EXPECT_EQ(workspace.State.mInstanceIncrement, 1);
  EXPECT_EQ(Workspace::Process().State.mInstanceIncrement, before);
  project->SetSilent(false);
  EXPECT_FALSE(workspace.State.Silent);
  project.reset();
  EXPECT_EQ(workspace.State.mInstanceIncrement, 0);
}

}  // namespace
}  // namespace vendrel
