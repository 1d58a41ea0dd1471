#pragma once
// A type library as the reading service shows it. Objects live in their library and point into it:
// keep the library (a shared_ptr) as long as any of them is used. Members that are computed are
// functions; those that look into another library raise VendrelError 53 when it cannot be found,
// and 321 when the description is damaged.

#include <cstdint>
#include <deque>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "services/CoverageMap.h"
#include "typelib/reader/TypeLibValue.h"
#include "typelib/reader/TypeReference.h"

namespace vendrel::typelib {

class TypeLibInfo;
class TypeInfo;
class LibraryFinder;

/// Type of a parameter, a member or an alias.
class VarTypeInfo {
 public:
  const TypeLibInfo* Library = nullptr;
  TypeCode Code = PlainType(vtEmpty);

  /// Automation type number of the base. 0 for a user type; bit 8192 for arrays of either kind.
  /// Fails when the user type lies in a library that cannot be found.
  int VarType() const;
  /// The same without looking the user type up, so it never fails for that reason.
  int StoredVarType() const;
  /// The user type; fails when it cannot be found, nothing when there is none.
  const typelib::TypeInfo* TypeInfo() const;
  /// The user type as stored; none for plain types.
  TypeReference Reference() const;
  /// Whether the user type belongs to another library.
  bool IsExternalType() const { return Reference().IsExternal(); }
  /// Levels of indirection before the base or the array.
  int PointerLevel() const;
  /// Levels of indirection between an array and its elements' base.
  int ElementPointerLevel() const;
  /// Bounds of a fixed array, as declared; empty for other types.
  std::span<const ArrayBound> ArrayBounds() const;
};

struct ParameterInfo {
  /// Empty when unnamed.
  std::string_view Name;
  typelib::VarTypeInfo VarTypeInfo;
  /// 1 in, 2 out, 4 locale id, 8 return value, 16 optional, 32 has a default value, 64 custom data.
  std::uint16_t Flags = 0;
  /// 0-based place in the stored list.
  std::uint16_t Position = 0;
  bool Optional = false;
  /// Takes all further arguments.
  bool IsParamArray = false;
  /// Unsettled indicator of the service; always 0 here.
  static constexpr std::int16_t ParameterHasExtra = 0;
  /// Nothing when there is none.
  const TypeLibValue* DefaultValue = nullptr;
  /// Place in the library's `CustomDataLists`, -1: none.
  std::int32_t CustomData = -1;

  bool Default() const { return DefaultValue != nullptr; }
};

enum DescKindNumber : int { dkFunction = 1, dkVariable = 2 };
/// 1, 2, 4, 8 as stored for functions; 32 marks constants.
enum InvokeKindNumber : int { ikFunction = 1, ikGet = 2, ikLet = 4, ikSet = 8, ikConstant = 32 };
enum VarKindNumber : int { vkField = 0, vkStatic = 1, vkConstant = 2, vkDispatch = 3 };

struct MemberInfo {
  std::string_view Name;
  std::string_view HelpString;
  std::int32_t MemberId = 0;
  std::uint32_t HelpContext = 0;
  std::uint32_t HelpStringContext = 0;
  /// `DescKindNumber`.
  std::uint8_t DescKind = dkFunction;
  /// `InvokeKindNumber`; 0 for variables that are no constants.
  std::uint8_t InvokeKind = 0;
  /// Functions: 1 virtual, 3 static, 4 dispatch. Variables: `VarKindNumber`.
  std::uint8_t StoredKind = 0;
  /// 1 cdecl, 2 pascal, 4 stdcall.
  std::uint8_t CallConv = 0;
  /// 1 restricted, 64 hidden, 1024 not browsable and so on; for variables 1 is read-only and 128
  /// restricted.
  std::uint16_t AttributeMask = 0;
  /// Last parameters that may be left out; -1: a parameter array.
  std::int16_t OptionalCount = 0;
  /// Functions: bytes from the start of the table; variables: offset of the field.
  std::int32_t Offset = 0;
  /// As the service reports it: the type of the return value parameter where there is one, the type
  /// of the value for property let and set.
  VarTypeInfo ReturnType;
  /// As stored.
  VarTypeInfo StoredReturnType;
  /// Value of a constant; nothing for other members.
  const TypeLibValue* Value = nullptr;
  /// Entry of a module function in its DLL: a name, or the ordinal in the other (-1: none).
  std::string_view DllEntry;
  std::int32_t DllOrdinal = -1;
  /// Where help is kept, when not where the library says.
  std::string_view HelpFile;
  std::string_view HelpStringDll;
  /// Place in the library's `CustomDataLists`, -1: none.
  std::int32_t CustomData = -1;

