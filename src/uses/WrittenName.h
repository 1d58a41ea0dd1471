#pragma once
// Names as they stand in source and as declarations have them.

#include <string_view>

#include "core/Ascii.h"

namespace vendrel {

/// Whether a byte may stand in a name, behind its first letter.
inline bool IsNameLetter(char c) {
  return IsLetterAscii(c) || IsDigitAscii(c) || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}

/// Without the brackets around a name, or the type character behind it: "[Next]" is "Next",
/// "Left$" is "Left".
inline std::string_view BareName(std::string_view written) {
  if (written.size() > 2 && written.front() == '[' && written.back() == ']')
    return written.substr(1, written.size() - 2);
  if (written.size() > 1 && std::string_view("$%&!#@").find(written.back()) != written.npos)
    written.remove_suffix(1);
  return written;
}

}  // namespace vendrel
