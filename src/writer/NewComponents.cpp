// Modules and procedures that a client adds to a project before it is written.

#include "core/Ascii.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "model/ModuleKinds.h"
#include "project/VBProject.h"
#include "services/SourceText.h"

namespace vendrel {
namespace {

// The first procedure `Main` without a result in any module.
Block* FindMain(VBProject& project) {
  for (Component& component : project.Components)
    for (Block* block : component.Blocks.Named("Main"))
      if (block->BlockType() == btSub) return block;
  return nullptr;
}

Block* AddMain(VBProject& project) {
  Block* block = project.NewComponent(ftModule, "modStartup")->NewBlock(btSub);
  for (const std::string_view line : {"Sub Main()", "  ", "End Sub"}) block->AddLine(line);
  return block;
}

}  // namespace

std::shared_ptr<Component> VBProject::NewComponent(FileTypeEnum ComponentType,
                                                   std::string_view Name,
                                                   std::string_view fileName) try {
  const Workspace::Use use(Workspace());
  const ModuleKind& kind = KindOfModule(ComponentType);
  auto component = std::make_shared<Component>();
  component->SetVBProject(this);
  component->FileName.SetBaseFile(&FileName);
  component->FileName.SetFullPath(
      std::string(fileName.empty() ? Name : fileName).append(".").append(kind.NewExtension));
  component->FileType = ComponentType;
  component->Name = Name;
  // There is no file to read: what stands in the blocks is all of the module.
  component->LoadState = lsFullyLoaded;
  Block* header = component->NewBlock(btAttributes);
  for (std::string_view rest = kind.NewHeader; !rest.empty();) header->AddLine(TakeLine(rest));
  header->AddLine("Attribute VB_Name = \"" + std::string(Name) + "\"");
  Components.Add(component);
  if (BuildTypeCache) TypeCache.Add(Name, tcLocalProjectModule);
  return component;
}
VENDREL_CONTEXT(Name, trace::Parameter("FileName", fileName), *this)

Block* VBProject::StartupBlock() try {
  const Workspace::Use use(Workspace());
  Block* block = FindMain(*this);
  if (!block) block = AddMain(*this);
  const bool startsWithForm =
      !EqualsNoCaseAscii(Startup, "sub main") && !EqualsNoCaseAscii(Startup, "none");
  if (startsWithForm && IconForm.empty()) IconForm = Startup;
  Startup = "Sub Main";
  return block;
}
VENDREL_CONTEXT(*this)

std::string VBProject::DefaultComponentFileName() const {
  switch (ProjectType) {
    case ptEXE:
    case ptOleExe: return ProjectName + ".exe";
    case ptControl: return ProjectName + ".ocx";
    default: return ProjectName + ".dll";
  }
}

std::string VBProject::Version(std::string_view Delimeter, std::int32_t Parts) const {
  std::string version = mMajorVersion;
  if (Parts >= 1) version.append(Delimeter).append(mMinorVersion);
  if (Parts >= 2) version.append(Delimeter).append(mIncrement);
  return version;
}

}  // namespace vendrel
