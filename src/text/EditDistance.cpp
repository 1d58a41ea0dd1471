#include "text/EditDistance.h"

#include <algorithm>
#include <array>
#include <numeric>

#include "core/Ascii.h"

namespace vendrel {

std::size_t EditDistance(std::string_view a, std::string_view b) {
  std::array<std::size_t, kLongestCompared + 1> before{}, last{}, row{};
  std::iota(last.begin(), last.end(), std::size_t{0});
  for (std::size_t i = 1; i <= a.size(); ++i) {
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const bool same = UpperAscii(a[i - 1]) == UpperAscii(b[j - 1]);
      row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (same ? 0 : 1)});
      const bool swapped = i > 1 && j > 1 && UpperAscii(a[i - 1]) == UpperAscii(b[j - 2]) &&
                           UpperAscii(a[i - 2]) == UpperAscii(b[j - 1]);
      if (swapped) row[j] = std::min(row[j], before[j - 2] + 1);
    }
    before = last;
    last = row;
  }
  return last[b.size()];
}

}  // namespace vendrel
