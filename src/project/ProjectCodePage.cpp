#include "project/ProjectCodePage.h"

#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <unordered_map>
#include <utility>
#include <vector>

#include "core/Ascii.h"
#include "core/Utf8.h"
#include "core/Workspace.h"
#include "diagnostics/VendrelError.h"
#include "model/ModuleKinds.h"
#include "services/CodePage.h"
#include "services/FileSource.h"
#include "services/FolderCache.h"
#include "services/SourceCache.h"
#include "services/SourceText.h"
#include "services/SourcesAhead.h"
#include "text/Words.h"

namespace vendrel {
namespace {

// Pages that machines wrote project files with; of those that answer alike, the first.
constexpr std::array kPages{"windows-1252", "cp932",        "cp936",        "cp949",
                            "cp950",        "windows-1250", "windows-1251", "windows-1253",
                            "windows-1254", "windows-1255", "windows-1256", "windows-1257",
                            "windows-1258", "cp874"};

// Lines of a project file that name other files of it than modules, and the members of a group.
constexpr std::string_view kOtherKeys[] = {"RELATEDDOC", "RESFILE32", "PROJECT", "STARTUPPROJECT"};

// What is read beside a project with few bytes of its own.
constexpr std::size_t kMostNeighbours = 300;
constexpr std::size_t kMostNeighbourBytes = std::size_t{16} << 20;

template <typename List>
bool Holds(const List& list, std::string_view key) {
  return std::find(std::begin(list), std::end(list), key) != std::end(list);
}

bool IsSource(std::string_view name) {
  const std::size_t dot = name.rfind('.');
  if (dot == std::string_view::npos) return false;
  const std::string_view extension = name.substr(dot + 1);
  return EqualsNoCaseAscii(extension, "vbp") || ModuleKindOfExtension(extension);
}

bool IsList(const FileSystemObject& file) {
  const std::string extension = LowerAscii(file.Extension());
  return extension == "vbp" || extension == "vbg";
}

// The page in force and the listings made by it, which hold for one question at a time.
class PageForNow {
 public:
  PageForNow() : mBefore(FileOptions::Current().CodePage) {}
  ~PageForNow() { Set(mBefore); }
  PageForNow(const PageForNow&) = delete;
  PageForNow& operator=(const PageForNow&) = delete;
  void Set(const std::string& page) {
    FileOptions::Current().CodePage = page;
    ForgetDecodedNames();
  }

 private:
  std::string mBefore;
};

// The page under which most listed files with letters beyond ASCII exist, or several such pages.
struct PagesFound {
  std::vector<std::string> Pages;
  std::size_t Count = 0, Of = 0;
  std::string Evidence() const {
    return std::to_string(Count) + " of " + std::to_string(Of) +
           " listed files with letters beyond ASCII exist under it";
  }
};

// A file that lists others, read without its page being known.
class ListingFile {
 public:
  /// `read` gives the bytes of a native path.
  template <typename Read>
  ListingFile(const FileSystemObject& file, Read read) : mFile(file) {
    try {
      mBytes = read(file.NativePath());
    } catch (const VendrelError&) {
    }
  }

  const std::string& Bytes() const { return mBytes; }

  // No pages if none of the files exist.
  PagesFound ByFiles() const {
    PagesFound found;
    const auto first = SourceText::Decode(mBytes, CodePage::Default());
    if (first->Encoding != TextEncoding::CodePage || !NamesTell(first->Text)) return found;
    PageForNow page;
    for (const char* name : kPages) {
      page.Set(name);
      std::size_t count = 0, of = 0;
      for (const FileSystemObject& file : Listed(CodePage::Named(name), Which::ThatTell)) {
        ++of;
        if (file.Exists()) ++count;
      }
      if (count == 0 || count < found.Count) continue;
      if (count > found.Count) found = {{}, count, of};
      found.Pages.emplace_back(name);
    }
    return found;
  }

