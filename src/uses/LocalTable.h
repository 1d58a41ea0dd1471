#pragma once
// The names that the procedure at hand declares. One table serves all procedures of a run: what the
// one before has left counts no longer, and costs no clearing.

#include <cstdint>
#include <deque>
#include <vector>

#include "uses/Entries.h"

namespace vendrel {

class LocalTable {
 public:
  /// From here on nothing is declared.
  void Clear() {
    ++mProcedure;
    mCount = 0;
  }
  Entry* Find(Symbol name) const {
    if (name >= mSlots.size()) return nullptr;
    const Slot& slot = mSlots[name];
    return slot.Procedure == mProcedure ? slot.Meaning : nullptr;
  }
  /// A fresh entry under a name that has none; valid until `Clear`.
  Entry& Add(Symbol name) {
    if (name >= mSlots.size()) mSlots.resize(name + 1 + name / 2);
    if (mCount == mEntries.size()) mEntries.emplace_back();
    Entry& entry = mEntries[mCount++];
    entry = Entry();
    entry.Name = name;
    mSlots[name] = {mProcedure, &entry};
    return entry;
  }

 private:
  struct Slot {
    std::uint32_t Procedure = 0;
    Entry* Meaning = nullptr;
  };
  std::vector<Slot> mSlots;
  std::deque<Entry> mEntries;
  std::size_t mCount = 0;
  std::uint32_t mProcedure = 0;
};

}  // namespace vendrel
