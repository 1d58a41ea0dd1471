#pragma once
// Words of the language, recognised by hand: these tests run for every word or line.

#include <cstddef>
#include <string_view>

namespace vendrel {

/// Whether `Keyword` begins with a keyword that ends with the text or at a character of
/// "(,.-+/*!%^<>?:;". `LengthOfWord` receives the number of leading ASCII letters walked, whether
/// it is a keyword or not. "Rem", "ByRef" and "Friend" are no keywords here.
bool IsKeyword(std::string_view Keyword, std::size_t& LengthOfWord);

/// Whether a VB.NET statement can begin a declaration: behind blanks and attribute brackets stands
/// a modifier or keyword of one (case ignored, no word end needed). The same as matching "^(
/// |<.*>)*" and the list of words, in linear time.
bool MatchesDotNetStatement(std::string_view statement);

}  // namespace vendrel