  enum class Which {
    Modules,
    /// Files of all kinds whose names have letters beyond ASCII.
    ThatTell
  };
  // The listed files by the names of that page.
  std::vector<FileSystemObject> Listed(const CodePage& page, Which which) const {
    std::vector<FileSystemObject> files;
    const auto text = SourceText::Decode(mBytes, page);
    std::string_view rest = text->Text;
    while (!rest.empty()) {
      const std::string_view line = TakeLine(rest);
      const std::string_view path =
          which == Which::Modules ? PathOf(line, false) : TellingPath(line);
      if (path.empty()) continue;
      FileSystemObject& file = files.emplace_back();
      file.SetBaseFile(&mFile);
      file.SetFullPath(path);
    }
    return files;
  }

 private:
  // "Form=path", "Module=name; path", "Project=path".
  static std::string_view PathOf(std::string_view line, bool others) {
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos) return {};
    const std::string key = UpperAscii(Trim(line.substr(0, equals)));
    if (!ModuleKindOfKey(key) && !(others && Holds(kOtherKeys, key))) return {};
    std::string_view value = line.substr(equals + 1);
    if (const std::size_t semicolon = value.find(';'); semicolon != std::string_view::npos) {
      value.remove_prefix(semicolon + 1);
      value = TakeField(value, ';');
    }
    return StripQuotes(Trim(value));
  }

  // The path of a line, if it has letters beyond ASCII; else empty.
  static std::string_view TellingPath(std::string_view line) {
    if (FirstNonAscii(line) == line.size()) return {};
    const std::string_view path = PathOf(line, true);
    return FirstNonAscii(path) < path.size() ? path : std::string_view();
  }
  static bool NamesTell(std::string_view text) {
    while (!text.empty())
      if (!TellingPath(TakeLine(text)).empty()) return true;
    return false;
  }

  mutable FileSystemObject mFile;
  std::string mBytes;
};

struct SourceInFolder {
  std::string Path;
  /// Nothing until it is asked for.
  std::optional<std::size_t> Size;
};

// Project files and modules in a folder, in the order of their paths.
std::vector<SourceInFolder> ReadSourcesIn(std::string folder) {
  if (folder.empty()) return {};
  while (folder.ends_with('/')) folder.pop_back();
  const std::vector<FolderEntry> entries = KeptFolders::Entries(folder.empty() ? "/" : folder);
  folder.push_back('/');
  std::vector<SourceInFolder> sources;
  for (const FolderEntry& entry : entries)
    if (!entry.IsFolder && IsSource(entry.Name)) sources.push_back({folder + entry.Name, {}});
  return sources;
}

// Whether something is there, with its size.
bool HasSize(SourceInFolder& source) {
  if (source.Size) return true;
  FileStatus status;
  if (FileSource::Current().Status(source.Path, status) < 0) return false;
  source.Size = static_cast<std::size_t>(status.Size);
  return true;
}

// What guesses have learned of folders and files. Projects that lie side by side are each other's
// neighbours: while folders are kept, each file is read for this once.
class KnownSources {
 public:
  static KnownSources& Current() {
    KnownSources& known = InUse<KnownSources>();
    const int run = KeptFolders::Run();
    const bool isMuch = known.mFiles.size() > kMostFiles || known.mBytes > kMostBytes;
    if (run == 0 || run != known.mRun || isMuch) known = {};
    known.mRun = run;
    return known;
  }

  std::vector<SourceInFolder>& In(const std::string& folder) {
    const auto [found, isNew] = mFolders.try_emplace(folder);
    if (isNew) found->second = ReadSourcesIn(folder);
    return found->second;
  }

  // Has a file join the bytes, read by `read` where it is not known.
  template <typename Read>
  void Feed(TellingBytes& bytes, const std::string& path, Read read) {
    if (bytes.IsFull()) return;
    if (mRun == 0) return bytes.Feed(read(path));
    if (const auto known = mFiles.find(path); known != mFiles.end() && bytes.Add(known->second))
      return;
    const auto& whole = read(path);
    TellingBytes ofFile;
    ofFile.Feed(whole);
    if (!bytes.Add(ofFile)) return bytes.Feed(whole);
    mBytes += ofFile.Size();
    mFiles.emplace(path, std::move(ofFile));
  }

  const PagesFound& ByFilesOf(const std::string& path) {
    const auto [found, isNew] = mLists.try_emplace(path);
    if (isNew) found->second = ListingFile(FileSystemObject(path), ReadWholeFile).ByFiles();
    return found->second;
  }

 private:
  static constexpr std::size_t kMostFiles = 10'000;
  static constexpr std::size_t kMostBytes = std::size_t{8} << 20;

