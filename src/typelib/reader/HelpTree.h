#pragma once

#include <string>

#include "services/ByteStream.h"

namespace vendrel::typelib {

/// Help strings of the older format: words of the library as leaves of a binary tree, each string
/// the bits of the ways to its words.
class HelpTree {
 public:
  HelpTree() = default;
  /// `area`: longest string + 1, length of the tree, the tree.
  explicit HelpTree(ByteStream area);

  /// The words from the cursor of `bits` on, joined by blanks. Raises DataError when the tree or
  /// the bits end too soon, or the string is longer than the library says.
  std::string Decode(ByteStream bits) const;

 private:
  ByteStream mTree;
  std::size_t mLongest = 0;
};

}  // namespace vendrel::typelib
