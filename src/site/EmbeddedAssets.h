#pragma once
// The files of assets/ as they were when the library was built; cmake/EmbedAssets.cmake writes what
// stands behind this.

#include <span>
#include <string_view>

namespace vendrel::site {

struct EmbeddedAsset {
  std::string_view Name;
  std::string_view Text;
};
std::span<const EmbeddedAsset> EmbeddedAssets();

}  // namespace vendrel::site