  int mRun = 0;
  std::size_t mBytes = 0;
  std::unordered_map<std::string, std::vector<SourceInFolder>> mFolders;
  std::unordered_map<std::string, TellingBytes> mFiles;
  std::unordered_map<std::string, PagesFound> mLists;
};

class PageGuesser {
 public:
  explicit PageGuesser(const FileSystemObject& file)
      : mFile(file), mListing(file, SourceCache::Bytes) {}

  CodePageGuess Run() {
    const bool isList = IsList(mFile);
    const PagesFound found = isList ? mListing.ByFiles() : PagesFound();
    if (found.Pages.size() == 1) return {found.Pages.front(), found.Evidence()};
    mFolders.insert(mFile.FolderPath());
    FeedOwn(isList, found.Pages.empty() ? CodePage::Default() : CodePage::Named(found.Pages[0]));
    CodePageGuess guess = mOwn.Choose(found.Pages);
    if (!found.Pages.empty()) guess.Evidence = found.Evidence() + "; " + guess.Evidence;
    const bool isSettled = !found.Pages.empty() || !mOwn.IsFew() || mOwn.Count() == 0;
    return isSettled ? guess : ByNeighbours(guess);
  }

 private:
  void FeedOwn(bool isList, const CodePage& page) {
    mOwn.Feed(mListing.Bytes());
    mRead.insert(mFile.NativePath());
    if (!isList) return;
    std::vector<std::string> paths;
    for (const FileSystemObject& module : mListing.Listed(page, ListingFile::Which::Modules)) {
      paths.push_back(module.NativePath());
      mFolders.insert(module.FolderPath());
    }
    ReadSourcesAhead(paths);
    for (const std::string& path : paths) Feed(mOwn, path, SourceCache::Bytes);
  }

  // A file that cannot be read is told when it is loaded.
  template <typename Read>
  void Feed(TellingBytes& bytes, const std::string& path, Read read) {
    if (!mRead.insert(path).second) return;
    try {
      mKnown.Feed(bytes, path, read);
    } catch (const VendrelError&) {
    }
  }

  CodePageGuess ByNeighbours(const CodePageGuess& own) {
    const std::string few =
        "of its own only " + std::to_string(mOwn.Count()) + " bytes beyond ASCII; ";
    const std::vector<std::string> paths = Neighbours();
    for (const std::string& path : paths) {
      if (!EndsWithNoCaseAscii(path, ".vbp")) continue;
      const PagesFound& found = mKnown.ByFilesOf(path);
      if (found.Pages.size() == 1 && mOwn.Fit(found.Pages[0]))
        return {found.Pages[0],
                few + FileSystemObject(path).LeafName() + " beside it: " + found.Evidence()};
    }
    TellingBytes all = mOwn;
    for (const std::string& path : paths) Feed(all, path, ReadWholeFile);
    if (all.Count() < 2 * mOwn.Count()) return own;
    CodePageGuess guess = all.Choose();
    if (guess.Page == own.Page || !mOwn.Fit(guess.Page)) return own;
    guess.Evidence = few + "with the files beside them " + guess.Evidence;
    return guess;
  }

  // Project files beside this one and the sources in the folders of its modules, in the order of
  // their paths.
  std::vector<std::string> Neighbours() {
    std::vector<std::string> paths;
    std::size_t bytes = 0;
    for (const std::string& folder : mFolders) {
      for (SourceInFolder& source : mKnown.In(FileSystemObject(folder).NativePath())) {
        if (mRead.contains(source.Path) || !HasSize(source)) continue;
        bytes += *source.Size;
        if (paths.size() >= kMostNeighbours || bytes > kMostNeighbourBytes) return paths;
        paths.push_back(source.Path);
      }
    }
    return paths;
  }

  KnownSources& mKnown = KnownSources::Current();
  FileSystemObject mFile;
  ListingFile mListing;
  TellingBytes mOwn;
  std::set<std::string> mFolders, mRead;
};

}  // namespace

CodePageGuess GuessCodePage(const FileSystemObject& file) {
  CodePageGuess guess = PageGuesser(file).Run();
  ForgetDecodedNames();  // those of the page in force, which may change now
  return guess;
}

}  // namespace vendrel
