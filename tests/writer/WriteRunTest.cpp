// What a run of writing backs up and writes once, over all of its projects.

#include <gtest/gtest.h>

#include "support/Projects.h"
#include "writer/WriteRun.h"

namespace vendrel::test {
namespace {

const std::string kShared = "Attribute VB_Name = \"M\"\r\nSub A()\r\nx = 1\r\nEnd Sub\r\n";
const std::string kNumbered = "Attribute VB_Name = \"M\"\r\nSub A()\r\n10    x = 1\r\nEnd Sub\r\n";

// Two projects that list one module, each under a path of its own, and another one of its name.
class Runs : public testing::Test {
 protected:
  void Write(bool together, const Prepare& reading = Complete()) {
    std::shared_ptr<VBProject> projects[] = {Loaded("/p/a/A.vbp", reading),
                                             Loaded("/p/b/B.vbp", reading)};
    std::unique_ptr<WriteRun> run;
    if (together) run = std::make_unique<WriteRun>();
    for (const auto& project : projects) project->WriteOut();
  }
  static std::shared_ptr<VBProject> Loaded(const char* path, const Prepare& reading) {
    auto project = std::make_shared<VBProject>();
    reading(*project);
    EXPECT_TRUE(project->Load(path));
    project->Components.Populate();
    project->OutputFileName.SetFullPath(project->FileName.FullPath());
    project->Tags["fvbOutputLineNumbers"] = "10:10";
    return project;
  }

  MemoryFiles mFiles{{"/p/a/A.vbp", "Type=Exe\r\nModule=M; ..\\M.bas\r\nModule=N; M.bas\r\n"},
                     {"/p/b/B.vbp", "Type=Exe\r\nModule=M; ..\\a\\..\\M.bas\r\n"},
                     {"/p/a/M.bas", "Attribute VB_Name = \"N\"\r\n"},
                     {"/p/M.bas", kShared}};
};

TEST_F(Runs, AModuleOfTwoProjectsIsWrittenOnceAndItsBackupIsTheOriginal) {
  Write(true);
  EXPECT_EQ(mFiles["/p/M.bas"], kNumbered);
  EXPECT_EQ(mFiles["/p/a/SourceBackup/M.bas"], kShared);
  EXPECT_EQ(mFiles["/p/a/SourceBackup/M_2.bas"], "Attribute VB_Name = \"N\"\r\n");
  EXPECT_FALSE(mFiles.Has("/p/b/SourceBackup/M.bas"));
  EXPECT_TRUE(mFiles.Has("/p/b/SourceBackup/B.vbp"));
}

TEST_F(Runs, WithoutARunEachProjectBacksUpWhatItFinds) {
  Write(false);
  EXPECT_EQ(mFiles["/p/a/SourceBackup/M.bas"], kShared);
  EXPECT_EQ(mFiles["/p/b/SourceBackup/M.bas"], kNumbered);
}

TEST_F(Runs, ClassicBackupsAreMadeForEachModule) {
  mFiles.Add("/p/b/B.vbp", "Type=Exe\r\nModule=M; ..\\M.bas\r\nModule=O; ..\\M.bas\r\n");
  Write(true, [](VBProject&) {});
  EXPECT_NE(mFiles["/p/b/SourceBackup/M.bas"], kShared);
}

TEST_F(Runs, AModuleThatIsListedTwiceIsWrittenOnce) {
  mFiles.Add("/p/a/A.vbp", "Type=Exe\r\nModule=M; ..\\M.bas\r\nModule=O; ..\\M.bas\r\n");
  Write(true);
  EXPECT_EQ(mFiles["/p/M.bas"], kNumbered);
  EXPECT_EQ(mFiles["/p/a/SourceBackup/M.bas"], kShared);
  EXPECT_FALSE(mFiles.Has("/p/a/SourceBackup/M_2.bas"));
}

}  // namespace
}  // namespace vendrel::test
