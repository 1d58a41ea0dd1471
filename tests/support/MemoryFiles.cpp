#include "support/MemoryFiles.h"

#include <algorithm>

namespace vendrel::test {

class MemoryFiles::Source final : public FileSource {
 public:
  // As on a disk, an open file outlives its name.
  std::map<std::string, std::shared_ptr<File>> Files;
  std::set<std::string> Folders = {"/"}, Pipes;
  std::map<std::string, std::string> Links;
  std::map<std::string, int> Failing;
  std::vector<std::string> Calls;
  int FailAfter = 0, FailWith = 0;
  bool FullFromThen = false;
  int ActAfter = 0;
  std::function<void()> Act;

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
    Files[path] = std::make_shared<File>(File{"", mode & 0755, ++mNumber});
    return Handle(path);
  }
  std::int64_t Read(int handle, char* buffer, std::size_t size) override {
    Open& open = mOpen.at(handle);
    if (const int failure = Begin("Read", open.Path)) return failure;
    const std::string& bytes = open.Of->Bytes;
    open.At = std::min(open.At, bytes.size());  // it may have shrunk
    const std::size_t count = bytes.copy(buffer, size, open.At);
    open.At += count;
    return static_cast<std::int64_t>(count);
  }
  std::int64_t Write(int handle, const char* bytes, std::size_t size) override {
    if (!mOpen.count(handle)) return -EBADF;
    if (const int failure = Begin("Write", mOpen.at(handle).Path)) return failure;
    const std::size_t count = std::min<std::size_t>(size, 1000);  // writes may be short
    mOpen.at(handle).Of->Bytes.append(bytes, count);
    return static_cast<std::int64_t>(count);
  }
  int StatusOfOpen(int handle, FileStatus& status) override {
    const Open open = mOpen.at(handle);
    if (const int failure = Begin("StatusOfOpen", open.Path)) return failure;
    Fill(open.Path, open.Of.get(), status);
    return 0;
  }
  int SetMode(int handle, std::uint32_t mode) override {
    if (const int failure = Begin("SetMode", mOpen.at(handle).Path)) return failure;
    mOpen.at(handle).Of->Mode = mode;
    return 0;
  }
  int Sync(int handle) override { return Begin("Sync", mOpen.at(handle).Path); }
  int Lock(int handle, bool) override {
    Open& open = mOpen.at(handle);
    if (const int failure = Begin("Lock", open.Path)) return failure;
    if (!open.Of || open.Of->Locked) return -EWOULDBLOCK;  // nobody is there to wait for
    open.HasLock = open.Of->Locked = true;
    return 0;
  }
  int Close(int handle) override {
    const std::string path = mOpen.at(handle).Path;
    if (mOpen.at(handle).HasLock) mOpen.at(handle).Of->Locked = false;
    mOpen.erase(handle);
    return Begin("Close", path);
  }
  int Status(const std::string& path, FileStatus& status) override {
    if (const int failure = Begin("Status", path)) return failure;
    const std::string real = Follow(path);
    if (!Exists(real)) return -ENOENT;
    const auto file = Files.find(real);
    Fill(real, file == Files.end() ? nullptr : file->second.get(), status);
    return 0;
  }
  int Rename(const std::string& from, const std::string& to) override {
    if (const int failure = Begin("Rename", to)) return failure;
    const auto file = Files.find(from);
    if (file == Files.end()) return -ENOENT;
    if (Folders.count(to)) return -EISDIR;
    Files[to] = file->second;
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
    std::shared_ptr<File> Of;  // none for folders and pipes
    std::size_t At = 0;
    bool HasLock = false;
  };

  int Begin(std::string_view call, const std::string& path) {
    Calls.push_back(std::string(call) + " " + path);
    if (ActAfter > 0 && --ActAfter == 0) Act();
    if (FailAfter > 0 && --FailAfter == 0) {
      if (!FullFromThen) return -FailWith;
      FailAfter = 1;
      if (call == "Create" || call == "Write" || call == "Sync" || call == "MakeFolder")
        return -FailWith;
    }
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
    const auto file = Files.find(path);
    mOpen[++mHandle] = {path, file == Files.end() ? nullptr : file->second};
    return mHandle;
  }
  void Fill(const std::string& path, const File* file, FileStatus& status) {
    status = {};
    status.Mode = 0755;
    if (!file) {
      status.Type = Pipes.count(path) ? FileStatus::Kind::Other : FileStatus::Kind::Folder;
      status.Number = std::hash<std::string>()(path);
      return;
    }
    status.Size = file->Bytes.size();
    status.Mode = file->Mode;
    status.Number = file->Number;
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
  mSource->Files[path] = std::make_shared<File>(File{std::move(bytes), mode, mSource->NewNumber()});
}

void MemoryFiles::AddFolder(std::string path) {
  while (mSource->Folders.insert(path).second) path = Source::Parent(path);
}

void MemoryFiles::AddPipe(const std::string& path) { mSource->Pipes.insert(path); }

void MemoryFiles::Lock(const std::string& path) { mSource->Files.at(path)->Locked = true; }

void MemoryFiles::Link(const std::string& path, const std::string& target) {
  mSource->Links[path] = target;
}

std::string MemoryFiles::operator[](const std::string& path) const {
  const auto file = mSource->Files.find(path);
  return file == mSource->Files.end() ? std::string() : file->second->Bytes;
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
  mSource->FullFromThen = false;
}

void MemoryFiles::FullFrom(int n) {
  FailAt(n, ENOSPC);
  mSource->FullFromThen = true;
}

void MemoryFiles::ActAt(int n, std::function<void()> action) {
  mSource->ActAfter = n;
  mSource->Act = std::move(action);
}

void MemoryFiles::Change(const std::string& path, const std::function<void(std::string&)>& change) {
  change(mSource->Files.at(path)->Bytes);
}

void MemoryFiles::Remove(const std::string& path) {
  mSource->Files.erase(path);
  mSource->Folders.erase(path);
}

void MemoryFiles::FailOn(const std::string& path, int systemError) {
  mSource->Failing[path] = systemError;
}

const std::vector<std::string>& MemoryFiles::Calls() const { return mSource->Calls; }

void MemoryFiles::ForgetCalls() { mSource->Calls.clear(); }

}  // namespace vendrel::test
