#include "services/TextUtility.h"

#include <charconv>
#include <cmath>

namespace vendrel {

TextUtility& TextUtility::Default() {
  static TextUtility instance;
  return instance;
}

std::string TextUtility::LeftPart(std::string_view text) {
  return std::string(text.substr(0, text.find(':')));
}

std::string TextUtility::RightPart(std::string_view text) {
  const std::size_t colon = text.find(':');
  return colon == std::string_view::npos ? std::string() : std::string(text.substr(colon + 1));
}

std::string_view TextUtility::FieldView(std::string_view text, std::string_view delimiter,
                                        std::int32_t index) {
  FieldCursor fields(text, delimiter);
  std::string_view field;
  for (std::int32_t i = 1; fields.Next(field); ++i)
    if (i == index) return field;
  return {};
}

std::string TextUtility::Field(std::string_view text, std::string_view delimiter,
                               std::int32_t index) {
  return std::string(FieldView(text, delimiter, index));
}

std::vector<std::string> TextUtility::SplitToCollection(std::string_view text,
                                                        std::string_view delimiter) {
  std::vector<std::string> result;
  FieldCursor fields(text, delimiter);
  std::string_view field;
  while (fields.Next(field)) result.emplace_back(field);
  return result;
}

std::string TextUtility::ToText(double value) {
  if (!std::isfinite(value)) return std::isnan(value) ? "NaN" : value < 0 ? "-INF" : "INF";
  if (value == 0) return "0";
  char buffer[40];
  const auto end =
      std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 15);
  return UpperAscii(std::string_view(buffer, static_cast<std::size_t>(end.ptr - buffer)));
}

}  // namespace vendrel
