#pragma once
// A table by names that are numbers already.

#include <cstdint>
#include <vector>

#include "uses/Symbols.h"

namespace vendrel {

/// Symbols to small values. `word::None` is no key.
template <typename Value>
class SymbolMap {
 public:
  /// Null where the name is not in the table; holds until the next `At`.
  const Value* Find(Symbol name) const {
    if (mSlots.empty()) return nullptr;
    const std::size_t at = SlotOf(name);
    return mSlots[at].Name == word::None ? nullptr : &mSlots[at].Held;
  }
  /// The place of a name, made where there is none; holds until the next call.
  Value& At(Symbol name) {
    if ((mCount + 1) * 2 > mSlots.size()) Grow();
    Slot& slot = mSlots[SlotOf(name)];
    if (slot.Name == word::None) {
      slot.Name = name;
      ++mCount;
    }
    return slot.Held;
  }
  std::size_t Count() const { return mCount; }
  template <typename Visit>
  void ForEach(Visit visit) const {
    for (const Slot& slot : mSlots)
      if (slot.Name != word::None) visit(slot.Held);
  }

 private:
  struct Slot {
    Symbol Name = word::None;
    Value Held{};
  };
  // That of the name, or the free one where it belongs.
  std::size_t SlotOf(Symbol name) const {
    const std::size_t mask = mSlots.size() - 1;
    std::size_t at = (name * std::size_t{2654435769U} >> 4) & mask;
    while (mSlots[at].Name != word::None && mSlots[at].Name != name) at = (at + 1) & mask;
    return at;
  }
  void Grow() {
    std::vector<Slot> old(mSlots.empty() ? 16 : mSlots.size() * 2);
    old.swap(mSlots);
    for (const Slot& slot : old)
      if (slot.Name != word::None) mSlots[SlotOf(slot.Name)] = slot;
  }

  std::vector<Slot> mSlots;
  std::size_t mCount = 0;
};

}  // namespace vendrel
