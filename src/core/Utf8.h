#pragma once
// Text in memory is UTF-8 and always valid; these few functions make it so.

#include <cstddef>
#include <string>
#include <string_view>

namespace vendrel {

/// What stands for bytes that mean no character.
constexpr char32_t ReplacementCharacter = 0xFFFD;

/// What one pass over a text finds.
struct ByteSummary {
  bool Ascii = true;
  bool HasNul = false;
  std::size_t CarriageReturns = 0;
  std::size_t LineFeeds = 0;
  /// Line feeds directly behind a carriage return.
  std::size_t Pairs = 0;
};

/// Counts line ends, finds bytes beyond ASCII and NULs, at the speed of memory.
ByteSummary SummariseBytes(std::string_view bytes);

/// 0-based position of the first byte beyond ASCII from `start` on; the size if there is none.
std::size_t FirstNonAscii(std::string_view bytes, std::size_t start = 0);

/// Whether `bytes` is well-formed UTF-8 (no surrogates, no overlong forms).
bool IsValidUtf8(std::string_view bytes);

/// Takes the character at `position` and moves behind it. An ill-formed byte is taken alone and
/// gives `IllFormed`, as which no character counts.
char32_t TakeCharacter(std::string_view text, std::size_t& position);
constexpr char32_t IllFormed = 0xFFFFFFFF;

/// Whether a character turns the text behind it to another direction: embeddings, overrides and
/// isolates. What is shown then need not be the order of the text.
constexpr bool IsDirectionControl(char32_t c) {
  return (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
}

/// 0-based position of the first such character from `start` on; the size if there is none. At the
/// speed of memory.
std::size_t FirstDirectionControl(std::string_view text, std::size_t start = 0);

/// "U+202E": how a character that cannot be shown is named.
std::string CodePointName(char32_t character);

/// Appends one character. Surrogates and numbers beyond U+10FFFF become U+FFFD.
void AppendUtf8(std::string& out, char32_t character);

/// Appends `bytes` with each ill-formed byte as U+FFFD; false if there was one.
bool AppendSanitised(std::string& out, std::string_view bytes);

}  // namespace vendrel
