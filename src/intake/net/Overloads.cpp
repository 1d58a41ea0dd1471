#include "intake/net/Overloads.h"

#include <vector>

#include "core/CaseFold.h"
#include "diagnostics/Context.h"
#include "diagnostics/Diagnostic.h"
#include "model/Component.h"

namespace vendrel {
namespace {

bool SameKind(const Block& a, const Block& b) {
  return a.IsMethod() == b.IsMethod() || a.IsProperty() == b.IsProperty();
}

Block* NewMaster(Component& component, const Block& current) {
  Block* master = component.netCreateBlock(current.BlockType(), current.Name(), current.Access,
                                           current.ReturnType, current.Implemented,
                                           current.InheritedFrom(), current.IsStatic,
                                           current.IsVirtual, current.IsAbstract, current.IsShadow);
  master->IsConstructor = current.IsConstructor;
  return master;
}

// Moves a block from the module to its master, under its signature.
void MoveToMaster(Component& component, Block& block, Block& master) {
  const std::shared_ptr<Block> shared = component.Blocks.ShareOf(&block);
  std::size_t index = component.Blocks.Count();
  while (index > 0 && component.Blocks.Item(index) != &block) --index;
  component.Blocks.Remove(index);
  block.SetName(block.OverloadedMethodSignature());
  block.SetOverloaded(true);
  // Two signatures that read alike are two procedures all the same.
  const bool isFree =
      !component.Options().Reading.NetOverloads || !master.OverloadBlocks()->HasKey(block.Name());
  master.AddOverload(shared, isFree ? std::string_view(block.Name()) : std::string_view());
}

}  // namespace

void CollectOverloads(Component& component) try {
  Block& current = *component.CurrentBlock.Get();
  current.Implemented = true;
  Block* master = nullptr;
  bool found = false;
  for (Block* other : component.Blocks.Named(current.Name())) {
    if (other == &current || other->Name() != current.Name() || !SameKind(*other, current))
      continue;
    found = true;
    if (other->OverloadBlocks().IfAny() && other->OverloadBlocks()->Count() > 0) {
      master = other;
      break;
    }
  }
  if (!found) return;
  if (!master) master = NewMaster(component, current);
  std::vector<Block*> family;
  for (Block* other : component.Blocks.Named(master->Name()))
    if (other != master && other->Name() == master->Name() && SameKind(*other, *master))
      family.push_back(other);
  for (Block* block : family) MoveToMaster(component, *block, *master);
}
VENDREL_CONTEXT_AT(LineReached(), component)

}  // namespace vendrel
