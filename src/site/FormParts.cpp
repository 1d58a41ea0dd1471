#include "site/FormParts.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

#include "core/Ascii.h"
#include "site/FormDrawing.h"
#include "site/SiteHtml.h"

namespace vendrel::site {

PropertyMap PropertiesOf(const VBControl& control) {
  PropertyMap properties;
  for (ControlProperty& property : control.ControlProperties()) {
    if (property.Depth > 0) continue;
    // A place in the companion file is nothing to be shown.
    if (property.Kind == ControlValue::Companion || property.Kind == ControlValue::List)
      property.Value = property.Items.empty() ? std::string() : property.Items.front();
    properties.emplace(LowerAscii(property.Name), std::move(property.Value));
  }
  return properties;
}

double NumberOf(const PropertyMap& properties, std::string_view name, double otherwise) {
  const auto found = properties.find(std::string(name));
  if (found == properties.end()) return otherwise;
  double number = otherwise;
  const std::string& text = found->second;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return std::clamp(number, -kLargest * kTwipsPerDot, kLargest * kTwipsPerDot);
}

std::string TextOf(const PropertyMap& properties, std::string_view name) {
  const auto found = properties.find(std::string(name));
  return found == properties.end() ? std::string() : found->second;
}

std::string ColourOf(const PropertyMap& properties, std::string_view name, std::string otherwise) {
  std::string text = TextOf(properties, name);
  if (!StartsWithNoCaseAscii(text, "&H")) return otherwise;
  std::uint32_t colour = 0;
  std::from_chars(text.data() + 2, text.data() + text.size(), colour, 16);
  if (colour & 0x80000000u) switch (colour & 0xFF) {
      case 5: return "#ffffff";
      case 8: return "#000000";
      case 12: return "#ababab";
      case 13: return "#0a64ad";
      case 15: return "#f0f0f0";
      case 24: return "#ffffe1";
      default: return otherwise;
    }
  char digits[8];
  std::snprintf(digits, sizeof digits, "#%02x%02x%02x", colour & 0xFF, (colour >> 8) & 0xFF,
                (colour >> 16) & 0xFF);
  return digits;
}

std::string Dots(double number) {
  char text[32];  // with a point whatever the locale of the host is
  const auto end = std::to_chars(text, text + sizeof text, number, std::chars_format::fixed, 1).ptr;
  std::string dots(text, end);
  if (dots.ends_with(".0")) dots.resize(dots.size() - 2);
  return dots == "-0" ? "0" : dots;
}

std::string Rectangle(double width, double height, std::string_view fill, std::string_view stroke,
                      std::string_view more) {
  std::string svg = "<rect x=\".5\" y=\".5\" width=\"" + Dots(std::max(0.0, width - 1)) +
                    "\" height=\"" + Dots(std::max(0.0, height - 1)) + "\" fill=\"";
  return svg.append(fill)
      .append("\" stroke=\"")
      .append(stroke)
      .append("\"")
      .append(more)
      .append("/>");
}

std::string Label(double x, double y, std::string_view text, double width, std::string_view more) {
  if (text.empty()) return {};
  const auto most = static_cast<std::size_t>(std::max(2.0, width / 5.3));
  return "<text x=\"" + Dots(x) + "\" y=\"" + Dots(y) + "\" font-size=\"11\"" + std::string(more) +
         ">" + Text(Shortened(WithoutAccessKey(text), std::min<std::size_t>(most, 300))) +
         "</text>";
}

std::string WithoutAccessKey(std::string_view caption) {
  std::string shown;
  for (std::size_t i = 0; i < caption.size(); ++i) {
    const bool isMark = caption[i] == '&';
    const bool isDoubled = isMark && caption.substr(i + 1).starts_with('&');
    i += isDoubled;
    if (!isMark || isDoubled) shown += caption[i];
  }
  return shown;
}

}  // namespace vendrel::site
