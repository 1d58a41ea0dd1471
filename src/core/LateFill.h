#pragma once
// What completes a collection when it is first asked for: members that a class inherits, of which
// most programs never ask.

#include <functional>
#include <memory>
#include <utility>

namespace vendrel {

/// One pointer wide, and free where nothing waits.
class LateFill {
 public:
  LateFill() = default;
  void Set(std::function<void()> fill) {
    mFill = std::make_unique<std::function<void()>>(std::move(fill));
  }
  /// Runs what waits, once; what it does to the collection runs nothing again.
  void Run() const {
    if (!mFill) return;
    const auto fill = std::move(mFill);
    (*fill)();
  }

 private:
  mutable std::unique_ptr<std::function<void()>> mFill;
};

}  // namespace vendrel
