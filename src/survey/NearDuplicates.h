#pragma once
// Modules most of whose lines are the same.

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace vendrel {

/// How many elements two sorted lists have in common; an element that stands several times counts
/// as often as it has a partner.
std::size_t CommonOf(const std::vector<std::uint32_t>& a, const std::vector<std::uint32_t>& b);

/// Two texts, by the order in which they were added, and how much of their lines is common: twice
/// the number of common lines to that of both, in percent.
struct NearDuplicate {
  std::size_t First = 0, Second = 0;
  int Percent = 0;
};

/// Finds pairs of texts that are nearly equal. Only texts that share some of their least hashes are
/// compared, so that the time goes with the number of lines, not of pairs.
class NearDuplicates {
 public:
  static constexpr int kLeastPercent = 80;

  /// Adds a text. Its lines count without blanks around them, whatever their letter case; blank
  /// lines and comments do not.
  void Add(std::string_view text);
  /// The pairs that have that much in common and are not equal, in the order of their texts.
  std::vector<NearDuplicate> Find() const;

 private:
  /// Hashes of the lines of each text, sorted.
  std::vector<std::vector<std::uint32_t>> mLines;
};

}  // namespace vendrel
