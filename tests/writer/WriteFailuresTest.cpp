#include <gtest/gtest.h>

#include "support/Projects.h"
#include "support/Services.h"

namespace vendrel::test {
namespace {

constexpr const char* kOldModule = "Attribute VB_Name = \"M\"\r\nSub A()\r\nEnd Sub\r\n";
constexpr const char* kNewModule = "Attribute VB_Name = \"M\"\r\nSub A()\r\n' new\r\nEnd Sub\r\n";

// A project of two modules, loaded, amended and to be written in place.
class WriteFailures : public testing::Test {
 protected:
  void SetUp() override {
    mFiles.Add("/p/A.vbp", "Type=Exe\r\nModule=M; M.bas\r\nModule=N; N.bas\r\nName=\"A\"\r\n");
    mFiles.Add("/p/M.bas", kOldModule);
    mFiles.Add("/p/N.bas", "Attribute VB_Name = \"N\"\r\n");
    ASSERT_TRUE(mProject.Load("/p/A.vbp"));
    mProject.Components.Populate();
    mProject.Components.Item("M")->Blocks.Item("A")->CodeLines->Add(
        InitialiseCodeLine("' new", lvVisualBasic5or6), 0, 1);
    mProject.OutputFileName.SetFolderPath("/p");
  }
  // Writes while answering questions; "silent" asks none. Gives what was shown.
  std::string Write(const char* answer) {
    NotedMessages messages(std::string_view(answer) == "yes");
    mProject.SetSilent(std::string_view(answer) == "silent");
    mProject.WriteOut();
    std::string log;
    for (const std::string& text : messages.Shown) log += text + "\n";
    return log;
  }
  bool ModuleWritten() const { return mFiles["/p/M.bas"] == kNewModule; }
  bool ProjectWritten() const {
    return mFiles["/p/A.vbp"].find("AutoIncrementVer=0") != std::string::npos;
  }

