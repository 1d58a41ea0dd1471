#pragma once
// What of the lines of a block is code, whatever comments stand around it.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "text/CodeLines.h"

namespace vendrel {

/// The code of a physical line: without blanks around it and the comment behind it; empty for a
/// comment alone. A line that a comment of the line above goes on to must not be asked.
std::string_view CodeOf(std::string_view line);

/// The 1-based physical lines that hold code, in their order.
std::vector<std::int32_t> LinesWithCode(const CodeLines& lines);

/// Walks the code of a block line by logical line, continuations joined, comments left out.
class CodeWalk {
 public:
  /// Begins at a 1-based physical line.
  explicit CodeWalk(const CodeLines& lines, std::int32_t first = 1) : mLines(lines), mNext(first) {}
  /// Goes to the next logical line that holds code; false at the end.
  bool Next();
  /// Its code.
  std::string_view Text() const { return mText; }
  /// Its first and its last physical line, 1-based.
  std::int32_t First() const { return mFirst; }
  std::int32_t Last() const { return mNext - 1; }

 private:
  bool TakeLine(std::string_view& code);

  const CodeLines& mLines;
  std::int32_t mNext;
  std::int32_t mFirst = 0;
  bool mInComment = false;
  std::string mText;
};

}  // namespace vendrel
