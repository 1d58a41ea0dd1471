#pragma once
// A file is written beside its target and renamed over it at the end, so that at every moment the
// target is either the old file or the new one, whole. The file beside it is locked for as long as
// its writer lives: one that can be locked was left by a process that was killed.

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

  /// Whether files of that name, without a folder, are written beside targets.
  static bool IsTemporaryName(std::string_view leafName);

 private:
  void CheckTarget();
  bool TakeLock();
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

class FileSource;

/// Removes the temporary files in a folder whose writers are gone: those of the name form that can
/// be locked, and nothing else. Never raises; what cannot be told or removed stays.
void RemoveLeftFiles(FileSource& source, const std::string& nativeFolder);

}  // namespace vendrel
