#include "services/AtomicFile.h"

#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <vector>

#include "core/Ascii.h"
#include "diagnostics/Context.h"
#include "services/FileSource.h"
#include "services/FolderCache.h"

namespace vendrel {
namespace {

constexpr std::size_t BufferSize = 1 << 18;
constexpr int NameAttempts = 100;
constexpr std::string_view NamePrefix = ".vendrel-";
constexpr std::string_view NameSuffix = ".tmp";

std::string TemporaryName(const std::string& target) {
  static std::atomic<unsigned> count = 0;  // names of two workspaces must differ
  // A short name: that of the target may already be as long as the system allows.
  std::string name = target.substr(0, target.rfind('/') + 1);
  name.append(NamePrefix).append(std::to_string(getpid())).append("-");
  return name.append(std::to_string(++count)).append(NameSuffix);
}

bool IsWholeNumber(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), IsDigitAscii);
}

// Unlinked where that name still is of the file that is open, and nobody holds its lock.
void RemoveIfLeft(FileSource& source, const std::string& path) {
  const int handle = source.OpenForReading(path);
  if (handle < 0) return;
  FileStatus open, named;
  const bool isFile = source.StatusOfOpen(handle, open) >= 0 && open.Type == FileStatus::Kind::File;
  if (isFile && source.Lock(handle, false) >= 0 && source.Status(path, named) >= 0 &&
      named.IsSameFile(open))
    source.Unlink(path);
  source.Close(handle);
}

}  // namespace

AtomicFile::AtomicFile(const std::string& nativePath) try : mTarget(nativePath) {
  CheckTarget();
  for (int attempt = 0; mHandle < 0; ++attempt) {
    mTemporary = TemporaryName(mTarget);
    mHandle = FileSource::Current().CreateNew(mTemporary, 0666);
    if (mHandle >= 0 && TakeLock()) break;
    const int failure = mHandle >= 0 ? EEXIST : -mHandle;
    CloseHandle();
    if (failure == EEXIST && attempt < NameAttempts) continue;
    mTemporary.clear();
    if (failure == ENOENT) throw VendrelError(errPathAccess, mTarget + " (no such folder)");
    throw FileError(failure, mTarget);
  }
}
VENDREL_CONTEXT(nativePath)

void AtomicFile::CheckTarget() {
  FileSource& source = FileSource::Current();
  FileStatus status;
  const int result = source.Status(mTarget, status);
  if (result == -ENOENT) return;
  if (result < 0) throw FileError(-result, mTarget);
  if (status.Type != FileStatus::Kind::File)
    throw VendrelError(errPathAccess, mTarget + " (not a regular file)");
  if (status.IsReadOnly()) throw VendrelError(errPathAccess, mTarget + " (read-only)");
  if (const int refused = source.MayWrite(mTarget); refused < 0) throw FileError(-refused, mTarget);
  mKeptMode = status.Mode;
  std::string real;
  if (source.RealPath(mTarget, real) >= 0) mTarget = real;
}

// Between making and locking it the file may be taken for one that was left, and be removed. A
// system without locks has nobody who does that.
bool AtomicFile::TakeLock() {
  FileSource& source = FileSource::Current();
  FileStatus open, named;
  if (source.Lock(mHandle, true) < 0 || source.StatusOfOpen(mHandle, open) < 0) return true;
  const int result = source.Status(mTemporary, named);
  return result < 0 ? result != -ENOENT : named.IsSameFile(open);
}

bool AtomicFile::IsTemporaryName(std::string_view leafName) {
  if (!leafName.starts_with(NamePrefix) || !leafName.ends_with(NameSuffix)) return false;
  leafName.remove_prefix(NamePrefix.size());
  leafName.remove_suffix(std::min(NameSuffix.size(), leafName.size()));
  const std::size_t dash = leafName.find('-');
  return dash != std::string_view::npos && IsWholeNumber(leafName.substr(0, dash)) &&
         IsWholeNumber(leafName.substr(dash + 1));
}

void AtomicFile::Write(std::string_view bytes) try {
  mBuffer.append(bytes);
  if (mBuffer.size() >= BufferSize) FlushBuffer();
}
VENDREL_CONTEXT(trace::Local("Size", bytes.size()), trace::Field("Target", mTarget))

void AtomicFile::FlushBuffer() {
  std::size_t done = 0;
  while (done < mBuffer.size()) {
    const std::int64_t count =
        FileSource::Current().Write(mHandle, mBuffer.data() + done, mBuffer.size() - done);
    if (count <= 0) Fail(count < 0 ? static_cast<int>(-count) : EIO);
    done += static_cast<std::size_t>(count);
  }
  mBuffer.clear();
}

void AtomicFile::Commit() try {
  if (mFailed || mHandle < 0) throw VendrelError(errPathAccess, mTarget + " (writing failed)");
  FlushBuffer();
  FileSource& source = FileSource::Current();
  if (mKeptMode >= 0) {
    const int result = source.SetMode(mHandle, static_cast<std::uint32_t>(mKeptMode));
    // Some file systems have no permission bits to keep.
    if (result < 0 && result != -EPERM && result != -ENOTSUP) Fail(-result);
  }
  if (const int result = source.Sync(mHandle); result < 0 && result != -EINVAL) Fail(-result);
  // Still locked, so that nobody takes it for one that was left.
  if (const int result = source.Rename(mTemporary, mTarget); result < 0) Fail(-result);
  mTemporary.clear();
  CloseHandle();  // the bytes are on the disk already
  ForgetFolderOf(mTarget);
}
VENDREL_CONTEXT(trace::Field("Target", mTarget))

int AtomicFile::CloseHandle() {
  const int handle = mHandle;
  mHandle = -1;
  return handle < 0 ? 0 : FileSource::Current().Close(handle);
}

void AtomicFile::Abandon() {
  CloseHandle();
  if (!mTemporary.empty()) FileSource::Current().Unlink(mTemporary);
  mTemporary.clear();
  mBuffer.clear();
}

void AtomicFile::Fail(int systemError) {
  mFailed = true;
  Abandon();
  throw FileError(systemError, mTarget);
}

void RemoveLeftFiles(FileSource& source, const std::string& nativeFolder) {
  std::vector<FolderEntry> entries;
  if (source.List(nativeFolder, entries) < 0) return;
  const std::string folder = nativeFolder + (nativeFolder.ends_with('/') ? "" : "/");
  for (const FolderEntry& entry : entries)
    if (!entry.IsFolder && !entry.Unsure && AtomicFile::IsTemporaryName(entry.Name))
      RemoveIfLeft(source, folder + entry.Name);
}

}  // namespace vendrel
