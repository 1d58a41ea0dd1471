#pragma once
// The first bytes of a text looked at in one step: a line of source is seldom longer, and what it
// is shows by few characters.

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vendrel {

/// How many bytes a glance takes in: all of them have to be there.
inline constexpr std::size_t kGlance = 64;

/// A bit for each of these bytes at which a certain character stands, the first byte's the lowest.
struct LineGlance {
  std::uint64_t Feeds = 0;
  /// Blanks and tabs.
  std::uint64_t Gaps = 0;
  std::uint64_t Tabs = 0;
  std::uint64_t Quotes = 0;
  /// Apostrophes, colons and bytes beyond ASCII (`IsMark`).
  std::uint64_t Marks = 0;
};

/// Looks at the `kGlance` bytes from `text` on.
void GlanceAt(const char* text, LineGlance& glance);

/// A line of which a glance took in all.
struct GlancedLine {
  /// Without its end.
  std::string_view Line;
  LineGlance Glance;
  /// Its bytes with its end.
  std::size_t Bytes = 0;
};

/// Looks at the first line of a text of which each line ends in LF or each in CR LF. False, and
/// `line` means nothing, where it is too long for a glance, or stands near the end of the text, and
/// on machines that would look at byte after byte.
bool GlanceAtLine(std::string_view text, GlancedLine& line);

/// The bits of the first `count` places, of all 64 from there on.
constexpr std::uint64_t PlacesBelow(std::size_t count) {
  return count < 64 ? (std::uint64_t{1} << count) - 1 : ~std::uint64_t{0};
}

}  // namespace vendrel
