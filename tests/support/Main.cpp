#include <gtest/gtest.h>

#include "core/MessageService.h"
#include "core/Workspace.h"
#include "project/VBProject.h"
#include "services/Startup.h"

namespace {

// Process-wide state is reset around each case, so that the order of cases cannot matter.
class FreshState final : public testing::EmptyTestEventListener {
  void OnTestStart(const testing::TestInfo&) override {
    // Else the first project of a case would reset what the case has set.
    vendrel::EnsureStarted();
    vendrel::VBProject::ConnectReaders();
    vendrel::State().Reset();
    vendrel::MessageService::Install(nullptr);
  }
};

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  // What the tool shows on a terminal must not depend on where the tests run.
  unsetenv("NO_COLOR");
  setenv("TERM", "xterm", 1);
  testing::UnitTest::GetInstance()->listeners().Append(new FreshState);
  return RUN_ALL_TESTS();
}
