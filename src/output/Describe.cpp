#include "output/Describe.h"

#include <algorithm>
#include <array>
#include <concepts>
#include <cstddef>
#include <type_traits>
#include <utility>

#include "project/WithItsClass.h"

namespace vendrel {

namespace {

template <typename Class>
concept HasProperties = requires {
  Class::template Properties<Class>();
};

template <typename T>
constexpr bool kIsOnDemand = false;
template <typename T>
constexpr bool kIsOnDemand<OnDemand<T>> = true;
template <typename T>
constexpr bool kIsHandle = false;
template <typename T>
constexpr bool kIsHandle<WeakHandle<T>> = true;
template <typename T>
struct LinkTarget {
  using Type = std::remove_pointer_t<T>;
};
template <typename T>
struct LinkTarget<WeakHandle<T>> {
  using Type = T;
};
template <typename T>
constexpr bool kIsShared = false;
template <typename T>
constexpr bool kIsShared<std::shared_ptr<T>> = true;

template <typename T>
struct Content {
  using Type = T;
};
template <typename T>
struct Content<OnDemand<T>> {
  using Type = T;
};
template <typename T>
using ContentOf = typename Content<T>::Type;

// A member that few objects have, or that many share, is described as what it stands for.
template <typename T>
struct StandsFor {
  using Type = T;
};
template <typename T>
requires requires { typename T::Part; }
struct StandsFor<T> {
  using Type = typename T::Part;
};
template <typename T>
requires requires { typename T::Target; }
struct StandsFor<T> {
  using Type = WeakHandle<typename T::Target>;
};
template <typename T>
decltype(auto) Behind(const T& property) {
  if constexpr (requires { property.Field(); })
    return property.Field();
  else
    return (property);
}

template <typename T>
concept CollectionOfElements = requires {
  typename T::Element;
};

// Type of a property without reference and const.
template <typename Class, std::size_t I>
using ValueOf = typename StandsFor<std::remove_cvref_t<
    decltype(PropertyOf<I>(kPropertiesOf<Class>).Of(std::declval<const Class&>()))>>::Type;

template <typename T>
constexpr PropertyShape ShapeOf() {
  if constexpr (std::is_same_v<T, bool>)
    return PropertyShape::Truth;
  else if constexpr (std::is_integral_v<T> || std::is_enum_v<T>)
    return PropertyShape::Number;
  else if constexpr (std::is_convertible_v<const T&, std::string_view>)
    return PropertyShape::Text;
  else if constexpr (std::is_same_v<T, FileSystemObject>)
    return PropertyShape::Path;
  else if constexpr (std::is_same_v<T, std::vector<std::string>>)
    return PropertyShape::Texts;
  else if constexpr (kIsHandle<T> || std::is_pointer_v<T>)
    return PropertyShape::Link;
  else if constexpr (std::is_same_v<ContentOf<T>, CodeLines>)
    return PropertyShape::Lines;
  else if constexpr (kIsShared<T>)
    return PropertyShape::Element;
  else {
    static_assert(CollectionOfElements<ContentOf<T>>, "a property of a kind not known here");
    return PropertyShape::Elements;
  }
}

template <typename T, typename Read>
void Fill(PropertyValue& value, const Read& property) {
  constexpr PropertyShape shape = ShapeOf<T>();
  if constexpr (shape == PropertyShape::Truth)
    value.Truth = property;
  else if constexpr (shape == PropertyShape::Number)
    value.Number = static_cast<std::int64_t>(property);
  else if constexpr (shape == PropertyShape::Text)
    value.Text = std::string_view(property);
  else if constexpr (shape == PropertyShape::Path)
    value.Text = value.Store = property.FullPath();
  else if constexpr (shape == PropertyShape::Texts)
    value.Texts = property;
  else if constexpr (shape == PropertyShape::Lines)
    value.Lines = property.IfAny();
  else if constexpr (kIsHandle<T>)
    value.Link = property.Get();
  else
    value.Link = property;
}

// What a function that sets a property takes.
template <typename Setter>
struct ArgumentOf;
template <typename Class, typename Argument>
struct ArgumentOf<void (Class::*)(Argument)> {
  using Type = std::remove_cvref_t<Argument>;
};

template <typename T>
constexpr std::span<const EnumName> NamesOfType() {
  if constexpr (std::is_enum_v<T>)
    return NamesOf(T());
  else
    return {};
}

// The name of a type, cut out of what the compiler calls this function: "... T = BlockTypeEnum]".
template <typename T>
constexpr std::string_view NameOfType() {
  std::string_view name = __PRETTY_FUNCTION__;
  name = name.substr(name.find("T = ") + 4);
  name = name.substr(0, name.find_first_of(";]"));
  return name.substr(name.rfind(':') + 1);
}

template <typename T>
constexpr std::string_view EnumTypeName() {
  if constexpr (std::is_enum_v<T>)
    return NameOfType<T>();
  else
    return {};
}
static_assert(EnumTypeName<BlockTypeEnum>() == "BlockTypeEnum");

template <typename T>
concept FindsByKey = requires(const T& items) {
  items.Item(std::string_view());
};
template <typename T>
concept DropsByPosition = requires(T& items) {
  items.Remove(std::size_t{1});
};

// Gives `target` the value; false, without a change, where that does not fit.
template <typename T, typename Target>
bool Assign(Target& target, const PropertyValue& value) {
  constexpr PropertyShape shape = ShapeOf<T>();
  if constexpr (std::is_enum_v<T>) {
    if (!FindName(NamesOf(T()), value.Number)) return false;
    target = static_cast<T>(value.Number);
  } else if constexpr (shape == PropertyShape::Number) {
    if (!std::in_range<T>(value.Number)) return false;
    target = static_cast<T>(value.Number);
  } else if constexpr (shape == PropertyShape::Truth) {
    target = value.Truth;
  } else if constexpr (shape == PropertyShape::Text) {
    target = value.Text;
  } else if constexpr (shape == PropertyShape::Path) {
    target.SetFullPath(value.Text);
  } else if constexpr (shape == PropertyShape::Texts) {
    target.assign(value.Texts.begin(), value.Texts.end());
  } else {
    auto* element = dynamic_cast<typename LinkTarget<T>::Type*>(value.Link);
    if (value.Link && !element) return false;
    target = element;
  }
  return true;
}

// The collection behind a property; null where it was never used.
template <typename T>
const ContentOf<T>* CollectionOf(const T& property) {
  if constexpr (kIsOnDemand<T>)
    return property.IfAny();
  else
    return &property;
}

// The class of what a property owns or links to; void for plain values.
template <typename T>
struct ElementTypeOf {
  using Type = void;
};
template <CollectionOfElements T>
struct ElementTypeOf<T> {
  using Type = typename T::Element;
};
template <CollectionOfElements T>
struct ElementTypeOf<OnDemand<T>> {
  using Type = typename T::Element;
};
template <typename T>
struct ElementTypeOf<std::shared_ptr<T>> {
  using Type = T;
};
template <typename T>
struct ElementTypeOf<WeakHandle<T>> {
  using Type = T;
};
template <typename T>
struct ElementTypeOf<T*> {
  using Type = T;
};

template <typename Class, std::size_t I>
struct Property {
  static constexpr const auto& kEntry = PropertyOf<I>(kPropertiesOf<Class>);
  using Type = ValueOf<Class, I>;
  static constexpr bool kOwns =
      ShapeOf<Type>() == PropertyShape::Element || ShapeOf<Type>() == PropertyShape::Elements;
  using ElementType = typename ElementTypeOf<Type>::Type;

