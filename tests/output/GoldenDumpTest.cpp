// The sample project as a dump, held against the one in the checkout. After a change that is meant:
//   VENDREL_UPDATE_GOLDEN=1 ./test
// writes it anew; read the difference before it is committed.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

#include "output/Dump.h"
#include "project/VBProject.h"
#include "services/FileSource.h"
#include "services/Paths.h"
#include "support/Projects.h"
#include "support/SourceRoot.h"

namespace vendrel {
namespace {

std::string DumpOfSample(const ReadingRules& reading) {
  VBProject project;
  project.Reading = reading;
  if (!project.Load(WindowsPath(test::SourceRoot() + "/samples/Ledger/Ledger.vbp"))) return {};
  project.OutputFileName.SetFolderPath(project.FileName.FolderPath());
  project.Components.Populate();
  DumpOptions options;
  options.Empty = false;
  options.NativeRoot = test::SourceRoot();
  options.Root = WindowsPath(test::SourceRoot());
  std::ostringstream out;
  Dump(out, Describe(project), options);
  return out.str();
}

void CompareWithGolden(const std::string& name, const ReadingRules& reading) {
  const std::string path = test::SourceRoot() + "/tests/golden/" + name;
  const std::string actual = DumpOfSample(reading);
  ASSERT_FALSE(actual.empty());
  EXPECT_EQ(actual.find(test::SourceRoot()), std::string::npos);
  const char* update = std::getenv("VENDREL_UPDATE_GOLDEN");
  if (update && *update) std::ofstream(path, std::ios::binary) << actual;
  EXPECT_EQ(test::FirstDifference(ReadWholeFile(path), actual), "") << path;
}

TEST(GoldenDump, OfTheSampleInTheCompleteReading) {
  CompareWithGolden("Ledger.complete.json", ReadingRules::Complete());
}

TEST(GoldenDump, OfTheSampleInTheClassicReading) {
  CompareWithGolden("Ledger.classic.json", ReadingRules::Classic());
}

}  // namespace
}  // namespace vendrel
