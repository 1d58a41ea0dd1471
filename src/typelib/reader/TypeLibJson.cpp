#include <nlohmann/json.hpp>

#include "diagnostics/Context.h"
#include "output/Dump.h"
#include "typelib/reader/TypeLibListing.h"

namespace vendrel::typelib {
namespace {

using Json = nlohmann::ordered_json;

Json ValueJson(const TypeLibValue* value) {
  if (value == nullptr || value->IsNull) return nullptr;
  switch (value->VarType) {
    case vtBool: return value->Integer != 0;
    case vtR4:
    case vtR8:
    case vtDecimal: return value->Real;
    case vtBstr:
    case vtLpStr:
    case vtLpWStr:
    case vtDate:
    case vtCurrency:
    case vtError: return value->Text();
    case vtUI8: return static_cast<std::uint64_t>(value->Integer);
    default: return value->Integer;
  }
}

Json CustomDataJson(const TypeLibInfo& library, std::int32_t list) {
  Json result = Json::array();
  if (list >= 0 && static_cast<std::size_t>(list) < library.CustomDataLists.size())
    for (const CustomDatum& datum : library.CustomDataLists[static_cast<std::size_t>(list)])
      result.push_back({{"GUID", datum.Id.Text()}, {"Value", ValueJson(datum.Value)}});
  return result;
}

void AddCustomData(Json& target, const TypeLibInfo& library, std::int32_t list) {
  if (list >= 0) target["CustomData"] = CustomDataJson(library, list);
}

Json TypeJson(const VarTypeInfo& type) {
  const TypeReference reference = type.Reference();
  Json result;
  try {
    result["VarType"] = type.StoredVarType();
  } catch (const std::exception&) {
    result["VarType"] = nullptr;
  }
  result["PointerLevel"] = type.PointerLevel();
  if (const int level = type.ElementPointerLevel()) result["ElementPointerLevel"] = level;
  result["IsExternalType"] = reference.IsExternal();
  if (!reference.IsNone()) result["TypeInfo"] = ReferenceText(*type.Library, reference);
  if (const auto bounds = type.ArrayBounds(); !bounds.empty()) {
    Json list = Json::array();
    for (const ArrayBound& bound : bounds)
      list.push_back({{"Count", bound.Count}, {"Lower", bound.Lower}});
    result["ArrayBounds"] = std::move(list);
  }
  result["Text"] = TypeText(type);
  return result;
}

Json ParameterJson(const TypeLibInfo& library, const ParameterInfo& parameter) {
  Json result = {{"Name", parameter.Name},
                 {"Flags", parameter.Flags},
                 {"Optional", parameter.Optional},
                 {"Default", parameter.Default()}};
  if (parameter.Default()) result["DefaultValue"] = ValueJson(parameter.DefaultValue);
  if (parameter.IsParamArray) result["IsParamArray"] = true;
  result["VarTypeInfo"] = TypeJson(parameter.VarTypeInfo);
  AddCustomData(result, library, parameter.CustomData);
  return result;
}

Json MemberJson(const TypeLibInfo& library, const MemberInfo& member) {
  Json result = {{"Name", member.Name},
                 {"MemberId", member.MemberId},
                 {"DescKind", member.DescKind},
                 {"InvokeKind", member.InvokeKind},
                 {"AttributeMask", member.AttributeMask},
                 {"HelpContext", static_cast<std::int32_t>(member.HelpContext)},
                 {"HelpString", member.HelpString},
                 {"ReturnType", TypeJson(member.ReturnType)}};
  if (member.DescKind == dkFunction) {
    Json parameters = Json::array();
    for (const ParameterInfo& parameter : member.Parameters())
      parameters.push_back(ParameterJson(library, parameter));
    result["Parameters"] = std::move(parameters);
    result["CallConv"] = member.CallConv;
  }
  if (member.InvokeKind == ikConstant) result["Value"] = ValueJson(member.Value);
  Json stored = {{"Kind", member.StoredKind}, {"Offset", member.Offset}};
  if (member.OptionalCount != 0) stored["OptionalCount"] = member.OptionalCount;
  if (member.AllParameters != member.VisibleParameters) {
    stored["ReturnType"] = TypeText(member.StoredReturnType);
    stored["Parameters"] = member.AllParameters;
  }
  if (!member.DllEntry.empty()) stored["DllEntry"] = member.DllEntry;
  if (member.DllOrdinal >= 0) stored["DllOrdinal"] = member.DllOrdinal;
  result["Stored"] = std::move(stored);
  AddCustomData(result, library, member.CustomData);
  return result;
}

Json InterfaceJson(const InterfaceInfo& item) {
  return {{"Name", ReferenceText(*item.Library, item.Reference)},
          {"AttributeMask", item.AttributeMask}};
}

Json TypeInfoJson(const TypeLibInfo& library, const TypeInfo& type) {
  Json result = {{"Name", type.Name},
                 {"TypeKind", type.TypeKind},
                 {"TypeKindString", type.TypeKindString()},
                 {"TypeInfoNumber", type.TypeInfoNumber},
                 {"GUID", type.Id.IsNull() ? std::string() : type.GUID()},
                 {"AttributeMask", type.AttributeMask},
                 {"MajorVersion", type.MajorVersion},
                 {"MinorVersion", type.MinorVersion},
                 {"HelpContext", static_cast<std::int32_t>(type.HelpContext)},
                 {"HelpString", type.HelpString}};
  if (!type.DllName.empty()) result["DllName"] = type.DllName;
  if (type.TypeKind == tkAlias) result["ResolvedType"] = TypeJson(type.AliasType);
  if (!type.Base.IsNone()) result["Base"] = ReferenceText(library, type.Base);
  Json interfaces = Json::array();
  for (const InterfaceInfo& item : type.Interfaces) interfaces.push_back(InterfaceJson(item));
  if (!interfaces.empty()) result["Interfaces"] = std::move(interfaces);
  if (const InterfaceInfo* item = type.DefaultInterface())
    result["DefaultInterface"] = ReferenceText(*item->Library, item->Reference);
  if (const InterfaceInfo* item = type.DefaultEventInterface())
    result["DefaultEventInterface"] = ReferenceText(*item->Library, item->Reference);
  Json members = Json::array();
  for (const MemberInfo* member : type.Members()) members.push_back(MemberJson(library, *member));
  result["Members"] = std::move(members);
  AddCustomData(result, library, type.CustomData);
  return result;
}

Json HeadJson(const TypeLibInfo& library, std::string_view tool) {
  Json result = Json::object();
  if (!tool.empty()) result = {{"FormatVersion", kJsonFormat}, {"Tool", std::string(tool)}};
  result.update(Json{{"Name", library.Name},
                     {"GUID", library.GUID()},
                     {"MajorVersion", library.MajorVersion},
                     {"MinorVersion", library.MinorVersion},
                     {"LCID", library.Lcid},
                     {"SysKind", library.SysKind},
                     {"AttributeMask", library.AttributeMask},
                     {"HelpString", library.HelpString},
                     {"HelpContext", static_cast<std::int32_t>(library.HelpContext)},
                     {"HelpFile", library.HelpFile},
                     {"ContainingFile", library.ContainingFile},
                     {"Format", library.Format == LibraryFormat::Sltg ? "SLTG" : "MSFT"}});
  Json imports = Json::array();
  for (const LibraryImport& import : library.Imports)
    imports.push_back({{"GUID", import.LibraryId.Text()},
                       {"MajorVersion", import.MajorVersion},
                       {"MinorVersion", import.MinorVersion},
                       {"LeafName", import.LeafName}});
  result["Imports"] = std::move(imports);
  AddCustomData(result, library, library.CustomData);
  return result;
}

std::string Dump(const Json& value, int indent) {
  // Paths may hold bytes of any kind.
  return value.dump(indent, ' ', false, Json::error_handler_t::replace);
}

}  // namespace

// One entry at a time, so that a large library is never held as a tree of values.
std::string TypeLibJson(const TypeLibInfo& library, int indent, std::string_view tool) try {
  const char* newLine = indent < 0 ? "" : "\n";
  std::string text = Dump(HeadJson(library, tool), indent);
  text.pop_back();
  if (indent >= 0) text.pop_back();
  text += std::string(",") + newLine + "\"TypeInfos\": [";
  for (const TypeInfo& type : library.TypeInfos) {
    if (&type != &library.TypeInfos.front()) text += ",";
    text += "\n" + Dump(TypeInfoJson(library, type), indent);
  }
  text += std::string("\n],") + newLine + "\"Messages\": ";
  return text + Dump(Json(library.Messages), indent) + newLine + "}\n";
}
VENDREL_CONTEXT(indent, trace::Parameter("library", library.Name))

}  // namespace vendrel::typelib
