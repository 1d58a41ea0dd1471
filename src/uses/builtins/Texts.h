#pragma once
// The table of built-ins as text, one literal a group of types; what is written in it is told in
// Reader.h. Constants in read-only memory.

#include <array>
#include <string_view>

namespace vendrel::builtins {

extern const std::string_view kVbaModules;
extern const std::string_view kVbaConstants;
extern const std::string_view kVbRunConstants;
extern const std::string_view kVbRunObjects;
extern const std::string_view kVbObjects;
extern const std::string_view kVbDesigners;
extern const std::string_view kVbControls;
extern const std::string_view kVbListControls;
extern const std::string_view kStdOle;

}  // namespace vendrel::builtins
