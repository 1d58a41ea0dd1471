#pragma once
// The directory of the metadata: which streams there are.

#include <cstdint>
#include <span>
#include <string_view>

namespace vendrel::metadata {

/// The streams of one file, as parts of its bytes; empty where one is absent.
struct Streams {
  std::string_view Version;
  std::span<const std::uint8_t> Tables, Strings, Blobs, Guids;
  /// Every index is four bytes wide, whatever the table stream says.
  bool WideIndexes = false;
};

/// Reads the root. Raises DataError where it cannot be followed or has no tables.
Streams ReadRoot(std::span<const std::uint8_t> metadata);

}  // namespace vendrel::metadata
