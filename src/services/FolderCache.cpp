#include "services/FolderCache.h"

#include <algorithm>
#include <cerrno>
#include <unordered_map>
#include <vector>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "core/Utf8.h"
#include "core/Workspace.h"
#include "services/CodePage.h"
#include "services/SourceCache.h"

namespace vendrel {

struct KnownFolders {
  struct Folder {
    bool Exists = false;
    /// Why that is not known; such a folder is asked for again.
    int Failure = 0;
    PathMatch Match = PathMatch::None;
    std::string Path;
    /// What is in it, in the order of the bytes of the names, as the disk spells them.
    std::vector<FolderEntry> Entries;
    /// The same by folded name; empty until a name is sought in another case.
    std::unordered_map<std::string, std::string> ByFoldedName;
  };

  /// By the path asked for, which need not be the one found.
  std::unordered_map<std::string, Folder> Folders;
  /// Some name in them was read by the code page in force.
  bool HasDecodedNames = false;
  /// How many `KeptFolders` live, and the number of the run that the first of them began.
  int Keepers = 0, Run = 0;
};

namespace {

using Folder = KnownFolders::Folder;
using FolderMap = std::unordered_map<std::string, Folder>;

// A run over ever more folders is not to keep the names of all of them.
constexpr std::size_t kMostKept = 1000;

FolderMap& Folders() { return InUse<KnownFolders>().Folders; }

PathMatch Worse(PathMatch a, PathMatch b) { return std::max(a, b); }

// What a call says of a path that it gives no status for: nothing is there, or that it cannot tell.
int FailureOf(int result) {
  return result >= 0 || result == -ENOENT || result == -ENOTDIR ? 0 : -result;
}

std::string_view ParentOf(std::string_view path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string_view::npos || slash == 0 ? std::string_view("/")
                                                       : path.substr(0, slash);
}

std::string_view LeafOf(std::string_view path) { return path.substr(path.rfind('/') + 1); }

std::string Inside(const std::string& folder, std::string_view leaf) {
  std::string path(folder);
  if (path.empty() || path.back() != '/') path.push_back('/');
  return path.append(leaf);
}

// Old archives leave names in the code page of their maker, as the project file does; they are
// matched as what they meant.
std::string FoldedFileName(const std::string& name) {
  if (IsValidUtf8(name)) return FoldKey(name);
  std::string decoded;
  FileOptions::Current().Page().Decode(name, decoded);
  return FoldKey(decoded);
}

bool IsBefore(const FolderEntry& a, const FolderEntry& b) { return a.Name < b.Name; }

// `entries` are in order.
void Fill(Folder& folder, std::vector<FolderEntry> entries) {
  if (std::any_of(entries.begin(), entries.end(),
                  [](const FolderEntry& entry) { return !IsValidUtf8(entry.Name); }))
    InUse<KnownFolders>().HasDecodedNames = true;
  folder.Entries = std::move(entries);
  folder.Exists = true;
}

// False if there is no such folder. One that may be entered but not listed has no names that are
// known.
bool ListInto(Folder& folder) {
  std::vector<FolderEntry> entries;
  FileSource& source = FileSource::Current();
  const int result = source.List(folder.Path, entries);
  if (result < 0) {
    FileStatus status;
    folder.Failure = FailureOf(result);
    if (result != -EACCES || source.Status(folder.Path, status) < 0) return false;
    if (status.Type != FileStatus::Kind::Folder) return false;
  }
  std::sort(entries.begin(), entries.end(), IsBefore);
  Fill(folder, std::move(entries));
  return true;
}

bool Holds(const Folder& folder, std::string_view name) {
  const auto at = std::lower_bound(
      folder.Entries.begin(), folder.Entries.end(), name,
      [](const FolderEntry& entry, std::string_view sought) { return entry.Name < sought; });
  return at != folder.Entries.end() && at->Name == name;
}

// The first of several names that differ in case.
const std::string* InOtherCase(Folder& folder, std::string_view leaf) {
  auto& names = folder.ByFoldedName;
  if (names.empty())
    for (const FolderEntry& entry : folder.Entries)
      names.emplace(FoldedFileName(entry.Name), entry.Name);
  const auto found = names.find(FoldKey(leaf));
  return found == names.end() ? nullptr : &found->second;
}

std::string ByShortName(const Folder& folder, std::string_view leaf) {
  if (leaf.find('~') == std::string_view::npos) return {};
  std::string found;
  for (const FolderEntry& entry : folder.Entries) {
    if (!CouldHaveShortName(entry.Name, leaf)) continue;
    if (!found.empty()) return {};
    found = entry.Name;
  }
  return found;
}

// The name in `folder` that `leaf` means; empty if none.
std::string NameIn(Folder& folder, std::string_view leaf, PathMatch& match) {
  match = PathMatch::Exact;
  if (Holds(folder, leaf)) return std::string(leaf);
  match = PathMatch::OtherCase;
  if (const std::string* found = InOtherCase(folder, leaf)) return *found;
  match = PathMatch::ShortName;
  std::string name = ByShortName(folder, leaf);
  if (name.empty()) match = PathMatch::None;
  return name;
}

Folder FolderWithin(Folder& parent, std::string_view leaf) {
  Folder folder;
  folder.Failure = parent.Failure;
  if (!parent.Exists) return folder;
  PathMatch match;
  const std::string name = NameIn(parent, leaf, match);
  if (name.empty()) return folder;
  folder.Path = Inside(parent.Path, name);
  folder.Match = Worse(parent.Match, match);
  ListInto(folder);
  return folder;
}

// Upwards to the nearest folder that is there as written, then down by listings.
Folder& FolderAt(std::string_view path) {
  FolderMap& folders = Folders();
  std::vector<std::string> asked;
  for (std::string_view at = path;; at = ParentOf(at)) {
    const auto known = folders.find(std::string(at));
    if (known != folders.end() && known->second.Failure == 0) break;
    if (known != folders.end()) folders.erase(known);
    Folder folder;
    folder.Path = at;
    folder.Match = PathMatch::Exact;
    if (ListInto(folder) || at == "/") {
      folders.emplace(std::string(at), std::move(folder));
      break;
    }
    asked.emplace_back(at);
  }
  for (; !asked.empty(); asked.pop_back()) {
    Folder& parent = folders.at(std::string(ParentOf(asked.back())));
    Folder folder = FolderWithin(parent, LeafOf(asked.back()));
    folders.emplace(asked.back(), std::move(folder));
  }
  return folders.at(std::string(path));
}

// Only in a run is that taken for granted: elsewhere someone may have made the folder since.
bool IsInNoFolder(std::string_view path) {
  if (KeptFolders::Run() == 0) return false;
  const auto parent = Folders().find(std::string(ParentOf(path)));
  return parent != Folders().end() && !parent->second.Exists && parent->second.Failure == 0;
}

// As `FindPath`, of a path that nobody has looked for yet.
FoundPath Look(std::string_view nativePath) {
  FoundPath found{std::string(nativePath), PathMatch::None, {}};
  FileSource& source = FileSource::Current();
  const int result = IsInNoFolder(nativePath) ? -ENOENT : source.Status(found.Path, found.Status);
  if (result >= 0) {
    found.Match = PathMatch::Exact;
    return found;
  }
  found.Failure = FailureOf(result);
  Folder& folder = FolderAt(ParentOf(nativePath));
  if (folder.Failure) found.Failure = folder.Failure;
  if (!folder.Exists) return found;
  PathMatch match;
  const std::string name = NameIn(folder, LeafOf(nativePath), match);
  found.Path = Inside(folder.Path, LeafOf(nativePath));
  if (name.empty()) return found;
  // A name that has gone since the folder was listed is no spelling for a new file.
  std::string listed = Inside(folder.Path, name);
  if (const int missing = source.Status(listed, found.Status); missing < 0) {
    if (FailureOf(missing)) found.Failure = FailureOf(missing);
    return found;
  }
  found.Failure = 0;
  found.Path = std::move(listed);
  found.Match = Worse(folder.Match, match);
  return found;
}

bool NeedsShortName(std::string_view name) {
  const std::size_t dot = name.rfind('.');
  const std::string_view base = name.substr(0, dot);
  const std::string_view extension =
      dot == std::string_view::npos ? std::string_view() : name.substr(dot + 1);
  return base.empty() || base.size() > 8 || extension.size() > 3 ||
         name.find_first_of(" +,;=[]") != std::string_view::npos ||
         base.find('.') != std::string_view::npos || FirstNonAscii(name) < name.size();
}

// Blanks and dots are dropped, characters that short names may not hold become underscores.
std::string ShortForm(std::string_view text) {
  std::string result;
  for (const char c : text) {
    if (c == ' ' || c == '.') continue;
    const bool barred = std::string_view("+,;=[]").find(c) != std::string_view::npos;
    result.push_back(barred ? '_' : UpperAscii(c));
  }
  return result;
}

}  // namespace

bool CouldHaveShortName(std::string_view name, std::string_view shortName) {
  const std::size_t shortDot = shortName.rfind('.');
  const std::string_view shortBase = shortName.substr(0, shortDot);
  const std::size_t tilde = shortBase.rfind('~');
  if (tilde == std::string_view::npos || tilde == 0 || shortBase.size() > 8) return false;
  const std::string_view number = shortBase.substr(tilde + 1);
  if (number.empty() || !std::all_of(number.begin(), number.end(), IsDigitAscii)) return false;
  if (!NeedsShortName(name)) return false;

  const std::size_t dot = name.rfind('.');
  const bool hasExtension = dot != std::string_view::npos && dot > 0;
  const std::string base = ShortForm(hasExtension ? name.substr(0, dot) : name);
  const std::string extension = hasExtension ? ShortForm(name.substr(dot + 1)).substr(0, 3) : "";
  const std::string_view shortExtension =
      shortDot == std::string_view::npos ? std::string_view() : shortName.substr(shortDot + 1);
  const std::size_t kept = 8 - (shortBase.size() - tilde);
  return EqualsNoCaseAscii(std::string_view(base).substr(0, kept), shortBase.substr(0, tilde)) &&
         EqualsNoCaseAscii(extension, shortExtension);
}

FoundPath FindPath(std::string_view nativePath) {
  while (nativePath.size() > 1 && nativePath.back() == '/') nativePath.remove_suffix(1);
  const std::string path(nativePath);
  if (nativePath.empty() || nativePath.front() != '/') return {path, PathMatch::None, {}};
  if (const FoundPath* seen = SourceCache::Seen(path)) return *seen;
  FoundPath found = Look(nativePath);
  SourceCache::Saw(path, found);
  return found;
}

KeptFolders::KeptFolders() : mKnown(InUse<KnownFolders>()) {
  if (++mKnown.Keepers == 1) ++mKnown.Run;
}

KeptFolders::~KeptFolders() {
  if (--mKnown.Keepers == 0) mKnown.Folders.clear();
}

int KeptFolders::Run() {
  const KnownFolders& known = InUse<KnownFolders>();
  return known.Keepers > 0 ? known.Run : 0;
}

void KeptFolders::Note(const std::string& folder, std::vector<FolderEntry> entries) {
  if (Run() == 0 || Folders().size() >= kMostKept) return;
  Folder noted;
  noted.Path = folder;
  noted.Match = PathMatch::Exact;
  Fill(noted, std::move(entries));
  Folders().try_emplace(folder, std::move(noted));
}

std::vector<FolderEntry> KeptFolders::Entries(const std::string& folder) {
  const auto known = Folders().find(folder);
  const bool isThis = known != Folders().end() && known->second.Path == folder;
  if (Run() != 0 && isThis && known->second.Exists) return known->second.Entries;
  std::vector<FolderEntry> entries;
  FileSource::Current().List(folder, entries);
  std::sort(entries.begin(), entries.end(), IsBefore);
  return entries;
}

void ForgetFolders() {
  KnownFolders& known = InUse<KnownFolders>();
  known.Folders.clear();
  known.HasDecodedNames = false;
  SourceCache::ForgetLost();
}

void ForgetFoldersOfLoad() {
  if (KeptFolders::Run() == 0 || Folders().size() > kMostKept) ForgetFolders();
}

// A folder may be known by a name that was decoded, so that none is sure once one was.
void ForgetDecodedNames() {
  if (InUse<KnownFolders>().HasDecodedNames) ForgetFolders();
}

// A file that is there joins the listing, which stays: a project of many modules written into one
// folder asks for each of them.
void ForgetFolderOf(std::string_view nativePath) {
  FolderMap& folders = Folders();
  SourceCache::ForgetLost();
  const std::string parent(ParentOf(nativePath));
  const std::string name(LeafOf(nativePath));
  FileStatus status;
  const bool isFile = FileSource::Current().Status(std::string(nativePath), status) >= 0 &&
                      status.Type == FileStatus::Kind::File;
  for (auto entry = folders.begin(); entry != folders.end();) {
    Folder& folder = entry->second;
    // A folder that came or went may be known under its own and other spellings, too.
    if (!folder.Exists || (folder.Path == parent && !isFile)) {
      entry = folders.erase(entry);
      continue;
    }
    if (folder.Path == parent && !Holds(folder, name)) {
      const FolderEntry file{name, false, false};
      folder.Entries.insert(
          std::upper_bound(folder.Entries.begin(), folder.Entries.end(), file, IsBefore), file);
      folder.ByFoldedName.clear();
      if (!IsValidUtf8(name)) InUse<KnownFolders>().HasDecodedNames = true;
    }
    ++entry;
  }
}

}  // namespace vendrel
