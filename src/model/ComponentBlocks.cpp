// Making and finding the blocks of a module.

#include "core/CaseFold.h"
#include "diagnostics/Context.h"
#include "model/Component.h"

namespace vendrel {
namespace {

// Header line of the skeleton of a procedure with a fixed name; empty for other types.
std::string_view SkeletonHeader(BlockTypeEnum type) {
  switch (type) {
    case btClassInitialize: return "Private Sub Class_Initialize()";
    case btClassTerminate: return "Private Sub Class_Terminate()";
    case btFormLoad: return "Private Sub Form_Load()";
    case btFormUnload: return "Private Sub Form_Unload(Cancel as Integer)";
    case btUserControlInitialise: return "Private Sub UserControl_Initialize()";
    case btUserControlTerminate: return "Private Sub UserControl_Terminate()";
    case btUserDocumentInitialise: return "Private Sub UserDocument_Initialize()";
    case btUserDocumentTerminate: return "Private Sub UserDocument_Terminate()";
    default: return {};
  }
}

// The procedure that opens or closes a module of that kind; btUnrecognised where there is none.
BlockTypeEnum LifetimeType(FileTypeEnum file, bool opens) {
  switch (file) {
    case ftClass: return opens ? btClassInitialize : btClassTerminate;
    case ftForm: return opens ? btFormLoad : btFormUnload;
    case ftUserControl: return opens ? btUserControlInitialise : btUserControlTerminate;
    case ftUserDocument: return opens ? btUserDocumentInitialise : btUserDocumentTerminate;
    default: return btUnrecognised;
  }
}

// An MDI form has no block types of its own: its procedures are known by their names.
Block* MdiBlock(Component& form, std::string_view name, std::string_view header, bool create) {
  const std::vector<Block*>& named = form.Blocks.Named(name);
  if (!named.empty()) return named.front();
  if (!create) return nullptr;
  Block* block = form.NewBlock();
  for (const std::string_view line : {header, std::string_view(), std::string_view("End Sub")})
    block->AddLine(line);
  return block;
}

Block* LifetimeBlock(Component& component, bool opens, bool create) {
  const BlockTypeEnum type = LifetimeType(component.FileType, opens);
  return type == btUnrecognised ? nullptr : component.BlockOfType(type, create);
}

}  // namespace

Block* Component::NewBlock(BlockTypeEnum BlockType) try {
  const auto created = std::make_shared<Block>();
  Block* block = created.get();
  block->Component = this;
  block->SetVBProject(Project());
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
  return LifetimeBlock(*this, true, CreateIfNotFound);
}

Block* Component::TermBlock(bool CreateIfNotFound) {
  if (FileType == ftForm && mIsMDI)
    return MdiBlock(*this, "mdiform_unload", "Private Sub MDIForm_Unload(Cancel As Integer)",
                    CreateIfNotFound);
  return LifetimeBlock(*this, false, CreateIfNotFound);
}

}  // namespace vendrel
