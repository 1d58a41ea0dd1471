// What loaders of compiled code call on the project.

#include "core/CaseFold.h"
#include "diagnostics/Context.h"
#include "model/Events.h"
#include "project/VBProject.h"

namespace vendrel {
namespace {

constexpr std::int32_t kCachedModule = 1;

Component& DelegatesOf(VBProject& project) {
  if (Component* known = project.Components.Item(kDelegatesModule)) return *known;
  auto made = std::make_shared<Component>();
  made->SetVBProject(&project);
  made->Name = kDelegatesModule;
  made->Access = "PRIVATE";
  made->LoadState = lsFullyLoadedNoCode;  // there is no file to read
  project.Components.Add(made, kDelegatesModule);
  return *made;
}

// The carrier is the module made last, as loaders go, or stands under its name.
void RemoveCarrier(Components& components, const Component& carrier) {
  const std::size_t last = components.Count();
  if (last > 0 && components.Item(last) == &carrier)
    components.Remove(last);
  else if (components.Item(carrier.Name) == &carrier)
    components.Remove(carrier.Name);
}

}  // namespace

std::shared_ptr<Component> VBProject::netCreateComponent(
    LoadStateEnum LoadState, std::string_view Name, std::string_view Access, FileTypeEnum FileType,
    std::string_view ClassHierarchy, bool IsAbstract, bool IsSealed,
    std::string_view InheritsFrom) try {
  auto component = std::make_shared<Component>();
  component->SetVBProject(this);
  component->LoadState = LoadState;
  component->Name = Name;
  component->Access = Access;
  component->FileType = FileType;
  component->ClassHierarchy = ClassHierarchy;
  component->IsAbstract = IsAbstract;
  component->IsSealed = IsSealed;
  component->InheritsFrom = InheritsFrom;
  Components.Add(component, Name);
  TypeCache.Add(Name, kCachedModule);
  return component;
}
VENDREL_CONTEXT(Name, *this)

Block* VBProject::netCreateDelegate(Block* Block, std::string_view Name,
                                    std::string_view DelegateQualifiedName) try {
  if (!Block) throw VendrelError(errObjectNotSet, "VBProject.netCreateDelegate");
  Component& delegates = DelegatesOf(*this);
  std::shared_ptr<vendrel::Block> own;
  if (Component* carrier = Block->Component.Get(); carrier && carrier != &delegates) {
    own = carrier->Blocks.ShareOf(Block);
    if (own) {
      for (std::size_t i = carrier->Blocks.Count(); i > 0; --i)
        if (carrier->Blocks.Item(i) == Block) carrier->Blocks.Remove(i);
    }
    RemoveCarrier(Components, *carrier);
  }
  if (!own) throw VendrelError(errInvalidArgument, "the delegate has no carrier");
  own->SetName(Name);
  own->SetIsDelegate(true);
  own->SetDelegateQualifiedName(DelegateQualifiedName);
  own->Component = &delegates;
  delegates.Blocks.Add(own);
  return own.get();
}
VENDREL_CONTEXT(Name, *this)

Component* VBProject::netGetComponentForTypeName(std::string_view Name) try {
  TypeClassEnum found = tcUnresolved;
  CodeElement* element = ResolveType(nullptr, Name, found);
  if (auto* component = As<Component>(element)) return component;
  try {
    vendrel::NetResolver* resolver = NetResolver();
    return resolver ? resolver->loadtype(Name, NewVBProject()) : nullptr;
  } catch (const VendrelError&) {
    return nullptr;
  }
}
VENDREL_CONTEXT(Name, *this)

void VBProject::AddTypeLocation(std::string_view AssemblyLocation, std::string_view NetTypeName) {
  NetTypeLocations.try_emplace(std::string(NetTypeName), AssemblyLocation);
}

}  // namespace vendrel