  MemoryFiles mFiles;
  VBProject mProject;
};

TEST_F(WriteFailures, InPlaceBackupsAreMadeAndOverwritten) {
  const std::string project = mFiles["/p/A.vbp"];
  Write("no");
  EXPECT_TRUE(ModuleWritten() && ProjectWritten());
  EXPECT_EQ(mFiles["/p/SourceBackup/M.bas"], kOldModule);
  EXPECT_EQ(mFiles["/p/SourceBackup/A.vbp"], project);
  EXPECT_EQ(mFiles["/p/A.vbp.bak"], project);
  mFiles.Add("/p/A.vbp.bak", "old", 0444);
  Write("no");
  EXPECT_EQ(mFiles["/p/SourceBackup/M.bas"], kNewModule);
  EXPECT_EQ(mFiles["/p/A.vbp.bak"], mFiles["/p/A.vbp"]);
}

TEST_F(WriteFailures, WithoutWriteAccessNothingHappens) {
  mProject.ProjectSourceAccess = psaRead;
  EXPECT_EQ(Write("yes"), "");
  EXPECT_FALSE(ModuleWritten() || mFiles.Has("/p/SourceBackup"));
}

TEST_F(WriteFailures, AReadOnlyProjectFileStopsEverything) {
  const char* text =
      "48 .vbp file read-only: Could not write to the .vbp file at 'Z:\\p\\A.vbp' as the file is "
      "read-only.  Processing will continue, but source code for this project will not be "
      "written.\n";
  mFiles.Add("/p/A.vbp", mFiles["/p/A.vbp"], 0444);
  EXPECT_EQ(Write("silent"), "");
  EXPECT_EQ(Write("yes"), text);
  EXPECT_FALSE(ModuleWritten());
  mFiles.Add("/q/A.vbp", "there", 0444);
  mProject.OutputFileName.SetFolderPath("/q");
  EXPECT_EQ(Write("yes"), text);
  EXPECT_EQ(mProject.Diagnostics.CountOf(DiagnosticCode::WriteRefused), 3u);
}

TEST_F(WriteFailures, AReadOnlyModuleIsLeftOutAndTheOthersAreWritten) {
  mFiles.Add("/p/M.bas", kOldModule, 0444);
  EXPECT_EQ(Write("silent"), "");
  EXPECT_EQ(
      Write("no"),
      "48 File read-only: Could not write to the file 'Z:\\p\\M.bas' as the file is read-only.  "
      "Processing will continue, but source code for this file will not be written.\n");
  EXPECT_FALSE(ModuleWritten());
  EXPECT_TRUE(ProjectWritten());
}

TEST_F(WriteFailures, AModuleThatIsNotLoadedIsLeftOut) {
  mProject.UnloadSourceCode();
  EXPECT_EQ(Write("silent"), "");
  const std::string text =
      "48 Error: Attempt to write out a component which is not fully loaded !\n";
  EXPECT_EQ(Write("no"), text + text);
  EXPECT_FALSE(ModuleWritten());
}

TEST_F(WriteFailures, WithoutABackupFolderTheUserDecides) {
  mFiles.Add("/p/SourceBackup", "a file");
  const std::string folder =
      "38 Could not create directory: Failed to create a directory 'Z:\\p\\SourceBackup'.\r\n\r\n"
      "This directory is required to store backup copies of the source code.  "
      "Do you wish to proceed ?\n";
  EXPECT_EQ(Write("silent"), "");
  EXPECT_EQ(Write("no"), folder);
  EXPECT_FALSE(ModuleWritten() || ProjectWritten());
  const std::string log = Write("yes");
  EXPECT_EQ(log.substr(0, folder.size()), folder);
  EXPECT_NE(log.find("36 File copy error: Backup file copy error (A.vbp) : 7"), std::string::npos)
      << "the project file is backed up all the same\n"
      << log;
  EXPECT_EQ(log.find("M.bas"), std::string::npos) << "modules are not\n" << log;
  EXPECT_TRUE(ModuleWritten() && ProjectWritten());
}

TEST_F(WriteFailures, AfterAFailedBackupOfAModuleTheUserDecides) {
  mFiles.AddFolder("/p/SourceBackup/N.bas");
  EXPECT_EQ(Write("silent"), "");
  EXPECT_TRUE(ModuleWritten()) << "what was written stays";
  EXPECT_FALSE(ProjectWritten());
  const std::string question =
      "36 File copy error: Backup file copy error (N.bas) : 75 Path/File access error: "
      "/p/SourceBackup/N.bas (not a regular file)\r\n\r\n"
      "Do you wish to proceed with other files ?\n";
  EXPECT_EQ(Write("no"), question);
  EXPECT_FALSE(ProjectWritten());
  EXPECT_EQ(Write("yes"), question);
  EXPECT_TRUE(ProjectWritten());
}

TEST_F(WriteFailures, AfterAFailedBackupOfTheProjectFileTheUserDecides) {
  mFiles.AddFolder("/p/A.vbp.bak");
  EXPECT_EQ(Write("silent"), "");
  const std::string log = Write("no");
  EXPECT_TRUE(log.starts_with("4 File copy error: Backup project file copy error (A.vbp) : 75"));
  EXPECT_TRUE(
      log.ends_with("\r\n\r\nDo you wish to proceed (all other files have been written) ?\n"));
  EXPECT_FALSE(ProjectWritten());
  Write("yes");
  EXPECT_TRUE(ProjectWritten());
}

TEST_F(WriteFailures, AFileThatCannotBeOpenedIsToldEvenWhenSilent) {
  NotedMessages messages(true);
  mFiles.AddFolder("/q/M.bas");
  mProject.OutputFileName.SetFolderPath("/q");
  EXPECT_THROW(mProject.WriteOut(), VendrelError);
  mFiles.AddFolder("/q/A.vbp");
  EXPECT_THROW(mProject.WriteOut(true), VendrelError);
  EXPECT_EQ(messages.Shown,
            (std::vector<std::string>{"48 File access error: Error opening M.bas for write.  Check "
                                      "that the target file is not read-only.",
                                      "48 File access error: Error opening A.vbp for write.  Check "
                                      "that the target file is not read-only."}));
}

TEST_F(WriteFailures, ModulesOfOneNameKeepBackupsOfTheirOwn) {
  for (const bool keep : {false, true}) {
    MemoryFiles files{{"/p/A.vbp", "Type=Exe\r\nModule=M; a\\M.bas\r\nModule=N; b\\m.bas\r\n"},
                      {"/p/a/M.bas", "' 1"},
                      {"/p/b/m.bas", "' 2"}};
    VBProject project;
    project.Reading.KeepBackups = keep;
    ASSERT_TRUE(project.Load("/p/A.vbp"));
    project.OutputFileName.SetFolderPath("/p");
    project.WriteOut();
    EXPECT_EQ(files["/p/SourceBackup/M.bas"], keep ? "' 1" : "' 2");
    EXPECT_EQ(files["/p/SourceBackup/m_2.bas"], keep ? "' 2" : "");
  }
}

}  // namespace
}  // namespace vendrel::test
