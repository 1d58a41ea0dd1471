#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "core/MessageService.h"
#include "core/ProcessState.h"
#include "support/Projects.h"

namespace vendrel::test {
namespace {

// Answers every question alike and keeps what was shown.
class Scripted final : public MessageService {
 public:
  explicit Scripted(bool answer) : mAnswer(answer) {}
  std::string Log;
  void Show(std::string_view text, std::string_view caption, int) override { Keep(text, caption); }
  bool Ask(std::string_view text, std::string_view caption, int style) override {
    Keep(text, caption);
    Log.insert(Log.size() - 1, " " + std::to_string(style));
    return mAnswer;
  }

 private:
  void Keep(std::string_view text, std::string_view caption) {
    Log.append(caption).append(": ").append(text).append("\n");
  }
  bool mAnswer;
};

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
    Amend(mProject);
    mProject.OutputFileName.SetFolderPath("/p");
  }
  void TearDown() override { MessageService::Install(nullptr); }

  static void Amend(VBProject& project) {
    project.Components.Item("M")->Blocks.Item("A")->CodeLines->Add(
        InitialiseCodeLine("' new", lvVisualBasic5or6), 0, 1);
  }
  // Writes while answering questions; "silent" asks none. Gives what was shown.
  std::string Write(const char* answer) {
    const auto messages = std::make_shared<Scripted>(std::string_view(answer) == "yes");
    MessageService::Install(messages);
    mProject.SetSilent(std::string_view(answer) == "silent");
    mProject.WriteOut();
    return messages->Log;
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
      ".vbp file read-only: Could not write to the .vbp file at 'Z:\\p\\A.vbp' as the file is "
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
  EXPECT_EQ(Write("no"),
            "File read-only: Could not write to the file 'Z:\\p\\M.bas' as the file is read-only.  "
            "Processing will continue, but source code for this file will not be written.\n");
  EXPECT_FALSE(ModuleWritten());
  EXPECT_TRUE(ProjectWritten());
}

TEST_F(WriteFailures, AModuleThatIsNotLoadedIsLeftOut) {
  mProject.UnloadSourceCode();
  EXPECT_EQ(Write("silent"), "");
  const std::string text = "Error: Attempt to write out a component which is not fully loaded !\n";
  EXPECT_EQ(Write("no"), text + text);
  EXPECT_FALSE(ModuleWritten());
}

TEST_F(WriteFailures, WithoutABackupFolderTheUserDecides) {
  mFiles.Add("/p/SourceBackup", "a file");
  const std::string folder =
      "Could not create directory: Failed to create a directory 'Z:\\p\\SourceBackup'.\r\n\r\nThis "
      "directory is required to store backup copies of the source code.  Do you wish to proceed ? "
      "38\n";
  EXPECT_EQ(Write("silent"), "");
  EXPECT_EQ(Write("no"), folder);
  EXPECT_FALSE(ModuleWritten() || ProjectWritten());
  const std::string log = Write("yes");
  EXPECT_EQ(log.substr(0, folder.size()), folder);
  EXPECT_NE(log.find("File copy error: Backup file copy error (A.vbp) : 7"), std::string::npos)
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
      "File copy error: Backup file copy error (N.bas) : 75 Path/File access error: "
      "/p/SourceBackup/N.bas (not a regular file)\r\n\r\nDo you wish to proceed with other files ? "
      "36\n";
  EXPECT_EQ(Write("no"), question);
  EXPECT_FALSE(ProjectWritten());
  EXPECT_EQ(Write("yes"), question);
  EXPECT_TRUE(ProjectWritten());
}

TEST_F(WriteFailures, AfterAFailedBackupOfTheProjectFileTheUserDecides) {
  mFiles.AddFolder("/p/A.vbp.bak");
  EXPECT_EQ(Write("silent"), "");
  const std::string log = Write("no");
  EXPECT_TRUE(log.starts_with("File copy error: Backup project file copy error (A.vbp) : 75"));
  EXPECT_TRUE(
      log.ends_with("\r\n\r\nDo you wish to proceed (all other files have been written) ? 4\n"));
  EXPECT_FALSE(ProjectWritten());
  Write("yes");
  EXPECT_TRUE(ProjectWritten());
}

TEST_F(WriteFailures, AFileThatCannotBeOpenedIsToldEvenWhenSilent) {
  const auto messages = std::make_shared<Scripted>(true);
  MessageService::Install(messages);
  mFiles.AddFolder("/q/M.bas");
  mProject.OutputFileName.SetFolderPath("/q");
  EXPECT_THROW(mProject.WriteOut(), VendrelError);
  mFiles.AddFolder("/q/A.vbp");
  EXPECT_THROW(mProject.WriteOut(true), VendrelError);
  EXPECT_EQ(messages->Log,
            "File access error: Error opening M.bas for write.  Check that the target file is not "
            "read-only.\nFile access error: Error opening A.vbp for write.  Check that the target "
            "file is not read-only.\n");
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

// The files of the machine, until the n-th call ends the process.
class Dying final : public FileSource {
 public:
  Dying(FileSource& under, int calls) : mUnder(under), mLeft(calls) {}
  static constexpr int kDied = 7;

  int OpenForReading(const std::string& p) override { return Step(), mUnder.OpenForReading(p); }
  int CreateNew(const std::string& p, std::uint32_t m) override {
    return Step(), mUnder.CreateNew(p, m);
  }
  std::int64_t Read(int h, char* b, std::size_t s) override { return Step(), mUnder.Read(h, b, s); }
  std::int64_t Write(int h, const char* b, std::size_t s) override {
    if (mLeft == 1) mUnder.Write(h, b, s / 2);  // died in the middle of it
    return Step(), mUnder.Write(h, b, s);
  }
  int StatusOfOpen(int h, FileStatus& s) override { return Step(), mUnder.StatusOfOpen(h, s); }
  int SetMode(int h, std::uint32_t m) override { return Step(), mUnder.SetMode(h, m); }
  int Sync(int) override { return Step(), 0; }
  int Close(int h) override { return Step(), mUnder.Close(h); }
  int Status(const std::string& p, FileStatus& s) override { return Step(), mUnder.Status(p, s); }
  int Rename(const std::string& a, const std::string& b) override {
    return Step(), mUnder.Rename(a, b);
  }
  int Unlink(const std::string& p) override { return Step(), mUnder.Unlink(p); }
  int MakeFolder(const std::string& p) override { return Step(), mUnder.MakeFolder(p); }
  int List(const std::string& p, std::vector<FolderEntry>& e) override {
    return Step(), mUnder.List(p, e);
  }
  int MayWrite(const std::string& p) override { return Step(), mUnder.MayWrite(p); }
  int RealPath(const std::string& p, std::string& r) override {
    return Step(), mUnder.RealPath(p, r);
  }
  std::string CurrentFolder() override { return mUnder.CurrentFolder(); }

 private:
  void Step() {
    if (--mLeft == 0) _exit(kDied);
  }
  FileSource& mUnder;
  int mLeft;
};

std::string BytesOf(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream bytes;
  bytes << file.rdbuf();
  return bytes.str();
}

// Gives the exit code of a child that writes the project and dies at the n-th call.
int WriteAndDie(const std::filesystem::path& folder, int n) {
  const pid_t child = fork();
  if (child == 0) {
    VBProject project;
    if (!project.Load((folder / "A.vbp").string())) _exit(1);
    project.Components.Populate();
    project.Components.Item("M")->Blocks.Item("A")->CodeLines->Add(
        InitialiseCodeLine("' new", lvVisualBasic5or6), 0, 1);
    project.OutputFileName.SetFullPath(project.FileName.FullPath());
    FileSource::Install(std::make_shared<Dying>(*FileSource::Machine(), n));
    project.WriteOut();
    _exit(0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(WritingByAProcessThatIsKilled, LeavesEachFileOldOrNew) {
  const std::filesystem::path folder =
      std::filesystem::temp_directory_path() / ("vendrel-kill-" + std::to_string(getpid()));
  const std::string oldProject = "Type=Exe\r\nModule=M; M.bas\r\nName=\"A\"\r\n";
  bool oldSeen = false, newSeen = false;
  int code = Dying::kDied;
  for (int n = 1; code == Dying::kDied; ++n) {
    std::filesystem::remove_all(folder);
    std::filesystem::create_directory(folder);
    std::ofstream(folder / "A.vbp", std::ios::binary) << oldProject;
    std::ofstream(folder / "M.bas", std::ios::binary) << kOldModule;
    code = WriteAndDie(folder, n);
    const std::string module = BytesOf(folder / "M.bas");
    EXPECT_TRUE(module == kOldModule || module == kNewModule) << n << "\n" << module;
    oldSeen = oldSeen || module == kOldModule;
    newSeen = newSeen || module == kNewModule;
    const std::string project = BytesOf(folder / "A.vbp");
    EXPECT_TRUE(project == oldProject || project.ends_with("AutoIncrementVer=0\r\n")) << n;
  }
  EXPECT_EQ(code, 0);
  EXPECT_TRUE(oldSeen && newSeen);
  std::filesystem::remove_all(folder);
}

}  // namespace
}  // namespace vendrel::test
