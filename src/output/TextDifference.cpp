#include "output/TextDifference.h"

#include <algorithm>
#include <unordered_map>
#include <vector>

#include "text/CodeText.h"

namespace vendrel {
namespace {

void AppendLine(std::string& text, std::string_view line) { text.append(line).push_back('\n'); }

// The lines of one block, all of them or those with code; none where they were never read or have
// been unloaded.
class Lines {
 public:
  explicit Lines(const CodeLines* lines, bool onlyCode = false)
      : mLines(lines && !lines->Unloaded() ? lines : nullptr), mOnlyCode(onlyCode) {
    if (mLines && onlyCode) mNumbers = LinesWithCode(*mLines);
  }
  std::int32_t Count() const {
    if (!mLines) return 0;
    return mOnlyCode ? static_cast<std::int32_t>(mNumbers.size()) : mLines->Count();
  }
  std::string_view At(std::int32_t index) const {
    return mLines->LineView(mOnlyCode ? mNumbers[static_cast<std::size_t>(index - 1)] : index);
  }
  // What counts of a line.
  std::string_view Compared(std::int32_t index) const {
    return mOnlyCode ? CodeOf(At(index)) : At(index);
  }

  std::string Join(std::int32_t first, std::int32_t last) const {
    std::string text;
    for (std::int32_t i = first; i <= last; ++i) AppendLine(text, At(i));
    return text;
  }

 private:
  const CodeLines* mLines;
  std::vector<std::int32_t> mNumbers;
  bool mOnlyCode;
};

// What stands between the lines that both begin with and those that both end with; false if that is
// nothing.
bool LinesDiffer(const Lines& before, const Lines& after, TextPair& difference) {
  const std::int32_t shorter = std::min(before.Count(), after.Count());
  const auto isSame = [&](std::int32_t old, std::int32_t now) {
    return before.At(old) == after.At(now) || before.Compared(old) == after.Compared(now);
  };
  std::int32_t head = 0;
  while (head < shorter && isSame(head + 1, head + 1)) ++head;
  if (head == before.Count() && head == after.Count()) return false;
  std::int32_t tail = 0;
  while (tail < shorter - head && isSame(before.Count() - tail, after.Count() - tail)) ++tail;
  difference.Before = before.Join(head + 1, before.Count() - tail);
  difference.After = after.Join(head + 1, after.Count() - tail);
  return true;
}

}  // namespace

TextPair DifferenceOf(std::span<const std::string> before, std::span<const std::string> after) {
  std::unordered_map<std::string_view, std::ptrdiff_t> surplus;
  for (const std::string& text : before) ++surplus[text];
  for (const std::string& text : after) --surplus[text];
  TextPair difference;
  for (const std::string& text : before)
    if (std::ptrdiff_t& count = surplus[text]; count > 0) {
      --count;
      AppendLine(difference.Before, text);
    }
  for (const std::string& text : after)
    if (std::ptrdiff_t& count = surplus[text]; count < 0) {
      ++count;
      AppendLine(difference.After, text);
    }
  if (!difference.Before.empty() || !difference.After.empty()) return difference;
  for (const std::string& text : before) AppendLine(difference.Before, text);
  for (const std::string& text : after) AppendLine(difference.After, text);
  return difference;
}

bool DifferenceOf(const CodeLines* before, const CodeLines* after, bool comments,
                  TextPair& difference) {
  // Most blocks are the same line by line.
  if (!LinesDiffer(Lines(before), Lines(after), difference)) return false;
  return comments || LinesDiffer(Lines(before, true), Lines(after, true), difference);
}

}  // namespace vendrel
