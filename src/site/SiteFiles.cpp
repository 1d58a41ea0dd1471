// The list, "site-files.txt": a line "vendrelmodel site 1", then for each file its hash, its size
// in bytes and its path. The journal, "site-files.new", holds paths alone.

#include "site/SiteFiles.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <filesystem>
#include <vector>

#include "core/Ascii.h"
#include "diagnostics/VendrelError.h"
#include "services/FileSource.h"

namespace vendrel::site {
namespace {

constexpr std::string_view kListName = "site-files.txt";
constexpr std::string_view kJournalName = "site-files.new";
constexpr std::string_view kListHead = "vendrelmodel site 1\n";
constexpr std::string_view kBeside = ".part";

void WriteAll(int handle, std::string_view bytes, const std::string& path) {
  while (!bytes.empty()) {
    const std::int64_t written = FileSource::Current().Write(handle, bytes.data(), bytes.size());
    if (written == -EINTR) continue;
    if (written <= 0) throw FileError(written < 0 ? static_cast<int>(-written) : EIO, path);
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

std::uint64_t NumberIn(std::string_view digits, int base) {
  std::uint64_t number = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), number, base);
  return number;
}

// A list may have been changed by hand; nothing outside of the folder is ever touched by it.
bool IsInside(std::string_view path) {
  if (path.empty() || path.front() == '/' || path.find('\\') != kNotFound) return false;
  for (std::string_view rest = path; !rest.empty();) {
    const std::string_view part = TakeField(rest, '/');
    if (part.empty() || part == "." || part == "..") return false;
  }
  return true;
}

}  // namespace

SiteFiles::SiteFiles(std::string folder, bool force) : mFolder(std::move(folder)), mForce(force) {
  while (mFolder.size() > 1 && mFolder.ends_with('/')) mFolder.pop_back();
  MakeFolders({});
  ReadList(std::string(kListName), false);
  ReadList(std::string(kJournalName), true);
  if (!mHasList && !force) RefuseForeignFolder();
}

SiteFiles::~SiteFiles() {
  if (mJournal >= 0) FileSource::Current().Close(mJournal);
}

std::string SiteFiles::NativeOf(std::string_view path) const {
  return std::string(mFolder).append("/").append(path);
}

void SiteFiles::ReadList(const std::string& name, bool isJournal) {
  FileStatus status;
  if (FileSource::Current().Status(NativeOf(name), status) < 0) return;
  const std::string text = ReadWholeFile(NativeOf(name));
  std::string_view rest = text;
  if (!isJournal) {
    if (!rest.starts_with(kListHead)) return;
    rest.remove_prefix(kListHead.size());
  }
  mHasList = true;
  while (!rest.empty()) {
    std::string_view line = TakeField(rest, '\n');
    Known known;
    if (!isJournal) {
      known.Hash = NumberIn(TakeField(line, ' '), 16);
      known.Size = NumberIn(TakeField(line, ' '), 10);
    }
    known.IsDoubtful = isJournal;
    if (IsInside(line)) KnownOf(line) = known;
  }
}

void SiteFiles::RefuseForeignFolder() const {
  // Folders alone are nobody's.
  std::vector<std::string> waiting{mFolder};
  while (!waiting.empty()) {
    const std::string folder = std::move(waiting.back());
    waiting.pop_back();
    std::vector<FolderEntry> entries;
    const int result = FileSource::Current().List(folder, entries);
    if (result < 0) throw FileError(-result, folder);
    for (const FolderEntry& entry : entries) {
      if (!entry.IsFolder)
        throw VendrelError(
            errPathAccess,
            mFolder + " (holds files, and no " + std::string(kListName) +
                " that tells them as those of a site; name an empty folder, or add --yes to make "
                "the site among them: none of them is removed)");
      waiting.push_back(folder + "/" + entry.Name);
    }
  }
}

void SiteFiles::MakeFolders(std::string_view path) {
  // Every folder on the way, from the outermost on.
  const std::string whole = path.empty() ? mFolder : NativeOf(path);
  for (std::size_t end = path.empty() ? 1 : mFolder.size() + 1; end < whole.size() + 1; ++end) {
    if (end < whole.size() && whole[end] != '/') continue;
    const std::string folder = whole.substr(0, end);
    if (!mFolders.insert(folder).second) continue;
    FileStatus status;
    if (FileSource::Current().Status(folder, status) >= 0) {
      if (status.Type != FileStatus::Kind::Folder) throw FileError(ENOTDIR, folder);
      continue;
    }
    const int result = FileSource::Current().MakeFolder(folder);
    if (result < 0 && result != -EEXIST) throw FileError(-result, folder);
  }
}

bool SiteFiles::IsThere(const std::string& native, std::uint64_t size) const {
  FileStatus status;
  return FileSource::Current().Status(native, status) >= 0 &&
         status.Type == FileStatus::Kind::File && status.Size == size;
}

void SiteFiles::Put(std::string_view path, std::string_view content) {
  const std::string native = NativeOf(path);
  const std::uint64_t hash = HashOf(content);
  mCounts.Bytes += content.size();
  const bool isNew = !mFiles.contains(path);
  if (isNew) {
    FileStatus status;
    if (!mForce && FileSource::Current().Status(native, status) >= 0)
      throw VendrelError(errPathAccess,
                         native + " (is no file of this site; move it away, or add --yes)");
  }
  Known& known = KnownOf(path);
  if (!isNew && !known.IsDoubtful && known.Hash == hash && known.Size == content.size() &&
      IsThere(native, known.Size)) {
    known.IsPut = true;
    ++mCounts.Unchanged;
    return;
  }
  if (isNew) WriteJournal(path);
  if (const std::size_t cut = path.rfind('/'); cut != kNotFound) MakeFolders(path.substr(0, cut));
  if (isNew && !mForce)
    WriteNew(native, content);
  else
    Replace(native, content);
  known = {hash, content.size(), true, false};
  ++mCounts.Written;
}

SiteFiles::Known& SiteFiles::KnownOf(std::string_view path) {
  auto known = mFiles.find(path);
  if (known == mFiles.end()) known = mFiles.emplace(mPaths.Add(path), Known{}).first;
  return known->second;
}

// Nobody reads what has not been there, and the journal tells of it if the run ends within.
void SiteFiles::WriteNew(const std::string& native, std::string_view content) const {
  FileSource& source = FileSource::Current();
  const int handle = source.CreateNew(native, 0644);
  if (handle < 0) throw FileError(-handle, native);
  try {
    WriteAll(handle, content, native);
  } catch (...) {
    source.Close(handle);
    throw;
  }
  if (const int result = source.Close(handle); result < 0) throw FileError(-result, native);
}

// Beside its place first: a page that a browser has open is the old one or the new one.
void SiteFiles::Replace(const std::string& native, std::string_view content) const {
  FileSource& source = FileSource::Current();
  const std::string beside = native + std::string(kBeside);
  int handle = source.CreateNew(beside, 0644);
  if (handle == -EEXIST) {
    source.Unlink(beside);
    handle = source.CreateNew(beside, 0644);
  }
  if (handle < 0) throw FileError(-handle, native);
  try {
    WriteAll(handle, content, native);
  } catch (...) {
    source.Close(handle);
    source.Unlink(beside);
    throw;
  }
  int result = source.Close(handle);
  if (result >= 0) result = source.Rename(beside, native);
  if (result >= 0) return;
  source.Unlink(beside);
  throw FileError(-result, native);
}

void SiteFiles::WriteJournal(std::string_view path) {
  FileSource& source = FileSource::Current();
  const std::string native = NativeOf(kJournalName);
  if (mJournal < 0) {
    // What the journal of a run that was killed holds is known by now, and goes into the new one.
    std::string known;
    for (const auto& [name, file] : mFiles)
      if (file.IsDoubtful) known.append(name).append("\n");
    source.Unlink(native);
    mJournal = source.CreateNew(native, 0644);
    if (mJournal < 0) throw FileError(-mJournal, native);
    WriteAll(mJournal, known, native);
  }
  WriteAll(mJournal, std::string(path) + "\n", native);
}

void SiteFiles::RemoveGone() {
  std::vector<std::string_view> gone;
  for (const auto& [path, known] : mFiles)
    if (!known.IsPut) gone.push_back(path);
  std::sort(gone.begin(), gone.end());
  std::vector<std::string> folders;
  for (const std::string_view path : gone) {
    const int result = FileSource::Current().Unlink(NativeOf(path));
    if (result < 0 && result != -ENOENT) throw FileError(-result, NativeOf(path));
    mFiles.erase(path);
    ++mCounts.Removed;
    for (std::size_t cut = path.rfind('/'); cut != kNotFound; cut = path.rfind('/', cut - 1)) {
      folders.emplace_back(path.substr(0, cut));
      if (cut == 0) break;
    }
  }
  // The innermost first; one that still holds something stays, as the system refuses to remove it.
  std::sort(folders.begin(), folders.end(), [](const std::string& a, const std::string& b) {
    return a.size() != b.size() ? a.size() > b.size() : a < b;
  });
  folders.erase(std::unique(folders.begin(), folders.end()), folders.end());
  std::error_code ignored;
  for (const std::string& folder : folders) std::filesystem::remove(NativeOf(folder), ignored);
}

void SiteFiles::WriteList() {
  std::vector<std::string_view> paths;
  paths.reserve(mFiles.size());
  for (const auto& [path, known] : mFiles) paths.push_back(path);
  std::sort(paths.begin(), paths.end());
  std::string list(kListHead);
  for (const std::string_view path : paths) {
    const Known& known = mFiles.at(path);
    list.append(HexOf(known.Hash)).append(" ").append(std::to_string(known.Size));
    list.append(" ").append(path).append("\n");
  }
  Replace(NativeOf(kListName), list);
  if (mJournal >= 0) FileSource::Current().Close(mJournal);
  mJournal = -1;
  FileSource::Current().Unlink(NativeOf(kJournalName));
}

FileCounts SiteFiles::Finish() {
  RemoveGone();
  WriteList();
  return mCounts;
}

}  // namespace vendrel::site
