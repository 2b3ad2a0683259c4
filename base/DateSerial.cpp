#include "base/DateSerial.h"

#include <cmath>

namespace tellurvane {
namespace {

constexpr std::int64_t kDaysFromCivilEpoch = 25'569;  // 30 December 1899 to 1 January 1970

// Days since 1 January 1970 in the Gregorian calendar, reckoned in 400-year eras of years that
// begin in March, so that the leap day is the last of its year. Of the years 100 to 9999.
std::int64_t DaysFromCivil(int year, int month, int day) {
  const std::int64_t shifted = month <= 2 ? year - 1 : year;
  const std::int64_t era = shifted / 400;
  const std::int64_t yearOfEra = shifted - era * 400;
  const std::int64_t dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
  const std::int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
  return era * 146'097 + dayOfEra - 719'468;
}

void CivilFromDays(std::int64_t days, CivilDateTime& civil) {
  const std::int64_t shifted = days + 719'468;
  const std::int64_t era = shifted / 146'097;
  const std::int64_t dayOfEra = shifted - era * 146'097;
  const std::int64_t yearOfEra =
      (dayOfEra - dayOfEra / 1'460 + dayOfEra / 36'524 - dayOfEra / 146'096) / 365;
  const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  const std::int64_t monthFromMarch = (5 * dayOfYear + 2) / 153;
  civil.day = static_cast<int>(dayOfYear - (153 * monthFromMarch + 2) / 5 + 1);
  civil.month = static_cast<int>(monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9);
  civil.year = static_cast<int>(yearOfEra + era * 400 + (civil.month <= 2 ? 1 : 0));
}

int DaysInMonth(int year, int month) {
  if (month == 2) {
    const bool isLeap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return isLeap ? 29 : 28;
  }
  return month == 4 || month == 6 || month == 9 || month == 11 ? 30 : 31;
}

// Days since the zero day as a plain number: the serial -1.5, noon of the 29th, becomes -0.5.
double LinearDays(DateSerial serial) {
  if (serial >= 0) return serial;
  const double day = std::trunc(serial);
  return day + (day - serial);
}

}  // namespace

DaySecond DayAndSecond(std::int64_t seconds) {
  const std::int64_t ofDay = (seconds % kSecondsPerDay + kSecondsPerDay) % kSecondsPerDay;
  return {(seconds - ofDay) / kSecondsPerDay, ofDay};
}

bool IsDateSerial(double value) {
  if (!std::isfinite(value)) return false;
  if (std::abs(value) > 3e6) return false;
  const std::int64_t seconds = SecondsFromSerial(value);
  return seconds >= kFirstSecond && seconds <= kLastSecond;
}

std::optional<DateSerial> SerialFromCivil(const CivilDateTime& civil) {
  if (civil.year < 100 || civil.year > 9999 || civil.month < 1 || civil.month > 12) return {};
  if (civil.day < 1 || civil.day > DaysInMonth(civil.year, civil.month)) return {};
  if (civil.hour < 0 || civil.hour > 23 || civil.minute < 0 || civil.minute > 59) return {};
  if (civil.second < 0 || civil.second > 59) return {};
  const std::int64_t days = DaysFromCivil(civil.year, civil.month, civil.day) + kDaysFromCivilEpoch;
  const std::int64_t minutes = std::int64_t{60} * civil.hour + civil.minute;
  return SerialFromSeconds(days * kSecondsPerDay + minutes * 60 + civil.second);
}

CivilDateTime CivilFromSerial(DateSerial serial) {
  const auto [day, ofDay] = DayAndSecond(SecondsFromSerial(serial));
  CivilDateTime civil;
  CivilFromDays(day - kDaysFromCivilEpoch, civil);
  civil.hour = static_cast<int>(ofDay / 3'600);
  civil.minute = static_cast<int>(ofDay / 60 % 60);
  civil.second = static_cast<int>(ofDay % 60);
  return civil;
}

std::int64_t SecondsFromSerial(DateSerial serial) {
  return std::llround(LinearDays(serial) * static_cast<double>(kSecondsPerDay));
}

DateSerial SerialFromSeconds(std::int64_t seconds) {
  const auto [day, ofDay] = DayAndSecond(seconds);
  const double fraction = static_cast<double>(ofDay) / static_cast<double>(kSecondsPerDay);
  return day < 0 ? static_cast<double>(day) - fraction : static_cast<double>(day) + fraction;
}

bool IsEarlier(DateSerial left, DateSerial right) { return LinearDays(left) < LinearDays(right); }

}  // namespace tellurvane
