// A parameter of a library member.

#include "diagnostics/Context.h"
#include "typelib/LibraryTypes.h"
#include "typelib/reader/TypeLibLimits.h"

namespace vendrel {
namespace {

using namespace typelib;

constexpr int kOptionalFlag = 16;
constexpr std::int32_t kArrayAndVector = 8192 | 4096;

// What a user type comes to: the target of an alias, and of that alias in turn.
struct ResolvedKind {
  int Kind = -1;
  /// Levels of indirection, those within aliases included.
  int Pointers = 0;
};

// Kind of a type of another library as the import remembers it; -1 if it does not.
int StoredKind(const VarTypeInfo& type) {
  const TypeReference reference = type.Reference();
  if (!type.Library || !reference.IsExternal()) return -1;
  const std::vector<ImportedType>& imported = type.Library->ImportedTypes;
  return reference.Index() < imported.size() ? imported[reference.Index()].TypeKind : -1;
}

// A chain of aliases that ends in a plain type has no kind; where it cannot be followed, the kind
// is the one stored or, by the letter, unknown.
ResolvedKind Resolve(const VarTypeInfo& type, bool takesStoredKind) {
  ResolvedKind resolved{-1, type.PointerLevel()};
  const VarTypeInfo* at = &type;
  try {
    const TypeInfo* target = at->TypeInfo();
    for (int depth = 0; target && target->TypeKind == tkAlias && depth < kMaxTypeDepth; ++depth) {
      at = &target->AliasType;
      resolved.Pointers += at->PointerLevel();
      target = target->ResolvedType();
    }
    if (target) resolved.Kind = target->TypeKind;
  } catch (const VendrelError&) {
    if (takesStoredKind) resolved.Kind = StoredKind(*at);
  }
  return resolved;
}

bool IsByReference(const VBProject& project, const VarTypeInfo& type, std::int32_t number) {
  const int level = type.PointerLevel();
  if ((number & ~kArrayAndVector) != 0) return level == 1;
  const ResolvedKind resolved = Resolve(type, project.Reading.ByRefObjects);
  switch (resolved.Kind) {
    case tkRecord: return true;
    case tkInterface:
    case tkDispatch:
    case tkCoclass: return project.Reading.ByRefObjects ? resolved.Pointers >= 2 : level == 0;
    default: return level == 1;
  }
}

// A parameter that is nothing unless it is given. A string without a value is an empty one.
bool IsNullObject(const TypeLibValue& value) {
  return value.IsNull &&
         (value.VarType == vtDispatch || value.VarType == vtUnknown || value.VarType == vtVariant);
}

std::string DefaultText(const TypeLibValue& value) {
  if (IsNullObject(value)) return {};
  return value.IsNumeric() ? value.Text() : "\"" + value.Text() + "\"";
}

}  // namespace

std::shared_ptr<Parameter> VBProject::TypeLibParameter(const TypeLibInfo& library,
                                                       const ParameterInfo& parameter) try {
  auto made = std::make_shared<Parameter>();
  made->SetName(parameter.Name);
  made->IsOptional = (parameter.Flags & kOptionalFlag) != 0 || parameter.Optional ||
                     ParameterInfo::ParameterHasExtra != 0;
  const ShownType type = ShowType(*this, library, parameter.VarTypeInfo, TypeUse::Parameter);
  made->IsByRef = IsByReference(*this, parameter.VarTypeInfo, type.VarType);
  if (!type.Readable) {
    ReportMissing(
        type.MissingLibrary,
        "parameter " + Quoted(parameter.Name) + " has no type: " + type.Failure,
        "Error reading type information for a parameter named '" + made->Name() +
            "'.  One or more dependant files containing type information may be missing.  "
            "Processing will continue, this parameters type information will be missing.",
        "Missing type information");
  }
  made->VariableType = type.Name;
  made->IsArray = type.IsArray;
  if (Reading.LibraryParamArrays && parameter.IsParamArray) made->IsParamArray = true;
  if (made->IsOptional && parameter.Default())
    made->DefaultValue = DefaultText(*parameter.DefaultValue);
  return made;
}
VENDREL_CONTEXT(*this)

}  // namespace vendrel
