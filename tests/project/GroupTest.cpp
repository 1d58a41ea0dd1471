#include <gtest/gtest.h>

#include "core/Workspace.h"
#include "project/VBProjectGroup.h"
#include "support/Projects.h"

namespace vendrel {
namespace {

using test::MemoryFiles;
using test::Names;

std::string Project(const std::string& name, const std::string& lines = {}) {
  return "Type=Exe\r\n" + lines + "Name=\"" + name + "\"\r\n";
}

TEST(GroupTest, AGroupLoadsItsProjects) {
  const MemoryFiles files{
      {"/g/All.vbg", "VBGROUP 5.0\r\nStartupProject=a\\A.vbp\r\nProject=\"..\\b\\B.vbp\"\r\n"},
      {"/g/a/A.vbp", Project("Alpha")},
      {"/b/B.vbp", Project("Beta")}};
  VBProjectGroup group;
  ASSERT_TRUE(group.Load("/g/All.vbg", true, true));
  EXPECT_EQ(Names(group.VBProjects()), "Alpha Beta ");
  EXPECT_EQ(group.QualifiedName(), "All");
  EXPECT_EQ(group.FileName().FullPath(), "Z:\\g\\All.vbg");
  EXPECT_EQ(group.VBProjects().Item("beta")->VBProjectGroup(), &group);
  EXPECT_TRUE(group.VBProjects().Item("beta")->DoNotPopulateComponents());
  EXPECT_EQ(group.Diagnostics.Count(), 0u);
}

TEST(GroupTest, WhatCannotBeLoadedIsToldAndTheOthersAreLoaded) {
  MemoryFiles files{{"/g/All.vbg",
                     "VBGROUP 5.0\r\n"
                     "Project=Missing.vbp\r\n"
                     "Project=A.vbp\r\n"
                     "no equals sign\r\n"
                     "\r\n"
                     "Project=\r\n"
                     "Project=a.VBP\r\n"     // the same file again
                     "Project=Twin.vbp\r\n"  // another file of that project name
                     "Project=All.vbg\r\n"   // the group itself
                     "Project=x=y.vbp\r\n"
                     "Project=Locked.vbp\r\n"},
                    {"/g/A.vbp", Project("Alpha")},
                    {"/g/Twin.vbp", Project("ALPHA")},
                    {"/g/x=y.vbp", Project("Equal")},
                    {"/g/Locked.vbp", Project("Locked")}};
  files.FailOn("/g/Locked.vbp", EACCES);
  VBProjectGroup group;
  ASSERT_TRUE(group.Load("/g/All.vbg"));
  EXPECT_EQ(Names(group.VBProjects()), "Alpha Equal ");
  EXPECT_EQ(test::Told(group.Diagnostics),
            "2 missing-project\n4 group-line\n6 group-line\n7 project-repeated\n"
            "8 project-repeated\n9 group-line\n11 missing-project\n");
}

TEST(GroupTest, AMissingGroupFileIsNoFailure) {
  const MemoryFiles files;
  VBProjectGroup group;
  EXPECT_FALSE(group.Load("/g/All.vbg"));
  EXPECT_EQ(group.LastErrorString, "Passed filename was invalid / did not exist");
}

TEST(GroupTest, TheNameComesFromTheFileThenTheStoredNameThenTheFirstProject) {
  const MemoryFiles files{{"/g/A.vbp", Project("Alpha")}};
  VBProjectGroup group;
  EXPECT_EQ(group.QualifiedName(), "");
  const auto project = std::make_shared<VBProject>();
  project->ProjectName = "First/One";
  project->FileName.SetFullPath("/g/A.vbp");
  group.AllVBProjects().Add(project, project->ProjectName);
  EXPECT_EQ(group.QualifiedName(), "First-One");
  EXPECT_EQ(group.Description(), "First/One");
  EXPECT_EQ(group.FileName().LeafName(), "A.vbp");
  project->mDescription = "About it";
  EXPECT_EQ(group.Description(), "About it");
  group.SetQualifiedName("My:Group");
  EXPECT_EQ(group.QualifiedName(), "My-Group");
  group.SetDescription("Own");
  EXPECT_EQ(group.Description(), "Own");
  EXPECT_EQ(group.InternalDescription(), "Own");
}

TEST(GroupTest, ExcludedProjectsAreInAllVBProjectsOnly) {
  const MemoryFiles files{{"/g/All.vbg", "Project=A.vbp\r\nProject=B.vbp\r\n"},
                          {"/g/A.vbp", Project("Alpha")},
                          {"/g/B.vbp", Project("Beta")}};
  VBProjectGroup group;
  group.Load("/g/All.vbg");
  group.AllVBProjects().Item("Alpha")->IncludeFlag = false;
  EXPECT_EQ(Names(group.VBProjects()), "Beta ");
  EXPECT_EQ(Names(group.AllVBProjects()), "Alpha Beta ");
  EXPECT_EQ(group.Project("Alpha"), nullptr);
}

TEST(ProjectSetTest, AFolderTreeIsLoadedButForTheCopiesOfGenerators) {
  MemoryFiles files{
      {"/s/A.vbp", Project("Alpha")},         {"/s/deep/er/B.vbp", Project("Beta")},
      {"/s/FolioVB/A.vbp", Project("Copy1")}, {"/s/MyForgeVBCode/A.vbp", Project("Copy2")},
      {"/s/deep/Z.vbp", Project("Alpha")},    {"/s/deep/readme.txt", "no project"}};
  files.Link("/s/deep/up", "/s");
  VBProjects projects;
  projects.Load("/s");
  EXPECT_EQ(Names(projects), "Alpha Beta ");
  EXPECT_EQ(projects.Diagnostics.CountOf(DiagnosticCode::DuplicateName), 1u);
}

TEST(ProjectSetTest, AListOfPathsIsLoaded) {
  const MemoryFiles files{{"/s/A.vbp", Project("Alpha")}, {"/s/B.vbp", Project("Beta")}};
  VBProjects projects;
  int prepared = 0;
  projects.BeforeLoad = [&](VBProject& project) {
    ++prepared;
    EXPECT_TRUE(project.FileName.FullPath().empty());
  };
  projects.LoadCollection({"/s/B.vbp", "/s/Missing.vbp", "Z:\\s\\A.vbp"});
  EXPECT_EQ(Names(projects), "Beta Alpha ");
  EXPECT_EQ(prepared, 3);
  EXPECT_EQ(projects.Diagnostics.CountOf(DiagnosticCode::MissingProject), 1u);
}

TEST(ProjectSetTest, AddCanIncludeThePublicModules) {
  const test::TestProject made({{"Open.cls", "Attribute VB_Exposed = True\nPublic x As Long\n"},
                                {"Shut.cls", "Attribute VB_Exposed = False\nPublic x As Long\n"}});
  const std::shared_ptr<VBProject>& project = made.Project;
  VBProjects plain, flagged;
  plain.Add(project, "P");
  EXPECT_FALSE(project->Components.Item("Open")->IncludeFlag);
  flagged.Add(project, "P", {}, {}, true);
  EXPECT_TRUE(project->Components.Item("Open")->IncludeFlag);
  EXPECT_FALSE(project->Components.Item("Shut")->IncludeFlag);
}

TEST(ProjectSetTest, TheStructureTellsWhoRefersToWhom) {
  const MemoryFiles files{
      {"/s/A.vbp", Project("Alpha", "Reference=*\\AB.vbp\r\nReference=*\\AC.vbp\r\n")},
      {"/s/B.vbp", Project("Beta", "Reference=*\\AC.vbp\r\nReference=*\\Aelsewhere.vbp\r\n")},
      {"/s/C.vbp", Project("Gamma & Co")}};
  VBProjects projects;
  projects.Load("/s");
  EXPECT_EQ(projects.Structure(),
            "<Projects>\n"
            "  <Project ProjectName=\"Alpha\" FullyQualifiedPath=\"Z:\\s\\A.vbp\">\n"
            "    <Child ProjectName=\"Beta\" />\n"
            "    <Child ProjectName=\"Gamma &amp; Co\" />\n"
            "  </Project>\n"
            "  <Project ProjectName=\"Beta\" FullyQualifiedPath=\"Z:\\s\\B.vbp\">\n"
            "    <Child ProjectName=\"Gamma &amp; Co\" />\n"
            "    <Parent ProjectName=\"Alpha\" />\n"
            "  </Project>\n"
            "  <Project ProjectName=\"Gamma &amp; Co\" FullyQualifiedPath=\"Z:\\s\\C.vbp\">\n"
            "    <Parent ProjectName=\"Alpha\" />\n"
            "    <Parent ProjectName=\"Beta\" />\n"
            "  </Project>\n"
            "</Projects>\n");
}

}  // namespace
}  // namespace vendrel
