#pragma once
// The classes of the tree as data: which properties each has, how each is read and set. Made at
// compile time from the table that stands on each class; the dump walks it, and whatever compares
// two trees or reaches a property by name can. Elements are reached by position, so a walker can
// keep a stack of its own: trees of controls are as deep as their input makes them.

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/Enums.h"
#include "model/ElementKinds.h"
#include "model/Fwd.h"
#include "model/Property.h"

namespace vendrel {

struct ClassDescription;

/// One element of the tree with its class. Does not own; none if `Object` is null.
struct ElementRef {
  const void* Object = nullptr;
  const ClassDescription* Class = nullptr;
  explicit operator bool() const { return Object != nullptr; }
};

/// What the value of a property is.
enum class PropertyShape : std::uint8_t {
  Text,
  Path,    // a file: the full path, in Windows form
  Number,  // enumerations too
  Truth,
  Texts,     // a list of texts
  Link,      // another element or none
  Element,   // one owned element or none
  Elements,  // a collection of owned elements
  Lines,     // code lines
};

/// Room for one value; only the field of the property's shape counts.
struct PropertyValue {
  /// Valid until the room is used again or the element changes.
  std::string_view Text;
  std::int64_t Number = 0;
  bool Truth = false;
  std::span<const std::string> Texts;
  CodeElement* Link = nullptr;
  /// Null where the collection was never used.
  const CodeLines* Lines = nullptr;

  /// Holds `Text` where a property is computed.
  std::string Store;
};

/// One property of a class.
struct PropertyDescription {
  std::string_view Name;
  PropertyKind Kind;
  PropertyShape Shape;
  /// Reads any shape but `Element` and `Elements`.
  void (*Read)(const void* object, PropertyValue& value) = nullptr;
  /// Number of elements of those two; a collection that was never used has none and stays unmade.
  std::size_t (*Count)(const void* object) = nullptr;
  /// The element at a 1-based position. Loads nothing.
  ElementRef (*At)(const void* object, std::size_t index) = nullptr;
  /// The element under a key, case ignored, or none; null for a collection that has no keys.
  ElementRef (*Find)(const void* object, std::string_view key) = nullptr;
  /// Takes the element at a 1-based position out of its collection; raises 9 where none stands.
  /// Null where elements are not the owner's to drop.
  void (*Remove)(void* object, std::size_t index) = nullptr;
  /// Sets the property, of an object of the class that was described; null where it cannot be set.
  /// False, and nothing changed, where the value does not fit: a number that its type cannot hold
  /// or its enumeration does not name, an element of another class.
  bool (*Write)(void* object, const PropertyValue& value) = nullptr;
  /// The values of its enumeration; empty for other properties.
  std::span<const EnumName> Names = {};
  /// The name of that enumeration ("BlockTypeEnum"); empty for other properties.
  std::string_view EnumType = {};
  /// The class of its elements, or of the element it links to; null where that may be of any class.
  const ClassDescription& (*ElementClass)() = nullptr;
  /// A switch of a project, to be set before `Load`.
  bool IsOption = false;
  /// Dumped only where it says something.
  bool IsRare = false;
};

/// One class: its name and its properties in the order of its table.
struct ClassDescription {
  std::string_view Name;
  /// Those that are shown and compared.
  std::span<const PropertyDescription> Properties;
  /// Those and behind them the hidden ones.
  std::span<const PropertyDescription> AllProperties;
  ElementKind Kind;
};

/// The description of a class. Defined for every class with a table of properties.
template <typename Class>
const ClassDescription& DescriptionOf();

/// The description of an element. Defined for every class with a table of properties.
template <typename Class>
ElementRef Describe(const Class& element);

/// The description of an element of any class; none for a class without a table.
ElementRef DescribeElement(const CodeElement& element);

/// Every class that has a table of properties.
std::span<const ClassDescription* const> AllClasses();

}  // namespace vendrel
