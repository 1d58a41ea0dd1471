#include "services/SourcesAhead.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>

#include "core/Workspace.h"
#include "diagnostics/VendrelError.h"
#include "services/SourceCache.h"
#include "support/DiskFolder.h"

namespace vendrel {
namespace {

// What was read ahead is there when the file is gone; what could not be read is still to be told.
TEST(SourcesAhead, AreReadOnceByAnyNumberOfThreadsAndOnlyWhereTheyAreKept) {
  for (const int jobs : {1, 2, 5}) {
    for (const bool keeps : {true, false}) {
      SCOPED_TRACE(std::to_string(jobs) + (keeps ? " kept" : ""));
      Workspace workspace;
      workspace.Jobs = jobs;
      const Workspace::Use use(workspace);
      test::DiskFolder folder;
      std::vector<std::string> paths;
      for (int i = 0; i < 50; ++i) {
        const std::string name = "m" + std::to_string(i) + ".bas";
        folder.Write(name, std::string(static_cast<std::size_t>(i) * 100, 'x') + name);
        paths.push_back(folder.Path(name));
      }
      const std::string missing = folder.Path("none.bas");
      paths.insert(paths.begin() + 7, missing);
      std::optional<SourceCache::Scope> scope;
      if (keeps) scope.emplace();
      ReadSourcesAhead(paths);
      EXPECT_THROW(SourceCache::Bytes(missing), VendrelError);
      const bool isAhead = keeps && jobs > 1;
      for (const std::string& path : paths) {
        if (path == missing) continue;
        std::filesystem::remove(path);
        if (isAhead)
          EXPECT_TRUE(SourceCache::Bytes(path).ends_with(path.substr(path.rfind('/') + 1)));
        else
          EXPECT_THROW(SourceCache::Bytes(path), VendrelError);
      }
    }
  }
}

}  // namespace
}  // namespace vendrel
