#pragma once
// Objects outside the library are reached by ProgID. The library registers its own for each service
// it needs; a host registers another under the same name to put it in that place.

#include <any>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace vendrel {

/// ProgID to factory, in the workspace in use. Names compare without regard to case; the last
/// registration wins.
class ObjectRegistry {
 public:
  template <typename T>
  static void Register(std::string_view progId, std::function<std::shared_ptr<T>()> factory) {
    Store(progId, std::any(std::move(factory)));
  }
  /// A new object of that ProgID, or nothing if none of that interface is registered.
  template <typename T>
  static std::shared_ptr<T> Create(std::string_view progId) {
    const std::any* entry = Find(progId);
    const auto* factory = std::any_cast<std::function<std::shared_ptr<T>()>>(entry);
    return factory ? (*factory)() : nullptr;
  }
  /// Whether anything is registered under that name.
  static bool Has(std::string_view progId) { return Find(progId) != nullptr; }

 private:
  static void Store(std::string_view progId, std::any factory);
  static const std::any* Find(std::string_view progId);
};

}  // namespace vendrel
