#include "services/ByteSource.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "diagnostics/Context.h"
#include "services/FileSource.h"

namespace vendrel {
namespace {

// A file of the machine's own source, whose handles are those of the system.
class MachineBytes final : public ByteSource {
 public:
  MachineBytes(int handle, std::uint64_t size, std::string path)
      : mHandle(handle), mSize(size), mPath(std::move(path)) {}
  ~MachineBytes() override { FileSource::Machine()->Close(mHandle); }
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
      if (got < 0) throw FileError(errno, mPath);
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

// A file of any other source, which reads from front to back only.
class WholeBytes final : public ByteSource {
 public:
  explicit WholeBytes(std::string bytes)
      : mBytes(std::move(bytes)),
        mSource({reinterpret_cast<const std::uint8_t*>(mBytes.data()), mBytes.size()}) {}
  std::uint64_t Size() const override { return mSource.Size(); }
  std::vector<std::uint8_t> Read(std::uint64_t offset, std::size_t length) override {
    return mSource.Read(offset, length);
  }

 private:
  std::string mBytes;
  MemoryBytes mSource;
};

}  // namespace

std::vector<std::uint8_t> MemoryBytes::Read(std::uint64_t offset, std::size_t length) {
  if (offset >= mBytes.size()) return {};
  const auto part = mBytes.subspan(static_cast<std::size_t>(offset));
  return {part.begin(), part.begin() + static_cast<std::ptrdiff_t>(std::min(length, part.size()))};
}

std::unique_ptr<ByteSource> OpenBytes(const std::string& nativePath) try {
  if (&FileSource::Current() != FileSource::Machine().get())
    return std::make_unique<WholeBytes>(ReadWholeFile(nativePath));
  FileStatus status;
  const int handle = OpenRegularFile(nativePath, status);
  return std::make_unique<MachineBytes>(handle, status.Size, nativePath);
}
VENDREL_CONTEXT(nativePath)

}  // namespace vendrel
