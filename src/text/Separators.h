#pragma once
// Where a colon parts two statements and where it does not. Asked only at a colon, so lines without
// one pay nothing; each part of a line is walked once, however many colons it holds.

#include <cstddef>
#include <string_view>

#include "core/Enums.h"

namespace vendrel {

/// Whether the character at `at`, which stands outside of strings, is part of a name in brackets or
/// of a date literal; in VB.NET also of an XML literal, an XML name or a hole of an interpolated
/// string. `searched` begins as 0 and remembers how far the line has been walked.
bool StandsInside(std::string_view text, std::size_t at, LanguageVersionEnum language,
                  std::size_t& searched);

/// Position behind the date literal that begins with the "#" at `at`; `at` if none does. Only
/// digits, blanks, "/-:,", AM, PM and names of months stand in one.
std::size_t DateEnd(std::string_view text, std::size_t at);

/// Whether what stands in front of a colon at the beginning of a line is a label or a line number.
bool IsLabel(std::string_view text);

/// Where a declaration begins that stands behind "Then" or "Else" on the line of its If (or, in a
/// remainder, an "Else" behind such a declaration); `kNotFound` if there is none.
std::size_t DeclarationBehindThen(std::string_view statement, bool isRemainder);

}  // namespace vendrel
