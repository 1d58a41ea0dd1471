#include "cli/WatchedFiles.h"

#include <gtest/gtest.h>

#include <cerrno>

#include "support/MemoryFiles.h"

namespace vendrel::cli {
namespace {

TEST(WatchedFiles, NothingIsPutInThePlaceOfAFileThatWasOpenedHoweverItWasRead) {
  const test::MemoryFiles files{
      {"/p/whole.bas", "1"}, {"/p/unread.bas", "2"}, {"/p/open.bas", "3"},
      {"/p/aside.bas", "4"}, {"/p/other.bas", "5"},  {"/p/new", "6"},
  };
  const WatchedFiles watched;
  FileSource& source = FileSource::Current();
  ReadWholeFile("/p/whole.bas");
  source.Close(source.OpenForReading("/p/unread.bas"));
  {
    const WatchedFiles::Aside aside;
    ReadWholeFile("/p/aside.bas");
  }
  const WatchedFiles::Protection protection;
  const int open = source.OpenForReading("/p/open.bas");
  for (const char* read : {"/p/open.bas", "/p/unread.bas", "/p/whole.bas"}) {
    EXPECT_EQ(source.Rename("/p/new", read), -EPERM) << read;
    const std::string* known = watched.SourceAt(read);
    ASSERT_TRUE(known) << read;
    EXPECT_EQ(*known, read);
  }
  source.Close(open);
  // Its number may be that of the next handle.
  EXPECT_FALSE(watched.SourceAt("/p/other.bas"));
  EXPECT_EQ(source.Rename("/p/new", "/p/aside.bas"), 0);
  EXPECT_EQ(watched.Written(), std::vector<std::string>{"/p/aside.bas"});
}

}  // namespace
}  // namespace vendrel::cli
