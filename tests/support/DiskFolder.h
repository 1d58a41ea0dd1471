#pragma once
// Files of this machine, where a test needs real ones.

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "services/TemporaryFolder.h"

namespace vendrel::test {

/// A folder that goes with the test.
class DiskFolder {
 public:
  std::string Path(const std::string& name = {}) const { return mFolder.Path() + "/" + name; }

  /// Makes or replaces a file, with the folders above it; gives its path.
  std::string Write(const std::string& name, std::string_view bytes) const {
    std::filesystem::create_directories(std::filesystem::path(Path(name)).parent_path());
    std::ofstream(Path(name), std::ios::binary) << bytes;
    return Path(name);
  }
  std::string Write(const std::string& name, const std::vector<std::uint8_t>& bytes) const {
    return Write(name, {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
  }

 private:
  TemporaryFolder mFolder{"test"};
};

}  // namespace vendrel::test
