#pragma once
// A collection that exists from its first use on. Most elements have no comments, no examples, no
// constants; a pointer each is all that they pay.

#include <memory>

namespace vendrel {

/// Reads like the collection itself: `element.TaggedComments->Count()`. Reading a const one that
/// was never used reads an empty collection; anything else creates it.
template <typename T>
class OnDemand {
 public:
  OnDemand() = default;
  OnDemand(OnDemand&&) noexcept = default;
  OnDemand& operator=(OnDemand&&) noexcept = default;

  T* operator->() { return &Get(); }
  T& operator*() { return Get(); }
  const T* operator->() const { return &**this; }
  const T& operator*() const {
    static const T empty;
    return mValue ? *mValue : empty;
  }
  /// The collection if it was ever used, else nullptr.
  T* IfAny() { return mValue.get(); }
  const T* IfAny() const { return mValue.get(); }
  /// Drops the collection; the next use makes a new one.
  void Drop() { mValue.reset(); }
  /// Puts a fresh, empty collection in place.
  void Renew() { mValue = std::make_unique<T>(); }

 private:
  T& Get() {
    if (!mValue) mValue = std::make_unique<T>();
    return *mValue;
  }
  std::unique_ptr<T> mValue;
};

}  // namespace vendrel
