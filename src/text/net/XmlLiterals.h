#pragma once
// Parts of VB.NET statements in which nothing has its ordinary meaning: XML literals and the holes
// of interpolated strings.

#include <cstddef>
#include <string_view>

namespace vendrel {

/// Position behind an interpolated string, of which `at` is the opening quote: holes hold code, and
/// so strings of their own.
std::size_t InterpolatedEnd(std::string_view text, std::size_t at);

/// Position behind the XML literal whose "<" stands at `at`; `at` if it is a comparison. What
/// nothing closes reaches to the end of the line, but for an attribute: that ends with its tag.
std::size_t XmlEnd(std::string_view text, std::size_t at);

/// Position behind "@ns:name" of an XML attribute axis; `at` if it is none.
std::size_t XmlNameEnd(std::string_view text, std::size_t at);

}  // namespace vendrel
