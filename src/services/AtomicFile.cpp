#include "services/AtomicFile.h"

#include <unistd.h>

#include <atomic>
#include <cerrno>

#include "diagnostics/VendrelError.h"
#include "services/FileSource.h"
#include "services/FolderCache.h"

namespace vendrel {
namespace {

constexpr std::size_t BufferSize = 1 << 18;
constexpr int NameAttempts = 100;

std::string TemporaryName(const std::string& target) {
  static std::atomic<unsigned> count = 0;  // names of two workspaces must differ
  // A short name: that of the target may already be as long as the system allows.
  return target.substr(0, target.rfind('/') + 1) + ".vendrel-" + std::to_string(getpid()) + "-" +
         std::to_string(++count) + ".tmp";
}

}  // namespace

AtomicFile::AtomicFile(const std::string& nativePath) try : mTarget(nativePath) {
  CheckTarget();
  for (int attempt = 0; mHandle < 0; ++attempt) {
    mTemporary = TemporaryName(mTarget);
    mHandle = FileSource::Current().CreateNew(mTemporary, 0666);
    if (mHandle >= 0) break;
    if (mHandle == -EEXIST && attempt < NameAttempts) continue;
    const int failure = -mHandle;
    mTemporary.clear();
    if (failure == ENOENT) throw VendrelError(errPathAccess, mTarget + " (no such folder)");
    throw FileError(failure, mTarget);
  }
} catch (VendrelError& failure) {
  failure.AddContext("AtomicFile.AtomicFile", "AtomicFile").Parameter("nativePath", nativePath);
  throw;
}

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

void AtomicFile::Write(std::string_view bytes) try {
  mBuffer.append(bytes);
  if (mBuffer.size() >= BufferSize) FlushBuffer();
} catch (VendrelError& failure) {
  failure.AddContext("AtomicFile.Write", "AtomicFile")
      .Local("Size", bytes.size())
      .Field("Target", mTarget);
  throw;
}

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
  if (const int result = CloseHandle(); result < 0) Fail(-result);
  if (const int result = source.Rename(mTemporary, mTarget); result < 0) Fail(-result);
  mTemporary.clear();
  ForgetFolderOf(mTarget);
} catch (VendrelError& failure) {
  failure.AddContext("AtomicFile.Commit", "AtomicFile").Field("Target", mTarget);
  throw;
}

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

}  // namespace vendrel
