#pragma once
// The collection under every plural class: insertion order, 1-based positions, keys fixed when an
// element is added and compared without regard to case, elements without a key. Elements and keys
// stand in their order in one piece of memory; a collection of more than a few keys has a hash
// table of positions beside it. A key that is the name of its element shares the memory of that
// name.

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/Ascii.h"
#include "core/CaseFold.h"
#include "core/SharedText.h"
#include "diagnostics/VendrelError.h"

namespace vendrel {

/// Where an element goes: in front of or behind the element at a 1-based index or under a key. An
/// index of 0 with no key means: not given.
struct Position {
  Position() = default;
  Position(int index) : Index(static_cast<std::size_t>(index > 0 ? index : 0)) {}  // NOLINT
  Position(std::size_t index) : Index(index) {}                                    // NOLINT
  Position(std::string_view key) : Key(key) {}                                     // NOLINT
  Position(const char* key) : Key(key) {}                                          // NOLINT
  bool Given() const { return Index > 0 || !Key.empty(); }
  std::size_t Index = 0;
  std::string_view Key;
};

/// A place from an integer of any type; 0, where nothing stands, for one below 1.
constexpr std::size_t PlaceAt(std::integral auto index) {
  return index > 0 ? static_cast<std::size_t>(index) : 0;
}

template <typename T>
class KeyedCollection {
 public:
  KeyedCollection() = default;
  ~KeyedCollection() { Clear(); }
  KeyedCollection(const KeyedCollection&) = delete;
  KeyedCollection& operator=(const KeyedCollection&) = delete;
  KeyedCollection(KeyedCollection&& other) noexcept { Swap(other); }
  KeyedCollection& operator=(KeyedCollection&& other) noexcept {
    Swap(other);
    return *this;
  }

  std::size_t Count() const { return mCount; }
  bool Empty() const { return mCount == 0; }

  /// The element at a 1-based position, or nothing. A const collection gives const elements.
  T* Find(std::size_t index) { return ItemAt(index); }
  const T* Find(std::size_t index) const { return ItemAt(index); }
  /// The element under a key, or nothing.
  T* Find(std::string_view key) { return ItemUnder(key); }
  const T* Find(std::string_view key) const { return ItemUnder(key); }
  /// The same with a share of the ownership.
  std::shared_ptr<T> Share(std::size_t index) { return SharedAt(index); }
  std::shared_ptr<const T> Share(std::size_t index) const { return SharedAt(index); }
  std::shared_ptr<T> Share(std::string_view key) { return SharedUnder(key); }
  std::shared_ptr<const T> Share(std::string_view key) const { return SharedUnder(key); }
  /// The element at a position or under a key; raises 9 when there is none.
  T& At(std::size_t index) { return Required(ItemAt(index)); }
  const T& At(std::size_t index) const { return Required(ItemAt(index)); }
  T& At(std::string_view key) { return Required(ItemUnder(key)); }
  const T& At(std::string_view key) const { return Required(ItemUnder(key)); }
  /// Whether an element stands under that key.
  bool HasKey(std::string_view key) const { return FindPlace(key) != kNone; }

