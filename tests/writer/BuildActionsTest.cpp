// Compiling, opening and transforming a project, with a process runner that only takes notes.

#include <gtest/gtest.h>

#include "core/ObjectRegistry.h"
#include "diagnostics/VendrelError.h"
#include "support/Projects.h"
#include "support/Services.h"
#include "writer/Transformation.h"

namespace vendrel {
namespace {

using Strings = std::vector<std::string>;

// As it is registered, and where.
constexpr const char* kCommand = "\"vb6.exe\" \"%1\" /make";
constexpr const char* kCommandKey = "VisualBasic.Project\\shell\\make\\command";

class BuildActions : public testing::Test {
 protected:
  BuildActions() {
    mRuns.OnRun = [this] {
      if (!mLog.empty()) mFiles.Files.Add("/log/build.log", mLog);
    };
    mFiles.Files.AddFolder("/log");
    project().LogFolder = "/log";
    SetPath("/p/P.vbp");
  }
  VBProject& project() { return *mFiles.Project; }
  void SetPath(const std::string& path) { project().OutputFileName.SetFullPath(path); }

  test::TestProject mFiles{{"M.bas", "Sub Main()\r\nEnd Sub\r\n"}};
  test::NotedRuns mRuns;
  std::string mLog = "Build of 'P.exe' succeeded.\r\n";
};

TEST_F(BuildActions, TheCommandIsBuiltByTheFormOfTheCompiler) {
  const std::string log = "Z:\\log\\build.log";
  const struct {
    const char *Compiler, *Type;
    bool Closed;
    Strings Arguments;
  } cases[] = {
      {"wine vb6", "Exe", false, {"wine", "vb6", "Z:\\p\\P.vbp", "/make", "/out", log}},
      {"vb6", "OleDll", true, {"vb6", "Z:\\p\\P.vbp", "/makedll", "/out", log}},
      {"vb6", "OleExe", true, {"vb6", "Z:\\p\\P.vbp", "/make", "/out", log}},
      {kCommand, "Exe", false, {"vb6.exe", "Z:\\p\\P.vbp  /make /out Z:\\log\\build.log"}},
      {kCommand, "Exe", true, {"vb6.exe", "Z:\\p\\P.vbp", "/make", "/out", log}},
      {"vb6.exe %1 /make", "Exe", false, {"vb6.exe", "Z:\\p\\P.vbp", "/make", "/out", log}},
      {"vb6.exe %1 /make", "Exe", true, {"vb6.exe", "Z:\\p\\P.vbp", "/make", "/out", log}},
  };
  for (const auto& c : cases) {
    project().SetCompiler(c.Compiler);
    project().TypeName = c.Type;
    project().Reading.ClosedQuotes = c.Closed;
    EXPECT_TRUE(project().Make()) << c.Compiler;
    EXPECT_EQ(mRuns.Arguments.back(), c.Arguments) << c.Compiler;
  }
  project().SetCompiler("vb6.exe %1");
  EXPECT_THROW(project().Make(), VendrelError);
}

TEST_F(BuildActions, ANameOfAProjectIsOneArgumentWhateverItHolds) {
  for (const char* compiler : {"vb6", "vb6 \"%1\" /make", "vb6 %1 /make"})
    for (const std::string leaf :
         {"a b.vbp", "a\" -evil \".vbp", "a;b.vbp", "$(touch x).vbp", "-out.vbp", "%1.vbp"}) {
      project().SetCompiler(compiler);
      project().Reading.ClosedQuotes = true;
      SetPath("/p/" + leaf);
      EXPECT_TRUE(project().Make());
      ASSERT_EQ(mRuns.Arguments.back().size(), 5u) << compiler << leaf;
      EXPECT_EQ(mRuns.Arguments.back()[1], "Z:\\p\\" + leaf);
    }
}

TEST_F(BuildActions, TheLogTellsWhetherTheBuildSucceeded) {
  project().SetCompiler("vb6");
  mRuns.ExitCode = 3;
  EXPECT_TRUE(project().Make());
  EXPECT_EQ(project().LastError, "VB returned Exit code 3");
  mLog = "Compile error\nline 2";
  EXPECT_FALSE(project().Make());
  EXPECT_EQ(project().LastError, "Compile failed\r\n\r\nCompile error\r\nline 2\r\n");
  mLog.clear();  // the log of an earlier build does not count
  EXPECT_THROW(project().Make(), VendrelError);
}

TEST_F(BuildActions, TheCompilerIsAssignedOrRegistered) {
  EXPECT_EQ(project().Compiler(), "");
  EXPECT_THROW(project().Make(), VendrelError);
  EXPECT_TRUE(mRuns.Arguments.empty());
  const test::OneSetting setting(HKEY_CLASSES_ROOT, kCommandKey, "", kCommand);
  EXPECT_EQ(project().Compiler(), kCommand);
  project().SetCompiler("mine");
  EXPECT_EQ(project().Compiler(), "mine");
}

TEST_F(BuildActions, OpeningTakesTheRegisteredProgramAndDropsTheOldLog) {
  const test::OneSetting setting(HKEY_CLASSES_ROOT, kCommandKey, "",
                                 "\"C:\\Dev\\vb6.exe\" \"%1\" /make");
  mFiles.Files.Add("/log/build.log", "old");
  mLog.clear();
  SetPath("/out/Other.vbp");
  for (const bool asynchronous : {false, true}) {
    project().OpenInVB(asynchronous);
    EXPECT_EQ(mRuns.Arguments.back(), (Strings{"C:\\Dev\\vb6.exe", "Z:\\out\\P.vbp"}));
    EXPECT_EQ(mRuns.Waited, !asynchronous);
    EXPECT_FALSE(mFiles.Files.Has("/log/build.log"));
  }
}

struct Step : TransformationStep {
  explicit Step(std::string kind) : mKind(std::move(kind)) {}
  std::string Kind() const override { return mKind; }
  std::string mKind;
};

struct Plan : TransformationPlan {
  std::size_t StepCount() const override { return Steps.size(); }
  TransformationStep& Step(std::size_t index) override { return Steps.at(index - 1); }
  std::vector<vendrel::Step> Steps{vendrel::Step("B"), vendrel::Step("a"), vendrel::Step("b"),
                                   vendrel::Step("none")};
};

struct Manager : TransformationManager {
  std::vector<TransformationKind> Kinds() override { return {{"A", "Test.A"}, {"B", "Test.B"}}; }
};

struct Rename : Transformation {
  explicit Rename(std::string caption) : mCaption(std::move(caption)) {}
  std::string Caption() const override { return mCaption; }
  void process(TransformationStep& step, VBProject& project) override {
    project.ProjectName += "+" + step.Kind();
  }
  std::string mCaption;
};

TEST_F(BuildActions, PlansRunStepByStepInTheOrderOfTheKinds) {
  Plan plan;
  ObjectRegistry::Register<TransformationManager>(TransformationManager::kProgID,
                                                  [] { return std::make_shared<Manager>(); });
  for (const char* name : {"A", "B"})
    ObjectRegistry::Register<Transformation>(std::string("Test.") + name, [name] {
      return std::make_shared<Rename>(std::string("doing ") + name);
    });
  std::string told;
  project().TransformProgress.Add([&](std::string_view text) { told.append(text).append(";"); });
  EXPECT_FALSE(project().TransformWithPlan(plan));
  EXPECT_EQ(project().ProjectName, "P+a+B+b");
  EXPECT_EQ(told, "doing A;doing B;doing B;");
  int cancelled = 0;
  project().TransformCancelled.Add([&] { ++cancelled; });
  project().FireTransformCancelled();
  EXPECT_EQ(cancelled, 1);
}

}  // namespace
}  // namespace vendrel
