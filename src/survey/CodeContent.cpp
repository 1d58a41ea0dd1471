#include "survey/CodeContent.h"

#include <algorithm>
#include <functional>
#include <string>

#include "core/Ascii.h"
#include "survey/NearDuplicates.h"
#include "text/CodeText.h"
#include "text/Separators.h"

namespace vendrel {
namespace {

// Lower case, without blanks but those between two words, "own" in the place of a name.
std::uint32_t HashOfLine(std::string_view text, std::string_view ownName, std::string& buffer) {
  buffer.clear();
  for (std::size_t i = 0; i < text.size();) {
    if (IsGap(text[i])) {
      const std::size_t next = std::min(text.find_first_not_of(" \t", i), text.size());
      if (!buffer.empty() && next < text.size() && IsWordByte(buffer.back()) &&
          IsWordByte(text[next]))
        buffer.push_back(' ');
      i = next;
      continue;
    }
    std::size_t end = i;
    while (end < text.size() && IsWordByte(text[end])) ++end;
    if (end == i) {
      buffer.push_back(text[i++]);
      continue;
    }
    const std::string_view word = text.substr(i, end - i);
    if (EqualsNoCaseAscii(word, ownName))
      buffer.push_back('\x01');
    else
      for (const char c : word) buffer.push_back(LowerAscii(c));
    i = end;
  }
  return static_cast<std::uint32_t>(std::hash<std::string_view>()(buffer));
}

}  // namespace

CodeContent::CodeContent(const Block& block) {
  Add(block);
  std::sort(mLines.begin(), mLines.end());
}

CodeContent::CodeContent(const Component& component) {
  for (const Block& block : component.Blocks.Listed())
    if (block.BlockType() != btAttributes) Add(block);
  std::sort(mLines.begin(), mLines.end());
}

void CodeContent::Add(const Block& block) {
  const CodeLines* lines = block.CodeLines.IfAny();
  if (!lines || lines->Unloaded()) return;
  std::string buffer;
  for (CodeWalk walk(*lines); walk.Next();) {
    const LineTypeEnum type = lines->LineType(walk.First());
    if (IsStartLineType(type) || IsEndLineType(type) || type == ATTRIBUTE_LINE) continue;
    mLines.push_back(HashOfLine(walk.Text(), block.Name(), buffer));
  }
}

int CodeContent::PercentCommon(const CodeContent& other) const {
  const std::size_t both = Count() + other.Count();
  if (Count() == 0 || other.Count() == 0) return 0;
  return static_cast<int>(200 * CommonOf(mLines, other.mLines) / both);
}

}  // namespace vendrel
