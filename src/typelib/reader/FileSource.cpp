#include "typelib/reader/FileSource.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "diagnostics/VendrelError.h"

namespace vendrel::typelib {
namespace {

class DiskSource final : public ByteSource {
 public:
  DiskSource(int handle, std::uint64_t size, std::string path)
      : mHandle(handle), mSize(size), mPath(std::move(path)) {}
  ~DiskSource() override { close(mHandle); }
  std::uint64_t Size() const override { return mSize; }

  std::vector<std::uint8_t> Read(std::uint64_t offset, std::size_t length) override {
    if (offset >= mSize) return {};
    std::vector<std::uint8_t> bytes(
        static_cast<std::size_t>(std::min<std::uint64_t>(length, mSize - offset)));
    std::size_t done = 0;
    while (done < bytes.size()) {
      const ssize_t got = pread(mHandle, bytes.data() + done, bytes.size() - done,
                                static_cast<off_t>(offset + done));
      if (got < 0 && errno == EINTR) continue;
      if (got < 0) throw VendrelError(errPathAccess, mPath);
      if (got == 0) break;
      done += static_cast<std::size_t>(got);
    }
    bytes.resize(done);
    return bytes;
  }

 private:
  int mHandle;
  std::uint64_t mSize;
  std::string mPath;
};

}  // namespace

std::vector<std::uint8_t> MemorySource::Read(std::uint64_t offset, std::size_t length) {
  if (offset >= mBytes.size()) return {};
  const auto part = mBytes.subspan(static_cast<std::size_t>(offset));
  return {part.begin(), part.begin() + static_cast<std::ptrdiff_t>(std::min(length, part.size()))};
}

std::unique_ptr<ByteSource> OpenFileSource(const std::string& nativePath) {
  // A pipe without a writer must not hold the reader up.
  const int handle = open(nativePath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (handle < 0) {
    const bool isAbsent = errno == ENOENT || errno == ENOTDIR;
    throw VendrelError(isAbsent ? errFileNotFound : errPathAccess, nativePath);
  }
  struct stat status {};
  if (fstat(handle, &status) != 0 || !S_ISREG(status.st_mode)) {
    close(handle);
    throw VendrelError(errPathAccess, nativePath);
  }
  return std::make_unique<DiskSource>(handle, static_cast<std::uint64_t>(status.st_size),
                                      nativePath);
}

}  // namespace vendrel::typelib
