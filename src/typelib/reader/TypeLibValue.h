#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vendrel::typelib {

/// Automation type numbers as stored and as `VarTypeInfo::VarType` gives them.
enum VarTypeNumber : int {
  vtEmpty = 0,
  vtNull = 1,
  vtI2 = 2,
  vtI4 = 3,
  vtR4 = 4,
  vtR8 = 5,
  vtCurrency = 6,
  vtDate = 7,
  vtBstr = 8,
  vtDispatch = 9,
  vtError = 10,
  vtBool = 11,
  vtVariant = 12,
  vtUnknown = 13,
  vtDecimal = 14,
  vtI1 = 16,
  vtUI1 = 17,
  vtUI2 = 18,
  vtUI4 = 19,
  vtI8 = 20,
  vtUI8 = 21,
  vtInt = 22,
  vtUInt = 23,
  vtVoid = 24,
  vtHresult = 25,
  vtPointer = 26,
  vtSafeArray = 27,
  vtFixedArray = 28,
  vtUserDefined = 29,
  vtLpStr = 30,
  vtLpWStr = 31,
  vtArrayBit = 0x2000,
  vtTypeMask = 0xFFF,
};

/// A constant, a default value or a custom datum.
struct TypeLibValue {
  /// Automation type number of the value, which may differ from the declared type.
  int VarType = vtEmpty;
  /// Whole numbers, Boolean (0 or -1), currency scaled by 10000.
  std::int64_t Integer = 0;
  /// Single, double, date (days since 30 December 1899), decimal.
  double Real = 0;
  /// Strings; lives as long as the library.
  std::string_view String;
  /// A string or object without a value.
  bool IsNull = false;

  /// As the language's own conversion writes it on a US machine: ".5", "True", "1/31/1900". Empty
  /// for values that have no text.
  std::string Text() const;
  /// What the language's `IsNumeric` says: true for numbers, Booleans and strings that read as a
  /// number; false for dates.
  bool IsNumeric() const;
};

/// Text of a date value on a US machine: "1/31/1900 2:30:00 PM", without the part that is zero.
std::string DateText(double days);
/// Text of a number with up to `digits` significant digits: ".5", "1E+15".
std::string NumberText(double number, int digits);

}  // namespace vendrel::typelib
