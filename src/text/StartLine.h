#pragma once
// What the start line of a procedure tells by its words alone: name, return type, access.

#include <string_view>

#include "core/Enums.h"

namespace vendrel {

/// Name of a procedure from its start line: the word in front of the first "(", or of the first
/// "as" (case ignored, anywhere in the line), or, without either, of the last character of the
/// line. A blank directly in front of that place is passed over. A view of `Text`.
std::string_view GetName(std::string_view Text);

/// What `GetReturnType` found.
struct ReturnTypeText {
  /// The type as written, without "()"; empty if the line names none. A view of the line, or of a
  /// constant where a type suffix named it.
  std::string_view ReturnType;
  /// Whether "()" stood behind the type.
  bool IsArray = false;
  /// Whether an empty type means the default type; false for a procedure that returns nothing.
  bool TakesDefault = true;
};

/// Return type of a Visual Basic 5 or 6 start line; empty in VB.NET. By default, the word behind
/// the last "As", judged by the closing parentheses around it. With `completeReading`: the type
/// behind the parameter list, or the one that the suffix of the name tells; none for a `Sub`; for a
/// property `Let` or `Set` the type of the last parameter.
ReturnTypeText GetReturnType(std::string_view Text, LanguageVersionEnum Language,
                             bool completeReading = false);

/// Type that the suffix at the end of the trimmed `Text` tells ("Integer" for "%", "Long" for "&",
/// "Single" for "!", "Double" for "#", "Currency" for "@", "String" for "$"); empty without one.
std::string_view TypeFromName(std::string_view Text);

/// `atPublic` or `atFriend` for these words (case ignored), `atPrivate` for anything else.
AccessTypeEnum AccessTypeFromstring(std::string_view Access);

}  // namespace vendrel
