#pragma once
#include <string>
#include <string_view>

namespace vendrel {

/// A new, empty folder of this machine; it and all in it are gone with the object.
class TemporaryFolder {
 public:
  /// `purpose` becomes part of its name. Raises 70 or 75 if it cannot be made.
  explicit TemporaryFolder(std::string_view purpose);
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  /// Native path, without a closing slash.
  const std::string& Path() const { return mPath; }

 private:
  std::string mPath;
};

}  // namespace vendrel
