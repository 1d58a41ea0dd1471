#pragma once
// A property of a control as the description of the control has it.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vendrel {

/// What stands behind the "=" of a property.
enum class ControlValue : std::uint8_t {
  Plain,      // a number, a colour, a shortcut key
  Text,       // a text, in quotation marks or in the companion file
  List,       // texts in the companion file
  Companion,  // a place in the companion file that holds no text, or none that can be read
  Group,      // `BeginProperty`: what stands in it follows
};

/// "plain", "text", "list", "companion" or "group".
std::string_view ControlValueName(ControlValue kind);

/// One property of a control, or a group of properties.
struct ControlProperty {
  std::string Name;
  /// A text without its quotation marks, doubled ones as one; the class id of a group, if it has
  /// one; a place in the companion file as written (`"Main.frx":0A4C`), for a list too; anything
  /// else as written, without the comment behind it.
  std::string Value;
  /// The texts of a list.
  std::vector<std::string> Items;
  ControlValue Kind = ControlValue::Plain;
  /// Number of the groups around it: the properties of a group are those directly behind it with a
  /// greater depth.
  std::int32_t Depth = 0;
  /// 1-based physical line in the file of the module.
  std::int32_t SourceLine = 0;
};

}  // namespace vendrel
