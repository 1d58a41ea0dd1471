#pragma once
// One description of each class: a constexpr table of its public properties. The dump, the
// difference of two trees, and setting a property by name all come from it.

#include <cstdint>
#include <functional>
#include <string_view>
#include <tuple>
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

/// One property: its public name and the member (data, or const function of that name).
template <typename Member>
struct Prop {
  std::string_view Name;
  Member Value;
  PropertyKind Kind = PropertyKind::Value;

  /// The property of `object`.
  template <typename Object>
  decltype(auto) Of(Object& object) const {
    return std::invoke(Value, object);
  }
};
template <typename Member>
Prop(std::string_view, Member) -> Prop<Member>;
template <typename Member>
Prop(std::string_view, Member, PropertyKind) -> Prop<Member>;

/// Calls `visit(prop)` for each property of `Class`, in the order of its table.
template <typename Class, typename Visitor>
void ForEachProperty(Visitor&& visit) {
  std::apply([&](const auto&... property) { (visit(property), ...); }, Class::Properties());
}

}  // namespace vendrel