  /// Adds an element; an empty key adds it without one. Raises 457 if the key is taken and 9 if
  /// `before` or `after` names nothing.
  void Insert(std::shared_ptr<T> item, std::string_view key = {}, const Position& before = {},
              const Position& after = {}) {
    if (!InsertIfFree(std::move(item), key, before, after))
      throw VendrelError(errDuplicateKey, std::string(key));
  }
  /// The same for a key that may be taken: then nothing is added, and it gives false.
  bool InsertIfFree(std::shared_ptr<T> item, std::string_view key, const Position& before = {},
                    const Position& after = {}) {
    const std::uint32_t hash = mTable && !key.empty() ? HashFolded(key) : 0;
    if (!key.empty() && FindPlace(key, hash) != kNone) return false;
    std::size_t at = mCount;
    if (before.Given())
      at = PlaceOf(before);
    else if (after.Given())
      at = PlaceOf(after) + 1;
    SharedText kept = KeyFor(*item, key);
    if (mCount == mCapacity) Resize(mCount < 2 ? mCount + 1 : mCount + (mCount + 1) / 2);
    if (at < mCount) {
      MoveSlots(at + 1, at, mCount - at);
      if (mTable) mTable->Shift(static_cast<std::uint32_t>(at), 1);
    }
    new (mSlots + at) Slot{std::move(item), std::move(kept)};
    ++mCount;
    if (mTable)
      Enter(at, hash);
    else if (mCount > kUnhashed && (!key.empty() || (mCount == kUnhashed + 1 && HasKeys())))
      MakeTable();
    return true;
  }

  /// Removes the element at a position or under a key; raises 9 when there is none.
  void Remove(std::size_t index) {
    if (index < 1 || index > mCount) throw VendrelError(errSubscript);
    const std::size_t at = index - 1;
    if (mTable) mTable->Forget(static_cast<std::uint32_t>(at));
    const Slot gone = std::move(mSlots[at]);  // ends when the collection is whole again
    mSlots[at].~Slot();
    MoveSlots(at, at + 1, mCount - index);
    --mCount;
  }
  void Remove(std::string_view key) { Remove(PlaceOf(Position(key)) + 1); }
  /// Removes the elements at the 0-based positions `first + i` where `marked[i]`, in one pass.
  void RemoveMarked(std::size_t first, const std::vector<bool>& marked) {
    const bool hadTable = std::exchange(mTable, nullptr) != nullptr;
    std::vector<std::shared_ptr<T>> gone;  // end when the collection is whole again
    std::size_t to = first;
    for (std::size_t from = first; from < mCount; ++from) {
      if (from - first < marked.size() && marked[from - first])
        gone.push_back(std::move(mSlots[from].Item));
      else if (to++ != from)
        mSlots[to - 1] = std::move(mSlots[from]);
    }
    const std::size_t count = std::exchange(mCount, static_cast<std::uint32_t>(to));
    for (std::size_t i = to; i < count; ++i) mSlots[i].~Slot();
    if (hadTable) MakeTable();
  }
  void Clear() {
    mTable.reset();
    Slot* const slots = std::exchange(mSlots, nullptr);
    const std::size_t count = std::exchange(mCount, 0u);
    mCapacity = 0;
    for (std::size_t i = 0; i < count; ++i) slots[i].~Slot();
    ::operator delete(slots);
  }

  /// The key under which the element at a 1-based position was added, folded; empty if none.
  std::string KeyOf(std::size_t index) const {
    if (index < 1 || index > mCount) throw VendrelError(errSubscript);
    return FoldKey(mSlots[index - 1].Key);
  }

  /// Gives back the memory that was set aside for more elements.
  void Fit() {
    if (mCount < mCapacity) Resize(mCount);
  }
  /// Sets memory aside for that many elements in all.
  void Reserve(std::size_t count) {
    if (count > mCapacity) Resize(count);
  }

  /// Over `T` or `const T`. It counts places, so that elements may be added during a walk.
  template <typename Element>
  class Walk {
   public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = T;
    using difference_type = std::ptrdiff_t;
    using pointer = Element*;
    using reference = Element&;
    Walk() = default;
    Walk(const KeyedCollection* owner, std::size_t at) : mOwner(owner), mAt(at) {}
    Element& operator*() const { return *mOwner->mSlots[mAt].Item; }
    Element* operator->() const { return mOwner->mSlots[mAt].Item.get(); }
    Walk& operator++() {
      ++mAt;
      return *this;
    }
    Walk operator++(int) {
      Walk old = *this;
      ++mAt;
      return old;
    }
    bool operator==(const Walk& other) const { return mAt == other.mAt; }