  static decltype(auto) Of(const void* object) {
    using Result = decltype(kEntry.Of(*static_cast<const Class*>(object)));
    if constexpr (std::is_reference_v<Result>)
      return Behind(kEntry.Of(*static_cast<const Class*>(object)));
    else
      return kEntry.Of(*static_cast<const Class*>(object));
  }

  static void Read(const void* object, PropertyValue& value) {
    using Result = decltype(Of(object));
    if constexpr (std::is_same_v<Result, std::string>)
      value.Text = value.Store = Of(object);
    else
      Fill<Type>(value, Of(object));
  }

  static std::size_t Count(const void* object) {
    if constexpr (kIsShared<Type>) {
      return Of(object) ? 1 : 0;
    } else {
      const auto* items = CollectionOf(Of(object));
      return items ? items->Count() : 0;
    }
  }

  static ElementRef At(const void* object, std::size_t index) {
    if constexpr (kIsShared<Type>)
      return {Of(object).get(), &DescriptionOf<typename Type::element_type>()};
    else
      return {CollectionOf(Of(object))->Item(index),
              &DescriptionOf<typename ContentOf<Type>::Element>()};
  }

  static ElementRef Find(const void* object, std::string_view key) {
    const auto* items = CollectionOf(Of(object));
    if (!items) return {};
    return {items->Item(key), &DescriptionOf<typename ContentOf<Type>::Element>()};
  }

  static void Remove(void* object, std::size_t index) {
    // What a function gives is a view of elements; the collection is the class's own.
    auto& property = kEntry.Of(*static_cast<Class*>(object));
    if constexpr (kIsOnDemand<Type>)
      property->Remove(index);
    else
      property.Remove(index);
  }

  static constexpr bool MayFind() {
    if constexpr (CollectionOfElements<ContentOf<Type>>)
      return FindsByKey<ContentOf<Type>>;
    else
      return false;
  }
  static constexpr bool MayRemove() {
    if constexpr (CollectionOfElements<ContentOf<Type>> && kEntry.kIsData)
      return kEntry.Kind == PropertyKind::Children && DropsByPosition<ContentOf<Type>>;
    else
      return false;
  }

