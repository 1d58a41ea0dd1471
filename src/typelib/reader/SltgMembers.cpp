// Members of the older format. Lists are linked by offsets into the group, FFFF at the end.

#include <cstring>

#include "typelib/reader/MemberRules.h"
#include "typelib/reader/SltgGroup.h"
#include "typelib/reader/TypeLibLimits.h"

namespace vendrel::typelib {
namespace {

constexpr std::uint16_t kEnd = 0xFFFF;
// In the first byte of a member: a word of flags ends the record.
constexpr unsigned kHasFlags = 0x20;
constexpr std::size_t kVariableRecord = 18, kFunctionRecord = 22, kImplementedRecord = 22;

double ReadReal(ByteStream& bytes, bool isDouble) {
  if (!isDouble) {
    const std::uint32_t bits = bytes.U32();
    float value;
    std::memcpy(&value, &bits, sizeof value);
    return static_cast<double>(value);
  }
  const std::uint64_t bits = bytes.U64();
  double value;
  std::memcpy(&value, &bits, sizeof value);
  return value;
}

// Flags of a parameter as the newer format stores them, from its first type word.
std::uint16_t ParameterFlags(std::uint16_t word) {
  std::uint16_t flags = 0;
  if ((word & 0x8000) != 0) flags |= (word & 0x4000) != 0 ? 0 : paramIn | paramOut;
  if ((word & 0xC000) == 0x4000) flags |= paramOut;
  if ((word & 0xC000) == 0) flags |= paramIn;
  if ((word & 0x2000) != 0) flags |= paramLcid;
  if ((word & 0x0080) != 0) flags |= paramRetval;
  return flags;
}

// 1 virtual, 3 static, 4 dispatch, 0 for other kinds.
std::uint8_t StoredFunctionKind(unsigned kind) {
  switch (kind & ~kHasFlags) {
    case 0x4C: return 1;
    case 0x8B: return 3;
    case 0xCB: return 4;
    default: return 0;
  }
}

}  // namespace

// The tail: counts, first members, type of an alias, help context, sizes.
void SltgReader::ReadGroup(Group& group, TypeInfo& type) {
  ByteStream tail = group.Tail;
  const std::size_t functions = tail.U16(), variables = tail.U16(), implemented = tail.U16();
  tail.Skip(2);
  const std::uint16_t firstFunction = tail.U16(), firstVariable = tail.U16();
  const std::uint16_t firstImplemented = tail.U16();
  const std::uint16_t alias = tail.Seek(0x14).U16();
  group.BaseHelpContext = tail.Seek(0x18).U32();
  const bool isPlainAlias = tail.U16() != 0;
  type.InstanceSize = tail.Seek(0x20).U16();
  type.Alignment = tail.U16();
  type.VTableSize = tail.Seek(0x28).U16();
  // A table of ids that speeds up a search ends the group.
  const std::size_t recordBytes = tail.Seek(0x34).U16();
  if (recordBytes < group.Records.Size())
    group.Records.At(recordBytes).Cover(group.Records.Size() - recordBytes);
  group.ParametersLeft = group.Records.Size() / 2;
  type.OwnMembers.reserve(std::min(functions + variables, group.Records.Size() / kVariableRecord));
  Guarded(type.Name, [&] { ReadImplemented(group, type, firstImplemented, implemented); });
  if (type.TypeKind == tkAlias) {
    Guarded(type.Name, [&] {
      type.AliasType = {&mLibrary, isPlainAlias ? PlainType(alias) : ReadTypeAt(group, alias)};
    });
  }
  Guarded(type.Name, [&] { ReadFunctions(group, type, firstFunction, functions); });
  Guarded(type.Name, [&] { ReadVariables(group, type, firstVariable, variables); });
}

void SltgReader::ReadImplemented(Group& group, TypeInfo& type, std::uint16_t first,
                                 std::size_t count) {
  std::vector<InterfaceInfo> items;
  for (std::uint16_t place = first; place != kEnd && items.size() < count;) {
    if (items.size() > group.Records.Size() / kImplementedRecord)
      throw DataError("a circular list");
    ByteStream record = group.Records.Part(place, kImplementedRecord, "an implemented interface");
    record.Skip(2);
    place = record.U16();
    record.Skip(2);
    InterfaceInfo item;
    item.Library = &mLibrary;
    item.AttributeMask = record.U8();
    record.Skip(13);
    item.Reference = GroupReference(group, record.U16());
    items.push_back(item);
  }
  switch (type.TypeKind) {
    case tkCoclass: type.Interfaces = std::move(items); break;
    case tkInterface:
      if (items.empty()) break;
      type.Base = items.front().Reference;
      type.Interfaces.push_back({&mLibrary, type.Base, 0, -1});
      break;
    case tkDispatch:
      // A dual has its base here. Others list IDispatch, and behind it the interface they show.
      if ((type.AttributeMask & 0x40) != 0 && !items.empty()) type.Base = items.front().Reference;
      if (items.size() > 1) type.Base = items[1].Reference;
      AddDispatchInterface(type);
      break;
    default: break;
  }
}

void SltgReader::ReadFunctions(Group& group, TypeInfo& type, std::uint16_t first,
                               std::size_t count) {
  std::uint16_t place = first;
  for (std::size_t i = 0; i < count && place != kEnd; ++i) {
    if (i > group.Records.Size() / kFunctionRecord) throw DataError("a circular list of functions");
    place = ReadFunction(group, type, place);
  }
}

void SltgReader::ReadVariables(Group& group, TypeInfo& type, std::uint16_t first,
                               std::size_t count) {
  std::uint16_t place = first;
  for (std::size_t i = 0; i < count && place != kEnd; ++i) {
    if (i > group.Records.Size() / kVariableRecord) throw DataError("a circular list of variables");
    place = ReadVariable(group, type, place);
  }
}

// {0A or 2A with flags, bits, next, name, value, type, id, help context, help string, flags}.
std::uint16_t SltgReader::ReadVariable(Group& group, TypeInfo& type, std::uint16_t place) {
  enum : unsigned {
    typeInPlace = 2,
    valueInPlace = 8,
    constant = 0x10,
    property = 0x40,
    readOnly = 0x80
  };
  ByteStream record = group.Records.At(place);
  const bool hasFlags = (record.U8() & kHasFlags) != 0;
  const unsigned bits = record.U8();
  const std::uint16_t next = record.U16();
  MemberInfo member;
  member.DescKind = dkVariable;
  member.Name = MemberName(group, record.U16());
  const std::uint16_t value = record.U16();
  const std::uint16_t typeWord = record.U16();
  member.MemberId = record.I32();
  const std::uint16_t helpContext = record.U16(), helpString = record.U16();
  member.AttributeMask = hasFlags ? record.U16() : 0;
  if ((bits & readOnly) != 0) member.AttributeMask |= 1;
  ReadMemberType(group, member, typeWord, (bits & typeInPlace) != 0);
  member.StoredKind = (bits & constant) != 0   ? vkConstant
                      : (bits & property) != 0 ? vkDispatch
                                               : vkField;
  if (member.StoredKind == vkConstant) {
    member.InvokeKind = ikConstant;
    Guarded(member.Name, [&] {
      member.Value = ReadConstant(group, member.ReturnType, value, (bits & valueInPlace) != 0);
    });
  } else if (member.StoredKind == vkField) {
    member.Offset = value;
  }
  ReadHelp(group, member, helpContext, helpString);
  type.OwnMembers.push_back(member);
  return next;
}

// {kind, invoke kind, next, name, id, help context, help string, parameters, count and convention,
// return bits, return type, place in the table, flags}.
std::uint16_t SltgReader::ReadFunction(Group& group, TypeInfo& type, std::uint16_t place) {
  ByteStream record = group.Records.At(place);
  const unsigned kind = record.U8();
  MemberInfo member;
  member.DescKind = dkFunction;
  member.StoredKind = StoredFunctionKind(kind);
  if (member.StoredKind == 0) mLibrary.Warn("a function of unknown kind " + std::to_string(kind));
  member.InvokeKind = record.U8() >> 4;
  const std::uint16_t next = record.U16();
  member.Name = MemberName(group, record.U16());
  member.MemberId = record.I32();
  const std::uint16_t helpContext = record.U16(), helpString = record.U16();
  const std::uint16_t parameters = record.U16();
  const unsigned counts = record.U8(), returnBits = record.U8();
  const std::uint16_t returnWord = record.U16(), offset = record.U16();
  member.AttributeMask = (kind & kHasFlags) != 0 ? record.U16() : 0;
  member.CallConv = counts & 7;
  const int optional = static_cast<int>(returnBits >> 1 & 0x3F);
  member.OptionalCount = static_cast<std::int16_t>(optional == 0x3F ? -1 : optional);
  member.Offset = offset == kEnd ? 0 : offset & ~1;
  ReadMemberType(group, member, returnWord, (returnBits & 0x80) != 0);
  member.FirstParameter = static_cast<std::uint32_t>(mLibrary.Parameters.size());
  Guarded(member.Name, [&] { ReadParameters(group, parameters, counts >> 3); });
  member.AllParameters =
      static_cast<std::uint16_t>(mLibrary.Parameters.size() - member.FirstParameter);
  ArrangeParameters(mLibrary, member);
  MarkOptional(member);
  ReadHelp(group, member, helpContext, helpString);
  type.OwnMembers.push_back(member);
  return next;
}

void SltgReader::ReadMemberType(Group& group, MemberInfo& member, std::uint16_t word,
                                bool isInPlace) {
  member.ReturnType.Library = &mLibrary;
  Guarded(member.Name, [&] {
    ByteStream none;
    member.ReturnType.Code = isInPlace ? ReadTypeWords(group, none, word) : ReadTypeAt(group, word);
  });
  member.StoredReturnType = member.ReturnType;
}

// The newer format marks each optional parameter, the older one says it by the count alone.
void SltgReader::MarkOptional(const MemberInfo& member) {
  for (std::size_t i = 0; i < member.VisibleParameters; ++i) {
    ParameterInfo& parameter = mLibrary.Parameters[member.FirstParameter + i];
    if (parameter.Optional && !parameter.IsParamArray) parameter.Flags |= paramOptional;
  }
}

void SltgReader::ReadHelp(Group& group, MemberInfo& member, std::uint16_t context,
                          std::uint16_t text) {
  Guarded(member.Name, [&] { member.HelpContext = HelpContext(group, context); });
  Guarded(member.Name, [&] { member.HelpString = HelpString(group, text); });
}

// Names: FFFF and FFFE unnamed; the type follows in words behind FFFF and odd names, through an
// offset behind FFFE and even ones.
void SltgReader::ReadParameters(Group& group, std::uint16_t place, std::size_t count) {
  if (count == 0) return;
  if (count > group.ParametersLeft) throw DataError("overlapping lists of parameters");
  group.ParametersLeft -= count;
  ByteStream list = group.Records.At(place);
  for (std::size_t i = 0; i < count; ++i) {
    ParameterInfo parameter;
    parameter.Position = static_cast<std::uint16_t>(i);
    parameter.VarTypeInfo.Library = &mLibrary;
    const std::uint16_t name = list.U16();
    if (name < 0xFFFE) parameter.Name = Name(name & ~1u);
    std::uint16_t word;
    if ((name & 1) != 0) {
      word = list.U16();
      parameter.VarTypeInfo.Code = ReadTypeWords(group, list, word);
    } else {
      ByteStream words = group.Records.At(list.U16());
      word = words.U16();
      parameter.VarTypeInfo.Code = ReadTypeWords(group, words, word);
    }
    parameter.Flags = ParameterFlags(word);
    mLibrary.Parameters.push_back(parameter);
  }
}

const TypeLibValue* SltgReader::ReadConstant(Group& group, const VarTypeInfo& type,
                                             std::uint16_t value, bool isInPlace) {
  TypeLibValue constant;
  constant.VarType = IsPlainType(type.Code) ? PlainVarType(type.Code) : vtI4;
  if (isInPlace) {
    constant.Integer = static_cast<std::int16_t>(value);
    return &mLibrary.Values.emplace_back(constant);
  }
  ByteStream bytes = group.Records.At(value);
  switch (constant.VarType) {
    // A number, not a character. NOLINTNEXTLINE(bugprone-signed-char-misuse)
    case vtI1: constant.Integer = static_cast<std::int8_t>(bytes.U8()); break;
    case vtUI1: constant.Integer = bytes.U8(); break;
    case vtI2:
    case vtBool: constant.Integer = bytes.I16(); break;
    case vtUI2: constant.Integer = bytes.U16(); break;
    case vtR4: constant.Real = ReadReal(bytes, false); break;
    case vtR8:
    case vtDate: constant.Real = ReadReal(bytes, true); break;
    case vtCurrency:
    case vtI8:
    case vtUI8: constant.Integer = static_cast<std::int64_t>(bytes.U64()); break;
    case vtUI4:
    case vtUInt: constant.Integer = bytes.U32(); break;
    case vtBstr:
    case vtLpStr:
    case vtLpWStr: constant.String = mTexts->String(PrefixedText(bytes)); break;
    default: constant.Integer = bytes.I32(); break;
  }
  return &mLibrary.Values.emplace_back(constant);
}

std::string_view SltgReader::MemberName(Group& group, std::uint16_t offset) {
  if (offset != kPreviousName) Guarded("name of a member", [&] { group.LastName = Name(offset); });
  return group.LastName;
}

// FFFE none; odd: a distance from the group's number; even: the place of a number.
std::uint32_t SltgReader::HelpContext(Group& group, std::uint16_t word) {
  if (word == kPreviousName || word == kEnd) return 0;
  if ((word & 1) == 0) return group.Records.At(word).U32();
  const std::uint32_t distance = word >> 2;
  return (word & 2) != 0 ? group.BaseHelpContext - distance : group.BaseHelpContext + distance;
}

std::string_view SltgReader::HelpString(Group& group, std::uint16_t offset) {
  if (offset == kEnd) return {};
  return mTexts->KeepDecoded(mHelp.Decode(group.Records.At(offset)));
}

}  // namespace vendrel::typelib
