#include "output/Describe.h"

#include <algorithm>
#include <array>
#include <concepts>
#include <type_traits>

#include "project/WithItsClass.h"

namespace vendrel {

namespace {

template <typename Class>
concept HasProperties = requires {
  Class::Properties();
};

template <typename T>
const ClassDescription& DescriptionOf();

template <typename T>
constexpr bool kIsOnDemand = false;
template <typename T>
constexpr bool kIsOnDemand<OnDemand<T>> = true;
template <typename T>
constexpr bool kIsHandle = false;
template <typename T>
constexpr bool kIsHandle<WeakHandle<T>> = true;
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

template <typename T>
concept CollectionOfElements = requires {
  typename T::Element;
};

// Type of a property without reference and const.
template <typename Class, std::size_t I>
using ValueOf = std::remove_cvref_t<
    decltype(std::get<I>(Class::Properties()).Of(std::declval<const Class&>()))>;

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

template <typename T>
void Fill(PropertyValue& value, const T& property) {
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

// The collection behind a property; null where it was never used.
template <typename T>
const ContentOf<T>* CollectionOf(const T& property) {
  if constexpr (kIsOnDemand<T>)
    return property.IfAny();
  else
    return &property;
}

template <typename Class, std::size_t I>
struct Property {
  static constexpr auto kEntry = std::get<I>(Class::Properties());
  using Type = ValueOf<Class, I>;

  static decltype(auto) Of(const void* object) {
    return kEntry.Of(*static_cast<const Class*>(object));
  }

  static void Read(const void* object, PropertyValue& value) {
    using Result = decltype(Of(object));
    if constexpr (std::is_same_v<Result, std::string>)
      value.Text = value.Store = Of(object);
    else
      Fill(value, Of(object));
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

  static constexpr PropertyDescription Describe() {
    constexpr PropertyShape shape = ShapeOf<Type>();
    PropertyDescription description{kEntry.Name, kEntry.Kind, shape};
    if constexpr (shape == PropertyShape::Element || shape == PropertyShape::Elements) {
      description.Count = &Count;
      description.At = &At;
    } else {
      description.Read = &Read;
    }
    return description;
  }
};

template <typename Class, std::size_t... I>
constexpr std::array<PropertyDescription, sizeof...(I)> DescribeAll(std::index_sequence<I...>) {
  return {Property<Class, I>::Describe()...};
}

template <typename Class>
constexpr auto kProperties = DescribeAll<Class>(
    std::make_index_sequence<std::tuple_size_v<decltype(Class::Properties())>>());

template <typename Class>
constexpr ClassDescription kDescription{RowOf(kKindOf<Class>).ClassName, kProperties<Class>,
                                        kKindOf<Class>};

template <typename Class>
const ClassDescription& DescriptionOf() {
  return kDescription<Class>;
}

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

}  // namespace

template <typename Class>
ElementRef Describe(const Class& element) {
  if constexpr (HasProperties<Class>)
    return {&element, &DescriptionOf<Class>()};
  else
    return {};
}

#define VENDREL_INSTANTIATE(Class, word, named, scope)                                             \
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
