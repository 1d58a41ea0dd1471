#include "dotnet/metadata/Values.h"

#include <algorithm>
#include <bit>
#include <charconv>

#include "core/Utf8.h"
#include "dotnet/metadata/MetadataLimits.h"
#include "dotnet/metadata/MetadataSignatures.h"

namespace vendrel::metadata {
namespace {

enum ValueType : std::uint8_t {
  vBoolean = 0x02,
  vChar,
  vInt8,
  vUInt8,
  vInt16,
  vUInt16,
  vInt32,
  vUInt32,
  vInt64,
  vUInt64,
  vSingle,
  vDouble,
  vString,
  vClass = 0x12,
};

std::string Quoted(std::string_view text) {
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"') quoted += '"';
    quoted += c;
  }
  return quoted += '"';
}

// Half a pair stands for no character; an odd byte at the end for nothing.
std::string FromUtf16(ByteStream blob) {
  std::string text;
  while (blob.Left() >= 2 && text.size() < kMaxTypeText) {
    const std::uint32_t unit = blob.U16();
    const bool isHigh = unit >= 0xD800 && unit < 0xDC00;
    if (isHigh && blob.Left() >= 2) {
      const std::uint32_t low = blob.At(blob.Position()).U16();
      if (low >= 0xDC00 && low < 0xE000) {
        blob.Skip(2);
        AppendUtf8(text, 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00));
        continue;
      }
    }
    AppendUtf8(text, unit);
  }
  return text;
}

template <typename Number>
std::string FloatText(Number value) {
  char buffer[64];
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, value).ptr;
  return {buffer, end};
}

std::string ConstantText(std::uint8_t type, ByteStream blob) {
  switch (type) {
    case vBoolean: return blob.U8() != 0 ? "True" : "False";
    case vChar: return Quoted(FromUtf16(blob)) + "c";
    case vInt8: return std::to_string(static_cast<std::int8_t>(blob.U8()));
    case vUInt8: return std::to_string(blob.U8());
    case vInt16: return std::to_string(blob.I16());
    case vUInt16: return std::to_string(blob.U16());
    case vInt32: return std::to_string(blob.I32());
    case vUInt32: return std::to_string(blob.U32());
    case vInt64: return std::to_string(blob.I64());
    case vUInt64: return std::to_string(blob.U64());
    case vSingle: return FloatText(std::bit_cast<float>(blob.U32()));
    case vDouble: return FloatText(std::bit_cast<double>(blob.U64()));
    case vString: return Quoted(FromUtf16(blob));
    case vClass: return "Nothing";
    default: throw DataError("a constant has the unknown type " + std::to_string(type));
  }
}

// A number of three words, the lowest first, with its decimal point moved.
std::string DecimalText(std::uint32_t high, std::uint32_t middle, std::uint32_t low, unsigned scale,
                        bool isNegative) {
  std::uint32_t words[3] = {high, middle, low};
  std::string digits;
  while (words[0] != 0 || words[1] != 0 || words[2] != 0) {
    std::uint64_t rest = 0;
    for (std::uint32_t& word : words) {
      const std::uint64_t value = rest << 32 | word;
      word = static_cast<std::uint32_t>(value / 10);
      rest = value % 10;
    }
    digits += static_cast<char>('0' + rest);
  }
  scale = std::min(scale, 28u);
  while (digits.size() <= scale) digits += '0';
  std::reverse(digits.begin(), digits.end());
  if (scale > 0) digits.insert(digits.size() - scale, ".");
  return (isNegative ? "-" : "") + digits;
}

