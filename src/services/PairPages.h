#pragma once
// The East Asian code pages, whose characters take one byte or two: how well bytes read as each.

#include <cstddef>
#include <span>
#include <string_view>

namespace vendrel {

/// What the bytes beyond ASCII of a text come to under one page. Counts are of characters.
struct PairCounts {
  std::size_t Valid = 0;
  std::size_t Invalid = 0;
  /// Of the valid ones, everyday characters, and those of them that have a neighbour: in a text of
  /// the page nearly all stand in words, while two accented letters side by side stand alone.
  std::size_t Common = 0, CommonInWords = 0;
  /// Different everyday characters.
  std::size_t Distinct = 0;

  std::size_t All() const { return Valid + Invalid; }
};

/// Names of these pages, as `CodePage::Find` takes them.
std::span<const std::string_view> PairPageNames();

/// Whether that page is one of them.
bool IsPairPage(std::string_view name);

/// Reads `text` under the page of that name; all zero for a page that is none of them. An ASCII
/// letter behind a byte that begins a pair may be its second half.
PairCounts CountPairs(std::string_view name, std::string_view text);

}  // namespace vendrel
