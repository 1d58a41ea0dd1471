// Whatever file a project, an option or the settings name may be a pipe that nobody writes to, or a
// device that never ends: it is told, and never waited for. What may hang is guarded by a signal.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

#include "core/ObjectRegistry.h"
#include "diagnostics/ErrorReport.h"
#include "services/ByteSource.h"
#include "support/DiskFolder.h"
#include "support/ToolRun.h"

namespace vendrel {
namespace {

using testing::HasSubstr;

constexpr unsigned kPatience = 120;  // seconds, of a whole table on a busy machine

struct Role {
  const char* Name;
  const char* File;  // the odd one
  std::vector<std::string> Arguments;
  int Code;
  const char* Told;
  bool PipeAlone = false;  // a link to a device does not count there
};

constexpr const char* kRefused = "not a regular file";

// "%" stands for the folder, "*" for the odd file.
const std::vector<std::string> kCopy = {"write", "%/P.vbp", "--to", "%/copy"};
const std::vector<std::string> kInPlace = {"write", "%/P.vbp", "--in-place", "--yes"};
const Role kRoles[] = {
    {"project", "Q.vbp", {"tree", "*"}, cli::exFailed, kRefused},
    {"group", "Q.vbg", {"tree", "*"}, cli::exFailed, kRefused},
    {"module alone", "Q.bas", {"tree", "*"}, cli::exFailed, kRefused},
    {"library", "Q.tlb", {"typelib", "*"}, cli::exFailed, kRefused},
    {"member of a group", "lib/L.vbp", {"tree", "%/G.vbg"}, cli::exFailed, kRefused},
    {"module of a project", "M.bas", {"tree", "%/P.vbp"}, cli::exDone, "[unreadable-file]"},
    {"module checked", "M.bas", {"check", "%/P.vbp"}, cli::exNo, ""},
    {"companion", "F.frx", {"tree", "%/P.vbp"}, cli::exDone, "[companion-file]"},
    {"referenced library", "x.tlb", {"dump", "%/P.vbp"}, cli::exDone, ""},
    {"comment file", "c.xml", {"tree", "%/P.vbp", "--comment-file", "*"}, cli::exFailed, kRefused},
    {"tag table", "t.json", {"tree", "%/P.vbp", "--tags", "*"}, cli::exFailed, kRefused},
    {"settings", "s.reg", {"build", "%/P.vbp"}, cli::exUsage, "no compiler is registered"},
    {"result", "out", {"dump", "%/P.vbp", "-o", "*"}, cli::exFailed, "nobody reads", true},
    {"written module", "copy/M.bas", kCopy, cli::exFailed, kRefused},
    {"written project", "copy/P.vbp", kCopy, cli::exFailed, kRefused},
    {"file beside a module", "M.txt", kCopy, cli::exFailed, "M.txt is not copied", true},
    {"related document", "notes.doc", kCopy, cli::exFailed, "notes.doc is not copied"},
    {"backup", "SourceBackup/M.bas", kInPlace, cli::exFailed, kRefused},
};

class Devices : public testing::Test, public test::DiskFolder {
 protected:
  Devices() { alarm(kPatience); }
  ~Devices() override {
    alarm(0);
    unsetenv("VENDRELMODEL_REGISTRY");
  }

  void Fill() {
    Write("G.vbg", "VBGROUP 5.0\r\nProject=P.vbp\r\nProject=lib\\L.vbp\r\n");
    Write("P.vbp",
          "Type=Exe\r\nReference=*\\G{00000000-0000-0000-0000-000000000001}#1.0#0#x.tlb#X\r\n"
          "Form=F.frm\r\nModule=M; M.bas\r\nRelatedDoc=notes.doc\r\nName=\"P\"\r\n");
    Write("F.frm", "VERSION 5.00\r\nBegin VB.Form F\r\n  Caption = $\"F.frx\":0003\r\nEnd\r\n");
    Write("M.bas", "Attribute VB_Name = \"M\"\r\nSub Main()\r\n  Dim a As X.Y\r\nEnd Sub\r\n");
    Write("lib/L.vbp", "Type=OleDll\r\nName=\"L\"\r\n");
    Write("copy/old.txt", "");
    Write("SourceBackup/old.txt", "");
  }
  std::string Placed(const std::string& text, const char* file) const {
    if (text == "*") return Path(file);
    return text.starts_with('%') ? Path(text.substr(2)) : text;
  }
  void Try(const Role& role) {
    setenv("VENDRELMODEL_REGISTRY", Placed("%/s.reg", "").c_str(), 1);
    std::vector<std::string> arguments;
    for (const std::string& each : role.Arguments) arguments.push_back(Placed(each, role.File));
    EXPECT_THAT(cli::ToolEnding(role.Code, arguments).Err, HasSubstr(role.Told));
  }
};

TEST_F(Devices, AndPipesAreToldInEveryRole) {
  for (const Role& role : kRoles) {
    for (const char* target : {"", "/dev/zero"}) {
      if (*target && role.PipeAlone) continue;
      SCOPED_TRACE(std::string(role.Name) + " is " + (*target ? target : "a pipe"));
      Fill();
      const std::string odd = Path(role.File);
      std::filesystem::remove(odd);
      ASSERT_EQ(*target ? symlink(target, odd.c_str()) : mkfifo(odd.c_str(), 0600), 0);
      Try(role);
      std::filesystem::remove_all(Path("copy"));
      std::filesystem::remove(odd);
    }
  }
}

TEST_F(Devices, AReportThatNobodyTakesIsToldOnce) {
  const std::string pipe = Path("report");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  for (const char* path : {pipe.c_str(), "/dev/full", "/none/report"}) {
    WriteErrorReports(path);
    testing::internal::CaptureStderr();
    for (int i = 0; i < 2; ++i) EXPECT_EQ(ReportError(VendrelError(5)), StepOver::Raise);
    const std::string told = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::count(told.begin(), told.end(), '\n'), 1) << told;
    EXPECT_THAT(told, HasSubstr(path));
  }
  ObjectRegistry::Register<ErrorObject>(kErrorObject, [] { return nullptr; });
}

// The size is asked for once; what lies behind a new end is not there.
TEST_F(Devices, AFileThatShrinksWhileItIsReadInPiecesEndsEarly) {
  const std::string path = Write("a.dll", "MZ0123456789");
  const auto bytes = OpenBytes(path);
  ASSERT_EQ(truncate(path.c_str(), 5), 0);
  EXPECT_EQ(bytes->Size(), 12u);
  EXPECT_EQ(bytes->Read(2, 100).size(), 3u);
  EXPECT_TRUE(bytes->Read(8, 4).empty());
}

}  // namespace
}  // namespace vendrel
