#pragma once
// Words of the language, recognised by hand: these tests run for every word or line.

#include <cstddef>
#include <string_view>

namespace vendrel {

/// Whether `Keyword` begins with a keyword that ends with the text or at a character of
/// "(,.-+/*!%^<>?:;". `LengthOfWord` receives the number of leading ASCII letters walked, whether
/// it is a keyword or not. "Rem", "ByRef" and "Friend" are no keywords here.
bool IsKeyword(std::string_view Keyword, std::size_t& LengthOfWord);

}  // namespace vendrel
