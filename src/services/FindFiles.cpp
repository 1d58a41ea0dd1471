// What a file object does with folders: finding the files below one, and making one.

#include <algorithm>
#include <cerrno>
#include <set>
#include <utility>

#include "core/CaseFold.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "services/FileSource.h"
#include "services/FileSystemObject.h"
#include "services/Paths.h"

namespace vendrel {
namespace {

std::string Inside(const std::string& folder, const std::string& name) {
  return (folder == "/" ? folder : folder + "/") + name;
}

// Walks folders from a list of those still to be read, so that no depth matters.
class FolderWalk {
 public:
  FolderWalk(std::string_view pattern, bool descend) : mPattern(pattern), mDescend(descend) {}

  /// Paths of the files found: folded for the order, and as they are.
  std::vector<std::pair<std::string, std::string>> Found;

  void Run(const std::string& native, const std::string& windows) {
    Enter(native, windows, true);
    while (!mWaiting.empty() || !mLinks.empty()) {
      if (mWaiting.empty()) {
        EnterLinks();
        continue;
      }
      const auto [nativeFolder, windowsFolder] = std::move(mWaiting.back());
      mWaiting.pop_back();
      ReadFolder(nativeFolder, windowsFolder, nativeFolder == native);
    }
  }

 private:
  // Links may lead back up: a folder is entered once, whatever path leads there.
  void Enter(const std::string& native, const std::string& windows, bool isRoot) {
    FileStatus status;
    const int result = FileSource::Current().Status(native, status);
    if (result < 0) return Skip(-result, native, isRoot);
    if (!mSeen.emplace(status.Device, status.Number).second) return;
    mWaiting.emplace_back(native, windows);
  }

  void ReadFolder(const std::string& native, const std::string& windows, bool isRoot) {
    std::vector<FolderEntry> entries;
    const int result = FileSource::Current().List(native, entries);
    if (result < 0) return Skip(-result, native, isRoot);
    std::sort(entries.begin(), entries.end(),
              [](const FolderEntry& a, const FolderEntry& b) { return a.Name < b.Name; });
    std::vector<std::string> links;
    for (const FolderEntry& entry : entries) Take(entry, native, windows, links);
    // Behind the true folders, so that those are found under their own names.
    for (auto link = links.rbegin(); link != links.rend(); ++link)
      mLinks.emplace_back(Inside(native, *link), windows + WindowsLeaf(*link) + "\\");
    KeptFolders::Note(native, std::move(entries));
  }

  void Take(const FolderEntry& entry, const std::string& native, const std::string& windows,
            std::vector<std::string>& links) {
    const std::string path = Inside(native, entry.Name);
    bool isFolder = entry.IsFolder, isFile = !isFolder;
    if (entry.Unsure) {
      FileStatus status;
      if (FileSource::Current().Status(path, status) < 0) return;  // leads nowhere
      isFolder = status.Type == FileStatus::Kind::Folder;
      isFile = status.Type == FileStatus::Kind::File;
    }
    const std::string leaf = WindowsLeaf(entry.Name);
    if (isFolder && mDescend) {
      if (entry.Unsure)
        links.push_back(entry.Name);
      else
        Enter(path, windows + leaf + "\\", false);
    }
    if (isFile && MatchesPattern(leaf, mPattern))
      Found.emplace_back(FoldKey(windows + leaf), windows + leaf);
  }

  void EnterLinks() {
    const auto links = std::exchange(mLinks, {});
    for (const auto& [native, windows] : links) Enter(native, windows, false);
  }

  void Skip(int systemError, const std::string& native, bool isRoot) {
    const VendrelError error = FileError(systemError, native);
    if (isRoot)
      throw systemError == ENOENT ? VendrelError(errPathAccess, native + " (no such folder)")
                                  : error;
    Report(DiagnosticCode::FolderSkipped, {native, ErrorText(error.Number())});
  }

  using Place = std::pair<std::string, std::string>;
  std::string_view mPattern;
  bool mDescend;
  std::vector<Place> mWaiting, mLinks;
  std::set<std::pair<std::uint64_t, std::uint64_t>> mSeen;
};

}  // namespace

void FileSystemObject::FindFiles(std::string_view pattern, int flag,
                                 std::vector<FileSystemObject>& result) const try {
  std::string windows = FullPath();
  if (windows.empty()) return;
  if (windows.back() != '\\') windows.push_back('\\');
  const FoundPath folder = Find();
  if (folder.Path.empty()) throw VendrelError(errPathAccess, windows);
  FolderWalk walk(pattern, flag == 0);
  walk.Run(folder.Path,
           folder.Match == PathMatch::Exact ? windows : WindowsPath(folder.Path + "/"));
  std::sort(walk.Found.begin(), walk.Found.end());
  for (const auto& entry : walk.Found) result.emplace_back(entry.second);
}
VENDREL_CONTEXT(pattern, flag, trace::Field("FullPath", FullPath()))

void FileSystemObject::CreateFolderPath() try {
  const std::string native = vendrel::NativePath(FolderPath());
  if (native.empty()) throw VendrelError(errPathAccess, FullPath());
  FileSource& source = FileSource::Current();
  // Upwards to what is there, in whatever case, then down.
  std::vector<std::string> missing;
  FoundPath found = FindPath(native);
  std::string_view at = native;
  while (found.Match == PathMatch::None && !found.Failure) {
    while (at.size() > 1 && at.back() == '/') at.remove_suffix(1);
    const std::size_t slash = at.rfind('/');
    if (at.size() <= 1 || slash == std::string_view::npos) break;
    missing.emplace_back(at.substr(slash + 1));
    at = at.substr(0, slash + 1);
    found = FindPath(at);
  }
  if (found.Failure) throw FileError(found.Failure, found.Path);
  std::string path = found.Path;
  for (; !missing.empty(); missing.pop_back()) {
    path += (path.back() == '/' ? "" : "/") + missing.back();
    const int result = source.MakeFolder(path);
    if (result < 0 && result != -EEXIST) throw FileError(-result, path);
    ForgetFolderOf(path);
  }
  FileStatus status;
  const int result = source.Status(path, status);
  if (result < 0) throw FileError(-result, path);
  if (status.Type != FileStatus::Kind::Folder) throw VendrelError(errPathAccess, path);
}
VENDREL_CONTEXT(trace::Field("FullPath", FullPath()))

}  // namespace vendrel
