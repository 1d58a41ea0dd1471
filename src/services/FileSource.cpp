#include "services/FileSource.h"

#include <cerrno>
#include <system_error>
#include <utility>

#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "services/FolderCache.h"

namespace vendrel {
namespace {

struct InstalledSource {
  std::shared_ptr<FileSource> Source = FileSource::Machine();
};

int NumberOf(int systemError) {
  switch (systemError) {
    case ENOENT: return errFileNotFound;
    case EACCES:
    case EPERM: return errPermissionDenied;
    case ENOSPC:
    case EDQUOT: return errDiskFull;
    default: return errPathAccess;
  }
}

// Closes on every way out.
class OpenHandle {
 public:
  explicit OpenHandle(int handle) : mHandle(handle) {}
  ~OpenHandle() { FileSource::Current().Close(mHandle); }
  OpenHandle(const OpenHandle&) = delete;
  OpenHandle& operator=(const OpenHandle&) = delete;

 private:
  int mHandle;
};

VendrelError TooLarge(std::string_view path) {
  return VendrelError(errPathAccess, std::string(path) + " (larger than 4 GiB)");
}

}  // namespace

FileSource& FileSource::Current() { return *InUse<InstalledSource>().Source; }

std::shared_ptr<FileSource> FileSource::Installed() { return InUse<InstalledSource>().Source; }

std::shared_ptr<FileSource> FileSource::Install(std::shared_ptr<FileSource> source) {
  ForgetFolders();
  return std::exchange(InUse<InstalledSource>().Source, source ? std::move(source) : Machine());
}

VendrelError FileError(int systemError, std::string_view path) {
  const int number = NumberOf(systemError);
  std::string detail(path);
  if (number == errPathAccess) detail += " (" + std::generic_category().message(systemError) + ")";
  return VendrelError(number, detail);
}

int OpenRegularFile(const std::string& nativePath, FileStatus& status) try {
  FileSource& source = FileSource::Current();
  const int handle = source.OpenForReading(nativePath);
  if (handle < 0) throw FileError(-handle, nativePath);
  const int failure = source.StatusOfOpen(handle, status);
  if (failure >= 0 && status.Type == FileStatus::Kind::File) return handle;
  source.Close(handle);
  if (failure < 0) throw FileError(-failure, nativePath);
  throw VendrelError(errPathAccess, nativePath + (status.Type == FileStatus::Kind::Folder
                                                      ? " (a folder)"
                                                      : " (not a regular file)"));
}
VENDREL_CONTEXT(nativePath)

std::string ReadWholeFile(const std::string& nativePath) try {
  FileStatus status;
  const int handle = OpenRegularFile(nativePath, status);
  const OpenHandle closer(handle);
  if (status.Size >= FileSizeLimit) throw TooLarge(nativePath);
  std::string bytes;
  // One byte more than the file has: a read that does not fill it has met the end. Files of the
  // kernel tell size 0 and hold more.
  bytes.resize(static_cast<std::size_t>(status.Size) + (status.Size ? 1 : 4096));
  std::size_t got = 0;
  while (true) {
    const std::int64_t count =
        FileSource::Current().Read(handle, bytes.data() + got, bytes.size() - got);
    if (count < 0) throw FileError(static_cast<int>(-count), nativePath);
    got += static_cast<std::size_t>(count);
    const bool wholeSize = status.Size > 0 && got >= status.Size && got < bytes.size();
    if (count == 0 || wholeSize) break;
    if (got >= FileSizeLimit) throw TooLarge(nativePath);
    if (got == bytes.size()) bytes.resize(bytes.size() * 2);
  }
  bytes.resize(got);
  return bytes;
}
VENDREL_CONTEXT(nativePath)

}  // namespace vendrel
