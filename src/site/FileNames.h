#pragma once
// Names of a file of source that have no page: what is declared there, and where it is used.

#include <cstdint>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "site/SiteRun.h"

namespace vendrel::site {

/// Local names, parameters, and private members that are left out. Each that is used beside its
/// declaration gets a place on the page of its declaration.
class FileNames {
 public:
  /// `names` are in the order of their places, and stay.
  FileNames(const SiteRun& run, const SourceEntry& source, std::span<const BoundName> names);

  /// Where the uses of an element are listed, as seen from a page of the file; empty if nowhere.
  std::string HrefOf(const CodeElement& element, std::size_t piece) const;
  /// Appends the list for what is declared on a page; nothing where nothing is.
  void Append(std::string& html, std::size_t piece) const;

 private:
  struct Entry {
    const CodeElement* Element;
    std::int32_t Line, Column;
    /// Of its uses, each once.
    std::vector<std::int32_t> Lines;
    bool IsListed = false;
  };
  std::string RowOf(const Entry& entry) const;
  /// An address on the page of a line, as seen from another page of the file.
  std::string HrefTo(std::int32_t line, const std::string& anchor, std::size_t piece) const;

  const SourceEntry& mSource;
  std::vector<Entry> mEntries;
  std::unordered_map<const CodeElement*, std::size_t> mPlaces;
};

}  // namespace vendrel::site
