#include "core/Calendar.h"

#include <cmath>

namespace vendrel {
namespace {

constexpr std::chrono::sys_days kDayZero{std::chrono::December / 30 / 1899};

std::string TimeText(long seconds) {
  const auto twoDigits = [](long n) {
    return std::string(n < 10 ? ":0" : ":") + std::to_string(n);
  };
  const long hour = seconds / 3600;
  return std::to_string(hour % 12 == 0 ? 12 : hour % 12) + twoDigits(seconds / 60 % 60) +
         twoDigits(seconds % 60) + (hour < 12 ? " AM" : " PM");
}

}  // namespace

long DayNumber(std::chrono::year_month_day date) {
  return (std::chrono::sys_days(date) - kDayZero).count();
}

std::chrono::year_month_day DateOfDay(long number) { return kDayZero + std::chrono::days(number); }

std::string DateText(double date) {
  auto day = static_cast<long>(std::trunc(date));
  const bool isTime = day == 0;
  long seconds = std::lround(std::fabs(date - static_cast<double>(day)) * kSecondsOfDay);
  if (seconds == kSecondsOfDay) {
    ++day;
    seconds = 0;
  }
  if (isTime && day == 0) return TimeText(seconds);
  const std::chrono::year_month_day civil = DateOfDay(day);
  std::string text = std::to_string(unsigned(civil.month())) + "/" +
                     std::to_string(unsigned(civil.day())) + "/" +
                     std::to_string(int(civil.year()));
  if (seconds != 0) text.append(" ").append(TimeText(seconds));
  return text;
}

}  // namespace vendrel
