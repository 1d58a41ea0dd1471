// Every call on files may fail while a project or a result is written. Each file is then the old
// one or the new one and whole, nothing else is left behind, a failure is told, the tree is as it
// was, and the same write succeeds once the system does.

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <set>
#include <sstream>

#include "cli/Interrupts.h"
#include "core/Workspace.h"
#include "output/Dump.h"
#include "project/VBProject.h"
#include "services/AtomicFile.h"
#include "services/FileSource.h"
#include "support/DiskFolder.h"
#include "support/MemoryFiles.h"
#include "support/Services.h"
#include "support/ToolRun.h"

namespace vendrel {
namespace {

using Contents = std::map<std::string, std::string>;

constexpr int kFull = 0;  // not one call: from then on there is no room

// A group of two projects, and files of an earlier copy.
class Disk {
 public:
  Disk()
      : Files{{"/g/G.vbg", "VBGROUP 5.0\r\nStartupProject=A.vbp\r\nProject=lib\\B.vbp\r\n"},
              {"/g/A.vbp",
               "Type=Exe\r\nReference=*\\G{00000000-0000-0000-0000-000000000001}#1.0#0#lib\\x.tlb#X"
               "\r\nForm=F.frm\r\nModule=M; m.bas\r\nRelatedDoc=notes.txt\r\nName=\"A\"\r\n"
               "CompatibleEXE32=\"old.dll\"\r\n"},
              {"/g/F.frm",
               "VERSION 5.00\r\nBegin VB.Form F\r\n  Caption = $\"F.frx\":0003\r\nEnd\r\n"
               "Attribute VB_Name = \"F\"\r\nAttribute VB_HelpID = 7\r\nSub S()\r\nEnd Sub\r\n"},
              {"/g/F.frx", std::string("\1\2\3\5\0\0\0hello", 12)},
              {"/g/M.bas", "Attribute VB_Name = \"M\"\r\nSub A()\r\n  x = 1\r\nEnd Sub\r\n"},
              {"/g/notes.txt", "read me"},
              {"/g/old.dll", "MZ"},
              {"/g/lib/x.tlb", "MSFT"},
              {"/g/lib/B.vbp", "Type=OleDll\r\nModule=N; N.bas\r\nName=\"B\"\r\n"},
              {"/g/lib/N.bas", "Attribute VB_Name = \"N\"\r\nPublic a As Long\r\n"},
              {"/q/m.bas", "' an earlier copy"},
              {"/q/out", "an earlier result"}} {}

  Contents Now() const {
    Contents contents;
    for (const std::string& path : Files.Paths()) contents[path] = Files[path];
    return contents;
  }
  void FailAt(int n, int error) {
    Files.ForgetCalls();
    if (error == kFull && n > 0)
      Files.FullFrom(n);
    else
      Files.FailAt(n, error);
  }
  bool Reached(int n) const { return Files.Calls().size() >= static_cast<std::size_t>(n); }

