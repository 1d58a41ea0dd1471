#pragma once
// Constants, default values and what attributes say, as Visual Basic would write them.

#include <string>

#include "dotnet/metadata/Image.h"

namespace vendrel::metadata {

/// The value of a field or parameter: `"text"`, `5`, `True`, `"a"c`, `1.5`, `#1/31/1999#`,
/// `Nothing`; empty if there is none. A constant whose bytes are too few raises DataError.
std::string ValueOf(const Image& image, Token owner);

/// What an obsolete mark says.
struct ObsoleteMark {
  bool Marked = false;
  bool IsError = false;
  std::string Text;
};
ObsoleteMark ObsoleteMarkOf(const Image& image, Token owner);

/// Name of the member that a type calls its default; empty if none.
std::string DefaultMemberOf(const Image& image, std::uint32_t type);

}  // namespace vendrel::metadata
