// The file source of the machine itself: thin calls, interrupted ones repeated.

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>

#include "services/FileSource.h"

namespace vendrel {
namespace {

template <typename Call>
auto Repeated(Call call) -> decltype(call()) {
  while (true) {
    const auto result = call();
    if (result >= 0) return result;
    if (errno != EINTR) return static_cast<decltype(call())>(-errno);
  }
}

void Fill(FileStatus& status, const struct stat& data) {
  status.Type = S_ISREG(data.st_mode)   ? FileStatus::Kind::File
                : S_ISDIR(data.st_mode) ? FileStatus::Kind::Folder
                                        : FileStatus::Kind::Other;
  status.Size = static_cast<std::uint64_t>(data.st_size);
  status.Mode = data.st_mode & 07777;
  status.Device = data.st_dev;
  status.Number = data.st_ino;
}

class MachineFiles final : public FileSource {
 public:
  int OpenForReading(const std::string& path) override {
    return Repeated(
        [&] { return open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY); });
  }
  int CreateNew(const std::string& path, std::uint32_t mode) override {
    return Repeated(
        [&] { return open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode); });
  }
  std::int64_t Read(int handle, char* buffer, std::size_t size) override {
    return Repeated([&]() -> std::int64_t { return read(handle, buffer, size); });
  }
  std::int64_t Write(int handle, const char* bytes, std::size_t size) override {
    return Repeated([&]() -> std::int64_t { return write(handle, bytes, size); });
  }
  int StatusOfOpen(int handle, FileStatus& status) override {
    struct stat data;
    const int result = Repeated([&] { return fstat(handle, &data); });
    if (result == 0) Fill(status, data);
    return result;
  }
  int SetMode(int handle, std::uint32_t mode) override {
    return Repeated([&] { return fchmod(handle, mode); });
  }
  int Sync(int handle) override {
    return Repeated([&] { return fsync(handle); });
  }
  int Lock(int handle, bool wait) override {
    return Repeated([&] { return flock(handle, LOCK_EX | (wait ? 0 : LOCK_NB)); });
  }
  int Close(int handle) override { return close(handle) < 0 && errno != EINTR ? -errno : 0; }
  int Status(const std::string& path, FileStatus& status) override {
    struct stat data;
    const int result = Repeated([&] { return stat(path.c_str(), &data); });
    if (result == 0) Fill(status, data);
    return result;
  }
  int Rename(const std::string& from, const std::string& to) override {
    return Repeated([&] { return rename(from.c_str(), to.c_str()); });
  }
  int Unlink(const std::string& path) override {
    return Repeated([&] { return unlink(path.c_str()); });
  }
  int MakeFolder(const std::string& path) override {
    return Repeated([&] { return mkdir(path.c_str(), 0777); });
  }
  int List(const std::string& path, std::vector<FolderEntry>& entries) override {
    DIR* folder = opendir(path.c_str());
    if (!folder) return -errno;
    errno = 0;
    while (const dirent* entry = readdir(folder)) {
      const char* name = entry->d_name;
      if (std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0) continue;
      const bool unsure = entry->d_type == DT_LNK || entry->d_type == DT_UNKNOWN;
      entries.push_back({name, entry->d_type == DT_DIR, unsure});
      errno = 0;
    }
    const int failure = errno;
    closedir(folder);
    return -failure;
  }
  int MayWrite(const std::string& path) override {
    return Repeated([&] { return access(path.c_str(), W_OK); });
  }
  int RealPath(const std::string& path, std::string& real) override {
    char* found = realpath(path.c_str(), nullptr);
    if (!found) return -errno;
    real = found;
    std::free(found);
    return 0;
  }
  bool MayBeShared() const override { return true; }
  std::string CurrentFolder() override {
    char* found = getcwd(nullptr, 0);
    std::string folder = found ? found : "/";
    std::free(found);
    return folder;
  }
};

}  // namespace

std::shared_ptr<FileSource> FileSource::Machine() {
  static const std::shared_ptr<FileSource> machine = std::make_shared<MachineFiles>();
  return machine;
}

}  // namespace vendrel
