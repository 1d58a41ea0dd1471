#pragma once
#include <string_view>

namespace vendrel {

/// Whether a VB.NET statement can begin a declaration: behind blanks and attribute brackets stands
/// a modifier or keyword of one (case ignored, no word end needed). The same as matching "^(
/// |<.*>)*" and the list of words, in linear time.
bool MatchesDotNetStatement(std::string_view statement);

}  // namespace vendrel
