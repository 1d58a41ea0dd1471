// Constants, default values and custom data of the newer format.

#include <cstring>

#include "typelib/reader/MsftReader.h"
#include "typelib/reader/TypeLibLimits.h"

namespace vendrel::typelib {
namespace {

double BitsToDouble(std::uint64_t bits) {
  double value;
  std::memcpy(&value, &bits, sizeof value);
  return value;
}

double BitsToSingle(std::uint32_t bits) {
  float value;
  std::memcpy(&value, &bits, sizeof value);
  return static_cast<double>(value);
}

bool IsObject(int varType) {
  return varType == vtDispatch || varType == vtUnknown || varType == vtVariant ||
         varType == vtLpWStr || varType == vtLpStr || varType == vtBstr;
}

void ReadDecimal(ByteStream& entry, TypeLibValue& value) {
  const std::uint8_t scale = entry.U8();
  const bool isNegative = (entry.U8() & 0x80) != 0;
  const std::uint32_t high = entry.U32();
  value.Real =
      static_cast<double>(entry.U64()) + static_cast<double>(high) * 18446744073709551616.0;
  for (int i = 0; i < scale && i < 28; ++i) value.Real /= 10;
  if (isNegative) value.Real = -value.Real;
}

}  // namespace

// Bits 26 to 30 are the type, the low 26 the value.
TypeLibValue UnpackValue(std::uint32_t packed) {
  TypeLibValue value;
  value.VarType = static_cast<int>(packed >> 26 & 0x1F);
  const std::uint32_t bits = packed & 0x3FFFFFF;
  switch (value.VarType) {
    case vtI2:
    case vtBool: value.Integer = static_cast<std::int16_t>(bits); break;
    // A number, not a character. NOLINTNEXTLINE(bugprone-signed-char-misuse)
    case vtI1: value.Integer = static_cast<std::int8_t>(bits); break;
    case vtR4: value.Real = BitsToSingle(bits); break;
    case vtR8:
    case vtDate: value.Real = static_cast<double>(bits); break;
    default:
      value.Integer = bits;
      value.IsNull = IsObject(value.VarType);
      break;
  }
  return value;
}

const TypeLibValue* MsftReader::Value(std::int32_t stored) {
  auto [known, isNew] = mValueByOffset.try_emplace(stored, nullptr);
  if (!isNew) return known->second;
  const TypeLibValue value = stored < 0 ? UnpackValue(static_cast<std::uint32_t>(stored))
                                        : StoredValue(static_cast<std::size_t>(stored));
  return known->second = &mLibrary.Values.emplace_back(value);
}

// {type, value}, padded to 4; whole numbers of up to 32 bits take four bytes.
TypeLibValue MsftReader::StoredValue(std::size_t offset) {
  ByteStream entry = mSegments[segValues].At(offset);
  TypeLibValue value;
  value.VarType = entry.U16() & vtTypeMask;
  switch (value.VarType) {
    // A number, not a character. NOLINTNEXTLINE(bugprone-signed-char-misuse)
    case vtI1: value.Integer = static_cast<std::int8_t>(entry.U32()); break;
    case vtUI1: value.Integer = static_cast<std::uint8_t>(entry.U32()); break;
    case vtI2:
    case vtBool: value.Integer = static_cast<std::int16_t>(entry.U32()); break;
    case vtUI2: value.Integer = static_cast<std::uint16_t>(entry.U32()); break;
    case vtI4:
    case vtInt:
    case vtHresult:
    case vtError: value.Integer = entry.I32(); break;
    case vtUI4:
    case vtUInt: value.Integer = entry.U32(); break;
    case vtCurrency:
    case vtI8:
    case vtUI8: value.Integer = entry.I64(); break;
    case vtR4: value.Real = BitsToSingle(entry.U32()); break;
    case vtR8:
    case vtDate: value.Real = BitsToDouble(entry.U64()); break;
    case vtDecimal: ReadDecimal(entry, value); break;
    case vtBstr:
    case vtLpStr:
    case vtLpWStr: ReadText(entry, value); break;
    default: throw DataError("a value of unknown type " + std::to_string(value.VarType));
  }
  entry.Cover((4 - (entry.Position() - offset) % 4) % 4);
  return value;
}

void MsftReader::ReadText(ByteStream& entry, TypeLibValue& value) {
  const std::int32_t length = entry.I32();
  value.IsNull = length < 0;
  if (length > 0) value.String = mTexts->String(entry.Chars(static_cast<std::size_t>(length)));
}

// A list of {key, value, next}; lists are shared, so each is read once.
std::int32_t MsftReader::CustomData(std::int32_t offset) {
  if (offset < 0) return -1;
  auto [known, isNew] = mCustomDataByOffset.try_emplace(offset, -1);
  if (!isNew) return known->second;
  const std::size_t limit = mSegments[segCustomData].Size() / 6;
  std::vector<CustomDatum> list;
  for (std::int32_t at = offset; at >= 0;) {
    if (list.size() >= kMaxCustomData || ++mCustomDataCount > limit)
      throw DataError("a list of custom data without an end");
    ByteStream entry = mSegments[segCustomData].At(static_cast<std::size_t>(at));
    CustomDatum datum;
    datum.Id = ReadGuid(entry.I32());
    datum.Value = Value(entry.I32());
    at = entry.I32();
    list.push_back(datum);
  }
  mLibrary.CustomDataLists.push_back(std::move(list));
  return known->second = static_cast<std::int32_t>(mLibrary.CustomDataLists.size() - 1);
}

}  // namespace vendrel::typelib
