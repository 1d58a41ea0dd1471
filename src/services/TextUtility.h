#pragma once
// Fields of texts, and texts of values. (Whether a collection holds a key, the collections tell
// themselves.)

#include <concepts>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/Ascii.h"

namespace vendrel {

/// Text helpers, without state.
class TextUtility {
 public:
  /// The one instance.
  static TextUtility& Default();

  /// The text before the first ":"; all of it if there is none.
  static std::string LeftPart(std::string_view text);
  /// The text behind the first ":"; empty if there is none.
  static std::string RightPart(std::string_view text);

  /// The field of that 1-based index; empty past the last and for an index below 1. Text without
  /// the delimiter is field 1. Each call walks from the start: for all in turn take a
  /// `FieldCursor`.
  static std::string Field(std::string_view text, std::string_view delimiter, std::int32_t index);
  /// The same as a view into `text`.
  static std::string_view FieldView(std::string_view text, std::string_view delimiter,
                                    std::int32_t index);

  /// All fields in order; none of an empty text.
  static std::vector<std::string> SplitToCollection(std::string_view text,
                                                    std::string_view delimiter);
  static std::vector<std::string> SplitToArray(std::string_view text, std::string_view delimiter) {
    return SplitToCollection(text, delimiter);
  }

  /// Text of a value: "True" and "False", numbers with at most 15 digits and a point, empty text
  /// for nothing at all.
  static std::string ToText(std::nullptr_t) { return {}; }
  static std::string ToText(std::nullopt_t) { return {}; }
  static std::string ToText(const char* value) { return value ? value : std::string(); }
  static std::string ToText(std::string_view value) { return std::string(value); }
  static std::string ToText(const std::string& value) { return value; }
  static std::string ToText(bool value) { return value ? "True" : "False"; }
  static std::string ToText(double value);
  template <std::integral T>
  static std::string ToText(T value) {
    return std::to_string(value);
  }
  template <typename T>
  static std::string ToText(const std::optional<T>& value) {
    return value ? ToText(*value) : std::string();
  }
};

}  // namespace vendrel
