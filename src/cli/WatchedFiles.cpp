#include "cli/WatchedFiles.h"

#include <algorithm>
#include <cerrno>
#include <map>
#include <mutex>
#include <set>
#include <utility>
#include <vector>

#include "cli/Interrupts.h"
#include "services/AtomicFile.h"
#include "services/FileSource.h"

namespace vendrel::cli {
namespace {

// Of the workspace in use.
struct Watching {
  WatchedFiles* Files = nullptr;
};
WatchedFiles*& InForce() { return InUse<Watching>().Files; }

}  // namespace

class WatchedFiles::Source final : public FileSource {
 public:
  explicit Source(FileSource& under) : mUnder(under) {}

  FileSource& mUnder;
  std::vector<std::string> Written;
  bool Counts = true, Protects = false, RemovesLeft = false;

  const std::string* SourceAt(const std::string& path) {
    NoteAllOpen();
    FileStatus status;
    if (mRead.empty() || mUnder.Status(path, status) < 0) return nullptr;
    const auto found = mRead.find({status.Device, status.Number});
    return found == mRead.end() ? nullptr : &found->second;
  }
  const std::string& AsAsked(const std::string& real) const {
    const auto found = mAsked.find(real);
    return found == mAsked.end() ? real : found->second;
  }

  int OpenForReading(const std::string& path) override {
    LookForSignal();
    const int handle = mUnder.OpenForReading(path);
    if (Counts && handle >= 0) {
      const std::lock_guard lock(mMutex);
      mOpen.emplace_back(handle, path);
    }
    return handle;
  }
  int CreateNew(const std::string& path, std::uint32_t mode) override {
    LookForSignal();
    const std::string folder = path.substr(0, std::max<std::size_t>(path.rfind('/'), 1));
    if (RemovesLeft && mCleaned.insert(folder).second) vendrel::RemoveLeftFiles(mUnder, folder);
    return mUnder.CreateNew(path, mode);
  }
  std::int64_t Read(int handle, char* buffer, std::size_t size) override {
    LookForSignal();
    return mUnder.Read(handle, buffer, size);
  }
  std::int64_t Write(int handle, const char* bytes, std::size_t size) override {
    LookForSignal();
    return mUnder.Write(handle, bytes, size);
  }
  int StatusOfOpen(int handle, FileStatus& status) override {
    const int result = mUnder.StatusOfOpen(handle, status);
    const std::lock_guard lock(mMutex);
    if (const auto open = FindOpen(handle); open != mOpen.end()) {
      Note(open->second, result, status);
      mOpen.erase(open);
    }
    return result;
  }
  int SetMode(int handle, std::uint32_t mode) override { return mUnder.SetMode(handle, mode); }
  int Sync(int handle) override { return mUnder.Sync(handle); }
  int Lock(int handle, bool wait) override { return mUnder.Lock(handle, wait); }
  int Close(int handle) override {
    try {
      const std::lock_guard lock(mMutex);
      if (const auto open = FindOpen(handle); open != mOpen.end()) {
        const OpenFile unasked = std::move(*open);
        mOpen.erase(open);
        AskAndNote(unasked);
      }
    } catch (...) {  // from a host's own files: nothing was read of one that cannot be asked about
    }
    return mUnder.Close(handle);
  }
  int Status(const std::string& path, FileStatus& status) override {
    return mUnder.Status(path, status);
  }
  int Rename(const std::string& from, const std::string& to) override {
    LookForSignal();
    if (Protects) {
      NoteAllOpen();
      // What cannot be told may be a source.
      FileStatus status;
      const int there = mUnder.Status(to, status);
      if (there < 0 && there != -ENOENT) return there;
      if (there >= 0 && mRead.contains({status.Device, status.Number})) return -EPERM;
    }
    const int result = mUnder.Rename(from, to);
    if (result >= 0 && Counts) Written.push_back(AsAsked(to));
    return result;
  }
  int Unlink(const std::string& path) override { return mUnder.Unlink(path); }
  int MakeFolder(const std::string& path) override {
    LookForSignal();
    return mUnder.MakeFolder(path);
  }
  int List(const std::string& path, std::vector<FolderEntry>& entries) override {
    return mUnder.List(path, entries);
  }
  int MayWrite(const std::string& path) override { return mUnder.MayWrite(path); }
  int RealPath(const std::string& path, std::string& real) override {
    const int result = mUnder.RealPath(path, real);
    if (result < 0) return result;
    const std::lock_guard lock(mMutex);
    mAsked[real] = path;
    return result;
  }
  bool MayBeShared() const override { return mUnder.MayBeShared(); }
  std::string CurrentFolder() override { return mUnder.CurrentFolder(); }

