#pragma once
// A value as an error report shows it. It is taken while the failure passes, when locals are about
// to die, and turned into text only when somebody asks for the report.

#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace vendrel {

/// One value of a parameter, local or field. Plain values convert to it by themselves.
class TraceValue {
 public:
  enum class Kind : std::uint8_t {
    Empty,
    Null,
    Nothing,
    DataObject,
    Record,
    Simple,
    Object,
    Enumerable,
    Array,
    Failed
  };
  /// One dimension of an array: its bounds, both inclusive. An unset array has unset dimensions.
  struct Dimension {
    std::int32_t Lower = 0;
    std::int32_t Upper = -1;
    bool Set = true;
  };

  TraceValue() = default;  // Empty
  template <typename T>
  requires std::is_convertible_v<const T&, std::string_view> TraceValue(
      const T& text)  // NOLINT: reads like the value itself
      : mText(std::string_view(text)), mKind(Kind::Simple) {}
  template <typename T>
  requires(std::is_integral_v<T> || std::is_enum_v<T>) TraceValue(T value)
      : mKind(Kind::Simple) {  // NOLINT
    if constexpr (std::is_same_v<T, bool>)
      mText = value ? "True" : "False";
    else
      mText = std::to_string(static_cast<std::int64_t>(value));
  }
  TraceValue(double value);  // NOLINT

  static TraceValue Null() { return TraceValue(Kind::Null); }
  /// A reference to an object that is not set.
  static TraceValue Nothing() { return TraceValue(Kind::Nothing); }
  static TraceValue DataObject(bool set) {
    return TraceValue(set ? Kind::DataObject : Kind::Nothing);
  }
  /// A record; only the name of its type is shown.
  static TraceValue Record(std::string_view typeName) { return TraceValue(Kind::Record, typeName); }
  /// An object that cannot be enumerated: shown by this name.
  static TraceValue Object(std::string_view typeName) { return TraceValue(Kind::Object, typeName); }
  /// An object whose items are shown one by one; an item without a name gets its 1-based index.
  static TraceValue Enumerable(std::vector<std::pair<std::string, TraceValue>> items);
  /// An array of any number of dimensions, its elements in the order in which the last index runs
  /// fastest. Elements that are missing are shown as empty.
  static TraceValue Array(std::vector<Dimension> dimensions, std::vector<TraceValue> elements);
  /// A value that could not be read: the number of the failure.
  static TraceValue Failed(int number) { return TraceValue(Kind::Failed, std::to_string(number)); }

 private:
  explicit TraceValue(Kind kind, std::string_view text = {}) : mText(text), mKind(kind) {}
  friend class ValueDump;

  std::string mText;
  std::vector<std::pair<std::string, TraceValue>> mItems;
  std::vector<Dimension> mDimensions;
  Kind mKind = Kind::Empty;
};

/// How a value enters a context. Classes whose objects are named instead of copied have an overload
/// of their own beside them.
template <typename T>
requires std::is_constructible_v<TraceValue, const T&> TraceValue TraceOf(const T& value) {
  return TraceValue(value);
}

/// The value as one XML-like element on lines of its own, indented by `depth` blanks: the tag is
/// `name` up to its first blank. Arrays of more than three dimensions are cut. Never fails.
std::string DumpValue(std::string_view name, const TraceValue& value, int depth = 0);

}  // namespace vendrel
