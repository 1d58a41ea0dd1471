#pragma once
// The Like operator of the language: wildcard patterns over characters (code points, not bytes).

#include <string_view>

namespace vendrel {

/// Whether all of `text` matches `pattern`, case-sensitively: `*` any characters, `?` one
/// character,
/// `#` one digit, `[a-z_]` one of a list, `[!a-z]` one that is not in it. A list ends at its first
/// `]`; `-` at its ends and `!` behind its start or alone stand for themselves; `[]` matches the
/// empty text; `]` outside a list is an ordinary character. A list that is not closed, or a range
/// that descends, raises 93, wherever it stands. Both texts are UTF-8; takes at most the product of
/// their lengths.
bool Like(std::string_view text, std::string_view pattern);

/// The same with case ignored, in every script.
bool LikeNoCase(std::string_view text, std::string_view pattern);

}  // namespace vendrel
