// Making and finding the blocks of a module.

#include "core/CaseFold.h"
#include "diagnostics/Context.h"
#include "model/Component.h"
#include "model/ModuleKinds.h"

namespace vendrel {
namespace {

// Header line of the skeleton of a procedure with a fixed name; empty for other types.
std::string_view SkeletonHeader(BlockTypeEnum type) {
  for (const ModuleKind& kind : kModuleKinds)
    for (const LifetimeProcedure* procedure : {&kind.Opens, &kind.Closes})
      if (procedure->Type == type) return procedure->FirstLine;
  return {};
}

// An MDI form has no block types of its own: its procedures are known by their names.
Block* MdiBlock(Component& form, std::string_view name, std::string_view header, bool create) {
  const std::span<Block* const> named = form.Blocks.Named(name);
  if (!named.empty()) return named.front();
  if (!create) return nullptr;
  Block* block = form.NewBlock();
  for (const std::string_view line : {header, std::string_view(), std::string_view("End Sub")})
    block->AddLine(line);
  return block;
}

Block* LifetimeBlock(Component& component, BlockTypeEnum type, bool create) {
  return type == btUnrecognised ? nullptr : component.BlockOfType(type, create);
}

}  // namespace

Block* Component::NewBlock(BlockTypeEnum BlockType) try {
  const auto created = std::make_shared<Block>();
  Block* block = created.get();
  block->Component = this;
  block->LinkToProject(ProjectLink());
  Blocks.Add(created);
  if (BlockType != btUnrecognised) block->SetBlockType(BlockType);
  const std::string_view header = SkeletonHeader(BlockType);
  if (header.empty()) return block;
  block->AddLine(header);
  block->AddLine("End Sub");
  return block;
}
VENDREL_CONTEXT(BlockType, *this)

Block* Component::BlockOfType(BlockTypeEnum BlockType, bool CreateIfNotFound) {
  Block* block = Blocks.FirstOfType(BlockType);
  if (block || !CreateIfNotFound) return block;
  const bool mayCreate = BlockType == btDeclarations || !SkeletonHeader(BlockType).empty();
  return mayCreate ? NewBlock(BlockType) : nullptr;
}

Block* Component::InitBlock(bool CreateIfNotFound) {
  if (FileType == ftForm && mIsMDI)
    return MdiBlock(*this, "mdiform_load", "Private Sub MDIForm_Load()", CreateIfNotFound);
  return LifetimeBlock(*this, KindOfModule(FileType).Opens.Type, CreateIfNotFound);
}

Block* Component::TermBlock(bool CreateIfNotFound) {
  if (FileType == ftForm && mIsMDI)
    return MdiBlock(*this, "mdiform_unload", "Private Sub MDIForm_Unload(Cancel As Integer)",
                    CreateIfNotFound);
  return LifetimeBlock(*this, KindOfModule(FileType).Closes.Type, CreateIfNotFound);
}

}  // namespace vendrel
