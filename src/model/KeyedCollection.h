#pragma once
// The collection under every plural class: insertion order, 1-based positions, keys fixed when an
// element is added and compared without regard to case, elements without a key. The order is a
// vector, the keys are a hash of entries (never of positions), so that nothing shifts when an
// element goes.

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/CaseFold.h"
#include "core/Hash.h"
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
  KeyedCollection(const KeyedCollection&) = delete;
  KeyedCollection& operator=(const KeyedCollection&) = delete;
  KeyedCollection(KeyedCollection&& other) noexcept
      : mOrder(std::move(other.mOrder)),
        mTable(std::move(other.mTable)),
        mKeyed(std::exchange(other.mKeyed, 0)) {}
  KeyedCollection& operator=(KeyedCollection&& other) noexcept {
    mOrder.swap(other.mOrder);
    mTable.swap(other.mTable);
    std::swap(mKeyed, other.mKeyed);
    return *this;
  }

  std::size_t Count() const { return mOrder.size(); }
  bool Empty() const { return mOrder.empty(); }

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
  bool HasKey(std::string_view key) const { return FindEntry(key) != nullptr; }

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
    const std::string folded = FoldKey(key);
    const std::uint32_t hash = Hash(folded);
    if (mKeyed > 0 && !folded.empty() && FindFolded(folded, hash)) return false;
    std::size_t at = mOrder.size();
    if (before.Given())
      at = PlaceOf(before);
    else if (after.Given())
      at = PlaceOf(after) + 1;
    std::unique_ptr<Entry> entry(new (folded.size()) Entry(std::move(item), folded, hash));
    Entry* added = entry.get();
    mOrder.insert(mOrder.begin() + static_cast<std::ptrdiff_t>(at), std::move(entry));
    if (added->KeySize > 0) Index(added);
    return true;
  }

  /// Removes the element at a position or under a key; raises 9 when there is none.
  void Remove(std::size_t index) {
    if (index < 1 || index > mOrder.size()) throw VendrelError(errSubscript);
    Unindex(mOrder[index - 1].get());
    mOrder.erase(mOrder.begin() + static_cast<std::ptrdiff_t>(index - 1));
  }
  void Remove(std::string_view key) { Remove(PlaceOf(Position(key)) + 1); }
  /// Removes the elements at the 0-based positions `first + i` where `marked[i]`, in one pass.
  void RemoveMarked(std::size_t first, const std::vector<bool>& marked) {
    std::size_t to = first;
    for (std::size_t from = first; from < mOrder.size(); ++from) {
      const bool goes = from - first < marked.size() && marked[from - first];
      if (goes)
        Unindex(mOrder[from].get());
      else if (to++ != from)
        mOrder[to - 1] = std::move(mOrder[from]);
    }
    mOrder.resize(to);
  }
  void Clear() {
    mOrder.clear();
    mTable.reset();
    mKeyed = 0;
  }

  /// The key under which the element at a 1-based position was added, folded; empty if none.
  std::string_view KeyOf(std::size_t index) const { return mOrder.at(index - 1)->Key(); }

  /// Gives back the memory that was set aside for more elements.
  void Fit() { mOrder.shrink_to_fit(); }
  /// Sets memory aside for that many elements in all.
  void Reserve(std::size_t count) { mOrder.reserve(count); }

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
    Element& operator*() const { return *mOwner->mOrder[mAt]->Item; }
    Element* operator->() const { return mOwner->mOrder[mAt]->Item.get(); }
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
  Iterator end() { return {this, mOrder.size()}; }
  ConstIterator begin() const { return {this, 0}; }
  ConstIterator end() const { return {this, mOrder.size()}; }

 private:
  // An element and behind it, in the same piece of memory, its folded key.
  struct Entry {
    Entry() = default;
    Entry(std::shared_ptr<T> item, std::string_view key, std::uint32_t hash)
        : Item(std::move(item)), Hash(hash), KeySize(static_cast<std::uint32_t>(key.size())) {
      key.copy(reinterpret_cast<char*>(this + 1), key.size());
    }
    static void* operator new(std::size_t size, std::size_t keySize) {
      return ::operator new(size + keySize);
    }
    static void operator delete(void* entry) { ::operator delete(entry); }
    std::string_view Key() const { return {reinterpret_cast<const char*>(this + 1), KeySize}; }

    std::shared_ptr<T> Item;
    std::uint32_t Hash = 0;
    std::uint32_t KeySize = 0;
  };
  // The entries with a key by its hash; most collections are too short to have one.
  struct Table {
    std::vector<Entry*> Slots;
    std::size_t Used = 0;

    void Place(Entry* entry) {
      std::size_t i = entry->Hash & (Slots.size() - 1);
      while (Slots[i]) i = (i + 1) & (Slots.size() - 1);
      Slots[i] = entry;
      ++Used;
    }
  };
  static constexpr std::size_t kUnhashed = 8;  // below this a walk is cheaper than a table

  T* ItemAt(std::size_t index) const {
    return index >= 1 && index <= mOrder.size() ? mOrder[index - 1]->Item.get() : nullptr;
  }
  T* ItemUnder(std::string_view key) const {
    const Entry* entry = FindEntry(key);
    return entry ? entry->Item.get() : nullptr;
  }
  std::shared_ptr<T> SharedAt(std::size_t index) const {
    return index >= 1 && index <= mOrder.size() ? mOrder[index - 1]->Item : nullptr;
  }
  std::shared_ptr<T> SharedUnder(std::string_view key) const {
    const Entry* entry = FindEntry(key);
    return entry ? entry->Item : nullptr;
  }
  static T& Required(T* item) {
    if (!item) throw VendrelError(errSubscript);
    return *item;
  }
  static std::uint32_t Hash(std::string_view folded) { return HashOfText(folded); }
  const Entry* FindEntry(std::string_view key) const {
    if (mKeyed == 0 || key.empty()) return nullptr;
    const std::string folded = FoldKey(key);
    return FindFolded(folded, Hash(folded));
  }
  const Entry* FindFolded(std::string_view folded, std::uint32_t hash) const {
    if (!mTable) {
      for (const auto& entry : mOrder)
        if (entry->Hash == hash && entry->Key() == folded) return entry.get();
      return nullptr;
    }
    const std::vector<Entry*>& slots = mTable->Slots;
    for (std::size_t i = hash & (slots.size() - 1);; i = (i + 1) & (slots.size() - 1)) {
      if (!slots[i]) return nullptr;
      if (slots[i] != Gone() && slots[i]->Hash == hash && slots[i]->Key() == folded)
        return slots[i];
    }
  }
  std::size_t PlaceOf(const Position& position) const {
    if (position.Index > 0) {
      if (position.Index > mOrder.size()) throw VendrelError(errSubscript);
      return position.Index - 1;
    }
    const Entry* entry = FindEntry(position.Key);
    for (std::size_t i = 0; entry && i < mOrder.size(); ++i)
      if (mOrder[i].get() == entry) return i;
    throw VendrelError(errSubscript, std::string(position.Key));
  }
  void Index(Entry* entry) {
    ++mKeyed;
    if (!mTable && mKeyed <= kUnhashed && mOrder.size() <= 2 * kUnhashed) return;
    if (!mTable || (mTable->Used + 1) * 4 > mTable->Slots.size() * 3)
      Rehash();
    else
      mTable->Place(entry);
  }
  void Rehash() {
    std::size_t size = 32;
    while (size < mKeyed * 2) size *= 2;
    if (!mTable) mTable = std::make_unique<Table>();
    mTable->Slots.assign(size, nullptr);
    mTable->Used = 0;
    for (const auto& entry : mOrder)
      if (entry->KeySize > 0) mTable->Place(entry.get());
  }
  void Unindex(const Entry* entry) {
    if (entry->KeySize == 0) return;
    --mKeyed;
    if (!mTable) return;
    std::vector<Entry*>& slots = mTable->Slots;
    std::size_t i = entry->Hash & (slots.size() - 1);
    while (slots[i] != entry) i = (i + 1) & (slots.size() - 1);
    slots[i] = Gone();
  }
  // Marks a slot whose entry went, so that chains behind it stay reachable.
  static Entry* Gone() {
    static Entry gone{};
    return &gone;
  }

  std::vector<std::unique_ptr<Entry>> mOrder;
  std::unique_ptr<Table> mTable;
  std::size_t mKeyed = 0;
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
