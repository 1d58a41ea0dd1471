#pragma once
// Names of files and anchors from names of elements.

#include <cstdint>
#include <deque>
#include <initializer_list>
#include <string>
#include <string_view>
#include <unordered_map>

#include "core/ContentHash.h"

namespace vendrel::site {

/// Gives out names for one folder, or anchors for one page: letters, digits, "_", "-" and "." of
/// ASCII, some 80 at most, "--" nowhere (further pages of one element have it), none that a system
/// keeps for itself, and no two that differ by case only. A name that had to be changed gets a
/// number made from its whole text behind it, so that its address does not depend on its
/// neighbours.
class PageNames {
 public:
  PageNames() = default;
  PageNames(std::initializer_list<std::string_view> taken);
  std::string Take(std::string_view name);

 private:
  /// In small letters, with how often each was given out.
  std::unordered_map<std::string, std::uint32_t> mTaken;
};

/// The leaf of a page of several, counted from 0: "stem.html", "stem--2.html".
std::string LeafOfPage(std::string_view stem, std::size_t page);
/// "index.html" and "v-Total" of "index.html#v-Total".
std::string_view PageOfLeaf(std::string_view leaf);
std::string_view AnchorOfLeaf(std::string_view leaf);

/// Texts that stay where they are until all go at once: their views hold as long as the pool.
class TextPool {
 public:
  std::string_view Add(std::string_view text);

 private:
  std::deque<std::string> mBlocks;
};

/// Of a whole content.
std::uint64_t HashOf(std::string_view bytes);

}  // namespace vendrel::site