   private:
    const KeyedCollection* mOwner = nullptr;
    std::size_t mAt = 0;
  };
  using Iterator = Walk<T>;
  using ConstIterator = Walk<const T>;
  Iterator begin() { return {this, 0}; }
  Iterator end() { return {this, mCount}; }
  ConstIterator begin() const { return {this, 0}; }
  ConstIterator end() const { return {this, mCount}; }

 private:
  struct Slot {
    std::shared_ptr<T> Item;
    SharedText Key;
  };
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
  static constexpr std::size_t kUnhashed = 8;  // below this a walk is cheaper than a table

  // The 0-based places of the elements with a key, by its hash.
  struct Table {
    static constexpr std::uint32_t kFree = 0xFFFFFFFF, kGone = 0xFFFFFFFE;
    std::vector<std::uint32_t> Places;
    std::size_t Used = 0;

    void Put(std::uint32_t hash, std::uint32_t place) {
      std::size_t i = hash & (Places.size() - 1);
      while (Places[i] != kFree) i = (i + 1) & (Places.size() - 1);
      Places[i] = place;
      ++Used;
    }
    // Everything from that place on stands so many places further behind.
    void Shift(std::uint32_t from, std::uint32_t by) {
      for (std::uint32_t& place : Places)
        if (place >= from && place < kGone) place += by;
    }
    // That place is empty, and everything behind it stands one in front. The mark that is left
    // keeps the chains behind it in reach.
    void Forget(std::uint32_t gone) {
      for (std::uint32_t& place : Places) {
        if (place == gone)
          place = kGone;
        else if (place > gone && place < kGone)
          --place;
      }
    }
  };

  void Swap(KeyedCollection& other) {
    std::swap(mSlots, other.mSlots);
    std::swap(mTable, other.mTable);
    std::swap(mCount, other.mCount);
    std::swap(mCapacity, other.mCapacity);
  }
  T* ItemAt(std::size_t index) const {
    return index >= 1 && index <= mCount ? mSlots[index - 1].Item.get() : nullptr;
  }
  T* ItemUnder(std::string_view key) const {
    const std::size_t place = FindPlace(key);
    return place == kNone ? nullptr : mSlots[place].Item.get();
  }
  std::shared_ptr<T> SharedAt(std::size_t index) const {
    return index >= 1 && index <= mCount ? mSlots[index - 1].Item : nullptr;
  }
  std::shared_ptr<T> SharedUnder(std::string_view key) const {
    const std::size_t place = FindPlace(key);
    return place == kNone ? nullptr : mSlots[place].Item;
  }
  static T& Required(T* item) {
    if (!item) throw VendrelError(errSubscript);
    return *item;
  }
  // The key as it is kept: with the memory of the element's name if it is the same text.
  static SharedText KeyFor(const T& item, std::string_view key) {
    if constexpr (requires { item.Name.view(); }) {
      if (item.Name.view() == key) return SharedText(item.Name);
    } else if constexpr (requires { item.Name().view(); }) {
      if (item.Name().view() == key) return SharedText(item.Name());
    }
    return SharedText(key);
  }

