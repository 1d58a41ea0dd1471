#include "typelib/LibraryTypes.h"

#include <array>

#include "core/MessageService.h"
#include "core/Workspace.h"
#include "diagnostics/Context.h"
#include "typelib/MissingLibraries.h"

namespace vendrel {
namespace {

using namespace typelib;

struct TypeWord {
  std::int32_t Number;
  std::string_view Word;
};
// Type numbers of which some never stand in a library, as clients may ask for them.
constexpr std::array kTypeWords{
    TypeWord{1, "Null"},
    TypeWord{2, "Integer"},
    TypeWord{3, "Long"},
    TypeWord{4, "Single"},
    TypeWord{5, "Double"},
    TypeWord{6, "Currency"},
    TypeWord{7, "Date"},
    TypeWord{8, "String"},
    TypeWord{9, "Object"},
    TypeWord{10, "Error"},
    TypeWord{11, "Boolean"},
    TypeWord{12, "Variant"},
    TypeWord{13, "Unknown"},
    TypeWord{14, "Decimal"},
    TypeWord{16, "Byte"},
    TypeWord{17, "Byte"},
    TypeWord{18, "Unsigned Integer"},
    TypeWord{19, "ULong"},
    TypeWord{20, "Unknown"},
    TypeWord{22, "Integer"},
    TypeWord{23, "UInt"},
    TypeWord{24, "Void"},
    TypeWord{25, ""},
    TypeWord{26, "Ptr"},
    TypeWord{27, "SafeArray"},
    TypeWord{30, "String"},
    TypeWord{31, "String"},
    TypeWord{36, "Record"},
    TypeWord{64, "FileTime"},
    TypeWord{66, "Stream"},
    TypeWord{67, "Storage"},
    TypeWord{72, "CLSID"},
};

// Words that source would have; empty where the usual ones serve.
std::string_view SourceWord(std::int32_t base, TypeUse use) {
  switch (base) {
    case vtInt: return "Long";
    case vtUnknown: return "IUnknown";
    case vtVoid: return use == TypeUse::Return ? "" : "Any";
    default: return {};
  }
}

std::string UserTypeName(const VBProject& project, const TypeLibInfo& library,
                         const VarTypeInfo& type, TypeUse use) {
  const TypeInfo* target = type.TypeInfo();
  if (target == nullptr) throw VendrelError(errInvalidFileFormat, "damaged type description");
  if (project.Reading.LibraryTypeNames) return project.TypeLibAdjustType(*target->Library, *target);
  if (use == TypeUse::Field || type.IsExternalType())
    return std::string(WithoutUnderscore(target->Name));
  return project.TypeLibAdjustType(library, *target);
}

std::string SubscriptOf(const VarTypeInfo& type) {
  std::string text;
  for (const ArrayBound& bound : type.ArrayBounds()) {
    if (!text.empty()) text += ", ";
    const std::int64_t lower = bound.Lower;
    text += std::to_string(lower) + " To " + std::to_string(lower + bound.Count - 1);
  }
  return text;
}

std::string NameOf(const VBProject& project, const TypeLibInfo& library, const VarTypeInfo& type,
                   TypeUse use, std::int32_t number) {
  const std::int32_t base = number & vtTypeMask;
  const bool inSource = project.Reading.LibraryTypeNames;
  if (number == 0 || (inSource && base == 0)) return UserTypeName(project, library, type, use);
  if (use == TypeUse::Field && number == vtVoid) return "Any";
  if (inSource)
    if (const std::string_view word = SourceWord(base, use); !word.empty())
      return std::string(word);
  return project.psTranslateType(number);
}

}  // namespace

ShownType ShowType(const VBProject& project, const TypeLibInfo& library, const VarTypeInfo& type,
                   TypeUse use) try {
  ShownType shown;
  try {
    shown.VarType = type.VarType();
    shown.IsArray = project.IsArrayType(shown.VarType);
    shown.Name = NameOf(project, library, type, use, shown.VarType);
    if (shown.IsArray && project.Reading.LibraryTypeNames) shown.Subscript = SubscriptOf(type);
  } catch (const VendrelError& error) {
    shown = {};
    shown.Readable = false;
    shown.Failure = error.Text();
    if (type.Library) shown.MissingLibrary = MissingLibraryOf(*type.Library, type.Reference());
  }
  return shown;
}
VENDREL_CONTEXT(project)

std::string_view WithoutUnderscore(std::string_view name) {
  return name.starts_with('_') ? name.substr(1) : name;
}

std::string Quoted(std::string_view name) { return "'" + std::string(name) + "'"; }

void ReportUnread(const std::string& missingLibrary, const std::string& told) {
  if (!MissingLibraries::Count(missingLibrary)) Report(DiagnosticCode::TypeLibraryMember, {told});
}

void ReportMissing(const std::string& missingLibrary, const std::string& told,
                   const std::string& boxText, std::string_view caption) {
  ReportUnread(missingLibrary, told);
  if (!State().Silent) MessageService::Current().Show(boxText, caption, msExclamation);
}

std::string VBProject::TypeLibAdjustType(const TypeLibInfo& library, const TypeInfo& type) const {
  if (type.TypeKind == tkDispatch)
    if (const TypeInfo* owner = library.ClassOfInterface(type)) return std::string(owner->Name);
  return std::string(WithoutUnderscore(type.Name));
}

std::string VBProject::psTranslateType(std::int32_t lType) const {
  for (const TypeWord& entry : kTypeWords)
    if (entry.Number == (lType & 0xFF)) return std::string(entry.Word);
  return "{Urecognised type " + std::to_string(lType) + "}";
}

// Where a control character follows others, what joins them lands inside the open literal; clients
// know the result as it is.
std::string VBProject::ParseForNonPrintable(std::string_view vThis) const {
  std::string expression;
  bool lastNonPrintable = false;
  for (std::size_t i = 0; i < vThis.size(); ++i) {
    const auto code = static_cast<unsigned char>(vThis[i]);
    const bool opens = lastNonPrintable || i == 0;
    if (code < 32) {
      if (i > 0) expression += "& ";
      expression += (opens ? "Chr$(" : "\" & Chr$(") + std::to_string(code) + ") ";
    } else {
      if (opens) expression += i > 0 ? "& \"" : "\"";
      expression += vThis[i];
    }
    lastNonPrintable = code < 32;
  }
  return lastNonPrintable ? expression : expression + "\"";
}

}  // namespace vendrel