 private:
  // What a handle has open is known by what its reader asks anyway, mostly its size. Whoever does
  // not ask has it asked for when the handle is closed, or somebody wants to know what was read.
  using OpenFile = std::pair<int, std::string>;

  std::vector<OpenFile>::iterator FindOpen(int handle) {
    return std::find_if(mOpen.begin(), mOpen.end(),
                        [&](const OpenFile& open) { return open.first == handle; });
  }
  void Note(const std::string& path, int result, const FileStatus& status) {
    if (result >= 0 && status.Type == FileStatus::Kind::File)
      mRead.emplace(std::pair(status.Device, status.Number), path);
  }
  void AskAndNote(const OpenFile& open) {
    FileStatus status;
    const int result = mUnder.StatusOfOpen(open.first, status);
    Note(open.second, result, status);
  }
  void NoteAllOpen() {
    const std::lock_guard lock(mMutex);
    for (const OpenFile& open : mOpen) AskAndNote(open);
    mOpen.clear();
  }

  std::mutex mMutex;            // several threads read, one writes
  std::vector<OpenFile> mOpen;  // for reading, and not in `mRead` yet
  std::map<std::pair<std::uint64_t, std::uint64_t>, std::string> mRead;
  std::map<std::string, std::string> mAsked;
  std::set<std::string> mCleaned;
};

WatchedFiles::WatchedFiles() : mSource(std::make_shared<Source>(FileSource::Current())) {
  mUnder = FileSource::Install(mSource);
  InForce() = this;
}

WatchedFiles::~WatchedFiles() {
  FileSource::Install(mUnder);
  InForce() = nullptr;
}

WatchedFiles* WatchedFiles::Current() { return InForce(); }

void WatchedFiles::ShareWith(Workspace& other) {
  WatchedFiles* files = InForce();
  const Workspace::Use use(other);
  InForce() = files;
  if (files) FileSource::Install(files->mSource);
}

bool WatchedFiles::AreOfThisMachine() {
  return InForce() && &InForce()->mSource->mUnder == FileSource::Machine().get();
}

const std::string* WatchedFiles::SourceAt(const std::string& nativePath) const {
  return mSource->SourceAt(nativePath);
}

const std::vector<std::string>& WatchedFiles::Written() const { return mSource->Written; }

const std::string& WatchedFiles::AsAsked(const std::string& realPath) const {
  return mSource->AsAsked(realPath);
}

void WatchedFiles::RemoveLeftFiles() { mSource->RemovesLeft = true; }

WatchedFiles::Protection::Protection(bool isOn)
    : mBefore(Current() && Current()->mSource->Protects) {
  if (Current()) Current()->mSource->Protects = isOn;
}
WatchedFiles::Protection::~Protection() {
  if (Current()) Current()->mSource->Protects = mBefore;
}

WatchedFiles::Aside::Aside() : mBefore(Current() && Current()->mSource->Counts) {
  if (Current()) Current()->mSource->Counts = false;
}
WatchedFiles::Aside::~Aside() {
  if (Current()) Current()->mSource->Counts = mBefore;
}

}  // namespace vendrel::cli
