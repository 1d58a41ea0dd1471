#pragma once
// A value of the script language: it holds its kind, as a Variant does, and the conversions between
// kinds are those of the language on a US machine.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace vendrel {

/// Kinds of a value. Nothing is the empty object reference.
enum class ScriptKind : std::uint8_t {
  Empty,
  Null,
  Boolean,
  Integer,
  Long,
  Double,
  Date,
  String,
  Nothing,
};

/// One value. The makers give the public fields their meaning.
struct ScriptValue {
  ScriptKind Kind = ScriptKind::Empty;
  /// Boolean: -1 or 0. Integer (16 bits), Long (32 bits), Double: the number. Date: days since
  /// 30 December 1899, the time of day as fraction. Otherwise 0.
  double Number = 0;
  /// String: the text, UTF-8. Otherwise empty.
  std::string Text;

  static ScriptValue Null() { return {ScriptKind::Null, 0, {}}; }
  static ScriptValue Nothing() { return {ScriptKind::Nothing, 0, {}}; }
  static ScriptValue Boolean(bool value) { return {ScriptKind::Boolean, value ? -1.0 : 0.0, {}}; }
  static ScriptValue Double(double value) { return {ScriptKind::Double, value, {}}; }
  static ScriptValue Date(double value) { return {ScriptKind::Date, value, {}}; }
  static ScriptValue String(std::string value) { return {ScriptKind::String, 0, std::move(value)}; }
  /// A whole number of the smallest kind that holds it, from `smallest` on.
  static ScriptValue Whole(double value, ScriptKind smallest = ScriptKind::Integer);

  bool IsEmpty() const { return Kind == ScriptKind::Empty; }
  bool IsNull() const { return Kind == ScriptKind::Null; }
  bool IsString() const { return Kind == ScriptKind::String; }
  bool operator==(const ScriptValue&) const = default;
};

/// Text of a value: "True", "2.5", "1E+20", "1/31/2000", "1/31/2000 4:05:00 PM"; empty for Empty,
/// Null and Nothing.
std::string ToText(const ScriptValue& value);

/// The number that a text holds, as the language reads it: outer blanks, sign, decimals, exponent,
/// "&H" and "&O", a leading "$", commas between digits; nothing if it holds none. A text is numeric
/// when this gives a number.
std::optional<double> NumberFromText(std::string_view text);

/// Whether a text is a number or the name of a truth value.
bool ConvertsToNumber(std::string_view text);

/// The value as a number (Empty is 0). Raises 13 for text that holds no number, 94 for Null, 91 for
/// Nothing.
double ToNumber(const ScriptValue& value);

/// The value as a 32-bit whole number, halves rounded to even. Raises 6 outside the range.
std::int32_t ToLong(const ScriptValue& value);

/// The value as truth: any number but 0, and the texts "True" and "False". Raises as `ToNumber`.
bool ToBoolean(const ScriptValue& value);

/// Rounds halves to the even neighbour.
double RoundToEven(double value);

}  // namespace vendrel
