#include "cli/PretendedFiles.h"

#include <algorithm>
#include <cerrno>

namespace vendrel::cli {
namespace {

constexpr int kFirstHandle = 1 << 30;  // above all that a system gives
constexpr std::uint64_t kDevice = ~std::uint64_t{0};

std::string FolderOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == 0 || slash == std::string::npos ? "/" : path.substr(0, slash);
}

std::string WithoutSlash(std::string path) {
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  return path;
}

}  // namespace

class PretendedFiles::Source final : public FileSource {
 public:
  explicit Source(FileSource& under) : mUnder(under) {}

  std::map<std::string, std::string> Files;

  int OpenForReading(const std::string& path) override {
    if (Files.count(path)) {
      // What is written over and read later is a source that the write would destroy.
      if (const int handle = mUnder.OpenForReading(path); handle >= 0) mUnder.Close(handle);
      return Handle(path);
    }
    return mGone.count(path) ? -ENOENT : mUnder.OpenForReading(path);
  }
  int CreateNew(const std::string& path, std::uint32_t) override {
    FileStatus status;
    if (Status(path, status) >= 0) return -EEXIST;
    if (const int result = Status(FolderOf(path), status); result < 0) return result;
    Files[path];
    return Handle(path);
  }
  std::int64_t Read(int handle, char* buffer, std::size_t size) override {
    if (handle < kFirstHandle) return mUnder.Read(handle, buffer, size);
    Open& open = mOpen.at(handle);
    const std::string& bytes = Files.at(open.Path);
    const std::size_t count = bytes.copy(buffer, size, open.At);
    open.At += count;
    return static_cast<std::int64_t>(count);
  }
  std::int64_t Write(int handle, const char* bytes, std::size_t size) override {
    Files.at(mOpen.at(handle).Path).append(bytes, size);
    return static_cast<std::int64_t>(size);
  }
  int StatusOfOpen(int handle, FileStatus& status) override {
    if (handle < kFirstHandle) return mUnder.StatusOfOpen(handle, status);
    return Status(mOpen.at(handle).Path, status);
  }
  int SetMode(int, std::uint32_t) override { return 0; }
  int Sync(int) override { return 0; }
  int Lock(int handle, bool wait) override {
    return handle < kFirstHandle ? mUnder.Lock(handle, wait) : 0;
  }
  int Close(int handle) override {
    if (handle < kFirstHandle) return mUnder.Close(handle);
    mOpen.erase(handle);
    return 0;
  }
  int Status(const std::string& path, FileStatus& status) override {
    const std::string plain = WithoutSlash(path);
    const auto file = Files.find(plain);
    const bool folder = mFolders.count(plain) > 0;
    if (file == Files.end() && !folder)
      return mGone.count(plain) ? -ENOENT : mUnder.Status(path, status);
    status = {};
    status.Type = folder ? FileStatus::Kind::Folder : FileStatus::Kind::File;
    status.Mode = folder ? 0755 : 0644;
    status.Size = folder ? 0 : file->second.size();
    status.Device = kDevice;
    status.Number = mNumbers.emplace(plain, mNumbers.size()).first->second;
    return 0;
  }
  int Rename(const std::string& from, const std::string& to) override {
    const auto file = Files.find(from);
    if (file == Files.end()) return -ENOENT;
    Files[to] = std::move(file->second);
    Files.erase(from);
    mGone.erase(to);
    return 0;
  }
  int Unlink(const std::string& path) override {
    FileStatus status;
    const int result = Status(path, status);
    if (result < 0) return result;
    Files.erase(path);
    mGone.insert(path);
    return 0;
  }
  int MakeFolder(const std::string& path) override {
    FileStatus status;
    if (Status(path, status) >= 0) return -EEXIST;
    if (const int result = Status(FolderOf(path), status); result < 0) return result;
    mFolders.insert(WithoutSlash(path));
    return 0;
  }
  int List(const std::string& path, std::vector<FolderEntry>& entries) override {
    const std::string folder = WithoutSlash(path);
    if (!mFolders.count(folder))
      if (const int result = mUnder.List(path, entries); result < 0) return result;
    const auto hidden = [&](const FolderEntry& entry) {
      const std::string whole = folder + "/" + entry.Name;
      return mGone.count(whole) || Files.count(whole);
    };
    entries.erase(std::remove_if(entries.begin(), entries.end(), hidden), entries.end());
    const auto add = [&](const std::string& child, bool isFolder) {
      if (FolderOf(child) == folder)
        entries.push_back({child.substr(child.rfind('/') + 1), isFolder, false});
    };
    for (const auto& file : Files) add(file.first, false);
    for (const std::string& made : mFolders) add(made, true);
    return 0;
  }
  int MayWrite(const std::string& path) override {
    return Files.count(path) ? 0 : mUnder.MayWrite(path);
  }
  int RealPath(const std::string& path, std::string& real) override {
    if (!Files.count(path)) return mUnder.RealPath(path, real);
    real = path;
    return 0;
  }
  std::string CurrentFolder() override { return mUnder.CurrentFolder(); }

 private:
  struct Open {
    std::string Path;
    std::size_t At = 0;
  };
  int Handle(const std::string& path) {
    mOpen[mNext] = {path, 0};
    return mNext++;
  }

  FileSource& mUnder;
  std::map<int, Open> mOpen;
  std::map<std::string, std::uint64_t> mNumbers;
  std::set<std::string> mFolders, mGone;
  int mNext = kFirstHandle;
};

PretendedFiles::PretendedFiles() : mSource(std::make_shared<Source>(FileSource::Current())) {
  mUnder = FileSource::Install(mSource);
}

PretendedFiles::~PretendedFiles() { FileSource::Install(mUnder); }

const std::map<std::string, std::string>& PretendedFiles::Written() const { return mSource->Files; }

}  // namespace vendrel::cli