  test::MemoryFiles Files;
};

std::string Text(const VBProject& project) {
  std::ostringstream out;
  Dump(out, Describe(project), {.Lines = true, .Identity = false});
  return out.str();
}

bool IsBackup(const std::string& path) {
  return path.find("SourceBackup") != std::string::npos || path.ends_with(".bak");
}

// Each file is as before or as it is to be; a backup may hold either.
void ExpectOldOrNew(const Contents& before, const Contents& wanted, const Contents& now) {
  for (const auto& [path, bytes] : now) {
    const auto was = before.find(path), is = wanted.find(path);
    const bool old = was != before.end() && was->second == bytes;
    const bool isNew = is != wanted.end() && is->second == bytes;
    const auto isCopyOf = [&bytes = bytes](const auto& file) { return file.second == bytes; };
    const bool copy =
        IsBackup(path) && is != wanted.end() && std::any_of(wanted.begin(), wanted.end(), isCopyOf);
    EXPECT_TRUE(old || isNew || copy) << path << ":\n" << bytes;
  }
  for (const auto& file : before) EXPECT_TRUE(now.contains(file.first)) << file.first;
}

void ExpectNew(const Contents& wanted, const Contents& now) {
  for (const auto& [path, bytes] : wanted) {
    const auto found = now.find(path);
    ASSERT_TRUE(found != now.end()) << path;
    if (!IsBackup(path)) {
      EXPECT_EQ(found->second, bytes) << path;
    }
  }
  EXPECT_EQ(wanted.size(), now.size());
}

// What was overwritten in place lies in a backup.
void ExpectBackups(const Contents& before, const Contents& now) {
  for (const auto& [path, bytes] : before) {
    if (now.at(path) == bytes || !path.starts_with("/g/")) continue;
    const auto holds = [&bytes = bytes](const auto& file) {
      return IsBackup(file.first) && file.second == bytes;
    };
    EXPECT_TRUE(std::any_of(now.begin(), now.end(), holds)) << path << " has no backup";
  }
}

struct WriteCase {
  const char* Name;
  void (*Write)(VBProject&);
  bool Backups = false;
};

const WriteCase kWrites[] = {
    {"InPlace", [](VBProject& project) { project.WriteOut(); }, true},
    {"ProjectFileInPlace", [](VBProject& project) { project.WriteOut(true); }, true},
    {"NumberedLines",
     [](VBProject& project) {
       State().CurrentLineNumber = 0;
       project.Tags["fvbOutputLineNumbers"] = "100:10";
       project.WriteOut();
     },
     true},
    {"ToAnotherFolder",
     [](VBProject& project) {
       project.OutputFileName.SetFolderPath("/q");
       project.WriteOut();
     }},
    {"OneModule", [](VBProject& project) { project.Components.Item("M")->WriteOut(); }},
    {"Manifest", [](VBProject& project) { project.WriteManifestToFile("/q/out", false, true); }},
};

std::ostream& operator<<(std::ostream& out, const WriteCase& each) { return out << each.Name; }

class WriteFaults : public testing::TestWithParam<WriteCase> {
 protected:
  struct Loaded : Disk, VBProject {
    Loaded() {
      Reading = ReadingRules::Complete();
      SetSilent(true);
      EXPECT_TRUE(Load("/g/A.vbp"));
      Components.Populate();
      Components.Item("M")->Blocks.Item("A")->CodeLines->Add(
          InitialiseCodeLine("' new", lvVisualBasic5or6), 0, 1);
      Components.Item("F")->HelpContextID = 9;
      OutputFileName.SetFullPath(FileName.FullPath());
    }
    // Whether nothing was told.
    bool Attempt(const WriteCase& each) {
      const std::size_t before = Diagnostics.Count();
      try {
        each.Write(*this);
      } catch (const VendrelError&) {
        return false;
      }
      return Diagnostics.Count() == before;
    }
  };

  WriteFaults() {
    Loaded clean;
    mUntouched = Text(clean);
    mBefore = clean.Now();
    EXPECT_TRUE(clean.Attempt(GetParam())) << GetParam().Name;
    mWritten = Text(clean);
    mWanted = clean.Now();
    EXPECT_NE(mBefore, mWanted);
  }

  void Check(int n, int error) {
    Loaded job;
    job.FailAt(n, error);
    const bool quiet = job.Attempt(GetParam());
    mReached = job.Reached(n);
    job.FailAt(0, 0);
    const Contents now = job.Now();
    ExpectOldOrNew(mBefore, mWanted, now);
    if (quiet) ExpectNew(mWanted, now);
    if (GetParam().Backups) ExpectBackups(mBefore, now);
    const std::string text = Text(job);
    EXPECT_TRUE(text == mUntouched || text == mWritten) << text;
    EXPECT_TRUE(job.Attempt(GetParam())) << "the same again";
    ExpectNew(mWanted, job.Now());
    VBProject next;
    next.Reading = ReadingRules::Complete();
    EXPECT_TRUE(next.Load("/g/A.vbp"));
    next.Components.Populate();
    EXPECT_EQ(next.Diagnostics.CountOf(DiagnosticCode::UnreadableFile), 0u);
    EXPECT_EQ(next.Components.Item("M")->LoadState, lsFullyLoaded);
  }

