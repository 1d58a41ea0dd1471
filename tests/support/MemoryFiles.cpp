#include "support/MemoryFiles.h"

#include <algorithm>
#include <cstring>

namespace vendrel::test {

class MemoryFiles::Source final : public FileSource {
 public:
  std::map<std::string, File> Files;
  std::set<std::string> Folders = {"/"}, Pipes;
  std::map<std::string, std::string> Links;
  std::map<std::string, int> Failing;
  std::vector<std::string> Calls;
  int FailAfter = 0, FailWith = 0;

  int OpenForReading(const std::string& path) override {
    if (const int failure = Begin("Open", path)) return failure;
    const std::string real = Follow(path);
    if (!Exists(real)) return -ENOENT;
    return Handle(real);
  }
  int CreateNew(const std::string& path, std::uint32_t mode) override {
    if (const int failure = Begin("Create", path)) return failure;
    if (Exists(path)) return -EEXIST;
    if (!Folders.count(Parent(path))) return -ENOENT;
    Files[path] = {"", mode & 0755, ++mNumber};
    return Handle(path);
  }
  std::int64_t Read(int handle, char* buffer, std::size_t size) override {
    Open& open = mOpen.at(handle);
    if (const int failure = Begin("Read", open.Path)) return failure;
    const std::string& bytes = Files.at(open.Path).Bytes;
    const std::size_t count = std::min(size, bytes.size() - open.At);
    std::memcpy(buffer, bytes.data() + open.At, count);
    open.At += count;
    return static_cast<std::int64_t>(count);
  }
  std::int64_t Write(int handle, const char* bytes, std::size_t size) override {
    if (!mOpen.count(handle)) return -EBADF;
    const std::string& path = mOpen.at(handle).Path;
    if (const int failure = Begin("Write", path)) return failure;
    const std::size_t count = std::min<std::size_t>(size, 1000);  // writes may be short
    Files.at(path).Bytes.append(bytes, count);
    return static_cast<std::int64_t>(count);
  }
  int StatusOfOpen(int handle, FileStatus& status) override {
    const std::string path = mOpen.at(handle).Path;
    if (const int failure = Begin("StatusOfOpen", path)) return failure;
    Fill(path, status);
    return 0;
  }
  int SetMode(int handle, std::uint32_t mode) override {
    const std::string path = mOpen.at(handle).Path;
    if (const int failure = Begin("SetMode", path)) return failure;
    Files.at(path).Mode = mode;
    return 0;
  }
  int Sync(int handle) override { return Begin("Sync", mOpen.at(handle).Path); }
  int Close(int handle) override {
    const std::string path = mOpen.at(handle).Path;
    mOpen.erase(handle);
    return Begin("Close", path);
  }
  int Status(const std::string& path, FileStatus& status) override {
    if (const int failure = Begin("Status", path)) return failure;
    const std::string real = Follow(path);
    if (!Exists(real)) return -ENOENT;
    Fill(real, status);
    return 0;
  }
  int Rename(const std::string& from, const std::string& to) override {
    if (const int failure = Begin("Rename", to)) return failure;
    Files[to] = Files.at(from);
    Files.erase(from);
    return 0;
  }
  int Unlink(const std::string& path) override {
    if (const int failure = Begin("Unlink", path)) return failure;
    return Files.erase(path) ? 0 : -ENOENT;
  }
  int MakeFolder(const std::string& path) override {
    if (const int failure = Begin("MakeFolder", path)) return failure;
    if (Exists(path)) return -EEXIST;
    if (!Folders.count(Parent(path))) return Exists(Parent(path)) ? -ENOTDIR : -ENOENT;
    Folders.insert(path);
    return 0;
  }
  int List(const std::string& path, std::vector<FolderEntry>& entries) override {
    if (const int failure = Begin("List", path)) return failure;
    const std::string real = Follow(path);
    if (!Exists(real)) return -ENOENT;
    if (!Folders.count(real)) return -ENOTDIR;
    const auto add = [&](const std::string& child, bool folder, bool unsure) {
      if (child != "/" && Parent(child) == real)
        entries.push_back({child.substr(child.rfind('/') + 1), folder, unsure});
    };
    for (const auto& file : Files) add(file.first, false, false);
    for (const auto& folder : Folders) add(folder, true, false);
    for (const auto& pipe : Pipes) add(pipe, false, true);
    for (const auto& link : Links) add(link.first, false, true);
    return 0;
  }
  int MayWrite(const std::string& path) override { return Begin("MayWrite", path); }
  int RealPath(const std::string& path, std::string& real) override {
    real = Follow(path);
    return Begin("RealPath", path);
  }
  std::string CurrentFolder() override { return "/current"; }

