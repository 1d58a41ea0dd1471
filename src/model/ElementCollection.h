#pragma once
// What the plural classes share: typed Item, keyed Add with the duplicate report, Remove, Count. A
// duplicate name in source is told and dropped, and loading goes on with the first element in
// place.

#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "model/KeyedCollection.h"

namespace vendrel {

/// Tells a duplicate: a diagnostic, and the box "Duplicate ..." while `Silent` is false.
void ReportDuplicateKey(std::string_view typeName, std::string_view key);

/// True if `col` has the key; then the duplicate has been told.
template <typename T>
bool CheckForDuplicateKey(const KeyedCollection<T>& col, std::string_view typeName,
                          std::string_view key) {
  if (!col.HasKey(key)) return false;
  ReportDuplicateKey(typeName, key);
  return true;
}

/// One plural class. `Family` gives `TypeText`, the word in the duplicate message, and `Placed`,
/// whether `Add` passes on `before` and `after`.
template <typename T, typename Family>
class ElementCollection {
 public:
  using Element = T;

  /// The element at a 1-based position or under a key; nothing when there is none. A const
  /// collection gives const elements.
  template <std::integral Index>
  T* Item(Index index) {
    return mCol.Find(PlaceAt(index));
  }
  template <std::integral Index>
  const T* Item(Index index) const {
    return mCol.Find(PlaceAt(index));
  }
  T* Item(std::string_view key) { return mCol.Find(key); }
  const T* Item(std::string_view key) const { return mCol.Find(key); }
  std::shared_ptr<T> Share(std::size_t index) { return mCol.Share(index); }
  std::shared_ptr<const T> Share(std::size_t index) const { return mCol.Share(index); }
  std::shared_ptr<T> Share(std::string_view key) { return mCol.Share(key); }
  std::shared_ptr<const T> Share(std::string_view key) const { return mCol.Share(key); }
  bool HasKey(std::string_view key) const { return mCol.HasKey(key); }

  /// Adds an element. A key that is taken is told, and the element is dropped: whoever holds it
  /// keeps it. An empty key adds without one. Gives whether it was added.
  bool Add(std::shared_ptr<T> item, std::string_view key = {}, const Position& before = {},
           const Position& after = {}) try {
    const bool added = Family::Placed ? mCol.InsertIfFree(std::move(item), key, before, after)
                                      : mCol.InsertIfFree(std::move(item), key);
    if (!added) ReportDuplicateKey(Family::TypeText, key);
    return added;
  }
  VENDREL_CONTEXT(key, trace::Local("Type", Family::TypeText))
  /// Removes by position or key; raises 9 when there is none.
  void Remove(std::size_t index) try { mCol.Remove(index); }
  VENDREL_CONTEXT(index, trace::Local("Type", Family::TypeText))
  void Remove(std::string_view key) try { mCol.Remove(key); }
  VENDREL_CONTEXT(key, trace::Local("Type", Family::TypeText))
  void Clear() { mCol.Clear(); }
  /// Gives back the memory that was set aside for more elements.
  void Fit() { mCol.Fit(); }
  /// Sets memory aside for that many elements in all.
  void Reserve(std::size_t count) { mCol.Reserve(count); }
  std::size_t Count() const { return mCol.Count(); }

  auto begin() { return mCol.begin(); }
  auto end() { return mCol.end(); }
  auto begin() const { return mCol.begin(); }
  auto end() const { return mCol.end(); }

 protected:
  KeyedCollection<T> mCol;
};

/// A plural class with an `Add` of its own shape: no duplicate report, 457 is raised instead.
template <typename T>
class PlainCollection {
 public:
  using Element = T;

  template <std::integral Index>
  T* Item(Index index) {
    return mCol.Find(PlaceAt(index));
  }
  template <std::integral Index>
  const T* Item(Index index) const {
    return mCol.Find(PlaceAt(index));
  }
  T* Item(std::string_view key) { return mCol.Find(key); }
  const T* Item(std::string_view key) const { return mCol.Find(key); }
  std::shared_ptr<T> Share(std::size_t index) { return mCol.Share(index); }
  std::shared_ptr<const T> Share(std::size_t index) const { return mCol.Share(index); }
  std::shared_ptr<T> Share(std::string_view key) { return mCol.Share(key); }
  std::shared_ptr<const T> Share(std::string_view key) const { return mCol.Share(key); }
  bool HasKey(std::string_view key) const { return mCol.HasKey(key); }
  void Add(std::shared_ptr<T> item, std::string_view key = {}, const Position& before = {},
           const Position& after = {}) try {
    mCol.Insert(std::move(item), key, before, after);
  }
  VENDREL_CONTEXT(key)
  void Remove(std::size_t index) try { mCol.Remove(index); }
  VENDREL_CONTEXT(index)
  void Remove(std::string_view key) try { mCol.Remove(key); }
  VENDREL_CONTEXT(key)
  void Clear() { mCol.Clear(); }
  /// Gives back the memory that was set aside for more elements.
  void Fit() { mCol.Fit(); }
  std::size_t Count() const { return mCol.Count(); }
  auto begin() { return mCol.begin(); }
  auto end() { return mCol.end(); }
  auto begin() const { return mCol.begin(); }
  auto end() const { return mCol.end(); }

 protected:
  KeyedCollection<T> mCol;
};

/// Adds under `key` if that is free, else without a key.
template <typename T>
void AddUnderFreeKey(PlainCollection<T>& col, std::shared_ptr<T> item, std::string_view key) {
  col.Add(std::move(item), col.HasKey(key) ? std::string_view() : key);
}

}  // namespace vendrel
