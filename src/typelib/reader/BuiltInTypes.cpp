// The two interfaces at the root of every chain, as their own library declares them. Built in, so
// that a library can be read where no other file is at hand.

#include <vector>

#include "typelib/reader/TypeLibInfo.h"

namespace vendrel::typelib {
namespace {

struct Argument {
  const char* Name;
  int Flags;
  /// Plain type, or position of a record in the library with bit 4096.
  int Type;
  int Pointers;
};

struct Method {
  const char* Name;
  int Id;
  int Return;
  std::vector<Argument> Arguments;
};

constexpr int kRecord = 0x1000;
constexpr int kIn = 1, kOut = 2;
enum Position : int { posGuid, posParams, posException, posUnknown, posDispatch };

const std::vector<Method>& UnknownMethods() {
  static const std::vector<Method> methods = {
      {"QueryInterface",
       0x60000000,
       vtHresult,
       {{"riid", kIn, kRecord | posGuid, 1}, {"ppvObj", kOut, vtVoid, 2}}},
      {"AddRef", 0x60000001, vtUI4, {}},
      {"Release", 0x60000002, vtUI4, {}}};
  return methods;
}

const std::vector<Method>& DispatchMethods() {
  static const std::vector<Method> methods = {
      {"GetTypeInfoCount", 0x60010000, vtHresult, {{"pctinfo", kOut, vtUInt, 1}}},
      {"GetTypeInfo",
       0x60010001,
       vtHresult,
       {{"itinfo", kIn, vtUInt, 0}, {"lcid", kIn, vtUI4, 0}, {"pptinfo", kOut, vtVoid, 2}}},
      {"GetIDsOfNames",
       0x60010002,
       vtHresult,
       {{"riid", kIn, kRecord | posGuid, 1},
        {"rgszNames", kIn, vtI1, 2},
        {"cNames", kIn, vtUInt, 0},
        {"lcid", kIn, vtUI4, 0},
        {"rgdispid", kOut, vtI4, 1}}},
      {"Invoke",
       0x60010003,
       vtHresult,
       {{"dispidMember", kIn, vtI4, 0},
        {"riid", kIn, kRecord | posGuid, 1},
        {"lcid", kIn, vtUI4, 0},
        {"wFlags", kIn, vtUI2, 0},
        {"pdispparams", kIn, kRecord | posParams, 1},
        {"pvarResult", kOut, vtVariant, 1},
        {"pexcepinfo", kOut, kRecord | posException, 1},
        {"puArgErr", kOut, vtUInt, 1}}}};
  return methods;
}

TypeCode MakeType(TypeLibInfo& library, int type, int pointers) {
  TypeCode code = PlainType(type);
  const auto add = [&](int kind, std::int32_t link) {
    library.TypeNodes.push_back({static_cast<std::uint16_t>(kind), 0, 0, link});
    code = static_cast<TypeCode>(library.TypeNodes.size() - 1);
  };
  if ((type & kRecord) != 0) add(vtUserDefined, type & ~kRecord);
  for (int i = 0; i < pointers; ++i) add(vtPointer, code);
  return code;
}

void AddMethods(TypeLibInfo& library, TypeInfo& type, const std::vector<Method>& methods,
                int offset) {
  for (const Method& method : methods) {
    MemberInfo member;
    member.Name = method.Name;
    member.MemberId = method.Id;
    member.InvokeKind = ikFunction;
    member.StoredKind = 1;
    member.CallConv = 4;
    member.AttributeMask = 1;
    member.Offset = offset;
    offset += 4;
    member.ReturnType = member.StoredReturnType = {&library, PlainType(method.Return)};
    member.FirstParameter = static_cast<std::uint32_t>(library.Parameters.size());
    for (const Argument& argument : method.Arguments) {
      ParameterInfo parameter;
      parameter.Name = argument.Name;
      parameter.VarTypeInfo = {&library, MakeType(library, argument.Type, argument.Pointers)};
      parameter.Flags = static_cast<std::uint16_t>(argument.Flags);
      parameter.Position = member.AllParameters++;
      library.Parameters.push_back(parameter);
    }
    member.VisibleParameters = member.AllParameters;
    type.OwnMembers.push_back(member);
  }
}

std::unique_ptr<TypeLibInfo> Build() {
  auto library = std::make_unique<TypeLibInfo>();
  library->Name = "stdole";
  library->Format = LibraryFormat::BuiltIn;
  library->Id = *Guid::Parse("{00020430-0000-0000-C000-000000000046}");
  library->MajorVersion = 2;
  constexpr const char* names[] = {"GUID", "DISPPARAMS", "EXCEPINFO", "IUnknown", "IDispatch"};
  for (int i = posGuid; i <= posDispatch; ++i) {
    TypeInfo type;
    type.Library = library.get();
    type.Name = names[i];
    type.TypeKind = i < posUnknown ? tkRecord : tkInterface;
    type.TypeInfoNumber = i;
    library->TypeInfos.push_back(std::move(type));
  }
  TypeInfo& unknown = library->TypeInfos[posUnknown];
  unknown.Id = *Guid::Parse("{00000000-0000-0000-C000-000000000046}");
  unknown.AttributeMask = 0x10;
  AddMethods(*library, unknown, UnknownMethods(), 0);
  TypeInfo& dispatch = library->TypeInfos[posDispatch];
  dispatch.Id = *Guid::Parse("{00020400-0000-0000-C000-000000000046}");
  dispatch.AttributeMask = 0x200;
  dispatch.Base = TypeReference::Own(posUnknown);
  dispatch.Interfaces.push_back({library.get(), dispatch.Base, 0, -1});
  AddMethods(*library, dispatch, DispatchMethods(), 12);
  return library;
}

}  // namespace

const TypeLibInfo& BuiltInLibrary() {
  static const std::unique_ptr<TypeLibInfo> library = Build();
  return *library;
}

}  // namespace vendrel::typelib
