#pragma once
// Blanks of a line: most lines hold nothing to change.

#include <cstddef>
#include <string>
#include <string_view>

#include "core/EightBytes.h"

namespace vendrel {

/// The first byte from `at` on that may end a statement, or begin a blank of another kind than " ":
/// an apostrophe, a colon, a byte beyond ASCII. The size of the text where there is none.
std::size_t FirstMark(std::string_view text, std::size_t at = 0);

/// What a text holds anywhere.
struct HeldBytes {
  bool Tab = false;
  /// Two blanks side by side.
  bool TwoBlanks = false;
  /// What `FirstMark` looks for.
  bool Mark = false;
};
HeldBytes BytesHeldBy(std::string_view text);

/// Bytes of the character that begins with `lead`.
constexpr std::size_t CharLength(unsigned char lead) {
  return lead < 0xC0 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

/// Length of the blank that stands at `at` and is no " ": a no-break or ideographic one, or one of
/// the typographic ones; 0 if none does.
std::size_t OtherBlankAt(std::string_view text, std::size_t at);

/// The statement with blanks of every kind as blanks, but for those in strings; written to
/// `buffer`, of which the result is a view without blanks in front.
std::string_view WithPlainBlanks(std::string_view statement, std::string& buffer);

/// The statement with each run of blanks as one; written to `buffer` where there are any.
std::string_view Collapsed(std::string_view statement, std::string& buffer);

}  // namespace vendrel
