#pragma once
// Which version of the library this is.

#include <string_view>

namespace vendrel {

/// The version of the library a program runs with, e.g. "2.0.0".
std::string_view LibraryVersion();

}  // namespace vendrel
