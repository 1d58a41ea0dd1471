#include "output/ElementWords.h"

#include "model/Block.h"
#include "model/Component.h"
#include "model/Variable.h"
#include "names/NameWalk.h"

namespace vendrel {
namespace {

// Null for an element of another class.
const Block* BlockOf(ElementRef element) {
  return element.Class->Kind == ElementKind::Block ? static_cast<const Block*>(element.Object)
                                                   : nullptr;
}

std::string_view SectionWord(const Block& block) {
  switch (block.BlockType()) {
    case btDeclarations: return "declarations";
    case btAttributes: return "attributes";
    default: return "lines";
  }
}

}  // namespace

// Sections come first in a module, one behind the other.
std::int32_t LineOfSection(ElementRef element) {
  const Block* section = BlockOf(element);
  const Component* component = section ? section->Component.Get() : nullptr;
  if (!component || !section->Name().empty()) return 0;
  std::int32_t line = 1;
  for (const Block& block : component->Blocks) {
    if (&block == section) return line;
    if (!block.Name().empty()) return 0;
    const CodeLines* lines = block.CodeLines.IfAny();
    if (!lines || lines->Unloaded()) continue;
    for (std::int32_t i = 1; i <= lines->Count(); ++i) line += !lines->NotInSource(i);
  }
  return 0;
}

bool IsProcedure(ElementRef element) {
  const Block* block = BlockOf(element);
  return block && !block->Name().empty();
}

std::string_view KindWord(ElementRef element) {
  if (const Block* block = BlockOf(element))
    return block->Name().empty() ? SectionWord(*block) : KindOf(*block);
  if (element.Class->Kind == ElementKind::Variable)
    return KindOf(*static_cast<const Variable*>(element.Object));
  return RowOf(element.Class->Kind).Word;
}

}  // namespace vendrel
