#include "cli/ByteDifference.h"

#include <algorithm>

#include "cli/Changes.h"
#include "output/Json.h"

namespace vendrel::cli {
namespace {

// Position behind the line that `position` lies in.
std::size_t LineEnd(std::string_view bytes, std::size_t position) {
  const std::size_t end = bytes.find('\n', position);
  return end == std::string_view::npos ? bytes.size() : end + 1;
}

std::size_t LineStart(std::string_view bytes, std::size_t position) {
  const std::size_t end = position == 0 ? std::string_view::npos : bytes.rfind('\n', position - 1);
  return end == std::string_view::npos ? 0 : end + 1;
}

std::string QuotedLines(std::string_view bytes) {
  std::string text;
  while (!bytes.empty()) {
    const std::size_t end = LineEnd(bytes, 0);
    AppendJsonString(text, bytes.substr(0, end));
    text.push_back('\n');
    bytes.remove_prefix(end);
  }
  return text;
}

}  // namespace

ByteDifference CompareBytes(std::string_view before, std::string_view after) {
  if (before == after) return {};
  const auto [firstBefore, firstAfter] =
      std::mismatch(before.begin(), before.end(), after.begin(), after.end());
  const std::size_t head =
      LineStart(before, static_cast<std::size_t>(firstBefore - before.begin()));
  const auto newLines = std::count(before.begin(), before.begin() + static_cast<long>(head), '\n');
  const std::size_t shorter = std::min(before.size(), after.size()) - head;
  std::size_t tail = 0;
  while (tail < shorter && before[before.size() - tail - 1] == after[after.size() - tail - 1])
    ++tail;
  // Back to where a line begins on both sides.
  tail = before.size() - LineEnd(before, before.size() - tail);
  return {true, static_cast<std::size_t>(newLines) + 1,
          before.substr(head, before.size() - tail - head),
          after.substr(head, after.size() - tail - head)};
}

void WriteByteDifference(std::ostream& out, const ByteDifference& difference) {
  WriteMarkedLines(out, "  - ", QuotedLines(difference.Before));
  WriteMarkedLines(out, "  + ", QuotedLines(difference.After));
}

}  // namespace vendrel::cli
