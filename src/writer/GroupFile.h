#pragma once
// The file of a group, where a copy of its projects is made.

#include <functional>
#include <string>
#include <string_view>

#include "project/VBProjectGroup.h"

namespace vendrel {

/// Writes the file of a group to `path`. `targetOf` gives the full path of a member's copy for that
/// of the member, or nothing: its line, as any other, then stays byte for byte. Raises what the
/// files raise, and 5 for a name that the code page of the file cannot hold.
void WriteGroupFile(const VBProjectGroup& group, std::string_view path,
                    const std::function<std::string(const std::string&)>& targetOf);

}  // namespace vendrel
