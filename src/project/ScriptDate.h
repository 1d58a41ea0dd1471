#pragma once
// Dates of the script language: days since 30 December 1899, the time of day as fraction.

#include <optional>
#include <string>
#include <string_view>

namespace vendrel {

/// First and last day that a date can hold: 1 January 100 and 31 December 9999.
inline constexpr double kFirstDate = -657434;
inline constexpr double kLastDate = 2958465;

/// The date and time that a text names in a US order: "1/31/2000", "2000-01-31", "31 Jan 2000",
/// "January 31, 2000 4:05 PM", "16:05:00". A day above 12 in the place of the month changes places
/// with it; years of two digits lie between 1930 and 2029. Nothing if the text names none.
std::optional<double> DateFromText(std::string_view text);

/// "1/31/2000", with " 4:05:00 PM" behind it if it has a time; only the time for day 0.
std::string DateText(double date);

}  // namespace vendrel
