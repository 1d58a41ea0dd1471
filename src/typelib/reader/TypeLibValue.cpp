#include "typelib/reader/TypeLibValue.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "core/Ascii.h"

namespace vendrel::typelib {
namespace {

// Dates of the language run from 1 January 100 to 31 December 9999.
constexpr double kFirstDate = -657434, kDateEnd = 2958466;

struct Day {
  long Year;
  unsigned Month, DayOfMonth;
};

// Civil date of a day count from 1970-01-01, by eras of 400 years.
Day CivilDay(long days) {
  days += 719468;
  const long era = (days >= 0 ? days : days - 146096) / 146097;
  const unsigned long dayOfEra = static_cast<unsigned long>(days - era * 146097);
  const unsigned long yearOfEra =
      (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
  const unsigned long dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  const unsigned long shifted = (5 * dayOfYear + 2) / 153;
  const unsigned month = static_cast<unsigned>(shifted < 10 ? shifted + 3 : shifted - 9);
  return {static_cast<long>(yearOfEra) + era * 400 + (month <= 2 ? 1 : 0), month,
          static_cast<unsigned>(dayOfYear - (153 * shifted + 2) / 5 + 1)};
}

std::string TimeText(long seconds) {
  const long hour = seconds / 3600;
  char text[32];
  std::snprintf(text, sizeof text, "%ld:%02ld:%02ld %s", hour % 12 == 0 ? 12 : hour % 12,
                seconds / 60 % 60, seconds % 60, hour < 12 ? "AM" : "PM");
  return text;
}

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
  if (!(days >= kFirstDate && days < kDateEnd)) return NumberText(days, 15);
  // Before day zero the fraction still counts forward from midnight.
  double whole = std::trunc(days);
  long seconds = std::lround(std::fabs(days - whole) * 86400);
  if (seconds == 86400) {
    seconds = 0;
    whole += 1;
  }
  if (whole == 0 && seconds != 0) return TimeText(seconds);
  const Day day = CivilDay(static_cast<long>(whole) - 25569);
  std::string text = std::to_string(day.Month) + "/" + std::to_string(day.DayOfMonth) + "/" +
                     std::to_string(day.Year);
  return seconds == 0 ? text : text + " " + TimeText(seconds);
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
