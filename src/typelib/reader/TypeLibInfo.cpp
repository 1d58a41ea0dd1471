#include "typelib/reader/TypeLibInfo.h"

#include <algorithm>

#include "core/CaseFold.h"
#include "diagnostics/Context.h"
#include "typelib/reader/LibraryFinder.h"
#include "typelib/reader/TypeLibLimits.h"

namespace vendrel::typelib {
namespace {

// A type description walked down to its base.
struct FlatType {
  int VarType = vtEmpty;
  int PointerLevel = 0, ElementPointerLevel = 0;
  bool IsArray = false, IsDamaged = false;
  TypeReference Reference;
  const TypeNode* Bounds = nullptr;
};

FlatType Flatten(const TypeLibInfo* library, TypeCode code) {
  FlatType flat;
  for (int depth = 0; depth < kMaxTypeDepth; ++depth) {
    if (IsPlainType(code)) {
      flat.VarType = PlainVarType(code);
      return flat;
    }
    if (library == nullptr || static_cast<std::size_t>(code) >= library->TypeNodes.size()) break;
    const TypeNode& node = library->TypeNodes[static_cast<std::size_t>(code)];
    switch (node.VarType) {
      case vtPointer: ++(flat.IsArray ? flat.ElementPointerLevel : flat.PointerLevel); break;
      case vtFixedArray:
        if (!flat.IsArray) flat.Bounds = &node;
        [[fallthrough]];
      case vtSafeArray: flat.IsArray = true; break;
      case vtUserDefined:
        flat.VarType = vtUserDefined;
        flat.Reference.Code = node.Link;
        return flat;
      default: flat.VarType = node.VarType; return flat;
    }
    code = node.Link;
  }
  flat.IsDamaged = true;
  return flat;
}

std::string MissingText(const TypeLibInfo& library, const ImportedType& type) {
  std::string text = type.ByGuid ? type.Id.Text() : "#" + std::to_string(type.Number);
  if (type.Library >= library.Imports.size()) return text;
  const LibraryImport& import = library.Imports[type.Library];
  return "type " + text + " of library " + import.LibraryId.Text() + " " +
         std::to_string(import.MajorVersion) + "." + std::to_string(import.MinorVersion) + " (" +
         import.LeafName + ")";
}

}  // namespace

int VarTypeInfo::StoredVarType() const try {
  const FlatType flat = Flatten(Library, Code);
  if (flat.IsDamaged) throw VendrelError(errInvalidFileFormat, "damaged type description");
  const int base = flat.VarType == vtUserDefined ? 0 : flat.VarType;
  return flat.IsArray ? base | vtArrayBit : base;
}
VENDREL_CONTEXT(trace::Field("Library", Library ? Library->Name : std::string_view()))

int VarTypeInfo::VarType() const {
  const TypeReference reference = Reference();
  if (reference.IsExternal()) Library->Resolve(reference);
  return StoredVarType();
}

const TypeInfo* VarTypeInfo::TypeInfo() const {
  const TypeReference reference = Reference();
  return reference.IsNone() ? nullptr : Library->Resolve(reference);
}

TypeReference VarTypeInfo::Reference() const { return Flatten(Library, Code).Reference; }
int VarTypeInfo::PointerLevel() const { return Flatten(Library, Code).PointerLevel; }
int VarTypeInfo::ElementPointerLevel() const { return Flatten(Library, Code).ElementPointerLevel; }

std::span<const ArrayBound> VarTypeInfo::ArrayBounds() const {
  const TypeNode* node = Flatten(Library, Code).Bounds;
  if (node == nullptr) return {};
  return std::span(Library->ArrayBounds).subspan(node->FirstBound, node->Dimensions);
}

std::span<const ParameterInfo> MemberInfo::Parameters() const {
  return StoredParameters().subspan(0, VisibleParameters);
}

std::span<const ParameterInfo> MemberInfo::StoredParameters() const {
  if (AllParameters == 0) return {};
  return std::span(ReturnType.Library->Parameters).subspan(FirstParameter, AllParameters);
}

const TypeInfo& InterfaceInfo::TypeInfo() const try {
  const typelib::TypeInfo* target = Library->Resolve(Reference);
  if (target == nullptr) throw VendrelError(errInvalidFileFormat, "interface without a type");
  return *target;
}
VENDREL_CONTEXT(trace::Field("Library", Library ? Library->Name : std::string_view()))

std::string_view InterfaceInfo::Name() const { return TypeInfo().Name; }
int InterfaceInfo::TypeInfoNumber() const { return TypeInfo().TypeInfoNumber; }
const std::vector<const MemberInfo*>& InterfaceInfo::Members() const {
  return TypeInfo().Members();
}

std::string_view TypeInfo::TypeKindString() const {
  constexpr std::string_view words[] = {"enum",          "record",  "module", "interface",
                                        "dispinterface", "coclass", "alias",  "union"};
  return TypeKind >= 0 && TypeKind < 8 ? words[TypeKind] : "unknown";
}

const std::vector<const MemberInfo*>& TypeInfo::Members() const {
  if (!mCollected) {
    mCollected = true;
    CollectMembers();
  }
  return mMembers;
}

void TypeInfo::CollectMembers() const {
  std::vector<const TypeInfo*> chain;
  if (TypeKind == tkDispatch) {
    const TypeInfo* at = this;
    while (!at->Base.IsNone()) {
      const TypeInfo* base = at->Library->TryResolve(at->Base);
      if (base == nullptr || chain.size() >= static_cast<std::size_t>(kMaxBaseDepth)) {
        Library->Warn(std::string(Name) + ": members of its base are missing");
        break;
      }
      chain.push_back(base);
      at = base;
    }
  }
  const std::size_t limit = kInheritedBase + Library->Image.size() / kInheritedShare;
  for (auto base = chain.rbegin(); base != chain.rend(); ++base) {
    for (const MemberInfo& member : (*base)->OwnMembers) {
      if (member.DescKind != dkFunction) continue;
      if (++Library->mInherited > limit) {
        Library->Warn(std::string(Name) + ": too many inherited members");
        return;
      }
      mMembers.push_back(&member);
    }
  }
  for (const MemberInfo& member : OwnMembers) mMembers.push_back(&member);
}

const InterfaceInfo* TypeInfo::FirstInterface(int wanted) const {
  if (TypeKind != tkCoclass) return nullptr;
  for (const InterfaceInfo& item : Interfaces)
    if ((item.AttributeMask & 3) == wanted) return &item;
  return nullptr;
}

const InterfaceInfo* TypeInfo::DefaultInterface() const { return FirstInterface(1); }
const InterfaceInfo* TypeInfo::DefaultEventInterface() const { return FirstInterface(3); }

const TypeInfo* TypeInfo::ResolvedType() const {
  return TypeKind == tkAlias ? AliasType.TypeInfo() : nullptr;
}

const TypeInfo* TypeLibInfo::Resolve(TypeReference reference) const try {
  const TypeInfo* found = TryResolve(reference);
  if (found == nullptr && reference.IsExternal() && reference.Index() < ImportedTypes.size())
    throw VendrelError(errFileNotFound, MissingText(*this, ImportedTypes[reference.Index()]));
  return found;
}
VENDREL_CONTEXT(trace::Field("Name", Name))

const TypeInfo* TypeLibInfo::TryResolve(TypeReference reference) const {
  if (reference.IsNone()) return nullptr;
  const std::size_t index = reference.Index();
  if (!reference.IsExternal()) return index < TypeInfos.size() ? &TypeInfos[index] : nullptr;
  if (index >= ImportedTypes.size()) return nullptr;
  if (mImported.size() != ImportedTypes.size()) mImported.resize(ImportedTypes.size());
  if (mImported[index].first == Sought::No) {
    // Set before the search, which may come back here through libraries that import each other.
    mImported[index] = {Sought::Missing, nullptr};
    if (const TypeInfo* found = FindImported(index)) mImported[index] = {Sought::Found, found};
  }
  return mImported[index].second;
}

const TypeInfo* TypeLibInfo::FindImported(std::size_t index) const {
  const ImportedType& type = ImportedTypes[index];
  if (type.ByGuid)
    if (const TypeInfo* found = BuiltInLibrary().FindType(type.Id)) return found;
  if (type.Library >= Imports.size()) return nullptr;
  const LibraryImport& import = Imports[type.Library];
  // The first entries of that library have the same positions in all its versions.
  if (!type.ByGuid && import.LibraryId == BuiltInLibrary().Id &&
      type.Number < BuiltInLibrary().TypeInfos.size())
    return &BuiltInLibrary().TypeInfos[type.Number];
  const TypeLibInfo* library = nullptr;
  if (import.LibraryId == Id && !Id.IsNull()) {
    library = this;
  } else if (Finder != nullptr) {
    library = Finder->Find(import, *this);
  }
  if (library == nullptr) return nullptr;
  if (type.ByGuid) return library->FindType(type.Id);
  return type.Number < library->TypeInfos.size() ? &library->TypeInfos[type.Number] : nullptr;
}

const TypeInfo* TypeLibInfo::FindType(const Guid& id) const {
  if (mTypesById.empty())
    for (std::size_t i = 0; i < TypeInfos.size(); ++i)
      if (!TypeInfos[i].Id.IsNull()) mTypesById.try_emplace(TypeInfos[i].Id, i);
  const auto found = mTypesById.find(id);
  return found == mTypesById.end() ? nullptr : &TypeInfos[found->second];
}

const TypeInfo* TypeLibInfo::FindType(std::string_view name) const {
  const auto found = std::find_if(TypeInfos.begin(), TypeInfos.end(), [&](const TypeInfo& type) {
    return EqualsNoCase(type.Name, name);
  });
  return found == TypeInfos.end() ? nullptr : &*found;
}

const TypeInfo* TypeLibInfo::ClassOfInterface(const TypeInfo& type) const {
  const auto key = [](int number, std::string_view name) {
    return std::to_string(number).append(":").append(name);
  };
  for (const TypeInfo& entry : mClassesIndexed ? std::span<const TypeInfo>() : TypeInfos) {
    const InterfaceInfo* shown = entry.DefaultInterface();
    const TypeInfo* target = shown ? TryResolve(shown->Reference) : nullptr;
    if (target) mClassesByInterface.try_emplace(key(target->TypeInfoNumber, target->Name), &entry);
  }
  mClassesIndexed = true;
  const auto found = mClassesByInterface.find(key(type.TypeInfoNumber, type.Name));
  return found == mClassesByInterface.end() ? nullptr : found->second;
}

bool TypeLibInfo::SpendMembers(std::size_t count) const {
  const std::size_t limit = kShownBase + Image.size() / kShownShare;
  if (mSpent > limit) return false;
  mSpent += count;
  if (mSpent > limit) Warn("classes repeat interfaces beyond measure; the rest is left out");
  return mSpent <= limit;
}

void TypeLibInfo::Warn(std::string message) const {
  if (Messages.size() < kMaxMessages) {
    Messages.push_back(std::move(message));
  } else if (Messages.size() == kMaxMessages) {
    Messages.push_back("further messages are left out");
  }
}

}  // namespace vendrel::typelib
