#pragma once
// A walk over a text that means something at few of its characters.

#include <array>
#include <cstddef>
#include <string_view>

namespace vendrel {

/// The characters at which a walk stops; all ASCII.
class StopBytes {
 public:
  constexpr explicit StopBytes(std::string_view bytes) {
    for (const char c : bytes) mStops[static_cast<unsigned char>(c)] = true;
  }
  /// The first place from `at` on where one of them stands; the size of the text if none does.
  constexpr std::size_t Next(std::string_view text, std::size_t at) const {
    while (at < text.size() && !mStops[static_cast<unsigned char>(text[at])]) ++at;
    return at;
  }

 private:
  std::array<bool, 256> mStops{};
};

}  // namespace vendrel
