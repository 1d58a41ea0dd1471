#include "dotnet/TypeBuilder.h"

#include "diagnostics/Diagnostic.h"
#include "dotnet/MemberBuilder.h"
#include "dotnet/metadata/MetadataLimits.h"
#include "dotnet/metadata/Values.h"
#include "model/Declarations.h"

namespace vendrel {
namespace {

using namespace metadata;

constexpr unsigned kExtends = 3;

std::string BaseNameOf(const TypeHandle& type) {
  const Token base = type.File->Image->Tables().Coded(tTypeDef, kExtends, type.Row, cTypeDefOrRef);
  try {
    return base ? type.File->Types.Names().Of(type.File->Types.Open(base).Definition)
                : std::string();
  } catch (const DataError&) {
    return {};
  }
}

}  // namespace

TypeBuilder::TypeBuilder(VBProject& project, std::shared_ptr<AssemblyStore> store, std::size_t size)
    : mProject(project), mStore(std::move(store)), mRoom(std::make_shared<TreeRoom>()) {
  mRoom->Left = kTreeBase + kTreeShare * size;
}

void TypeBuilder::BuildAll(const AssemblyFile& file) {
  const Image& image = *file.Image;
  for (std::uint32_t row = 2; row <= image.Tables().Rows(tTypeDef); ++row) {
    if (IsHiddenType(image, row)) continue;
    if (!mProject.LoadPrivateMembers && !IsVisibleType(image, row)) continue;
    try {
      Build({&file, row});
    } catch (const DataError& error) {
      Report(DiagnosticCode::AssemblyPart,
             {"type " + CleanName(image.Text(tTypeDef, 1, row)) + " is left out: " + error.what()});
    }
    if (mRoom->Left > 0) continue;
    Report(DiagnosticCode::AssemblyPart, {"the rest is left out: too much for such a file"});
    return;
  }
}

std::shared_ptr<Component> TypeBuilder::Build(TypeHandle type) {
  const Image& image = *type.File->Image;
  const std::uint32_t flags = image.Tables().Cell(tTypeDef, 0, type.Row);
  const TypeKind kind = KindOfType(image, type.Row);
  const std::vector<BaseType> bases = BasesOf(*mStore, type);
  const bool isClass = kind == TypeKind::Class;
  const auto component = mProject.netCreateComponent(
      lsFullyLoadedNoCode, type.Name(), AccessWord(AccessOfType(image, type.Row)),
      kind == TypeKind::Module ? ftModule : ftClass,
      kind == TypeKind::Interface ? std::string() : HierarchyOf(type, bases),
      isClass && (flags & tfAbstract) != 0, isClass && (flags & tfSealed) != 0, BaseNameOf(type));
  mRoom->Take(component->ClassHierarchy.size() + 3 * component->Name.size());
  if (kind == TypeKind::Delegate) {
    BuildDelegate(*component, type);
    return nullptr;
  }
  component->IsInterface = kind == TypeKind::Interface;
  component->IsStructure = kind == TypeKind::Structure;
  component->IsEnumeration = kind == TypeKind::Enumeration;
  component->IsNested = mProject.Reading.AssemblyNesting && image.Encloser(type.Row) != 0;
  component->DefaultMemberName = DefaultMemberOf(image, type.Row);
  TakeObsoleteMark(*component, image, {tTypeDef, type.Row});
  TakeInterfaces(*component, type);
  BuildMembers(component, type, bases);
  return component;
}

// The type itself, then what stands above it, up to a name behind which nothing was found.
std::string TypeBuilder::HierarchyOf(TypeHandle type, const std::vector<BaseType>& bases) {
  std::string hierarchy = type.Name();
  TypeHandle last = type;
  for (const BaseType& base : bases) {
    hierarchy += "," + base.Type.Name();
    if (base.Type.File != type.File)
      mProject.AddTypeLocation(FileSystemObject(base.Type.File->Image->Path()).FullPath(),
                               base.Type.Name());
    last = base.Type;
  }
  const std::string unknown = BaseNameOf(last);
  if (!unknown.empty()) hierarchy += "," + unknown;
  return hierarchy;
}

void TypeBuilder::TakeInterfaces(Component& component, TypeHandle type) {
  for (const Token token : type.File->Image->Interfaces(type.Row)) try {
      const std::string name = type.File->Types.Type(token);
      if (!component.Interfaces.HasKey(name)) component.netCreateImplementedInterface(name);
    } catch (const DataError& error) {
      Report(DiagnosticCode::AssemblyPart,
             {"an interface of " + component.Name + " is left out: " + error.what()});
    }
}

void TypeBuilder::BuildDelegate(Component& carrier, TypeHandle type) {
  const Image& image = *type.File->Image;
  const std::uint32_t invoke = InvokeOf(image, type.Row);
  MethodText text;
  try {
    if (invoke != 0) text = type.File->Types.Method(image.Blob(tMethod, 4, invoke));
  } catch (const DataError& error) {
    Report(DiagnosticCode::AssemblyPart,
           {"the parameters of " + carrier.Name + " are left out: " + error.what()});
    text = {};
  }
  const bool isSub = text.Result.Name.empty() || text.Result.Name == "System.Void";
  Block* block = carrier.netCreateBlock(isSub ? btSub : btFunction, type.Name(), carrier.Access, {},
                                        true, {}, false, false, false, false);
  MemberBuilder(carrier, *mStore, *mRoom).TakeSignature(*block, *type.File, invoke, text);
  TakeObsoleteMark(*block, image, {tTypeDef, type.Row});
  mProject.netCreateDelegate(block, type.Name(), type.Name());
}

void TypeBuilder::BuildMembers(const std::shared_ptr<Component>& component, TypeHandle type,
                               const std::vector<BaseType>& bases) {
  const MemberFilter filter{mProject.LoadPrivateMembers};
  std::vector<SourcedMember> members;
  for (const Member& member : MembersOf(*type.File->Image, type.Row, filter))
    members.push_back({{type.File, nullptr, {}}, member});
  std::vector<CodeElement*> made = MemberBuilder(*component, *mStore, *mRoom).AddAll(members);
  if (!bases.empty()) InheritLate(*component, mStore, type, bases, std::move(made), filter, mRoom);
}

}  // namespace vendrel
