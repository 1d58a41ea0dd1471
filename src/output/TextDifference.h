#pragma once
// What differs between two lists of texts, and between the lines of two blocks.

#include <span>
#include <string>

#include "text/CodeLines.h"

namespace vendrel {

/// Two texts that differ, or the same in two lists.
struct TextPair {
  std::string Before, After;
};

/// What each list has that the other has not, or not as often; both whole where only the order
/// differs.
TextPair DifferenceOf(std::span<const std::string> before, std::span<const std::string> after);

/// Gives what stands between the lines that both begin with and those that both end with; false if
/// that is nothing. Without `comments` only code counts. Lines that were never read, or have been
/// unloaded (or null), are none.
bool DifferenceOf(const CodeLines* before, const CodeLines* after, bool comments,
                  TextPair& difference);

}  // namespace vendrel
