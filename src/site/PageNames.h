#pragma once
// Names of files and anchors from names of elements.

#include <cstdint>
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

/// Of a whole content.
std::uint64_t HashOf(std::string_view bytes);

}  // namespace vendrel::site