// Ticks of 100 nanoseconds since the first day of year 1, as a literal of the language.
std::string DateText(std::int64_t ticks) {
  constexpr std::int64_t kSecond = 10'000'000, kDay = 86400 * kSecond;
  if (ticks < 0 || ticks > std::int64_t{3652059} * kDay) throw DataError("a date is out of range");
  // Days of a calendar that begins on 1 March of year 0, in which leap days come last.
  const std::int64_t days = ticks / kDay + 306;
  const std::int64_t era = days / 146097, inEra = days % 146097;
  const std::int64_t yearOfEra = (inEra - inEra / 1460 + inEra / 36524 - inEra / 146096) / 365;
  const std::int64_t dayOfYear = inEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  const std::int64_t shifted = (5 * dayOfYear + 2) / 153;
  const std::int64_t day = dayOfYear - (153 * shifted + 2) / 5 + 1;
  const std::int64_t month = shifted < 10 ? shifted + 3 : shifted - 9;
  const std::int64_t year = yearOfEra + era * 400 + (month <= 2 ? 1 : 0);
  std::string text = "#" + std::to_string(month) + "/" + std::to_string(day) + "/";
  text += std::to_string(year);
  const std::int64_t seconds = ticks % kDay / kSecond;
  if (seconds > 0) {
    const auto two = [](std::int64_t n) { return (n < 10 ? "0" : "") + std::to_string(n); };
    const std::int64_t hour = seconds / 3600;
    text += " " + std::to_string(hour % 12 == 0 ? 12 : hour % 12) + ":" + two(seconds / 60 % 60) +
            ":" + two(seconds % 60) + (hour < 12 ? " AM" : " PM");
  }
  return text + "#";
}

// The arguments of an attribute, behind its prolog; empty where it has none of that form.
ByteStream ArgumentsOf(const Image& image, std::uint32_t attribute) {
  ByteStream blob = image.Blob(tCustomAttribute, 2, attribute);
  if (blob.Left() < 2 || blob.U16() != 1) throw DataError("an attribute has no arguments");
  return blob;
}

std::string TakeText(ByteStream& blob) {
  if (blob.Peek() == 0xFF) {
    blob.Skip(1);
    return {};
  }
  const std::uint32_t length = TakeCompressed(blob);
  return CleanName(blob.Chars(length));
}

// How many arguments the constructor of an attribute takes.
std::size_t ArgumentCount(const Image& image, std::uint32_t attribute) {
  const Token constructor =
      image.Tables().Coded(tCustomAttribute, 1, attribute, cCustomAttributeType);
  ByteStream blob = constructor.Of == tMethod ? image.Blob(tMethod, 4, constructor.Row)
                                              : image.Blob(tMemberRef, 2, constructor.Row);
  blob.Skip(1);
  return TakeCompressed(blob);
}

std::string DecimalOf(const Image& image, std::uint32_t attribute) {
  ByteStream blob = ArgumentsOf(image, attribute);
  const unsigned scale = blob.U8();
  const bool isNegative = blob.U8() != 0;
  const std::uint32_t high = blob.U32();
  const std::uint32_t middle = blob.U32();
  return DecimalText(high, middle, blob.U32(), scale, isNegative);
}

}  // namespace

std::string ValueOf(const Image& image, Token owner) {
  const std::uint32_t row = image.ConstantOf(owner);
  const auto type =
      static_cast<std::uint8_t>(row == 0 ? 0 : image.Tables().Cell(tConstant, 0, row));
  // One compiler writes a null beside the attribute that holds the date.
  if (row != 0 && type != vClass) return ConstantText(type, image.Blob(tConstant, 2, row));
  if (const std::uint32_t date = image.AttributeOf(owner, KnownAttribute::DateTimeConstant))
    return DateText(ArgumentsOf(image, date).I64());
  if (const std::uint32_t decimal = image.AttributeOf(owner, KnownAttribute::DecimalConstant))
    return DecimalOf(image, decimal);
  return row == 0 ? std::string() : "Nothing";
}

ObsoleteMark ObsoleteMarkOf(const Image& image, Token owner) {
  ObsoleteMark mark;
  const std::uint32_t attribute = image.AttributeOf(owner, KnownAttribute::Obsolete);
  if (attribute == 0) return mark;
  mark.Marked = true;
  try {
    const std::size_t count = ArgumentCount(image, attribute);
    ByteStream blob = ArgumentsOf(image, attribute);
    if (count > 0) mark.Text = TakeText(blob);
    if (count > 1) mark.IsError = blob.U8() != 0;
  } catch (const DataError&) {
    // The mark stands without its text.
  }
  return mark;
}

std::string DefaultMemberOf(const Image& image, std::uint32_t type) {
  const std::uint32_t attribute =
      image.AttributeOf({tTypeDef, type}, KnownAttribute::DefaultMember);
  if (attribute == 0) return {};
  try {
    ByteStream blob = ArgumentsOf(image, attribute);
    return TakeText(blob);
  } catch (const DataError&) {
    return {};
  }
}

}  // namespace vendrel::metadata
