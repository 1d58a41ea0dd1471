#pragma once
#include <string_view>

namespace vendrel {

/// Whether a decoded file is nothing that a reader of text can use: a table of a database that has
/// the extension of a form, a compressed file or the like. Looks at its beginning.
bool LooksBinary(std::string_view text);

}  // namespace vendrel