  Contents mBefore, mWanted;
  std::string mUntouched, mWritten;
  bool mReached = true;
};

TEST_P(WriteFaults, LoseNothingAndAreTold) {
  for (const int error : {ENOSPC, EIO, ESTALE, EMFILE, EACCES, kFull}) {
    mReached = true;
    int n = 0;
    while (mReached && !HasFailure()) {
      SCOPED_TRACE("error " + std::to_string(error) + " at call " + std::to_string(++n));
      Check(n, error);
    }
    EXPECT_GT(n, 8);
  }
}

// A process may be killed between any two calls. A temporary file may stay behind then.
TEST_P(WriteFaults, LeaveEachFileOldOrNewAtEveryMoment) {
  std::size_t amended = 0;
  for (int n = 1; mReached && !HasFailure(); ++n) {
    Loaded job;
    job.FailAt(0, 0);
    Contents then;
    job.Files.ActAt(n, [&] { then = job.Now(); });
    job.Attempt(GetParam());
    mReached = job.Reached(n);
    if (!mReached) break;
    std::erase_if(then, [&](const auto& file) {
      return !mBefore.contains(file.first) && !mWanted.contains(file.first);
    });
    SCOPED_TRACE("before call " + std::to_string(n));
    ExpectOldOrNew(mBefore, mWanted, then);
    if (then != mBefore) ++amended;
  }
  EXPECT_GT(amended, 0u);
}

INSTANTIATE_TEST_SUITE_P(Of, WriteFaults, testing::ValuesIn(kWrites),
                         [](const auto& each) { return std::string(each.param.Name); });

// A result larger than what is kept back fails, or is stopped, in the midst of being written.
TEST(ResultFaults, ALargeResultFailsInTheMidst) {
  for (const char* command : {"dump", "names", "html", "lines"}) {
    SCOPED_TRACE(command);
    Disk disk;
    std::string module = "Attribute VB_Name = \"M\"\r\n";
    for (int i = 0; i < 4000; ++i)
      module += "Public aNameOfSomeLength" + std::to_string(i) + "\r\n";
    disk.Files.Add("/g/M.bas", module);
    std::vector<std::string> arguments{command, "/g/M.bas", "-o", "/q/out"};
    if (arguments.front() == "dump") arguments.emplace_back("--lines");
    disk.Files.ForgetCalls();
    ASSERT_EQ(cli::Tool(arguments).Code, cli::exDone);
    const std::vector<std::string> calls = disk.Files.Calls();
    const auto isWrite = [](const std::string& call) { return call.starts_with("Write "); };
    const auto first = std::find_if(calls.begin(), calls.end(), isWrite) - calls.begin();
    for (const std::ptrdiff_t step :
         {first, first + 100, static_cast<std::ptrdiff_t>(calls.size()) - 5}) {
      const int n = static_cast<int>(step) + 1;
      disk.Files.Add("/q/out", "old");
      disk.FailAt(n, kFull);
      cli::ToolRun run = cli::Tool(arguments);
      EXPECT_EQ(run.Code, cli::exFailed);
      EXPECT_NE(run.Err.find("Disk full"), std::string::npos) << run.Err;
      EXPECT_EQ(disk.Files["/q/out"], "old");
      disk.FailAt(0, 0);
      disk.Files.ActAt(n, [] { cli::NoteSignal(SIGINT); });
      run = cli::Tool(arguments);
      EXPECT_EQ(run.Code, cli::SignalBase + SIGINT) << run.Err;
      EXPECT_EQ(disk.Files["/q/out"], "old");
      cli::NoteSignal(0);
    }
  }
}

struct ToolCase {
  const char* Name;
  std::vector<std::string> Arguments;
  int Code = cli::exDone;
};

const ToolCase kTools[] = {
    {"WriteGroup", {"write", "/g/G.vbg", "--to", "/q/copy", "-o", "/q/out"}},
    {"WriteGroupInPlace", {"write", "/g/G.vbg", "--in-place", "--yes"}},
    {"WriteOver", {"write", "/g/A.vbp", "--to", "/q", "--yes"}},
    {"WriteModule", {"write", "/g/F.frm", "--in-place", "--yes", "--line-numbers", "1:1"}},
    {"Dump", {"dump", "/g/G.vbg", "--lines", "-o", "/q/out"}},
    {"Html", {"html", "/g/A.vbp", "--page", "-o", "/q/out"}},
    {"Diff", {"diff", "/g/A.vbp", "/g/lib/B.vbp", "-o", "/q/out"}, cli::exNo},
    {"Comments", {"comments", "/g/A.vbp", "-o", "/q/out"}},
};

std::ostream& operator<<(std::ostream& out, const ToolCase& each) { return out << each.Name; }

class ToolFaults : public testing::TestWithParam<ToolCase> {
 protected:
  int Run() {
    const cli::ToolRun run = cli::Tool(GetParam().Arguments);
    mErr = run.Err;
    return run.Code;
  }
  // What fails on reading costs a result its part, which is told; here the output fails.
  static bool IsOfOutput(const std::string& call) {
    const std::string kind = call.substr(0, call.find(' '));
    for (const char* each : {"Create", "Write", "Sync", "SetMode", "Rename", "MakeFolder"})
      if (kind == each) return true;
    return call.find(" /q/") != std::string::npos;
  }
  std::string mErr;
};

TEST_P(ToolFaults, LeaveTheOldResultOrTheNewOne) {
  Contents before, wanted;
  std::vector<std::string> calls;
  std::string usual;
  {
    Disk disk;
    before = disk.Now();
    ASSERT_EQ(Run(), GetParam().Code) << mErr;
    usual = mErr;
    wanted = disk.Now();
    calls = disk.Files.Calls();
  }
  EXPECT_NE(before, wanted);
  for (std::size_t n = 1; n <= calls.size(); ++n) {
    if (!IsOfOutput(calls[n - 1])) continue;
    for (const int error : {EIO, EACCES, kFull}) {  // the library has been through all of them
      SCOPED_TRACE("error " + std::to_string(error) + " at " + calls[n - 1]);
      Disk disk;
      disk.FailAt(static_cast<int>(n), error);
      const int code = Run();
      disk.FailAt(0, 0);
      Contents now = disk.Now();
      // With the next project written after one failed, the result lists what was.
      if (code == cli::exFailed && now["/q/out"].starts_with("/q/copy/"))
        now["/q/out"] = wanted["/q/out"];
      ExpectOldOrNew(before, wanted, now);
      if (code == GetParam().Code && mErr == usual) ExpectNew(wanted, disk.Now());
      if (code == cli::exFailed) {
        EXPECT_NE(mErr, usual);
      }
      if (error == EIO) {
        EXPECT_EQ(Run(), GetParam().Code) << "the same again\n" << mErr;
        ExpectNew(wanted, disk.Now());
      }
      if (HasFailure()) return;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Of, ToolFaults, testing::ValuesIn(kTools),
                         [](const auto& each) { return std::string(each.param.Name); });

// A file beside a target is that of somebody who writes, unless it can be locked.
TEST(LeftFiles, AreToldByTheirLock) {
  const test::DiskFolder folder;
  AtomicFile open(folder.Path("target"));
  folder.Write(".vendrel-1-1.tmp", "left by a process that was killed");
  std::filesystem::create_symlink(folder.Write("mine", "kept"), folder.Path(".vendrel-1-2.tmp"));
  RemoveLeftFiles(*FileSource::Machine(), folder.Path());
  open.Write("whole");
  open.Commit();
  RemoveLeftFiles(*FileSource::Machine(), folder.Path());
  std::set<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder.Path()))
    names.insert(entry.path().filename());
  EXPECT_EQ(names, (std::set<std::string>{".vendrel-1-2.tmp", "mine", "target"}));
}

// Whoever removes it before it is locked could not know.
TEST(LeftFiles, OneThatIsRemovedTooEarlyIsMadeAgain) {
  test::MemoryFiles files{{"/p/a", "old"}};
  const auto write = [] {
    AtomicFile file("/p/a");
    file.Write("new");
    file.Commit();
  };
  write();
  int lock = 1;
  for (const std::string& call : files.Calls()) {
    if (call.starts_with("Lock ")) break;
    ++lock;
  }
  files.Add("/p/a", "old");
  files.ActAt(lock, [&] {
    for (const std::string& path : files.Paths())
      if (path != "/p/a") files.Remove(path);
  });
  write();
  EXPECT_EQ(files["/p/a"], "new");
  EXPECT_EQ(files.Paths().size(), 1u);
}

TEST(CompileFaults, AreTold) {
  for (const int error : test::kFileErrors) {
    bool reached = true;
    for (int n = 1; reached; ++n) {
      Disk disk;
      test::NotedRuns compiler;
      compiler.OnRun = [&] { disk.Files.Add("/log/build.log", "Build of 'A.exe' succeeded.\r\n"); };
      VBProject project;
      EXPECT_TRUE(project.Load("/g/A.vbp"));
      project.OutputFileName.SetFullPath(project.FileName.FullPath());
      project.LogFolder = "/log";
      project.SetCompiler("vb6.exe");
      disk.FailAt(n, error);
      try {
        EXPECT_TRUE(project.Make()) << project.LastError;
      } catch (const VendrelError& failure) {
        EXPECT_NE(failure.Text().find("/log"), std::string::npos) << failure.Text();
      }
      reached = disk.Reached(n);
      disk.FailAt(0, 0);
      EXPECT_TRUE(project.Make()) << "behind error " << error << " of call " << n;
    }
  }
}

}  // namespace
}  // namespace vendrel
