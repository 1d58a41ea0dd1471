#pragma once
// Every system call on files passes here, so that a test can answer it from memory or let the n-th
// one fail. Calls answer like the system's: a failure is a negative errno.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/VendrelError.h"

namespace vendrel {

/// What the system tells of a path.
struct FileStatus {
  enum class Kind : std::uint8_t { File, Folder, Other };
  Kind Type = Kind::File;
  std::uint64_t Size = 0;
  /// Permission bits.
  std::uint32_t Mode = 0;
  /// Device and number: two paths with both equal are one file.
  std::uint64_t Device = 0;
  std::uint64_t Number = 0;

  bool IsSameFile(const FileStatus& other) const {
    return Device == other.Device && Number == other.Number;
  }
  /// Whether its owner may not write.
  bool IsReadOnly() const { return (Mode & 0200) == 0; }
};

/// One name in a folder.
struct FolderEntry {
  std::string Name;
  /// Whether it is a folder; false with `Unsure` where that takes a `Stat` (symbolic links).
  bool IsFolder = false;
  bool Unsure = false;
};

/// The files of a machine. Paths are native and absolute. All results: 0 or more on success, minus
/// errno on failure. A host's own source may raise to end the work: what is being written is then
/// abandoned. `Close`, `Unlink` and `SetMode` never raise.
class FileSource {
 public:
  virtual ~FileSource() = default;

  /// Opens for reading, never waiting for the other end of a pipe. Gives a handle.
  virtual int OpenForReading(const std::string& path) = 0;
  /// Creates a file that must not exist yet and opens it for writing.
  virtual int CreateNew(const std::string& path, std::uint32_t mode) = 0;
  /// Reads at most `size` bytes; 0 at the end.
  virtual std::int64_t Read(int handle, char* buffer, std::size_t size) = 0;
  /// Writes at most `size` bytes and gives how many.
  virtual std::int64_t Write(int handle, const char* bytes, std::size_t size) = 0;
  virtual int StatusOfOpen(int handle, FileStatus& status) = 0;
  virtual int SetMode(int handle, std::uint32_t mode) = 0;
  /// Waits until what was written is on the disk.
  virtual int Sync(int handle) = 0;
  /// Takes the lock of an open file for as long as it stays open; waits for whoever has it, or with
  /// `wait` false gives -EWOULDBLOCK.
  virtual int Lock(int handle, bool wait) = 0;
  virtual int Close(int handle) = 0;
  /// Status of what a path names, symbolic links followed.
  virtual int Status(const std::string& path, FileStatus& status) = 0;
  /// Puts `from` in the place of `to`, which may exist.
  virtual int Rename(const std::string& from, const std::string& to) = 0;
  virtual int Unlink(const std::string& path) = 0;
  virtual int MakeFolder(const std::string& path) = 0;
  /// All names but "." and "..", in no order.
  virtual int List(const std::string& path, std::vector<FolderEntry>& entries) = 0;
  /// 0 if this process may write the file.
  virtual int MayWrite(const std::string& path) = 0;
  /// The file behind a chain of symbolic links; 0 and the path itself if it is none.
  virtual int RealPath(const std::string& path, std::string& real) = 0;
  virtual std::string CurrentFolder() = 0;
  /// Whether several threads may call it at once. One that may not is called by the caller's own.
  virtual bool MayBeShared() const { return false; }

  /// The source in force; never null. At first the machine's own.
  static FileSource& Current();
  /// The same, to be put in force elsewhere.
  static std::shared_ptr<FileSource> Installed();
  /// Puts a source in force and gives the one that was; an empty pointer restores the machine's
  /// own. Cached folders are forgotten.
  static std::shared_ptr<FileSource> Install(std::shared_ptr<FileSource> source);
  /// The machine's own files.
  static std::shared_ptr<FileSource> Machine();
};

/// Files of this size or more are refused: offsets into a text take 32 bits.
constexpr std::uint64_t FileSizeLimit = (std::uint64_t{4} << 30) - (64 << 10);

/// The failure that a system error means for a path: 53 missing, 70 permission, 61 disk full, 75
/// any other, with the path as its detail.
VendrelError FileError(int systemError, std::string_view path);

/// All bytes of a file. Raises 53, 70, or 75 (folders, devices and pipes, files beyond the limit,
/// failures of the disk).
std::string ReadWholeFile(const std::string& nativePath);

/// Handle of a regular file open for reading, with its status; raises as `ReadWholeFile` does.
int OpenRegularFile(const std::string& nativePath, FileStatus& status);

}  // namespace vendrel
