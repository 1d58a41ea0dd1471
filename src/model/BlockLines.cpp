// Places in the lines of a block.

#include "diagnostics/Context.h"
#include "model/Blocks.h"
#include "model/Component.h"

namespace vendrel {
namespace {

// 1-based position of the first line that opens a procedure; 0 if there is none.
std::int32_t FirstStartLine(const CodeLines& lines, std::int32_t from = 1) {
  for (std::int32_t i = from; i <= lines.Count(); ++i)
    if (lines.IsStartLine(i)) return i;
  return 0;
}

// 1-based position of the first line that ends a procedure; 0 if there is none.
std::int32_t FirstEndLine(const CodeLines& lines) {
  for (std::int32_t i = 1; i <= lines.Count(); ++i)
    if (lines.IsEndLine(i)) return i;
  return 0;
}

std::int32_t BackOverContinuations(const CodeLines& lines, std::int32_t position) {
  while (position > 1 && lines.Continuation(position)) --position;
  return position;
}

}  // namespace

std::int32_t Block::StartLine() const try {
  if (mStartLine != -1) return mStartLine;
  const vendrel::CodeLines* lines = CodeLines.IfAny();
  if (!lines) return 0;
  const std::int32_t count = lines->Count();
  std::int32_t position = FirstStartLine(*lines);
  while (position > 0 && lines->Continued(position))
    position = FirstStartLine(*lines, position + 1);
  if (position == 0) return 0;
  while (position < count && lines->LineType(position + 1) == ATTRIBUTE_LINE) ++position;
  while (position < count && lines->Continued(position)) ++position;
  return position;
}
VENDREL_CONTEXT(*this)

std::int32_t Block::FirstLine() const try {
  const vendrel::CodeLines* lines = CodeLines.IfAny();
  return lines ? BackOverContinuations(*lines, FirstStartLine(*lines)) : 0;
}
VENDREL_CONTEXT(*this)

std::int32_t Block::EndLine() const try {
  if (mEndLine != -1) return mEndLine;
  const vendrel::CodeLines* lines = CodeLines.IfAny();
  if (!lines) return 0;
  if (mBlockType == btAttributes || mBlockType == btDeclarations) return lines->Count();
  const std::int32_t position = FirstEndLine(*lines);
  return position > 0 ? BackOverContinuations(*lines, position) : lines->Count();
}
VENDREL_CONTEXT(*this)

std::vector<CodeLine> Block::LinesOfType(LineTypeEnum LineType) const try {
  std::vector<CodeLine> result;
  const vendrel::Component* component = Component.Get();
  const Block* previous = component ? component->Blocks.Previous(this) : nullptr;
  if (const auto* lines = previous ? previous->CodeLines.IfAny() : nullptr) {
    const std::int32_t end = FirstEndLine(*lines);
    for (std::int32_t i = end + 1; end > 0 && i <= lines->Count(); ++i)
      if (lines->LineType(i) == LineType) result.push_back(lines->Item(i));
  }
  const vendrel::CodeLines* own = CodeLines.IfAny();
  for (std::int32_t i = 1; own && i <= own->Count(); ++i) {
    if (own->LineType(i) == LineType)
      result.push_back(own->Item(i));
    else if (own->IsEndLine(i))
      break;
  }
  return result;
}
VENDREL_CONTEXT(LineType, *this)

}  // namespace vendrel
