#include "survey/NearDuplicates.h"

#include <algorithm>
#include <functional>
#include <set>
#include <string>
#include <unordered_map>

#include "core/Ascii.h"
#include "services/SourceText.h"

namespace vendrel {
namespace {

constexpr std::size_t kFewestLines = 10;
/// Least hashes of a text that are looked at.
constexpr std::size_t kSketch = 24;
/// A line that so many texts share tells nothing.
constexpr std::size_t kMostTexts = 64;

}  // namespace

std::size_t CommonOf(const std::vector<std::uint32_t>& a, const std::vector<std::uint32_t>& b) {
  std::size_t common = 0;
  for (auto i = a.begin(), j = b.begin(); i != a.end() && j != b.end();) {
    if (*i == *j)
      ++common, ++i, ++j;
    else if (*i < *j)
      ++i;
    else
      ++j;
  }
  return common;
}

void NearDuplicates::Add(std::string_view text) {
  std::vector<std::uint32_t> lines;
  while (!text.empty()) {
    std::string_view line = TakeLine(text);
    while (!line.empty() && (line.front() == ' ' || line.front() == '\t')) line.remove_prefix(1);
    line = TrimRight(line);
    if (line.empty() || line.front() == '\'') continue;
    lines.push_back(static_cast<std::uint32_t>(std::hash<std::string>()(LowerAscii(line))));
  }
  std::sort(lines.begin(), lines.end());
  mLines.push_back(std::move(lines));
}

std::vector<NearDuplicate> NearDuplicates::Find() const {
  std::unordered_map<std::uint32_t, std::vector<std::size_t>> texts;
  for (std::size_t i = 0; i < mLines.size(); ++i) {
    if (mLines[i].size() < kFewestLines) continue;
    std::uint32_t last = 0;
    std::size_t taken = 0;
    for (const std::uint32_t hash : mLines[i]) {
      if (taken > 0 && hash == last) continue;
      if (taken++ == kSketch) break;
      last = hash;
      texts[hash].push_back(i);
    }
  }
  std::set<std::pair<std::size_t, std::size_t>> candidates;
  for (const auto& [hash, sharing] : texts) {
    if (sharing.size() > kMostTexts) continue;
    for (std::size_t i = 0; i < sharing.size(); ++i)
      for (std::size_t j = i + 1; j < sharing.size(); ++j)
        candidates.emplace(sharing[i], sharing[j]);
  }
  std::vector<NearDuplicate> found;
  for (const auto& [first, second] : candidates) {
    const auto &a = mLines[first], &b = mLines[second];
    const std::size_t both = a.size() + b.size();
    // The shorter one alone may make it impossible.
    if (200 * std::min(a.size(), b.size()) < kLeastPercent * both || a == b) continue;
    const int percent = static_cast<int>(200 * CommonOf(a, b) / both);
    if (percent >= kLeastPercent) found.push_back({first, second, percent});
  }
  return found;
}

}  // namespace vendrel
