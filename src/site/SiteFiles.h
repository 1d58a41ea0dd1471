#pragma once
// The folder of a site: a list of its files with their hashes says what is the site's own and what
// has to be written.

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "site/PageNames.h"

namespace vendrel::site {

/// What a run did with the files of a site.
struct FileCounts {
  std::size_t Written = 0;
  std::size_t Unchanged = 0;
  std::size_t Removed = 0;
  std::uint64_t Bytes = 0;
};

/// Writes the files of one site. Files that are not on its list are never removed, and never
/// replaced without `Force`. What a run that was killed has written is known from a journal beside
/// the list.
class SiteFiles {
 public:
  /// `folder` is a native path; it is made where it is not there. Raises 75 with the reason where
  /// it holds files and no list, unless `force`.
  SiteFiles(std::string folder, bool force);
  ~SiteFiles();
  SiteFiles(const SiteFiles&) = delete;
  SiteFiles& operator=(const SiteFiles&) = delete;

  /// A file of the site, by its path with "/". Written if it is not there with that content.
  /// Raises 75 for a foreign file in its place.
  void Put(std::string_view path, std::string_view content);
  /// Removes what is the site's own and was not put, folders that are empty then too, and writes
  /// the list.
  FileCounts Finish();
  const FileCounts& SoFar() const { return mCounts; }

 private:
  struct Known {
    std::uint64_t Hash = 0;
    std::uint64_t Size = 0;
    bool IsPut = false;
    /// From the journal: what it holds is not known.
    bool IsDoubtful = false;
  };
  using Files = std::unordered_map<std::string_view, Known>;
  Known& KnownOf(std::string_view path);
  void ReadList(const std::string& name, bool isJournal);
  void RefuseForeignFolder() const;
  bool IsThere(const std::string& native, std::uint64_t size) const;
  void MakeFolders(std::string_view path);
  void WriteNew(const std::string& native, std::string_view content) const;
  void Replace(const std::string& native, std::string_view content) const;
  void WriteJournal(std::string_view path);
  void RemoveGone();
  void WriteList();
  std::string NativeOf(std::string_view path) const;

  std::string mFolder;
  bool mForce;
  bool mHasList = false;
  TextPool mPaths;
  Files mFiles;
  std::unordered_set<std::string> mFolders;
  int mJournal = -1;
  FileCounts mCounts;
};

}  // namespace vendrel::site
