#pragma once
#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

namespace vendrel {

/// An event of the object model: handlers are added, and called in that order each time it is
/// raised. A handler may add others; those are called from the next time on.
template <typename... Arguments>
class EventList {
 public:
  using Handler = std::function<void(Arguments...)>;
  void Add(Handler handler) { mHandlers.push_back(std::move(handler)); }
  void Clear() { mHandlers.clear(); }
  bool Empty() const { return mHandlers.empty(); }
  void Raise(Arguments... arguments) const {
    const std::size_t count = mHandlers.size();
    for (std::size_t i = 0; i < count; ++i) {
      const Handler handler = mHandlers[i];  // a copy: the list may move while it runs
      handler(arguments...);
    }
  }

 private:
  std::vector<Handler> mHandlers;
};

}  // namespace vendrel
