#pragma once
// The one regular-expression routine of the text room.

#include <string_view>

namespace vendrel {

/// Whether `Pattern` is found in `Text`, with case ignored; "^" and "$" are the ends of the text.
/// Compiled patterns are kept for the next call. Takes linear time. Raises 5017 for a pattern that
/// does not compile. One thread only.
bool MatchRegExp(std::string_view Text, std::string_view Pattern);

}  // namespace vendrel
