#include <pthread.h>

#include <system_error>
#include <thread>

#include "support/DiskFolder.h"
#include "support/ToolRun.h"

namespace vendrel::cli {
namespace {

// Projects of a folder, some of which lack modules, are of no use, or share a module.
class SideBySide : public testing::Test {
 protected:
  SideBySide() {
    for (int i = 0; i < 24; ++i) {
      const std::string name = "P" + std::to_string(i);
      std::string project = "Type=Exe\r\nModule=Shared; Shared.bas\r\nName=\"" + name + "\"\r\n";
      project += "Module=Own; " + name + ".bas\r\n";
      std::string module = "Attribute VB_Name = \"Own\"\r\n";
      for (int k = 0; k < 40 * (i % 5); ++k)
        module += "Public Sub S" + std::to_string(k) + "()\r\n  Shared\r\nEnd Sub\r\n";
      if (i % 7 == 3) project = "no project\r\n";
      mFolder.Write(name + ".vbp", project);
      if (i % 6 != 5) mFolder.Write(name + ".bas", module);
    }
    mFolder.Write("Shared.bas", "Attribute VB_Name = \"Shared\"\r\nPublic Sub T()\r\nEnd Sub\r\n");
  }
  ToolRun With(const std::string& command, const std::string& jobs) {
    return Tool({command, mFolder.Path(), "--jobs", jobs});
  }

  test::DiskFolder mFolder;
};

// While it lives, the system has no memory for the stack of a thread.
class NoThreads {
 public:
  NoThreads() {
    pthread_getattr_default_np(&mBefore);
    pthread_attr_t huge;
    pthread_attr_init(&huge);
    pthread_attr_setstacksize(&huge, std::size_t{1} << 50);
    pthread_setattr_default_np(&huge);
    pthread_attr_destroy(&huge);
  }
  ~NoThreads() {
    pthread_setattr_default_np(&mBefore);
    pthread_attr_destroy(&mBefore);
  }

 private:
  pthread_attr_t mBefore;
};

TEST_F(SideBySide, ResultsAndWhatIsToldDoNotDependOnTheNumberOfJobs) {
  for (const char* command : {"names", "inventory", "comments", "tree", "check"}) {
    const ToolRun alone = With(command, "1");
    EXPECT_NE(alone.Out + alone.Err, "") << command;
    for (const char* jobs : {"2", "5"}) {
      const ToolRun together = With(command, jobs);
      EXPECT_EQ(together.Code, alone.Code) << command;
      EXPECT_EQ(together.Out, alone.Out) << command;
      EXPECT_EQ(together.Err, alone.Err) << command;
    }
  }
}

TEST_F(SideBySide, ASystemThatRefusesThreadsIsServedByOne) {
  const std::string alone = With("names", "1").Out;
  const std::string one = mFolder.Path("P4.vbp");
  const std::string tree = Tool({"tree", one, "--jobs", "1"}).Out;
  const NoThreads refused;
  EXPECT_THROW(std::thread([] {}).join(), std::system_error);
  EXPECT_EQ(With("names", "3").Out, alone);
  EXPECT_EQ(Tool({"tree", one, "--jobs", "3"}).Out, tree);
}

}  // namespace
}  // namespace vendrel::cli
