#pragma once
// Forms of a name.

#include <string>
#include <string_view>

#include "core/Ascii.h"

namespace vendrel {

/// Full name of an intrinsic VB.NET type ("System.Int32" for "integer", case ignored); any other
/// name as it came.
std::string_view DotNetType(std::string_view name);

/// The last part of a dotted name, without what stands from the first "(" on and without a final
/// "@".
constexpr std::string_view ShortName(std::string_view Name) {
  Name = Name.substr(0, Name.find('('));
  const std::size_t dot = Name.rfind('.');
  if (dot != std::string_view::npos) Name.remove_prefix(dot + 1);
  if (Name.ends_with('@')) Name.remove_suffix(1);
  return Name;
}

/// A name without the bracket at its front and the one at its end, each independently.
std::string_view WithoutBrackets(std::string_view name);
/// "[my lib].[my type]" without any brackets.
std::string TypeWithoutBrackets(std::string_view type);
/// A declaration with a blank put in behind each ")" or string that a word follows at once
/// (`Lib "u"(ByVal a As Long)As Long`); empty if there is none. What stands in a comment stays.
std::string SpacedOut(std::string_view declaration);

}  // namespace vendrel
