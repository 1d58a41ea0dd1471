#include "output/ElementWords.h"

#include "model/Block.h"
#include "model/Component.h"
#include "model/Variable.h"
#include "names/NameWalk.h"

namespace vendrel {
namespace {

struct ClassWord {
  std::string_view ClassName, Word;
};
constexpr ClassWord kWords[] = {{"VBProjectGroup", "group"},
                                {"VBProject", "project"},
                                {"Reference", "reference"},
                                {"CompilerConstant", "conditional-constant"},
                                {"Library", "library"},
                                {"Component", "module"},
                                {"VBControl", "control"},
                                {"Constant", "constant"},
                                {"Enumeration", "enumeration"},
                                {"EnumMember", "enumeration-member"},
                                {"UDT", "type"},
                                {"EventDeclaration", "event"},
                                {"DeclareDeclaration", "declare"},
                                {"Interface", "interface"},
                                {"PropertyGroup", "property"},
                                {"Parameter", "parameter"},
                                {"TaggedComment", "tagged-comment"},
                                {"Example", "example"}};

// Null for an element of another class.
const Block* BlockOf(ElementRef element) {
  return element.Class->Name == "Block" ? static_cast<const Block*>(element.Object) : nullptr;
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
  if (element.Class->Name == "Variable")
    return KindOf(*static_cast<const Variable*>(element.Object));
  for (const ClassWord& known : kWords)
    if (element.Class->Name == known.ClassName) return known.Word;
  return element.Class->Name;
}

}  // namespace vendrel
