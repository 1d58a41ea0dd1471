#pragma once
#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/CaseFold.h"

namespace vendrel {

/// Pairs of key and item, read back in ascending order of key, letter case ignored. Items of equal
/// keys keep the order in which they were added.
template <typename T>
class SortedList {
 public:
  void Add(std::string_view key, T item) { mPairs.emplace_back(FoldKey(key), std::move(item)); }
  std::size_t Count() const { return mPairs.size(); }
  /// All items, in order of their keys.
  std::vector<T> Items() const {
    std::vector<const Pair*> order;
    order.reserve(mPairs.size());
    for (const Pair& pair : mPairs) order.push_back(&pair);
    std::stable_sort(order.begin(), order.end(),
                     [](const Pair* a, const Pair* b) { return a->first < b->first; });
    std::vector<T> items;
    items.reserve(order.size());
    for (const Pair* pair : order) items.push_back(pair->second);
    return items;
  }

 private:
  using Pair = std::pair<std::string, T>;
  std::vector<Pair> mPairs;
};

}  // namespace vendrel
