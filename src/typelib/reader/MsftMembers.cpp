// Entries of the newer format and their members.

#include <algorithm>

#include "typelib/reader/MemberRules.h"
#include "typelib/reader/MsftReader.h"
#include "typelib/reader/TypeLibLimits.h"

namespace vendrel::typelib {
namespace {

constexpr std::size_t kFunctionBytes = 24;
constexpr std::size_t kVariableBytes = 20;
constexpr std::size_t kParameterBytes = 12;
constexpr std::uint32_t kHasCustomData = 0x80;
constexpr std::uint32_t kHasDefaults = 0x1000;
constexpr std::uint32_t kEntryIsOrdinal = 0x2000;

// Of help strings: -1 says that there is none.
std::uint32_t ContextOrZero(std::int32_t stored) {
  return stored == -1 ? 0 : static_cast<std::uint32_t>(stored);
}

}  // namespace

struct MsftReader::MemberBlock {
  std::uint32_t Offset = 0;
  std::uint16_t Functions = 0, Variables = 0;
};

void MsftReader::ReadTypeInfos() {
  ByteStream offsets = mImage.Part(mDirectoryOffset - std::size_t{4} * mTypeCount,
                                   std::size_t{4} * mTypeCount, "the list of types");
  const std::size_t present = mSegments[segTypeInfos].Size() / kTypeInfoBytes;
  if (present < mTypeCount)
    mLibrary.Warn(std::to_string(mTypeCount - present) + " types are missing");
  mLibrary.TypeInfos.resize(std::min<std::size_t>(mTypeCount, present));
  for (std::size_t i = 0; i < mLibrary.TypeInfos.size(); ++i) {
    TypeInfo& type = mLibrary.TypeInfos[i];
    type.Library = &mLibrary;
    type.TypeInfoNumber = static_cast<int>(i);
    type.AliasType.Library = &mLibrary;
    const std::uint32_t offset = offsets.U32();
    const std::string what = "type " + std::to_string(i);
    Guarded(what.c_str(), [&] {
      MemberBlock block;
      ReadTypeInfo(mSegments[segTypeInfos].Part(offset, kTypeInfoBytes, "the type"), type, block);
      ReadMembers(type, block);
    });
  }
}

void MsftReader::ReadTypeInfo(ByteStream record, TypeInfo& type, MemberBlock& block) {
  const std::uint32_t kind = record.U32();
  type.TypeKind = static_cast<int>(kind & 15);
  type.Alignment = kind >> 11 & 31;
  block.Offset = record.U32();
  record.Skip(16);
  block.Functions = record.U16();
  block.Variables = record.U16();
  record.Skip(16);
  const std::int32_t id = record.I32();
  type.AttributeMask = static_cast<int>(record.U32());
  const std::int32_t name = record.I32();
  type.MajorVersion = record.U16();
  type.MinorVersion = record.U16();
  const std::int32_t help = record.I32();
  type.HelpStringContext = record.U32();
  type.HelpContext = record.U32();
  const std::int32_t customData = record.I32();
  const int implemented = record.U16();
  type.VTableSize = record.U16();
  type.InstanceSize = record.U32();
  const std::int32_t dataType = record.I32();
  record.Skip(8);
  const std::int32_t helpDll = record.I32();
  // Each may fail alone.
  Guarded("name of a type", [&] { type.Name = Name(name); });
  const std::string what(type.Name);
  Guarded(what.c_str(), [&] { type.Id = ReadGuid(id); });
  Guarded(what.c_str(), [&] { type.HelpString = String(help); });
  Guarded(what.c_str(), [&] { type.HelpStringDll = String(helpDll); });
  Guarded(what.c_str(), [&] { type.CustomData = CustomData(customData); });
  Guarded(what.c_str(), [&] { ReadBase(type, dataType, implemented); });
}

// What the word at 0x54 means depends on the kind.
void MsftReader::ReadBase(TypeInfo& type, std::int32_t dataType, int implemented) {
  switch (type.TypeKind) {
    case tkAlias: type.AliasType = Type(dataType); break;
    case tkModule: type.DllName = String(dataType); break;
    case tkCoclass: ReadImplemented(type, dataType, implemented); break;
    case tkInterface:
      type.Base = implemented > 0 ? Reference(dataType) : TypeReference();
      if (!type.Base.IsNone()) type.Interfaces.push_back({&mLibrary, type.Base, 0, -1});
      break;
    case tkDispatch:
      type.Base = Reference(dataType);
      AddDispatchInterface(type);
      break;
    default: break;
  }
}

void MsftReader::ReadImplemented(TypeInfo& type, std::int32_t offset, int count) {
  for (int i = 0; i < count && offset >= 0; ++i) {
    ByteStream record = mSegments[segReferences].Part(static_cast<std::size_t>(offset), 16,
                                                      "an implemented interface");
    InterfaceInfo item;
    item.Library = &mLibrary;
    item.Reference = Reference(record.I32());
    item.AttributeMask = static_cast<int>(record.U32());
    const std::int32_t customData = record.I32();
    offset = record.I32();
    // A list that runs in a circle ends with the count, and counts are paid for like records.
    if (mRecordBytesLeft < 16) throw DataError("overlapping records");
    mRecordBytesLeft -= 16;
    Guarded("custom data", [&] { item.CustomData = CustomData(customData); });
    type.Interfaces.push_back(item);
  }
}

// {bytes of records}, the records, then ids, names and places of the records. Blocks of two types,
// and records of two members, may be made to overlap in a hostile file, which would multiply the
// work; so all that is read is paid for from the bytes that the file has.
void MsftReader::ReadMembers(TypeInfo& type, const MemberBlock& block) {
  const std::size_t count = std::size_t{block.Functions} + block.Variables;
  if (count == 0) return;
  ByteStream start = mImage.At(block.Offset);
  const std::size_t length = start.U32();
  const ByteStream records = start.Part(start.Position(), length, "the members");
  ByteStream ids = start.Part(start.Position() + length, 12 * count, "the member lists");
  ByteStream names = ids.At(4 * count), places = ids.At(8 * count);
  if (mLibrary.Coverage)
    mLibrary.Coverage->AddRegion("members of " + std::string(type.Name), block.Offset,
                                 4 + length + 12 * count);
  if (length + 12 * count > mRecordBytesLeft) throw DataError("overlapping blocks of members");
  mRecordBytesLeft -= length + 12 * count;
  std::size_t bytesLeft = length;
  std::string_view lastName;
  type.OwnMembers.reserve(std::min(count, length / kVariableBytes));
  for (std::size_t i = 0; i < count; ++i) {
    MemberInfo member;
    member.ReturnType.Library = member.StoredReturnType.Library = &mLibrary;
    member.MemberId = ids.I32();
    const std::int32_t name = names.I32();
    const std::uint32_t place = places.U32();
    Guarded(std::string(type.Name).c_str(), [&] {
      const std::size_t size = records.At(place).U16();
      if (size > bytesLeft) throw DataError("overlapping members");
      bytesLeft -= size;
      // No name: that of the accessor before it.
      member.Name = lastName = name == -1 ? lastName : Name(name);
      const ByteStream record = records.Part(place, size, "a member");
      if (i < block.Functions) {
        ReadFunction(record, member);
      } else {
        ReadVariable(record, member);
      }
      type.OwnMembers.push_back(member);
    });
  }
}

void MsftReader::ReadFunction(ByteStream record, MemberInfo& member) {
  record.Skip(4);
  member.DescKind = dkFunction;
  member.ReturnType = member.StoredReturnType = Type(record.I32());
  member.AttributeMask = static_cast<std::uint16_t>(record.U32());
  member.Offset = record.U16() & ~1;
  record.Skip(2);
  const std::uint32_t bits = record.U32();
  member.StoredKind = bits & 7;
  member.InvokeKind = bits >> 3 & 15;
  member.CallConv = bits >> 8 & 15;
  const int stored = record.I16();
  member.OptionalCount = record.I16();
  const std::size_t parameters = static_cast<std::size_t>(std::max(stored, 0));
  // Optional fields stand between the fixed ones and the parameters, and only the size of the
  // record tells how many there are: it is counted back from the end.
  const std::size_t needed =
      kFunctionBytes + parameters * (kParameterBytes + ((bits & kHasDefaults) != 0 ? 4 : 0));
  if (stored < 0 || needed > record.Size())
    throw DataError("more parameters than the member holds");
  std::vector<std::int32_t> parameterData;
  ReadFunctionExtras(record, (record.Size() - needed) / 4, bits, member, parameterData);
  record.Skip((record.Size() - needed) % 4);
  std::vector<std::int32_t> defaults;
  for (std::size_t i = 0; (bits & kHasDefaults) != 0 && i < parameters; ++i)
    defaults.push_back(record.I32());
  member.FirstParameter = static_cast<std::uint32_t>(mLibrary.Parameters.size());
  for (std::size_t i = 0; i < parameters; ++i) {
    ParameterInfo parameter;
    parameter.Position = static_cast<std::uint16_t>(i);
    ReadParameter(record, parameter);
    if ((parameter.Flags & paramDefault) != 0 && i < defaults.size())
      Guarded("default value", [&] { parameter.DefaultValue = Value(defaults[i]); });
    if ((parameter.Flags & paramCustomData) != 0 && i < parameterData.size())
      Guarded("custom data", [&] { parameter.CustomData = CustomData(parameterData[i]); });
    mLibrary.Parameters.push_back(parameter);
  }
  if (parameterData.size() > parameters)
    Guarded("help string DLL", [&] { member.HelpStringDll = String(parameterData[parameters]); });
  member.AllParameters = static_cast<std::uint16_t>(parameters);
  ArrangeParameters(mLibrary, member);
}

// Help context, help string, entry, help file, a reserved word, help string context, custom data,
// then a word of custom data for each parameter, then the help string DLL; each only where the
// record is long enough.
void MsftReader::ReadFunctionExtras(ByteStream& record, std::size_t count, std::uint32_t bits,
                                    MemberInfo& member, std::vector<std::int32_t>& parameterData) {
  for (std::size_t i = 0; i < count; ++i) {
    const std::int32_t word = record.I32();
    switch (i) {
      case 0: member.HelpContext = static_cast<std::uint32_t>(word); break;
      case 1: Guarded("help string", [&] { member.HelpString = String(word); }); break;
      case 2:
        if ((bits & kEntryIsOrdinal) != 0) {
          member.DllOrdinal = word & 0xFFFF;
        } else if (member.StoredKind == 3) {
          Guarded("entry", [&] { member.DllEntry = String(word); });
        } else if (word >= 0) {
          // widl puts a string here for members of every kind.
          Guarded("entry", [&] { String(word); });
        }
        break;
      case 3: Guarded("help file", [&] { member.HelpFile = String(word); }); break;
      case 5: member.HelpStringContext = ContextOrZero(word); break;
      case 6:
        if ((bits & kHasCustomData) != 0)
          Guarded("custom data", [&] { member.CustomData = CustomData(word); });
        break;
      default:
        if (i >= 7) parameterData.push_back(word);
        break;
    }
  }
}

void MsftReader::ReadParameter(ByteStream& record, ParameterInfo& parameter) {
  parameter.VarTypeInfo = Type(record.I32());
  const std::int32_t name = record.I32();
  parameter.Flags = static_cast<std::uint16_t>(record.U32());
  Guarded("parameter", [&] { parameter.Name = Name(name); });
}

void MsftReader::ReadVariable(ByteStream record, MemberInfo& member) {
  record.Skip(4);
  member.DescKind = dkVariable;
  member.ReturnType = member.StoredReturnType = Type(record.I32());
  member.AttributeMask = static_cast<std::uint16_t>(record.U32());
  member.StoredKind = static_cast<std::uint8_t>(record.U16());
  record.Skip(2);
  const std::int32_t value = record.I32();
  if (member.StoredKind == vkConstant) {
    member.InvokeKind = ikConstant;
    Guarded("constant", [&] { member.Value = Value(value); });
  } else {
    member.Offset = value;
  }
  for (std::size_t i = 0; record.Left() >= 4; ++i) {
    const std::int32_t word = record.I32();
    switch (i) {
      case 0: member.HelpContext = static_cast<std::uint32_t>(word); break;
      case 1: Guarded("help string", [&] { member.HelpString = String(word); }); break;
      case 3: Guarded("custom data", [&] { member.CustomData = CustomData(word); }); break;
      case 4: member.HelpStringContext = ContextOrZero(word); break;
      default: break;
    }
  }
}

}  // namespace vendrel::typelib
