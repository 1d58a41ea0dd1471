#include "project/ScriptDate.h"

#include <array>
#include <utility>
#include <vector>

#include "core/Ascii.h"

namespace vendrel {
namespace {

constexpr std::array<std::string_view, 12> kMonths = {
    "January", "February", "March",     "April",   "May",      "June",
    "July",    "August",   "September", "October", "November", "December"};

struct CivilDate {
  long Year = 0, Month = 0, Day = 0;
};

// Nothing if there is no such day.
std::optional<long> DayNumberOf(CivilDate date) {
  if (date.Month < 1 || date.Month > 12 || date.Day < 1 || date.Day > 31) return std::nullopt;
  if (date.Year < 100 || date.Year > 9999) return std::nullopt;
  const std::chrono::year_month_day day{std::chrono::year(static_cast<int>(date.Year)),
                                        std::chrono::month(static_cast<unsigned>(date.Month)),
                                        std::chrono::day(static_cast<unsigned>(date.Day))};
  return day.ok() ? std::optional(DayNumber(day)) : std::nullopt;
}

// What the text was cut into: numbers of the date in their order, month by name, time.
struct DateWords {
  std::vector<long> Numbers;
  long Month = 0;
  std::vector<long> Time;
  bool HasHalf = false, IsPm = false;
};

class DateReader {
 public:
  explicit DateReader(std::string_view text) : mRest(text) {}

  std::optional<DateWords> Read() {
    while (!mRest.empty()) {
      const char c = mRest.front();
      const bool understood = IsDigitAscii(c)    ? TakeNumber()
                              : IsLetterAscii(c) ? TakeWord()
                                                 : TakeSeparator(c);
      if (!understood) return std::nullopt;
    }
    return mWords;
  }

 private:
  bool TakeSeparator(char c) {
    mRest.remove_prefix(1);
    return c == ' ' || c == ',' || c == '/' || c == '-';
  }

  bool TakeNumber() {
    long number = 0;
    int digits = 0;
    for (; !mRest.empty() && IsDigitAscii(mRest.front()); mRest.remove_prefix(1)) {
      if (++digits > 4) return false;
      number = number * 10 + (mRest.front() - '0');
    }
    const bool colonBehind = mRest.starts_with(':');
    if (!colonBehind && !mInTime) {
      mWords.Numbers.push_back(number);
      return mWords.Numbers.size() <= 3;
    }
    if (mWords.Time.size() == 3) return false;
    mWords.Time.push_back(number);
    mInTime = colonBehind;
    if (colonBehind) mRest.remove_prefix(1);
    return !colonBehind || (!mRest.empty() && IsDigitAscii(mRest.front()));
  }

  bool TakeWord() {
    std::size_t length = 0;
    while (length < mRest.size() && IsLetterAscii(mRest[length])) ++length;
    const std::string_view word = mRest.substr(0, length);
    mRest.remove_prefix(length);
    if (EqualsNoCaseAscii(word, "AM") || EqualsNoCaseAscii(word, "PM")) return TakeHalf(word);
    if (length < 3 || mWords.Month != 0) return false;
    for (std::size_t m = 0; m < kMonths.size(); ++m)
      if (StartsWithNoCaseAscii(kMonths[m], word)) mWords.Month = static_cast<long>(m) + 1;
    return mWords.Month != 0;
  }

  // "4 PM" has no colon: the number before it was the hour.
  bool TakeHalf(std::string_view word) {
    if (mWords.HasHalf) return false;
    mWords.HasHalf = true;
    mWords.IsPm = UpperAscii(word.front()) == 'P';
    if (!mWords.Time.empty()) return true;
    if (mWords.Numbers.empty()) return false;
    mWords.Time.push_back(mWords.Numbers.back());
    mWords.Numbers.pop_back();
    return true;
  }

  std::string_view mRest;
  DateWords mWords;
  bool mInTime = false;
};

long FullYear(long year) { return year < 30 ? year + 2000 : year < 100 ? year + 1900 : year; }

std::optional<double> DayOf(const DateWords& words) {
  const std::vector<long>& n = words.Numbers;
  if (n.empty() && words.Month == 0) return 0;
  CivilDate date;
  if (words.Month != 0) {
    if (n.size() != 2) return std::nullopt;
    date = n[0] > 31 ? CivilDate{n[0], words.Month, n[1]} : CivilDate{n[1], words.Month, n[0]};
  } else {
    if (n.size() != 3) return std::nullopt;
    date = n[0] > 31 ? CivilDate{n[0], n[1], n[2]} : CivilDate{n[2], n[0], n[1]};
    if (date.Month > 12) std::swap(date.Month, date.Day);
  }
  date.Year = FullYear(date.Year);
  return DayNumberOf(date);
}

std::optional<double> TimeOf(const DateWords& words) {
  if (words.Time.empty()) return 0;
  long hour = words.Time[0];
  if (words.HasHalf) {
    if (hour > 12) return std::nullopt;
    hour = hour % 12 + (words.IsPm ? 12 : 0);
  }
  const long minute = words.Time.size() > 1 ? words.Time[1] : 0;
  const long second = words.Time.size() > 2 ? words.Time[2] : 0;
  if (hour > 23 || minute > 59 || second > 59) return std::nullopt;
  return static_cast<double>(hour * 3600 + minute * 60 + second) / kSecondsOfDay;
}

}  // namespace

std::optional<double> DateFromText(std::string_view text) {
  const std::optional<DateWords> words = DateReader(text).Read();
  if (!words || (words->Numbers.empty() && words->Time.empty())) return std::nullopt;
  const std::optional<double> day = DayOf(*words), time = TimeOf(*words);
  if (!day || !time) return std::nullopt;
  return *day < 0 ? *day - *time
                  : *day + *time;  // the fraction of a date before day 0 runs outwards
}

}  // namespace vendrel
