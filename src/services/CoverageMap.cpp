#include "services/CoverageMap.h"

#include <algorithm>

namespace vendrel {

void CoverageMap::Mark(const std::uint8_t* start, std::size_t count) {
  const std::size_t offset = static_cast<std::size_t>(start - mStart);
  std::fill_n(mRead.begin() + static_cast<std::ptrdiff_t>(offset), count, std::uint8_t{1});
}

void CoverageMap::AddRegion(std::string name, std::size_t offset, std::size_t length) {
  mRegions.push_back({std::move(name), offset, std::min(length, mRead.size() - offset)});
}

std::vector<CoverageMap::Leftover> CoverageMap::Leftovers() const {
  std::vector<Leftover> result;
  std::vector<std::uint8_t> inRegion(mRead.size(), 0);
  const auto count = [&](const std::string& name, std::size_t offset, std::size_t length,
                         auto belongs) {
    Leftover left{name, length, 0, 0};
    for (std::size_t i = offset; i < offset + length; ++i) {
      if (mRead[i] != 0 || !belongs(i)) continue;
      if (left.Unread++ == 0) left.First = i;
    }
    if (left.Unread > 0) result.push_back(std::move(left));
  };
  for (const Region& region : mRegions) {
    std::fill_n(inRegion.begin() + static_cast<std::ptrdiff_t>(region.Offset), region.Length, 1);
    count(region.Name, region.Offset, region.Length, [](std::size_t) { return true; });
  }
  count("between", 0, mRead.size(), [&](std::size_t i) { return inRegion[i] == 0; });
  return result;
}

}  // namespace vendrel
