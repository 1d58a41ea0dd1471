#pragma once
// What drawings of forms are made from: properties of controls, and the simplest pieces of SVG.

#include <string>
#include <string_view>
#include <unordered_map>

#include "model/VBControl.h"

namespace vendrel::site {

inline constexpr double kTwipsPerDot = 15;
/// In dots; what is larger was no size.
inline constexpr double kLargest = 20000;

/// The first level of the properties of a control, by their names in small letters.
using PropertyMap = std::unordered_map<std::string, std::string>;
PropertyMap PropertiesOf(const VBControl& control);
double NumberOf(const PropertyMap& properties, std::string_view name, double otherwise);
std::string TextOf(const PropertyMap& properties, std::string_view name);
/// "#rrggbb" for "&H00BBGGRR&" or a colour of the system by its number.
std::string ColourOf(const PropertyMap& properties, std::string_view name, std::string otherwise);

/// A measure with one digit behind the point, at most.
std::string Dots(double number);
std::string Rectangle(double width, double height, std::string_view fill, std::string_view stroke,
                      std::string_view more = {});
/// As much of the text as about fits into `width`.
std::string Label(double x, double y, std::string_view text, double width,
                  std::string_view more = {});

}  // namespace vendrel::site
