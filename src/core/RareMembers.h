#pragma once
// Members that few objects of a class have: descriptions, marks of a language, lists of comments.
// They stand in a structure of their own, made when the first of them is set, and are used like
// members all the same:
//
//     struct VariableParts { LateText Value; bool IsVirtual = false; };
//     class Variable {
//       union {
//         RareParts<VariableParts> mParts{};
//         Rarely<&VariableParts::Value> Value;
//         Rarely<&VariableParts::IsVirtual> IsVirtual;
//       };
//
// Each member of the union is the one pointer to the structure and knows by its type which part of
// it it stands for. All of them reach that pointer as their base class.

#include <iosfwd>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace vendrel {

/// The pointer. Who has the union must `Free` it in its destructor.
template <typename Parts>
class RareParts {
 public:
  /// The parts as they are, or as they would be if none was ever set.
  const Parts& Read() const { return mParts ? *mParts : Empty(); }
  /// The same to amend them; they are made.
  Parts& Make() {
    if (!mParts) mParts = new Parts;
    return *mParts;
  }
  Parts* IfMade() const { return mParts; }
  void Free() {
    delete mParts;
    mParts = nullptr;
  }

 private:
  static const Parts& Empty() {
    static const Parts empty;
    return empty;
  }
  Parts* mParts;  // set by `{}`: only so may a union have several of these
};

// What kinds of members there are.
template <typename T>
concept RareText = std::is_convertible_v<const T&, std::string_view>;
template <typename T>
concept RareCollection = requires(T& own) {
  own.Renew();
};
template <typename T>
concept RareLink = requires(const T& own) {
  own.Get();
};

template <typename T>
concept RareEditedText = requires(T& own) {
  own.Edit();
};

template <auto Member>
class Rarely;

/// One such member: reads and is assigned like the part it stands for.
template <typename Parts, typename T, T Parts::*Member>
class Rarely<Member> : public RareParts<Parts> {
 public:
  using Part = T;

  const T& Value() const { return this->Read().*Member; }
  const T& Field() const { return Value(); }
  /// Makes the parts.
  T& Field() { return this->Make().*Member; }
  operator const T&() const { return Field(); }  // NOLINT: reads like it
  operator T&() requires(RareCollection<T> || RareEditedText<T>) { return Field(); }  // NOLINT

  /// A value that says nothing makes no parts.
  template <typename Given>
  requires std::is_assignable_v<T&, Given> Rarely& operator=(Given&& value) {
    if (this->IfMade() || !SaysNothing(value)) Field() = std::forward<Given>(value);
    return *this;
  }
  Rarely& operator=(const Rarely& other) {
    if (this != &other) *this = other.Field();
    return *this;
  }

  Rarely& operator|=(bool value) requires std::is_same_v<T, bool> {
    if (value) Field() = true;
    return *this;
  }

  // Texts.
  operator std::string_view() const requires RareText<T> { return std::as_const(*this).Field(); }
  std::string_view view() const requires RareText<T> { return Field().view(); }
  std::string str() const requires RareText<T> { return Field().str(); }
  bool empty() const requires RareText<T> { return Field().empty(); }
  std::size_t size() const requires RareText<T> { return Field().size(); }
  void clear() requires RareText<T> {
    if (this->IfMade()) Field().clear();
  }
  std::string& Edit() requires RareEditedText<T> { return Field().Edit(); }
  void Fit() requires RareEditedText<T> {
    if (this->IfMade()) Field().Fit();
  }
  template <typename Other>
  requires RareText<T> && std::is_convertible_v<const Other&, std::string_view>
  friend bool operator==(const Rarely& a, const Other& b) {
    return a.view() == std::string_view(b);
  }
  template <typename Traits>
  requires RareText<T>
  friend std::basic_ostream<char, Traits>& operator<<(std::basic_ostream<char, Traits>& out,
                                                      const Rarely& text) {
    return out << text.view();
  }

  // Collections. As with `OnDemand`, looking at a collection that is not const makes it.
  auto operator->() requires RareCollection<T> { return Field().operator->(); }
  auto operator->() const requires RareCollection<T> { return Field().operator->(); }
  decltype(auto) operator*() requires RareCollection<T> { return *Field(); }
  decltype(auto) operator*() const requires RareCollection<T> { return *Field(); }
  auto IfAny() requires RareCollection<T> { return this->IfMade() ? Field().IfAny() : nullptr; }
  auto IfAny() const requires RareCollection<T> { return Field().IfAny(); }
  void Drop() requires RareCollection<T> {
    if (this->IfMade()) Field().Drop();
  }
  void Renew() requires RareCollection<T> { Field().Renew(); }

  // Links.
  auto Get() const requires RareLink<T> { return Field().Get(); }
  auto operator->() const requires RareLink<T> { return Field().Get(); }
  explicit operator bool() const requires RareLink<T> { return static_cast<bool>(Field()); }

 private:
  template <typename Given>
  static bool SaysNothing(const Given& value) {
    if constexpr (std::is_convertible_v<const Given&, std::string_view>)
      return std::string_view(value).empty();
    else if constexpr (std::is_scalar_v<Given>)
      return !value;
    else
      return false;
  }
};

}  // namespace vendrel
