#pragma once
// Searching a statement outside its string literals and its comment. All positions are 1-based byte
// positions in the UTF-8 text; 0 means absent. What these routines find is ASCII, so a byte
// position always stands at the start of a character.

#include <cstddef>
#include <string>
#include <string_view>

namespace vendrel {

/// A copy of equal length (in bytes) in which every byte inside a string literal is "_", and so is
/// everything behind the apostrophe that starts a comment. Quotes and the apostrophe stay.
std::string Template(std::string_view source);

/// Position of `sought` in `Template(source)` at or behind `start`; 0 if it is not there. A `start`
/// below 1 counts as 1. With `compareNoCase`, the case of ASCII letters is ignored. Empty `sought`
/// is found at `start`.
std::size_t InStrEx(std::size_t start, std::string_view source, std::string_view sought,
                    bool compareNoCase = false);

/// `text` without its attribute brackets: each span from the first "<" to the first ">" is cut out,
/// both outside strings and comment, as long as the "<" stands first.
std::string StripAttributes(std::string_view text);

/// `text` without mark-up: each span from a "<" to the next ">" is cut out, wherever it stands.
std::string StripTags(std::string_view text);

}  // namespace vendrel