  static bool Write(void* object, const PropertyValue& value) {
    Class& element = *static_cast<Class*>(object);
    if constexpr (kEntry.kHasSetter) {
      typename ArgumentOf<decltype(kEntry.Set)>::Type argument{};
      if (!Assign<typename ArgumentOf<decltype(kEntry.Set)>::Type>(argument, value)) return false;
      (element.*kEntry.Set)(argument);
      return true;
    } else {
      return Assign<Type>(kEntry.Of(element), value);
    }
  }

  static constexpr bool MayBeSet() {
    if constexpr (kOwns || ShapeOf<Type>() == PropertyShape::Lines)
      return false;
    else
      return kEntry.kHasSetter || kEntry.kIsData;
  }

  static constexpr PropertyDescription Describe() {
    PropertyDescription description{kEntry.Name, kEntry.Kind, ShapeOf<Type>()};
    if constexpr (kOwns) {
      description.Count = &Count;
      description.At = &At;
    } else {
      description.Read = &Read;
    }
    if constexpr (MayFind()) description.Find = &Find;
    if constexpr (MayRemove()) description.Remove = &Remove;
    if constexpr (MayBeSet()) description.Write = &Write;
    description.Names = NamesOfType<Type>();
    description.EnumType = EnumTypeName<Type>();
    if constexpr (HasProperties<ElementType>)
      description.ElementClass = &DescriptionOf<ElementType>;
    description.IsOption = kEntry.IsOption;
    description.IsRare = kEntry.IsRare;
    return description;
  }
};

template <typename Class, std::size_t... I>
constexpr std::array<PropertyDescription, sizeof...(I)> DescribeAll(std::index_sequence<I...>) {
  return {Property<Class, I>::Describe()...};
}

template <typename Class>
constexpr auto kProperties =
    DescribeAll<Class>(std::make_index_sequence<decltype(kPropertiesOf<Class>)::kCount>());

// Number of properties that are shown; -1 where a hidden one stands before one of them.
template <typename Class>
constexpr std::ptrdiff_t CountShown() {
  std::ptrdiff_t shown = 0, hidden = 0;
  ForEachProperty<Class>([&](const auto& property) {
    if (property.IsHidden)
      ++hidden;
    else
      shown = hidden > 0 ? -1 : shown + 1;
  });
  return shown;
}

template <typename Class>
constexpr std::span<const PropertyDescription> ShownProperties() {
  constexpr std::ptrdiff_t count = CountShown<Class>();
  static_assert(count >= 0, "hidden properties stand last");
  return std::span(kProperties<Class>).first(count);
}

template <typename Class>
constexpr ClassDescription kDescription{RowOf(kKindOf<Class>).ClassName, ShownProperties<Class>(),
                                        kProperties<Class>, kKindOf<Class>};

// Null for a class without a table of properties.
template <typename Class>
constexpr const ClassDescription* DescriptionIfAny() {
  if constexpr (HasProperties<Class>)
    return &kDescription<Class>;
  else
    return nullptr;
}

constexpr std::array kDescriptions{
#define VENDREL_ENTRY(Class, word, named, scope) DescriptionIfAny<Class>(),
    VENDREL_ELEMENT_KINDS(VENDREL_ENTRY)
#undef VENDREL_ENTRY
};

constexpr ClassDescription kNoDescription{{}, {}, {}, ElementKind::None};

}  // namespace

template <typename Class>
const ClassDescription& DescriptionOf() {
  if constexpr (HasProperties<Class>)
    return kDescription<Class>;
  else
    return kNoDescription;
}

template <typename Class>
ElementRef Describe(const Class& element) {
  if constexpr (HasProperties<Class>)
    return {&element, &DescriptionOf<Class>()};
  else
    return {};
}

#define VENDREL_INSTANTIATE(Class, word, named, scope)                                             \
  template const ClassDescription& DescriptionOf<Class>();                                         \
  template ElementRef Describe<Class>(const Class&);
VENDREL_ELEMENT_KINDS(VENDREL_INSTANTIATE)
#undef VENDREL_INSTANTIATE

ElementRef DescribeElement(const CodeElement& element) {
  ElementRef described;
  WithItsClass(element, [&](const auto& typed) { described = Describe(typed); });
  return described;
}

std::span<const ClassDescription* const> AllClasses() {
  static constexpr auto kAll = [] {
    std::array<const ClassDescription*,
               kDescriptions.size() - std::ranges::count(kDescriptions, nullptr)>
        all{};
    std::ranges::copy_if(kDescriptions, all.begin(), [](auto* one) { return one != nullptr; });
    return all;
  }();
  return kAll;
}

}  // namespace vendrel
