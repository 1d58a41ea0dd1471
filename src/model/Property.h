#pragma once
// One description of each class: a constexpr table of its public properties. The dump, the
// difference of two trees, and setting a property by name all come from it.
//
// Left out is what is no value of the element: caches, events and hooks, the list of diagnostics,
// shared texts of files, and what only a reader or writer touches.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <type_traits>
#include <utility>

namespace vendrel {

enum class PropertyKind : std::uint8_t {
  Value,     // text, number, truth value, enumeration
  Children,  // a collection of elements owned by this one
  Link,      // another element, shown by its qualified name
  Identity,  // differs from load to load (keys, ids, paths): not compared
  Derived,   // computed, without side effect
  Source,    // code lines: only where asked for
};

/// One property: its public name, the member that reads it (data, or const function of that name)
/// and, where data cannot be assigned as it is, the function that sets it.
template <typename Member, typename Setter = std::nullptr_t>
struct Prop {
  std::string_view Name;
  Member Value;
  PropertyKind Kind = PropertyKind::Value;
  Setter Set = {};
  /// Known, but neither dumped nor compared.
  bool IsHidden = false;
  /// A switch of a project, to be set before `Load`.
  bool IsOption = false;
  /// Dumped only where it says something, even if what is empty is dumped.
  bool IsRare = false;

  constexpr Prop(std::string_view name, Member value, PropertyKind kind = PropertyKind::Value)
      : Name(name), Value(value), Kind(kind) {}
  constexpr Prop(
      std::string_view name, Member value, Setter set,
      PropertyKind kind = PropertyKind::Value) requires std::is_member_function_pointer_v<Setter>
      : Name(name), Value(value), Kind(kind), Set(set) {}

  /// The same, hidden. What is hidden stands behind all that is shown.
  constexpr Prop Hide() const {
    Prop hidden = *this;
    hidden.IsHidden = true;
    return hidden;
  }
  /// The same, left out of dumps where it is empty: what only some languages or sources have.
  constexpr Prop Rare() const {
    Prop rare = *this;
    rare.IsRare = true;
    return rare;
  }
  constexpr Prop Option() const {
    Prop option = *this;
    option.IsOption = true;
    return option;
  }

  static constexpr bool kHasSetter = !std::is_null_pointer_v<Setter>;
  static constexpr bool kIsData = std::is_member_object_pointer_v<Member>;

  /// The property of `object`.
  template <typename Object>
  constexpr decltype(auto) Of(Object& object) const {
    return std::invoke(Value, object);
  }
};

/// The property at a place of a list.
template <std::size_t Index, typename Property>
struct PropertyAt : Property {
  constexpr explicit PropertyAt(const Property& property) : Property(property) {}
};

template <typename Indexes, typename... Props>
struct PropertyPlaces;
template <std::size_t... Index, typename... Props>
struct PropertyPlaces<std::index_sequence<Index...>, Props...> : PropertyAt<Index, Props>... {
  constexpr explicit PropertyPlaces(const Props&... properties)
      : PropertyAt<Index, Props>(properties)... {}
};

/// The table of a class: what a `std::tuple` would be, at less work for the compiler.
template <typename... Props>
struct PropertyTable : PropertyPlaces<std::index_sequence_for<Props...>, Props...> {
  static constexpr std::size_t kCount = sizeof...(Props);
  constexpr explicit PropertyTable(const Props&... properties)
      : PropertyPlaces<std::index_sequence_for<Props...>, Props...>(properties...) {}
};

template <std::size_t Index, typename Property>
constexpr const Property& PropertyOf(const PropertyAt<Index, Property>& property) {
  return property;
}

/// The table of `Class`. `Properties` is a template so that a header costs nothing where nobody
/// asks.
template <typename Class>
inline constexpr auto kPropertiesOf = Class::template Properties<Class>();

/// Calls `visit(prop)` for each property of `Class`, in the order of its table.
template <typename Class, typename Visitor>
constexpr void ForEachProperty(Visitor&& visit) {
  [&]<std::size_t... Index>(std::index_sequence<Index...>) {
    (visit(PropertyOf<Index>(kPropertiesOf<Class>)), ...);
  }
  (std::make_index_sequence<decltype(kPropertiesOf<Class>)::kCount>());
}

}  // namespace vendrel
