#include "services/TemporaryFolder.h"

#include <stdlib.h>

#include <cerrno>
#include <filesystem>

#include "services/FileSource.h"

namespace vendrel {

TemporaryFolder::TemporaryFolder(std::string_view purpose) try {
  std::error_code failure;
  std::filesystem::path path = std::filesystem::temp_directory_path(failure);
  if (failure) path = "/tmp";
  path /= "vendrelmodel-" + std::string(purpose) + "-XXXXXX";
  mPath = path.string();
  if (!mkdtemp(mPath.data())) throw FileError(errno, mPath);
} catch (VendrelError& failure) {
  failure.AddContext("TemporaryFolder.TemporaryFolder", "TemporaryFolder")
      .Parameter("purpose", purpose);
  throw;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(mPath, ignored);
}

}  // namespace vendrel
