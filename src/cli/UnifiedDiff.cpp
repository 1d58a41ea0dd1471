#include "cli/UnifiedDiff.h"

#include <algorithm>
#include <unordered_map>

#include "services/SourceText.h"

namespace vendrel::cli {
namespace {

constexpr std::size_t kContext = 3;
// A gap of more differences than this is not searched for the shortest answer.
constexpr int kMostEdits = 400;

// Lines with their ends: two that differ in the end only are different.
std::vector<std::string_view> LinesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  std::string_view rest = text;
  while (!rest.empty()) {
    const char* start = rest.data();
    TakeLine(rest);
    const char* end = rest.empty() ? text.data() + text.size() : rest.data();
    lines.emplace_back(start, static_cast<std::size_t>(end - start));
  }
  return lines;
}

// Both texts as numbers, one for each different line.
class Comparison {
 public:
  Comparison(const std::vector<std::string_view>& oldLines,
             const std::vector<std::string_view>& newLines) {
    mOld = Numbers(oldLines);
    mNew = Numbers(newLines);
  }
  std::vector<LineChange> Run();

 private:
  struct Range {
    std::size_t Old, OldEnd, New, NewEnd;
  };
  struct Pair {
    std::size_t Old, New;
  };

  std::vector<std::size_t> Numbers(const std::vector<std::string_view>& lines);
  void Trim(Range& range) const;
  std::vector<Pair> Anchors(const Range& range) const;
  void Gap(Range range);
  bool Shortest(const Range& range);
  void Add(const Range& range);