  /// Without return value, locale id and the value of a property let or set.
  std::span<const ParameterInfo> Parameters() const;
  /// Every stored parameter: those of `Parameters`, then the others; `Position` tells the order.
  std::span<const ParameterInfo> StoredParameters() const;

  // Place of the parameters in the library's list.
  std::uint32_t FirstParameter = 0;
  std::uint16_t VisibleParameters = 0;
  std::uint16_t AllParameters = 0;
};

/// An interface of a class, or the base of an interface.
class InterfaceInfo {
 public:
  const TypeLibInfo* Library = nullptr;
  TypeReference Reference;
  /// 1 default, 2 source, 4 restricted, 8 default of the virtual table.
  int AttributeMask = 0;
  std::int32_t CustomData = -1;

  /// What the interface is; fails when its library cannot be found.
  const typelib::TypeInfo& TypeInfo() const;
  std::string_view Name() const;
  int TypeInfoNumber() const;
  const std::vector<const MemberInfo*>& Members() const;
};

enum TypeKindNumber : int {
  tkEnum = 0,
  tkRecord = 1,
  tkModule = 2,
  tkInterface = 3,
  tkDispatch = 4,
  tkCoclass = 5,
  tkAlias = 6,
  tkUnion = 7,
};

class TypeInfo {
 public:
  const TypeLibInfo* Library = nullptr;
  std::string_view Name;
  std::string_view HelpString;
  /// All zero when the entry has none.
  Guid Id;
  /// `TypeKindNumber`; 4 for dual interfaces. Larger values of damaged files are kept.
  int TypeKind = tkEnum;
  /// 16 hidden, 32 control, 64 dual, 512 restricted and so on.
  int AttributeMask = 0;
  std::uint32_t HelpContext = 0;
  std::uint32_t HelpStringContext = 0;
  /// 0-based position in the library.
  int TypeInfoNumber = 0;
  std::uint16_t MajorVersion = 0;
  std::uint16_t MinorVersion = 0;
  std::uint32_t InstanceSize = 0;
  std::uint16_t Alignment = 0;
  std::uint16_t VTableSize = 0;
  /// Of a module.
  std::string_view DllName;
  /// Where help strings with a context number are kept, when not where the library says.
  std::string_view HelpStringDll;
  /// The interface above this one; for a dispatch interface the one whose members it shows.
  TypeReference Base;
  /// Target of an alias.
  VarTypeInfo AliasType;
  /// Interfaces of a class; the base of an interface; IDispatch for every dispatch interface.
  std::vector<InterfaceInfo> Interfaces;
  /// As stored: functions, then variables.
  std::vector<MemberInfo> OwnMembers;
  std::int32_t CustomData = -1;

  /// "enum", "record", "module", "interface", "dispinterface", "coclass", "alias", "union", or
  /// "unknown".
  std::string_view TypeKindString() const;
  /// In braces, upper case.
  std::string GUID() const { return Id.Text(); }
  /// `OwnMembers`; in front of them, for a dispatch interface, the functions of its base chain. A
  /// base that cannot be found is left out and told in the library's messages.
  const std::vector<const MemberInfo*>& Members() const;
  /// First default interface of a class that is no event source, nothing without one.
  const InterfaceInfo* DefaultInterface() const;
  /// First default interface that is an event source, nothing without one.
  const InterfaceInfo* DefaultEventInterface() const;
  /// Target of an alias of a user type; nothing when it is a plain type or this is no alias. Fails
  /// like `VarTypeInfo::TypeInfo`.
  const TypeInfo* ResolvedType() const;

