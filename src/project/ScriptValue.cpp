#include "project/ScriptValue.h"

#include <charconv>
#include <cmath>
#include <cstdio>

#include "core/Ascii.h"
#include "diagnostics/VendrelError.h"
#include "project/ScriptDate.h"

namespace vendrel {
namespace {

constexpr int kSignificantDigits = 15;

// Digits and exponent of a number in scientific form, trailing zeros removed.
struct Scientific {
  std::string Digits;
  int Exponent = 0;
};

Scientific ScientificOf(double magnitude) {
  char buffer[40];
  std::snprintf(buffer, sizeof buffer, "%.*e", kSignificantDigits - 1, magnitude);
  Scientific result;
  const char* p = buffer;
  for (; *p != 'e'; ++p)  // the decimal separator depends on the host's locale
    if (IsDigitAscii(*p)) result.Digits.push_back(*p);
  p += p[1] == '+' ? 2 : 1;
  std::from_chars(p, buffer + sizeof buffer, result.Exponent);
  while (result.Digits.size() > 1 && result.Digits.back() == '0') result.Digits.pop_back();
  return result;
}

std::string ExponentText(int exponent) {
  const std::string digits = std::to_string(std::abs(exponent));
  return (exponent < 0 ? "E-" : "E+") + std::string(digits.size() < 2 ? "0" : "") + digits;
}

// Plain digits as long as 15 places on either side of the point suffice.
std::string DoubleText(double value) {
  const Scientific number = ScientificOf(std::fabs(value));
  const int count = static_cast<int>(number.Digits.size());
  std::string text = std::signbit(value) && value != 0 ? "-" : "";
  if (number.Exponent >= kSignificantDigits || count - 1 - number.Exponent > kSignificantDigits) {
    text.append(number.Digits, 0, 1);
    if (count > 1) text.append(".").append(number.Digits, 1);
    return text + ExponentText(number.Exponent);
  }
  const auto whole = static_cast<std::size_t>(number.Exponent) + 1;
  if (number.Exponent < 0)
    return text + "0." + std::string(static_cast<std::size_t>(-number.Exponent - 1), '0') +
           number.Digits;
  if (number.Digits.size() <= whole)
    return text + number.Digits + std::string(whole - number.Digits.size(), '0');
  return text + number.Digits.substr(0, whole) + "." + number.Digits.substr(whole);
}

// "&H" and "&O" texts; the bits of 16 and of 32 are signed.
std::optional<double> RadixNumber(std::string_view text) {
  const int base = UpperAscii(text[1]) == 'H' ? 16 : UpperAscii(text[1]) == 'O' ? 8 : 0;
  if (base == 0) return std::nullopt;
  const bool isLong = text.ends_with('&');
  const char* const end = text.data() + text.size() - (isLong ? 1 : 0);
  std::uint32_t bits = 0;
  const auto [last, error] = std::from_chars(text.data() + 2, end, bits, base);
  if (error != std::errc() || last != end) return std::nullopt;
  if (bits <= 0xFFFF && !isLong) return static_cast<std::int16_t>(bits);
  return static_cast<std::int32_t>(bits);
}

std::optional<bool> BooleanFromText(std::string_view text) {
  if (EqualsNoCaseAscii(text, "True") || EqualsNoCaseAscii(text, "#TRUE#")) return true;
  if (EqualsNoCaseAscii(text, "False") || EqualsNoCaseAscii(text, "#FALSE#")) return false;
  return std::nullopt;
}

std::string_view TrimSpace(std::string_view text) {
  constexpr std::string_view space = " \t\r\n";
  const std::size_t first = text.find_first_not_of(space);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(space) - first + 1);
}

void TakeSignAndCurrency(std::string_view& text, bool& negative) {
  bool signSeen = false, currencySeen = false;
  while (!text.empty()) {
    const char c = text.front();
    if ((c == '-' || c == '+') && !signSeen) {
      signSeen = true;
      negative = c == '-';
    } else if (c == '$' && !currencySeen) {
      currencySeen = true;
    } else if (c != ' ') {
      return;
    }
    text.remove_prefix(1);
  }
}

// Commas of thousands are dropped; they stand behind a digit and before the point.
std::string WithoutCommas(std::string_view text) {
  std::string plain;
  const std::size_t point = text.find_first_of(".eEdD");
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == ',' && i > 0 && i < point) continue;
    plain.push_back(UpperAscii(text[i]) == 'D' ? 'E' : text[i]);
  }
  return plain;
}

}  // namespace

ScriptValue ScriptValue::Whole(double value, ScriptKind smallest) {
  ScriptKind kind = smallest;
  if (kind == ScriptKind::Integer && (value < -32768 || value > 32767)) kind = ScriptKind::Long;
  if (kind == ScriptKind::Long && (value < -2147483648.0 || value > 2147483647.0))
    kind = ScriptKind::Double;
  return {kind, value, {}};
}

std::string ToText(const ScriptValue& value) {
  switch (value.Kind) {
    case ScriptKind::Boolean: return value.Number != 0 ? "True" : "False";
    case ScriptKind::Integer:
    case ScriptKind::Long:
    case ScriptKind::Double: return DoubleText(value.Number);
    case ScriptKind::Date: return DateText(value.Number);
    case ScriptKind::String: return value.Text;
    default: return {};
  }
}

std::optional<double> NumberFromText(std::string_view text) {
  text = TrimSpace(text);
  if (text.size() > 2 && text.front() == '&') return RadixNumber(text);
  bool negative = false;
  TakeSignAndCurrency(text, negative);
  if (text.empty() || !(IsDigitAscii(text.front()) || text.front() == '.')) return std::nullopt;
  const std::string plain = WithoutCommas(text);
  double number = 0;
  const char* const end = plain.data() + plain.size();
  const auto [last, error] = std::from_chars(plain.data(), end, number);
  if (error != std::errc() || last != end) return std::nullopt;
  return negative ? -number : number;
}

bool ConvertsToNumber(std::string_view text) {
  return NumberFromText(text) || BooleanFromText(text);
}

double ToNumber(const ScriptValue& value) {
  switch (value.Kind) {
    case ScriptKind::Null: throw VendrelError(errInvalidUseOfNull);
    case ScriptKind::Nothing: throw VendrelError(errObjectNotSet);
    case ScriptKind::String: break;
    default: return value.Number;
  }
  if (const auto number = NumberFromText(value.Text)) return *number;
  if (const auto truth = BooleanFromText(value.Text)) return *truth ? -1 : 0;
  throw VendrelError(errTypeMismatch, value.Text);
}

std::int32_t ToLong(const ScriptValue& value) {
  const double rounded = RoundToEven(ToNumber(value));
  if (!(rounded >= -2147483648.0 && rounded <= 2147483647.0)) throw VendrelError(errOverflow);
  return static_cast<std::int32_t>(rounded);
}

bool ToBoolean(const ScriptValue& value) { return ToNumber(value) != 0; }

double RoundToEven(double value) {
  const double floor = std::floor(value);
  const double part = value - floor;
  if (part != 0.5) return part < 0.5 ? floor : floor + 1;
  return std::fmod(floor, 2) == 0 ? floor : floor + 1;
}

}  // namespace vendrel