  std::unordered_map<std::string_view, std::size_t> mNumbers;
  std::vector<std::size_t> mOld, mNew;
  std::vector<LineChange> mChanges;
};

std::vector<std::size_t> Comparison::Numbers(const std::vector<std::string_view>& lines) {
  std::vector<std::size_t> numbers;
  numbers.reserve(lines.size());
  for (const std::string_view line : lines)
    numbers.push_back(mNumbers.emplace(line, mNumbers.size()).first->second);
  return numbers;
}

std::vector<LineChange> Comparison::Run() {
  Range whole{0, mOld.size(), 0, mNew.size()};
  Trim(whole);
  Range gap = whole;
  for (const Pair& anchor : Anchors(whole)) {
    gap.OldEnd = anchor.Old;
    gap.NewEnd = anchor.New;
    Gap(gap);
    gap.Old = anchor.Old + 1;
    gap.New = anchor.New + 1;
  }
  gap.OldEnd = whole.OldEnd;
  gap.NewEnd = whole.NewEnd;
  Gap(gap);
  return std::move(mChanges);
}

// Takes equal lines off both ends.
void Comparison::Trim(Range& range) const {
  while (range.Old < range.OldEnd && range.New < range.NewEnd && mOld[range.Old] == mNew[range.New])
    ++range.Old, ++range.New;
  while (range.Old < range.OldEnd && range.New < range.NewEnd &&
         mOld[range.OldEnd - 1] == mNew[range.NewEnd - 1])
    --range.OldEnd, --range.NewEnd;
}

// Lines that stand once in either text, as far as they come in the same order in both: the longest
// rising sequence of their places.
std::vector<Comparison::Pair> Comparison::Anchors(const Range& range) const {
  constexpr std::size_t none = static_cast<std::size_t>(-1);
  struct Uses {
    std::size_t Old = none, New = none;
    int OldCount = 0, NewCount = 0;
  };
  std::unordered_map<std::size_t, Uses> uses;
  for (std::size_t i = range.Old; i < range.OldEnd; ++i) {
    Uses& use = uses[mOld[i]];
    use.Old = i;
    ++use.OldCount;
  }
  for (std::size_t i = range.New; i < range.NewEnd; ++i) {
    Uses& use = uses[mNew[i]];
    use.New = i;
    ++use.NewCount;
  }
  std::vector<Pair> unique;
  for (std::size_t i = range.Old; i < range.OldEnd; ++i) {
    const Uses& use = uses[mOld[i]];
    if (use.OldCount == 1 && use.NewCount == 1) unique.push_back({i, use.New});
  }
  std::vector<std::size_t> tails, before(unique.size(), none);
  for (std::size_t i = 0; i < unique.size(); ++i) {
    const auto place =
        std::lower_bound(tails.begin(), tails.end(), unique[i].New,
                         [&](std::size_t tail, std::size_t at) { return unique[tail].New < at; });
    if (place != tails.begin()) before[i] = *(place - 1);
    if (place == tails.end())
      tails.push_back(i);
    else
      *place = i;
  }
  std::vector<Pair> rising;
  for (std::size_t i = tails.empty() ? none : tails.back(); i != none; i = before[i])
    rising.push_back(unique[i]);
  std::reverse(rising.begin(), rising.end());
  return rising;
}

void Comparison::Gap(Range range) {
  Trim(range);
  if (range.Old == range.OldEnd && range.New == range.NewEnd) return;
  const bool oneSided = range.Old == range.OldEnd || range.New == range.NewEnd;
  if (oneSided || !Shortest(range)) Add(range);
}

// The shortest edit script, by furthest reaching paths; false if it takes too many edits.
bool Comparison::Shortest(const Range& range) {
  const int oldCount = static_cast<int>(range.OldEnd - range.Old);
  const int newCount = static_cast<int>(range.NewEnd - range.New);
  const int most = std::min(oldCount + newCount, kMostEdits);
  const auto same = [&](int x, int y) {
    return mOld[range.Old + static_cast<std::size_t>(x)] ==
           mNew[range.New + static_cast<std::size_t>(y)];
  };
  std::vector<int> reach(static_cast<std::size_t>(2 * most + 3), 0);
  const auto at = [&](std::vector<int>& v, int k) -> int& {
    const int place = k + most + 1;  // never below 0: k goes from -most on
    return v[static_cast<std::size_t>(place)];
  };
  std::vector<std::vector<int>> trace;
  int edits = 0;
  for (bool arrived = false; !arrived; ++edits) {
    if (edits > most) return false;
    trace.push_back(reach);
    for (int k = -edits; k <= edits && !arrived; k += 2) {
      const bool down = k == -edits || (k != edits && at(reach, k - 1) < at(reach, k + 1));
      int x = down ? at(reach, k + 1) : at(reach, k - 1) + 1;
      while (x < oldCount && x - k >= 0 && x - k < newCount && same(x, x - k)) ++x;
      at(reach, k) = x;
      arrived = x >= oldCount && x - k >= newCount;
    }
  }
  std::vector<LineChange> back;
  int x = oldCount, y = newCount;
  for (int d = edits - 1; d > 0; --d) {
    std::vector<int>& v = trace[static_cast<std::size_t>(d)];
    const int k = x - y;
    const bool down = k == -d || (k != d && at(v, k - 1) < at(v, k + 1));
    const int fromK = down ? k + 1 : k - 1;
    const int fromX = at(v, fromK), fromY = fromX - fromK;
    back.push_back({range.Old + static_cast<std::size_t>(fromX), down ? 0u : 1u,
                    range.New + static_cast<std::size_t>(fromY), down ? 1u : 0u});
    x = fromX;
    y = fromY;
  }
  for (auto change = back.rbegin(); change != back.rend(); ++change)
    Add({change->OldLine, change->OldLine + change->OldCount, change->NewLine,
         change->NewLine + change->NewCount});
  return true;
}

// Joins a change to the one before it where nothing lies between.
void Comparison::Add(const Range& range) {
  if (!mChanges.empty()) {
    LineChange& last = mChanges.back();
    if (last.OldLine + last.OldCount == range.Old && last.NewLine + last.NewCount == range.New) {
      last.OldCount += range.OldEnd - range.Old;
      last.NewCount += range.NewEnd - range.New;
      return;
    }
  }
  mChanges.push_back({range.Old, range.OldEnd - range.Old, range.New, range.NewEnd - range.New});
}

void WriteLine(std::ostream& out, char mark, std::string_view line) {
  out << mark << line;
  if (!line.ends_with('\n'))
    out << (line.ends_with('\r') ? "\n" : "\n\\ No newline at end of file\n");
}

void WriteHunk(std::ostream& out, const std::vector<std::string_view>& oldLines,
               const std::vector<std::string_view>& newLines, const LineChange* first,
               const LineChange* behind) {
  const LineChange& last = behind[-1];
  const std::size_t lead = std::min(first->OldLine, kContext);
  const std::size_t lastOld = last.OldLine + last.OldCount;
  const std::size_t tail = std::min(oldLines.size() - lastOld, kContext);
  const std::size_t start = first->OldLine - lead;
  const std::size_t newStart = first->NewLine - lead;
  const std::size_t oldCount = lastOld + tail - start;
  const std::size_t newCount = last.NewLine + last.NewCount + tail - newStart;
  out << "@@ -" << start + (oldCount > 0) << ',' << oldCount << " +" << newStart + (newCount > 0)
      << ',' << newCount << " @@\n";
  std::size_t at = start;
  for (const LineChange* change = first; change != behind; ++change) {
    for (; at < change->OldLine; ++at) WriteLine(out, ' ', oldLines[at]);
    for (std::size_t i = 0; i < change->OldCount; ++i, ++at) WriteLine(out, '-', oldLines[at]);
    for (std::size_t i = 0; i < change->NewCount; ++i)
      WriteLine(out, '+', newLines[change->NewLine + i]);
  }
  for (const std::size_t end = at + tail; at < end; ++at) WriteLine(out, ' ', oldLines[at]);
}

}  // namespace

std::vector<LineChange> CompareLines(std::string_view oldText, std::string_view newText) {
  if (oldText == newText) return {};
  return Comparison(LinesOf(oldText), LinesOf(newText)).Run();
}

std::size_t WriteUnifiedDiff(std::ostream& out, std::string_view oldName, std::string_view oldText,
                             std::string_view newName, std::string_view newText) {
  const std::vector<LineChange> changes = CompareLines(oldText, newText);
  if (changes.empty()) return 0;
  out << "--- " << oldName << "\n+++ " << newName << '\n';
  const auto oldLines = LinesOf(oldText), newLines = LinesOf(newText);
  const LineChange* const end = changes.data() + changes.size();
  for (const LineChange* first = changes.data(); first != end;) {
    const LineChange* behind = first + 1;
    while (behind != end &&
           behind->OldLine - (behind[-1].OldLine + behind[-1].OldCount) <= 2 * kContext)
      ++behind;
    WriteHunk(out, oldLines, newLines, first, behind);
    first = behind;
  }
  return changes.size();
}

}  // namespace vendrel::cli