 private:
  const InterfaceInfo* FirstInterface(int wanted) const;
  void CollectMembers() const;
  mutable std::vector<const MemberInfo*> mMembers;
  mutable bool mCollected = false;
};

struct CustomDatum {
  Guid Id;
  const TypeLibValue* Value = nullptr;
};

enum class LibraryFormat { Msft, Sltg, BuiltIn };

class TypeLibInfo {
 public:
  TypeLibInfo() = default;
  TypeLibInfo(const TypeLibInfo&) = delete;
  TypeLibInfo& operator=(const TypeLibInfo&) = delete;

  std::string_view Name;
  std::string_view HelpString;
  std::string_view HelpFile;
  std::string_view HelpStringDll;
  Guid Id;
  std::uint16_t MajorVersion = 0;
  std::uint16_t MinorVersion = 0;
  std::uint32_t Lcid = 0;
  /// Name of the code page by which the texts were read; what it rests on where that is not the
  /// language.
  std::string CodePage, CodePageEvidence;
  /// 0 16-bit, 1 32-bit, 3 64-bit Windows.
  int SysKind = 1;
  /// 1 restricted, 2 control, 4 hidden.
  int AttributeMask = 0;
  std::uint32_t HelpContext = 0;
  std::uint32_t HelpStringContext = 0;
  LibraryFormat Format = LibraryFormat::Msft;
  /// Native path of the file, without the number behind it.
  std::string ContainingFile;
  /// Number of the resource; 0 for a bare library.
  int ResourceId = 0;
  std::int32_t CustomData = -1;

  /// All entries, in library order.
  std::vector<TypeInfo> TypeInfos;
  std::vector<LibraryImport> Imports;
  std::vector<ImportedType> ImportedTypes;
  std::vector<std::vector<CustomDatum>> CustomDataLists;
  /// What could not be read, in the order of reading. More are added when members of other
  /// libraries are sought.
  mutable std::vector<std::string> Messages;
  /// Filled when asked for.
  std::unique_ptr<CoverageMap> Coverage;

  // What descriptions of types point into.
  std::vector<TypeNode> TypeNodes;
  std::vector<vendrel::typelib::ArrayBound> ArrayBounds;
  std::vector<ParameterInfo> Parameters;
  std::deque<TypeLibValue> Values;

  /// Library id in braces, upper case.
  std::string GUID() const { return Id.Text(); }
  /// The entry; fails when its library cannot be found. Nothing for "none" and for positions that
  /// do not exist.
  const TypeInfo* Resolve(TypeReference reference) const;
  /// The same, with nothing in place of a failure.
  const TypeInfo* TryResolve(TypeReference reference) const;
  /// Entry of this id or name (without regard to case); nothing if absent.
  const TypeInfo* FindType(const Guid& id) const;
  const TypeInfo* FindType(std::string_view name) const;
  /// The first class whose default interface has the position and name of `type`; nothing if none.
  const TypeInfo* ClassOfInterface(const TypeInfo& type) const;
  /// Counts elements that a client makes of members. False, told once, when a damaged file asks for
  /// many more than its size explains: classes may name one interface any number of times.
  bool SpendMembers(std::size_t count) const;
  void Warn(std::string message) const;

  /// Looks for other libraries; may be null. A library that a client opened owns it; one that the
  /// finder opened does not.
  LibraryFinder* Finder = nullptr;
  std::shared_ptr<LibraryFinder> OwnedFinder;
  // Storage of the texts: the image, and what had to be converted.
  std::vector<std::uint8_t> Image;
  std::deque<std::string> Texts;

 private:
  friend class TypeInfo;
  enum class Sought : std::uint8_t { No, Found, Missing };
  const TypeInfo* FindImported(std::size_t index) const;

  mutable std::vector<std::pair<Sought, const TypeInfo*>> mImported;
  mutable std::unordered_map<Guid, std::size_t, GuidHash> mTypesById;
  mutable std::unordered_map<std::string, const TypeInfo*> mClassesByInterface;
  mutable bool mClassesIndexed = false;
  mutable std::size_t mInherited = 0, mSpent = 0;
};

/// IUnknown, IDispatch and the records of their parameters, which every library refers to.
const TypeLibInfo& BuiltInLibrary();

}  // namespace vendrel::typelib
