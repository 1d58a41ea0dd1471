#include "project/ProjectCodePage.h"

#include <algorithm>
#include <array>
#include <set>
#include <vector>

#include "core/Ascii.h"
#include "core/Utf8.h"
#include "diagnostics/VendrelError.h"
#include "model/ModuleKinds.h"
#include "services/CodePage.h"
#include "services/FileSource.h"
#include "services/FolderCache.h"
#include "services/SourceCache.h"
#include "services/SourceText.h"
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

struct ListedFile {
  FileSystemObject File;
  /// Its name has letters beyond ASCII.
  bool Tells = false;
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

  struct Found {
    std::vector<std::string> Pages;
    std::size_t Count = 0, Of = 0;
    std::string Evidence() const {
      return std::to_string(Count) + " of " + std::to_string(Of) +
             " listed files with letters beyond ASCII exist under it";
    }
  };

  const std::string& Bytes() const { return mBytes; }

  // The pages under which most listed files with letters beyond ASCII exist; none if none exist.
  Found ByFiles() const {
    Found found;
    const auto first = SourceText::Decode(mBytes, CodePage::Default());
    if (first->Encoding != TextEncoding::CodePage || !NamesTell(first->Text)) return found;
    PageForNow page;
    for (const char* name : kPages) {
      page.Set(name);
      std::size_t count = 0, of = 0;
      for (const ListedFile& listed : Listed(CodePage::Named(name), true)) {
        if (!listed.Tells) continue;
        ++of;
        if (listed.File.Exists()) ++count;
      }
      if (count == 0 || count < found.Count) continue;
      if (count > found.Count) found = {{}, count, of};
      found.Pages.emplace_back(name);
    }
    return found;
  }

  // The listed modules, and other files too where asked for, by the names of that page.
  std::vector<ListedFile> Listed(const CodePage& page, bool others) const {
    std::vector<ListedFile> files;
    const auto text = SourceText::Decode(mBytes, page);
    std::string_view rest = text->Text;
    while (!rest.empty()) {
      const std::string_view path = PathOf(TakeLine(rest), others);
      if (path.empty()) continue;
      ListedFile& listed = files.emplace_back();
      listed.File.SetBaseFile(&mFile);
      listed.File.SetFullPath(path);
      listed.Tells = FirstNonAscii(path) < path.size();
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

  static bool NamesTell(std::string_view text) {
    while (!text.empty()) {
      const std::string_view path = PathOf(TakeLine(text), true);
      if (FirstNonAscii(path) < path.size()) return true;
    }
    return false;
  }

  mutable FileSystemObject mFile;
  std::string mBytes;
};

class PageGuesser {
 public:
  explicit PageGuesser(const FileSystemObject& file)
      : mFile(file), mListing(file, SourceCache::Bytes) {}

  CodePageGuess Run() {
    const bool isList = IsList(mFile);
    const ListingFile::Found found = isList ? mListing.ByFiles() : ListingFile::Found();
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
    for (const ListedFile& module : mListing.Listed(page, false)) {
      Feed(mOwn, module.File.NativePath(), SourceCache::Bytes);
      mFolders.insert(module.File.FolderPath());
    }
  }

  // A file that cannot be read is told when it is loaded.
  template <typename Read>
  void Feed(TellingBytes& bytes, const std::string& path, Read read) {
    if (!mRead.insert(path).second) return;
    try {
      bytes.Feed(read(path));
    } catch (const VendrelError&) {
    }
  }

  CodePageGuess ByNeighbours(const CodePageGuess& own) {
    const std::string few =
        "of its own only " + std::to_string(mOwn.Count()) + " bytes beyond ASCII; ";
    const std::vector<std::string> paths = Neighbours();
    for (const std::string& path : paths) {
      if (!EndsWithNoCaseAscii(path, ".vbp")) continue;
      const ListingFile::Found found = ListingFile(FileSystemObject(path), ReadWholeFile).ByFiles();
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
  std::vector<std::string> Neighbours() const {
    std::vector<std::string> paths;
    std::size_t bytes = 0;
    for (const std::string& folder : mFolders) {
      std::vector<std::string> inFolder = SourcesIn(FileSystemObject(folder).NativePath());
      for (std::string& path : inFolder) {
        FileStatus status;
        if (mRead.contains(path) || FileSource::Current().Status(path, status) < 0) continue;
        bytes += static_cast<std::size_t>(status.Size);
        if (paths.size() >= kMostNeighbours || bytes > kMostNeighbourBytes) return paths;
        paths.push_back(std::move(path));
      }
    }
    return paths;
  }

  static std::vector<std::string> SourcesIn(std::string folder) {
    if (folder.empty()) return {};
    while (folder.ends_with('/')) folder.pop_back();
    std::vector<FolderEntry> entries;
    FileSource::Current().List(folder.empty() ? "/" : folder, entries);
    folder.push_back('/');
    std::vector<std::string> paths;
    for (const FolderEntry& entry : entries) {
      if (!entry.IsFolder && IsSource(entry.Name)) paths.push_back(folder + entry.Name);
    }
    std::sort(paths.begin(), paths.end());
    return paths;
  }

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
