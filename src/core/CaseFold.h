#pragma once
// Names compare without regard to case in every script: by simple case folding, one character to
// one character, so that no name grows.

#include <cstdint>
#include <string>
#include <string_view>

namespace vendrel {

/// The key under which a name is found: folded, so that names differing in case only are equal.
std::string FoldKey(std::string_view text);

/// Appends the folded text to `out`.
void AppendFolded(std::string& out, std::string_view text);

/// Whether two names are equal but for case, in any script.
bool EqualsNoCase(std::string_view a, std::string_view b);

/// A hash that is equal for names equal by `EqualsNoCase`; for tables with a power of two of
/// places.
std::uint32_t HashFolded(std::string_view text);

/// Upper- and lower-case forms by simple mapping, for text that is shown.
std::string UpperCase(std::string_view text);
std::string LowerCase(std::string_view text);

}  // namespace vendrel
