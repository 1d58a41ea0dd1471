#pragma once
// Dates of the language: days since 30 December 1899, the time of day as fraction. The fraction
// counts forward from midnight, before day 0 too.

#include <chrono>
#include <string>

namespace vendrel {

/// First and last day that a date can hold: 1 January 100 and 31 December 9999.
inline constexpr double kFirstDate = -657434;
inline constexpr double kLastDate = 2958465;
inline constexpr long kSecondsOfDay = 86400;

/// Number of a day; that of 30 December 1899 is 0. Nonsense for dates that do not exist.
long DayNumber(std::chrono::year_month_day date);
std::chrono::year_month_day DateOfDay(long number);

/// As a US machine writes it: "1/31/2000", with " 4:05:00 PM" behind it if it has a time; the time
/// alone for day 0, whose midnight is "12:00:00 AM". `date` lies from `kFirstDate` to the end of
/// `kLastDate`.
std::string DateText(double date);

}  // namespace vendrel
