#include "typelib/reader/TypeLibValue.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "core/Ascii.h"
#include "core/Calendar.h"

namespace vendrel::typelib {
namespace {

std::string CurrencyText(std::int64_t scaled) {
  const bool negative = scaled < 0;
  const std::uint64_t size =
      negative ? ~static_cast<std::uint64_t>(scaled) + 1 : static_cast<std::uint64_t>(scaled);
  std::string text = size < 10000 ? std::string() : std::to_string(size / 10000);
  if (size % 10000 != 0) {
    std::string fraction = std::to_string(10000 + size % 10000).substr(1);
    while (fraction.back() == '0') fraction.pop_back();
    text += "." + fraction;
  }
  if (text.empty()) text = "0";
  return negative ? "-" + text : text;
}

bool ReadsAsNumber(std::string_view text) {
  text = Trim(text);
  if (text.empty()) return false;
  const std::string copy(text);
  if (copy.size() > 2 && copy[0] == '&' && UpperAscii(copy[1]) == 'H')
    return copy.find_first_not_of("0123456789abcdefABCDEF", 2) == std::string::npos;
  if (copy.find_first_not_of("0123456789.+-eE") != std::string::npos) return false;
  char* end = nullptr;
  std::strtod(copy.c_str(), &end);
  return *end == '\0';
}

}  // namespace

std::string DateText(double days) {
  const bool isDate = days >= kFirstDate && days < kLastDate + 1;
  return isDate ? vendrel::DateText(days) : NumberText(days, 15);
}

std::string NumberText(double number, int digits) {
  if (std::isnan(number)) return "-1.#IND";
  if (std::isinf(number)) return number < 0 ? "-1.#INF" : "1.#INF";
  if (number == 0) return "0";
  char buffer[48];
  std::snprintf(buffer, sizeof buffer, "%.*e", digits - 1, number);
  const std::string scientific = buffer;
  const std::size_t mark = scientific.find('e');
  const int exponent = std::atoi(scientific.c_str() + mark + 1);
  std::string mantissa;
  for (char c : scientific.substr(0, mark))
    if (IsDigitAscii(c)) mantissa += c;
  while (mantissa.size() > 1 && mantissa.back() == '0') mantissa.pop_back();
  const int length = static_cast<int>(mantissa.size());
  std::string text;
  if (exponent >= digits || length - 1 - exponent > digits) {
    text = mantissa.substr(0, 1);
    if (length > 1) text += "." + mantissa.substr(1);
    const std::string size = std::to_string(std::abs(exponent));
    text += std::string(exponent < 0 ? "E-" : "E+") + (size.size() < 2 ? "0" : "") + size;
  } else if (exponent < 0) {
    text = "." + std::string(static_cast<std::size_t>(-exponent - 1), '0') + mantissa;
  } else if (length <= exponent + 1) {
    text = mantissa + std::string(static_cast<std::size_t>(exponent + 1 - length), '0');
  } else {
    text = mantissa.substr(0, static_cast<std::size_t>(exponent) + 1) + "." +
           mantissa.substr(static_cast<std::size_t>(exponent) + 1);
  }
  return number < 0 ? "-" + text : text;
}

std::string TypeLibValue::Text() const {
  switch (VarType) {
    case vtBool: return Integer != 0 ? "True" : "False";
    case vtCurrency: return CurrencyText(Integer);
    case vtR4: return NumberText(Real, 7);
    case vtR8:
    case vtDecimal: return NumberText(Real, 15);
    case vtDate: return DateText(Real);
    case vtBstr:
    case vtLpStr:
    case vtLpWStr: return std::string(String);
    case vtError: return "Error " + std::to_string(Integer & 0xFFFF);
    case vtUI8: return std::to_string(static_cast<std::uint64_t>(Integer));
    case vtI1:
    case vtI2:
    case vtI4:
    case vtI8:
    case vtInt:
    case vtUI1:
    case vtUI2:
    case vtUI4:
    case vtUInt:
    case vtHresult: return std::to_string(Integer);
    default: return {};
  }
}

bool TypeLibValue::IsNumeric() const {
  switch (VarType) {
    case vtNull:
    case vtDate:
    case vtError:
    case vtDispatch:
    case vtUnknown:
    case vtVariant: return false;
    case vtBstr:
    case vtLpStr:
    case vtLpWStr: return !IsNull && ReadsAsNumber(String);
    default: return VarType <= vtHresult && VarType != vtVoid;
  }
}

}  // namespace vendrel::typelib
