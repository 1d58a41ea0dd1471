#pragma once
// What a procedure knew when a failure passed through it, added in one line behind its body:
//
//     void Parameters::Remove(std::string_view key) try {
//       ...
//     } VENDREL_CONTEXT(key, *this)
//
// Procedure and module come from the compiler, the names of values from the list. A clause costs
// nothing while nothing fails; a guard object would cost 13 ns a call.

#include <string_view>
#include <type_traits>
#include <utility>

#include "diagnostics/VendrelError.h"

namespace vendrel {
namespace trace {

/// A value of a context whose text in the list is not its name, or which is no parameter.
struct Value {
  enum class Place { Parameter, Local, Field };
  Place In;
  std::string_view Name;
  TraceValue Taken;
};

template <typename T>
Value Parameter(std::string_view name, const T& value) {
  return {Value::Place::Parameter, name, TraceOf(value)};
}
template <typename T>
Value Local(std::string_view name, const T& value) {
  return {Value::Place::Local, name, TraceOf(value)};
}
/// A field of the object that the procedure belongs to.
template <typename T>
Value Field(std::string_view name, const T& value) {
  return {Value::Place::Field, name, TraceOf(value)};
}
/// The element at hand where it is not `*this`.
template <typename Element>
Value Me(const Element& object) {
  return Field("Me", object);
}

/// Takes a value from the list: `*this` is the element at hand, anything else a parameter.
template <typename T>
Value Listed(std::string_view text, const T& value) {
  if constexpr (std::is_same_v<T, Value>)
    return value;
  else
    return text == "*this" ? Me(value) : Parameter(text, value);
}

/// The first item of a list as the compiler spelled it, cut off with its comma.
std::string_view TakeItem(std::string_view& list);

/// Adds a context. `signature` is the procedure as the compiler spells it ("void A::B(int)" is
/// A.B), `file` its source (the module is the name without folder and extension).
ErrorContext& Add(VendrelError& failure, const char* signature, const char* file, long line);
void Put(ErrorContext& context, Value value);

template <typename... Values>
void AddAll(VendrelError& failure, const char* signature, const char* file, long line,
            [[maybe_unused]] std::string_view list, const Values&... values) {
  [[maybe_unused]] ErrorContext& context = Add(failure, signature, file, line);
  (Put(context, Listed(TakeItem(list), values)), ...);
}

}  // namespace trace

/// Ends a procedure whose body is a try block: a failure that passes gets its context. `line` is
/// the line or step reached, as the procedure counts them; the values are its parameters by name,
/// `*this`, and `trace::` forms for whatever else it knew.
#define VENDREL_CONTEXT_AT(line, ...)                                                              \
  catch (::vendrel::VendrelError & failure) {                                                      \
    ::vendrel::trace::AddAll(failure, __PRETTY_FUNCTION__, __FILE__, line,                         \
                             #__VA_ARGS__ __VA_OPT__(, ) __VA_ARGS__);                             \
    throw;                                                                                         \
  }
/// The same for procedures that count nothing.
#define VENDREL_CONTEXT(...) VENDREL_CONTEXT_AT(0, __VA_ARGS__)

}  // namespace vendrel
