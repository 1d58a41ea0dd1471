#pragma once
// A file is written beside its target and renamed over it at the end, so that at every moment the
// target is either the old file or the new one, whole.

#include <cstdint>
#include <string>
#include <string_view>

namespace vendrel {

/// One file being written. Unless `Commit` succeeds the target stays as it was, and nothing is left
/// beside it.
class AtomicFile {
 public:
  /// Makes the temporary file in the folder of `nativePath`. A target that is a symbolic link stays
  /// one: the file behind it is replaced. The permission bits of an existing target are kept.
  /// Raises 75 if the target is read-only, a folder, a device or a pipe, else as `FileError`.
  explicit AtomicFile(const std::string& nativePath);
  ~AtomicFile() { Abandon(); }
  AtomicFile(const AtomicFile&) = delete;
  AtomicFile& operator=(const AtomicFile&) = delete;

  /// Appends bytes; raises when the system refuses, and then `Commit` will not succeed either.
  void Write(std::string_view bytes);
  /// Flushes to the disk and puts the file in place.
  void Commit();
  /// Makes `Commit` fail: something that belongs into the file could not be written.
  void Spoil() { mFailed = true; }
  /// Removes the temporary file.
  void Abandon();

 private:
  void CheckTarget();
  void FlushBuffer();
  int CloseHandle();
  [[noreturn]] void Fail(int systemError);

  std::string mTarget;
  std::string mTemporary;
  std::string mBuffer;
  int mHandle = -1;
  std::int64_t mKeptMode = -1;
  bool mFailed = false;
};

}  // namespace vendrel
