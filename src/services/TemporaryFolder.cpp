#include "services/TemporaryFolder.h"

#include <stdlib.h>

#include <cerrno>
#include <filesystem>

#include "diagnostics/Context.h"
#include "services/FileSource.h"

namespace vendrel {

TemporaryFolder::TemporaryFolder(std::string_view purpose) try {
  std::error_code failure;
  std::filesystem::path path = std::filesystem::temp_directory_path(failure);
  if (failure) path = "/tmp";
  path /= "vendrelmodel-" + std::string(purpose) + "-XXXXXX";
  mPath = path.string();
  if (!mkdtemp(mPath.data())) throw FileError(errno, mPath);
}
VENDREL_CONTEXT(purpose)

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(mPath, ignored);
}

}  // namespace vendrel
