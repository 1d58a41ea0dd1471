#include "services/SourcesAhead.h"

#include <algorithm>
#include <atomic>
#include <optional>
#include <system_error>
#include <thread>

#include "core/Workspace.h"
#include "services/FileSource.h"
#include "services/SourceCache.h"

namespace vendrel {
namespace {

// Fewer than this are read before a thread has begun.
constexpr std::size_t kWorthAThread = 8;

// Several threads take the next file each, until none is left.
class SourceReaders {
 public:
  explicit SourceReaders(const std::vector<std::string>& paths)
      : mPaths(paths), mBytes(paths.size()), mFiles(FileSource::Installed()) {}

  void Run(std::size_t threads) {
    std::vector<std::thread> others;
    try {
      while (others.size() + 1 < threads) others.emplace_back([this] { ReadAside(); });
    } catch (const std::system_error&) {
      // The system refuses a thread: those that it gave read.
    }
    Read();
    for (std::thread& other : others) other.join();
    for (std::size_t i = 0; i < mPaths.size(); ++i)
      if (mBytes[i]) SourceCache::Put(mPaths[i], std::move(*mBytes[i]));
  }

 private:
  void ReadAside() {
    Workspace own;
    const Workspace::Use use(own);
    FileSource::Install(mFiles);
    Read();
  }
  void Read() {
    for (std::size_t i = mNext++; i < mPaths.size(); i = mNext++) try {
        mBytes[i] = ReadWholeFile(mPaths[i]);
      } catch (...) {
        // Whoever asks for the file meets the failure, or the end of the work that it means.
        mBytes[i].reset();
      }
  }

  const std::vector<std::string>& mPaths;
  std::vector<std::optional<std::string>> mBytes;
  std::shared_ptr<FileSource> mFiles;
  std::atomic<std::size_t> mNext = 0;
};

}  // namespace

void ReadSourcesAhead(const std::vector<std::string>& nativePaths) {
  const auto jobs = static_cast<std::size_t>(std::max(Workspace::Current().Jobs, 1));
  if (jobs == 1 || nativePaths.size() < kWorthAThread || !SourceCache::Keeps() ||
      !FileSource::Current().MayBeShared())
    return;
  SourceReaders(nativePaths).Run(std::min(jobs, nativePaths.size() / kWorthAThread + 1));
}

}  // namespace vendrel
