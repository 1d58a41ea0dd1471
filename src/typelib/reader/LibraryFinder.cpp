#include "typelib/reader/LibraryFinder.h"

#include <algorithm>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "services/FileSource.h"
#include "typelib/reader/TypeLibLimits.h"
#include "typelib/reader/TypeLibReader.h"

namespace vendrel::typelib {
namespace {

constexpr std::string_view kExtensions[] = {".tlb", ".olb", ".dll", ".ocx", ".exe"};

// Any other file follows. A cache of a control's library (.oca) comes last: it is another library
// with members of the host.
std::size_t ExtensionRank(const std::string& path) {
  const auto found =
      std::find_if(std::begin(kExtensions), std::end(kExtensions),
                   [&](auto extension) { return EndsWithNoCaseAscii(path, extension); });
  const auto rank = static_cast<std::size_t>(found - std::begin(kExtensions));
  return EndsWithNoCaseAscii(path, ".oca") ? rank + 1 : rank;
}

// The file name of a stored path, without the number of a resource, which is put into `suffix`.
std::string LeafOf(std::string stored, std::string& suffix) {
  const std::size_t mark = stored.find_last_of("\\/");
  if (mark != std::string::npos && mark + 1 < stored.size() &&
      std::all_of(stored.begin() + static_cast<std::ptrdiff_t>(mark) + 1, stored.end(),
                  IsDigitAscii)) {
    suffix = "\\" + stored.substr(mark + 1);
    stored.resize(mark);
  }
  const std::size_t slash = stored.find_last_of("\\/");
  return slash == std::string::npos ? stored : stored.substr(slash + 1);
}

}  // namespace

FileLibraryFinder::FileLibraryFinder(std::vector<std::string> searchPath, SettingsLookUp settings,
                                     std::string codePage)
    : mSearchPath(std::move(searchPath)),
      mSettings(std::move(settings)),
      mCodePage(std::move(codePage)) {}

FileLibraryFinder::~FileLibraryFinder() = default;

const TypeLibInfo* FileLibraryFinder::Find(const LibraryImport& import,
                                           const TypeLibInfo& importer) {
  const std::string key = import.LibraryId.Text() + "|" + std::to_string(import.MajorVersion) +
                          "." + std::to_string(import.MinorVersion) + "|" + import.LeafName + "|" +
                          importer.ContainingFile;
  const auto [known, isNew] = mFound.try_emplace(key, nullptr);
  if (isNew) known->second = Search(import, importer);
  return known->second;
}

const TypeLibInfo* FileLibraryFinder::Search(const LibraryImport& import,
                                             const TypeLibInfo& importer) {
  if (mSettings) {
    const std::string path =
        mSettings(import.LibraryId.Text(), import.MajorVersion, import.MinorVersion, import.Lcid);
    if (!path.empty())
      if (const TypeLibInfo* found = OpenChecked(path, import.LibraryId)) return found;
  }
  std::string suffix;
  const std::string leaf = FoldKey(LeafOf(import.LeafName, suffix));
  const std::vector<std::string> folders = FoldersFor(importer);
  for (const std::string& path : folders) {
    Folder& folder = ListFolder(path);
    const auto file = folder.Files.find(leaf);
    if (file == folder.Files.end()) continue;
    if (const TypeLibInfo* found = OpenChecked(file->second + suffix, import.LibraryId))
      return found;
  }
  for (const std::string& path : folders) {
    Folder& folder = ListFolder(path);
    ScanFolder(folder);
    const auto file = folder.ById.find(import.LibraryId.Text());
    if (file == folder.ById.end()) continue;
    if (const TypeLibInfo* found = OpenChecked(file->second, import.LibraryId)) return found;
  }
  return nullptr;
}

std::vector<std::string> FileLibraryFinder::FoldersFor(const TypeLibInfo& importer) const {
  std::vector<std::string> folders;
  if (!importer.ContainingFile.empty()) {
    const std::size_t slash = importer.ContainingFile.rfind('/');
    folders.push_back(slash == std::string::npos ? "."
                                                 : importer.ContainingFile.substr(0, slash + 1));
  }
  folders.insert(folders.end(), mSearchPath.begin(), mSearchPath.end());
  return folders;
}

FileLibraryFinder::Folder& FileLibraryFinder::ListFolder(const std::string& path) {
  const auto [place, isNew] = mFolders.try_emplace(path);
  Folder& folder = place->second;
  if (!isNew) return folder;
  std::vector<FolderEntry> entries;
  FileSource::Current().List(path, entries);
  std::sort(entries.begin(), entries.end(),
            [](const FolderEntry& a, const FolderEntry& b) { return a.Name < b.Name; });
  if (entries.size() > kMaxFilesInFolder) entries.resize(kMaxFilesInFolder);
  for (const FolderEntry& entry : entries)
    if (!entry.IsFolder)
      folder.Files.emplace(FoldKey(entry.Name),
                           path + (path.ends_with('/') ? "" : "/") + entry.Name);
  return folder;
}

void FileLibraryFinder::ScanFolder(Folder& folder) {
  if (folder.Scanned) return;
  folder.Scanned = true;
  std::vector<std::string> files;
  for (const auto& [leaf, path] : folder.Files) files.push_back(path);
  std::stable_sort(files.begin(), files.end(), [](const std::string& a, const std::string& b) {
    return ExtensionRank(a) < ExtensionRank(b);
  });
  for (const std::string& path : files) {
    const std::vector<int> ids = TypeLibResourceIds(path);
    if (ids.empty()) folder.ById.emplace(ReadLibraryId(path), path);
    for (int id : ids) {
      const std::string numbered = path + "\\" + std::to_string(id);
      folder.ById.emplace(ReadLibraryId(numbered), numbered);
    }
  }
}

const TypeLibInfo* FileLibraryFinder::OpenChecked(const std::string& path, const Guid& id) {
  const TypeLibInfo* library = Open(path);
  return library != nullptr && library->Id == id ? library : nullptr;
}

const TypeLibInfo* FileLibraryFinder::Open(const std::string& path) {
  const auto [known, isNew] = mOpened.try_emplace(path);
  if (isNew && mOpened.size() <= kMaxLibraries) {
    try {
      TypeLibOptions options;
      options.CodePage = mCodePage;
      known->second = TypeLibInfoFromFile(path, options);
      // Owned by this finder, so it must not own it in turn.
      known->second->Finder = this;
    } catch (const std::exception&) {
      // A file that cannot be read is as good as absent.
    }
  }
  return known->second.get();
}

}  // namespace vendrel::typelib
