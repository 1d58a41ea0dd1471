#pragma once
// The few text operations that every room needs. Keywords of the language are ASCII, so letters
// are folded in ASCII only and positions hold; names are folded by core/CaseFold.h.

#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace vendrel {

constexpr char UpperAscii(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; }
constexpr char LowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }
constexpr bool IsDigitAscii(char c) { return c >= '0' && c <= '9'; }
constexpr bool IsLetterAscii(char c) { return UpperAscii(c) >= 'A' && UpperAscii(c) <= 'Z'; }

inline std::string UpperAscii(std::string_view text) {
  std::string result(text);
  for (char& c : result) c = UpperAscii(c);
  return result;
}

inline std::string LowerAscii(std::string_view text) {
  std::string result(text);
  for (char& c : result) c = LowerAscii(c);
  return result;
}

/// Whether the first `count` characters of both, one at least, are equal but for the case of ASCII
/// letters.
bool SameNoCaseAscii(const char* a, const char* b, std::size_t count);

/// Equal but for the case of ASCII letters. What differs mostly does so in length or in the first
/// letter, which is seen without a call.
constexpr bool EqualsNoCaseAscii(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  if (a.empty()) return true;
  if (!std::is_constant_evaluated())
    return ((a.front() ^ b.front()) & ~0x20) == 0 && SameNoCaseAscii(a.data(), b.data(), a.size());
  for (std::size_t i = 0; i < a.size(); ++i)
    if (UpperAscii(a[i]) != UpperAscii(b[i])) return false;
  return true;
}

constexpr bool StartsWithNoCaseAscii(std::string_view text, std::string_view prefix) {
  if (text.size() < prefix.size()) return false;
  return EqualsNoCaseAscii({text.data(), prefix.size()}, prefix);
}

constexpr bool EndsWithNoCaseAscii(std::string_view text, std::string_view suffix) {
  if (text.size() < suffix.size()) return false;
  return EqualsNoCaseAscii({text.data() + (text.size() - suffix.size()), suffix.size()}, suffix);
}

/// What a search gives that finds nothing.
inline constexpr std::size_t kNotFound = std::string_view::npos;

/// 0-based position of `sought` in `text`, ASCII case ignored, from `start` on; else `kNotFound`.
std::size_t FindNoCaseAscii(std::string_view text, std::string_view sought, std::size_t start = 0);

inline bool ContainsNoCaseAscii(std::string_view text, std::string_view sought) {
  return FindNoCaseAscii(text, sought) != kNotFound;
}

/// Without leading / trailing / outer blanks. Only the blank counts: tabs stay.
constexpr std::string_view TrimLeft(std::string_view text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  return text;
}
constexpr std::string_view TrimRight(std::string_view text) {
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  return text;
}
constexpr std::string_view Trim(std::string_view text) { return TrimRight(TrimLeft(text)); }

/// Without outer blanks and tabs: for files of settings, where both are gaps.
constexpr bool IsGap(char c) { return c == ' ' || c == '\t'; }
constexpr std::string_view TrimGaps(std::string_view text) {
  while (!text.empty() && IsGap(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsGap(text.back())) text.remove_suffix(1);
  return text;
}

/// Takes the text up to `delimiter` off the front of `rest` and returns it; at the end all of it.
inline std::string_view TakeField(std::string_view& rest, char delimiter) {
  const std::size_t at = rest.find(delimiter);
  if (at == std::string_view::npos) return std::exchange(rest, {});
  const std::string_view field(rest.data(), at);
  rest.remove_prefix(at + 1);
  return field;
}

/// Walks the fields of a text in order, each once. Unlike `TakeField` it gives the empty field
/// behind a delimiter that ends the text.
class FieldCursor {
 public:
  /// Views: text and delimiter must outlive the cursor. With an empty delimiter the text is one
  /// field; an empty text has none.
  FieldCursor(std::string_view text, std::string_view delimiter)
      : mRest(text), mDelimiter(delimiter), mMore(!text.empty()) {}
  /// Gives the next field; false behind the last.
  bool Next(std::string_view& field) {
    if (!mMore) return false;
    const std::size_t at = mDelimiter.empty() ? std::string_view::npos : mRest.find(mDelimiter);
    field = mRest.substr(0, at);
    mMore = at != std::string_view::npos;
    if (mMore) mRest.remove_prefix(at + mDelimiter.size());
    return true;
  }

 private:
  std::string_view mRest, mDelimiter;
  bool mMore;
};

/// Every occurrence of `from` replaced by `to`.
std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to);

}  // namespace vendrel
