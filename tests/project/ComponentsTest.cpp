// The population of the modules of a project, its events, and what a project is when it is new.

#include <gtest/gtest.h>

#include "core/Workspace.h"
#include "support/Projects.h"

namespace vendrel {
namespace {

using test::TestProject;

const TestProject::Modules kModules = {
    {"A.bas", "Dim a\nSub S()\nEnd Sub\nFunction F()\nEnd Function\n"},
    {"B.cls", "Dim b\n"},
    {"C.bas", "Enum E\n  x = K\nEnd Enum\nConst K = 4\nSub S()\nEnd Sub\nSub T()\nEnd Sub\n"}};

std::string States(const VBProject& project) {
  std::string text;
  for (const Component& component : project.Components.Listed())
    text +=
        std::to_string(component.LoadState) + "/" + std::to_string(component.Blocks.Count()) + " ";
  return text;
}

void Walk(VBProject& project) {
  for (Component& component : project.Components) (void)component;
}

std::string FirstValue(const VBProject& project) {
  return project.Components.Item("C")->Enumerations.Item(1)->Members().Item(1)->Value;
}

TEST(ComponentsTest, OnlyWalkingLoadsTheModules) {
  TestProject project(kModules);
  VBProject& p = *project.Project;
  EXPECT_EQ(p.Components.Count(), 3u);
  EXPECT_NE(p.Components.Item("a"), nullptr);
  EXPECT_EQ(p.Components.Item("missing"), nullptr);
  EXPECT_EQ(p.Components.Item(4), nullptr);
  EXPECT_EQ(States(p), "0/0 0/0 0/0 ");
  std::string events;
  p.ComponentLoaded.Add([&](std::int32_t index) { events += "p" + std::to_string(index) + " "; });
  p.Components.ComponentLoaded.Add(
      [&](std::int32_t index) { events += "c" + std::to_string(index) + " "; });
  p.LoadCancelled.Add([&] { events += "cancelled "; });
  Walk(p);
  EXPECT_EQ(States(p), "2/4 2/2 2/4 ");
  EXPECT_EQ(events, "p1 c1 p2 c2 p3 c3 ");
  EXPECT_EQ(FirstValue(p), "4");
  Walk(p);
  EXPECT_EQ(events, "p1 c1 p2 c2 p3 c3 ");
}

TEST(ComponentsTest, HeadersFirstThenEverything) {
  TestProject project(kModules, [](VBProject& p) { p.SetDoNotPopulateComponents(true); });
  VBProject& p = *project.Project;
  EXPECT_TRUE(p.Components.DoNotPopulate);
  std::string events;
  p.ComponentLoaded.Add([&](std::int32_t index) { events += std::to_string(index) + " "; });
  Walk(p);
  EXPECT_EQ(States(p), "1/3 2/2 1/3 ");
  EXPECT_EQ(FirstValue(p), "K");
  EXPECT_EQ(events, "");
  Walk(p);
  EXPECT_EQ(States(p), "1/3 2/2 1/3 ");
  p.SetDoNotPopulateComponents(false);
  Walk(p);
  EXPECT_EQ(States(p), "2/4 2/2 2/4 ");
  EXPECT_EQ(events, "1 3 ");  // the second was complete already
  EXPECT_EQ(FirstValue(p), "4");
}

TEST(ComponentsTest, NothingIsPreloadedWhereTheClientSaysSo) {
  TestProject project(kModules, [](VBProject& p) { p.DontPreLoadComponentDeclarations = true; });
  VBProject& p = *project.Project;
  Walk(p);
  EXPECT_EQ(States(p), "0/0 0/0 0/0 ");
  p.Components.Item("A")->Load(true);
  Walk(p);  // a header that was loaded is completed
  EXPECT_EQ(States(p), "2/4 0/0 0/0 ");
  p.SetDoNotPopulateComponents(true);
  Walk(p);
  EXPECT_EQ(States(p), "2/4 0/0 0/0 ");
}

TEST(ComponentsTest, AHandlerCanCancelTheLoad) {
  TestProject project(kModules);
  VBProject& p = *project.Project;
  std::string events;
  p.ComponentLoaded.Add([&](std::int32_t index) {
    events += std::to_string(index) + " ";
    p.CancelLoad = true;
  });
  p.LoadCancelled.Add([&] { events += "cancelled "; });
  Walk(p);
  EXPECT_EQ(States(p), "2/4 0/0 0/0 ");
  Walk(p);  // nothing clears the flag: one more each time
  EXPECT_EQ(States(p), "2/4 2/2 0/0 ");
  Walk(p);
  EXPECT_EQ(States(p), "2/4 2/2 2/4 ");
  EXPECT_EQ(events, "1 cancelled 2 cancelled 3 cancelled ");
  EXPECT_EQ(FirstValue(p), "K");
  Walk(p);
  EXPECT_EQ(FirstValue(p), "4");
}

TEST(ComponentsTest, PopulationSetsTheLanguageInForce) {
  TestProject project(kModules);
  VBProject other;
  other.SetLanguageVersion(lvVisualBasicDotNet);
  EXPECT_EQ(State().CurrentLanguageVersion, lvVisualBasicDotNet);
  Walk(*project.Project);
  EXPECT_EQ(State().CurrentLanguageVersion, lvVisualBasic5or6);
}

TEST(ComponentsTest, ADuplicateIsToldWithoutAFile) {
  VBProject project;
  EXPECT_TRUE(project.Components.Add(std::make_shared<Component>(), "A"));
  EXPECT_FALSE(project.Components.Add(std::make_shared<Component>(), "a"));
  EXPECT_TRUE(project.Components.Add(std::make_shared<Component>()));
  EXPECT_TRUE(project.Components.Add(std::make_shared<Component>()));
  EXPECT_EQ(project.Components.Count(), 3u);
  EXPECT_EQ(project.Diagnostics.CountOf(DiagnosticCode::DuplicateName), 1u);
  project.Components.Remove("A");
  EXPECT_EQ(project.Components.Count(), 2u);
}

TEST(ComponentsTest, EachNewProjectHasAKeyOfItsOwn) {
  const std::int32_t others = State().mInstanceIncrement;
  const VBProject first, second;
  EXPECT_EQ(first.Key + second.Key, "01");
  EXPECT_EQ(State().mInstanceIncrement, others + 2);
}

TEST(ComponentsTest, AProjectMadeForAClientKeepsWhatWasWritten) {
  const std::shared_ptr<VBProject> made = NewVBProject();
  EXPECT_TRUE(made->DoNotPopulateComponents() && made->PreserveOriginalTaggedComments &&
              made->OutputConditionalCompilationBlocks && made->LoadTypeLibHelpStrings &&
              made->LoadBlocksOnly && made->IncludeFlag);
  EXPECT_TRUE(VBProject().UpgradeLegacyTaggedcomments()) << "one value for the process";
  made->SetAutoGatherComments(true);
  EXPECT_FALSE(made->AutoGatherComments());
}

TEST(ComponentsTest, TypesOfTheProjectAreCached) {
  TestProject project(
      {{"M.bas",
        "Enum Colour\n  a\nEnd Enum\nPrivate Type Point\n  x\nEnd Type\nType M\n  y\nEnd Type\n"
        "Type COLOUR\n  z\nEnd Type\n"}});
  Walk(*project.Project);
  const ProjectTypeCache& cache = project.Project->TypeCache;
  const auto entry = [&](const char* name) {
    const auto* found = cache.Find(name);
    return found ? std::to_string(found->Number) + ":" + found->ComponentName : "";
  };
  EXPECT_EQ(entry("colour"), "4:M");
  EXPECT_EQ(entry("Point"), "7:M");
  EXPECT_EQ(entry("M"), "1:");  // the first entry of a name stays
  EXPECT_EQ(project.Module("M").TypeCache.Find("COLOUR"), 3) << "here too";
  EXPECT_EQ(project.Module("M").TypeCache.Find("Shape"), 0);
  TestProject off({{"M.bas", "Enum Colour\n  a\nEnd Enum\n"}},
                  [](VBProject& p) { p.BuildTypeCache = false; });
  Walk(*off.Project);
  EXPECT_EQ(off.Project->TypeCache.Count(), 0u);
}

}  // namespace
}  // namespace vendrel