  std::size_t FindPlace(std::string_view key) const {
    if (key.empty()) return kNone;
    return FindPlace(key, mTable ? HashFolded(key) : 0);
  }
  // The hash counts only where there is a table.
  std::size_t FindPlace(std::string_view key, std::uint32_t hash) const {
    if (!mTable) {
      for (std::size_t i = 0; i < mCount && mCount <= kUnhashed; ++i)
        if (MayEqual(mSlots[i].Key, key) && EqualsNoCase(mSlots[i].Key, key)) return i;
      return kNone;
    }
    const std::vector<std::uint32_t>& places = mTable->Places;
    for (std::size_t i = hash & (places.size() - 1);; i = (i + 1) & (places.size() - 1)) {
      if (places[i] == Table::kFree) return kNone;
      if (places[i] == Table::kGone) continue;
      const SharedText& found = mSlots[places[i]].Key;
      if (MayEqual(found, key) && EqualsNoCase(found, key)) return places[i];
    }
  }
  std::size_t PlaceOf(const Position& position) const {
    if (position.Index > 0) {
      if (position.Index > mCount) throw VendrelError(errSubscript);
      return position.Index - 1;
    }
    const std::size_t place = FindPlace(position.Key);
    if (place == kNone) throw VendrelError(errSubscript, std::string(position.Key));
    return place;
  }
  // What two texts begin with tells most of them apart.
  static bool MayEqual(const SharedText& kept, std::string_view key) {
    if (kept.empty()) return false;
    const char a = kept.front(), b = key.front();
    return LowerAscii(a) == LowerAscii(b) || ((a | b) & 0x80) != 0;
  }
  bool HasKeys() const {
    for (std::size_t i = 0; i < mCount; ++i)
      if (!mSlots[i].Key.empty()) return true;
    return false;
  }
  void Enter(std::size_t place, std::uint32_t hash) {
    if (mSlots[place].Key.empty()) return;
    if ((mTable->Used + 1) * 4 > mTable->Places.size() * 3)
      MakeTable();
    else
      mTable->Put(hash, static_cast<std::uint32_t>(place));
  }
  void MakeTable() {
    std::size_t keyed = 0;
    for (std::size_t i = 0; i < mCount; ++i) keyed += !mSlots[i].Key.empty();
    std::size_t size = 16;
    while (size * 3 < (keyed + 1) * 4) size *= 2;
    if (!mTable) mTable = std::make_unique<Table>();
    mTable->Places.assign(size, Table::kFree);
    mTable->Used = 0;
    for (std::size_t i = 0; i < mCount; ++i)
      if (!mSlots[i].Key.empty())
        mTable->Put(HashFolded(mSlots[i].Key), static_cast<std::uint32_t>(i));
  }
  void MoveSlots(std::size_t to, std::size_t from, std::size_t count) {
    if (to < from)
      for (std::size_t i = 0; i < count; ++i) MoveSlot(mSlots + to + i, mSlots[from + i]);
    else
      for (std::size_t i = count; i-- > 0;) MoveSlot(mSlots + to + i, mSlots[from + i]);
  }
  static void MoveSlot(Slot* to, Slot& from) {
    new (to) Slot(std::move(from));
    from.~Slot();
  }
  void Resize(std::size_t capacity) {
    auto* slots = capacity ? static_cast<Slot*>(::operator new(capacity * sizeof(Slot))) : nullptr;
    for (std::size_t i = 0; i < mCount; ++i) MoveSlot(slots + i, mSlots[i]);
    ::operator delete(mSlots);
    mSlots = slots;
    mCapacity = static_cast<std::uint32_t>(capacity);
  }

  Slot* mSlots = nullptr;
  std::unique_ptr<Table> mTable;  // of more than a few elements, if one of them has a key
  std::uint32_t mCount = 0;
  std::uint32_t mCapacity = 0;
};

/// What a collection that is no longer const gives to walk and amend its elements, without the
/// means to add or remove one.
template <typename T>
class ElementsOf {
 public:
  ElementsOf(KeyedCollection<T>& collection) : mCollection(&collection) {}  // NOLINT: a view of it
  T* Find(std::size_t index) const { return mCollection->Find(index); }
  T* Find(std::string_view key) const { return mCollection->Find(key); }
  std::shared_ptr<T> Share(std::size_t index) const { return mCollection->Share(index); }
  std::shared_ptr<T> Share(std::string_view key) const { return mCollection->Share(key); }
  std::size_t Count() const { return mCollection->Count(); }
  auto begin() const { return mCollection->begin(); }
  auto end() const { return mCollection->end(); }

 private:
  KeyedCollection<T>* mCollection;
};

}  // namespace vendrel
