#pragma once
// From a row of any table to numbers that belong to it.

#include <algorithm>
#include <cstdint>
#include <span>
#include <vector>

#include "dotnet/metadata/Tables.h"

namespace vendrel::metadata {

/// A row of a table and a number of its own, ordered by the row.
struct Link {
  std::uint64_t From;
  std::uint32_t To;
};

constexpr std::uint64_t KeyOf(Token token) { return std::uint64_t{token.Of} << 32 | token.Row; }

/// Added in any order, looked up once finished; what belongs to one row keeps its order.
class Links {
 public:
  void Add(Token from, std::uint32_t to) {
    if (!from) return;
    mSorted = mSorted && (mLinks.empty() || mLinks.back().From <= KeyOf(from));
    mLinks.push_back({KeyOf(from), to});
  }
  void Finish() {
    if (!mSorted)
      std::stable_sort(mLinks.begin(), mLinks.end(),
                       [](const Link& a, const Link& b) { return a.From < b.From; });
    mLinks.shrink_to_fit();
  }
  std::span<const Link> Of(Token from) const {
    const auto first = std::partition_point(
        mLinks.begin(), mLinks.end(), [&](const Link& link) { return link.From < KeyOf(from); });
    auto last = first;
    while (last != mLinks.end() && last->From == KeyOf(from)) ++last;
    return {first, last};
  }

 private:
  std::vector<Link> mLinks;
  bool mSorted = true;
};

}  // namespace vendrel::metadata