  static std::string Parent(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == 0 ? "/" : path.substr(0, slash);
  }
  bool Exists(const std::string& path) const {
    return Files.count(path) || Folders.count(path) || Pipes.count(path);
  }
  std::uint64_t NewNumber() { return ++mNumber; }

 private:
  struct Open {
    std::string Path;
    std::size_t At = 0;
  };

  int Begin(const char* call, const std::string& path) {
    Calls.push_back(std::string(call) + " " + path);
    if (FailAfter > 0 && --FailAfter == 0) return -FailWith;
    const auto failing = Failing.find(path);
    return failing == Failing.end() ? 0 : -failing->second;
  }
  std::string Follow(const std::string& path) const {
    for (const auto& [link, target] : Links)
      if (path == link || path.compare(0, link.size() + 1, link + "/") == 0)
        return target + path.substr(link.size());
    return path;
  }
  int Handle(const std::string& path) {
    mOpen[++mHandle] = {path, 0};
    return mHandle;
  }
  void Fill(const std::string& path, FileStatus& status) {
    const auto file = Files.find(path);
    status = {};
    status.Mode = 0755;
    if (file == Files.end()) {
      status.Type = Pipes.count(path) ? FileStatus::Kind::Other : FileStatus::Kind::Folder;
      status.Number = std::hash<std::string>()(path);
      return;
    }
    status.Size = file->second.Bytes.size();
    status.Mode = file->second.Mode;
    status.Number = file->second.Number;
  }

  std::map<int, Open> mOpen;
  int mHandle = 2;
  std::uint64_t mNumber = 0;
};

MemoryFiles::MemoryFiles(std::initializer_list<std::pair<std::string, std::string>> files)
    : mSource(std::make_shared<Source>()) {
  for (const auto& [path, bytes] : files) Add(path, bytes);
  FileSource::Install(mSource);
}

MemoryFiles::~MemoryFiles() { FileSource::Install(nullptr); }

void MemoryFiles::Add(const std::string& path, std::string bytes, std::uint32_t mode) {
  AddFolder(Source::Parent(path));
  mSource->Files[path] = {std::move(bytes), mode, mSource->NewNumber()};
}

void MemoryFiles::AddFolder(std::string path) {
  while (mSource->Folders.insert(path).second) path = Source::Parent(path);
}

void MemoryFiles::AddPipe(const std::string& path) { mSource->Pipes.insert(path); }

void MemoryFiles::Link(const std::string& path, const std::string& target) {
  mSource->Links[path] = target;
}

std::string MemoryFiles::operator[](const std::string& path) const {
  const auto file = mSource->Files.find(path);
  return file == mSource->Files.end() ? std::string() : file->second.Bytes;
}

bool MemoryFiles::Has(const std::string& path) const { return mSource->Exists(path); }

std::vector<std::string> MemoryFiles::Paths() const {
  std::vector<std::string> paths;
  for (const auto& file : mSource->Files) paths.push_back(file.first);
  return paths;
}

void MemoryFiles::FailAt(int n, int systemError) {
  mSource->FailAfter = n;
  mSource->FailWith = systemError;
}

void MemoryFiles::FailOn(const std::string& path, int systemError) {
  mSource->Failing[path] = systemError;
}

const std::vector<std::string>& MemoryFiles::Calls() const { return mSource->Calls; }

void MemoryFiles::ForgetCalls() { mSource->Calls.clear(); }

}  // namespace vendrel::test
