#pragma once
// Parts of VB.NET statements in which nothing has its ordinary meaning: XML literals and the holes
// of interpolated strings.

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vendrel {

/// Position behind an interpolated string, of which `at` is the opening quote: holes hold code, and
/// so strings of their own.
std::size_t InterpolatedEnd(std::string_view text, std::size_t at);

/// Position behind the XML literal whose "<" stands at `at`; `at` if it is a comparison. What
/// nothing closes reaches to the end of the line, but for an attribute: that ends with its tag.
std::size_t XmlEnd(std::string_view text, std::size_t at);

/// Walks through an XML literal over all its lines, from its "<" on. Code stands in its holes.
class XmlWalk {
 public:
  XmlWalk(std::string_view text, std::size_t at) : mText(text), mAt(at) {}

  enum class Stop : std::uint8_t { Hole, End, Unclosed };
  /// Goes on up to the next hole, the end of the literal, or where nothing closes it.
  Stop Next();
  /// Behind the end, or at the "<%=" of the hole.
  std::size_t At() const { return mAt; }
  /// The walk goes on there, behind the "%>" of the hole.
  void GoOnAt(std::size_t at) { mAt = at; }

 private:
  bool Skip(std::string_view upTo);
  bool TakeMark();

  std::string_view mText;
  std::size_t mAt;
  int mDepth = 0;
  char mQuote = 0;
  bool mInTag = false;
};

/// Position behind the XML literal whose "<" stands at `at`, over all its lines; `at` if nothing
/// closes it within the 64 KiB behind it, or no literal begins so.
std::size_t XmlLiteralEnd(std::string_view text, std::size_t at);

/// Position behind "@ns:name" of an XML attribute axis; `at` if it is none.
std::size_t XmlNameEnd(std::string_view text, std::size_t at);

}  // namespace vendrel
