// Formats dates, times and percentages by a pattern.
#pragma once

#include <string>
#include <string_view>

#include "base/DateSerial.h"

namespace tellurvane {

// The locale's AM and PM designators. Both are empty if the locale has none.
struct DayHalves {
  std::wstring morning;
  std::wstring afternoon;
};

// "yyyy" is the year in four digits, "mm" the month or, right after the hours, the minutes, "dd"
// the day, "hh" the hour, "ss" the second, all in two digits; "AMPM" is the half of the day, and
// puts the hours on a clock of twelve. Everything else is copied. The moment must be a date.
std::wstring FormatMoment(std::wstring_view picture, DateSerial moment, const DayHalves& halves);

// "37.25 %" for 0.3725 and two decimals. Halves are rounded away from zero. NaN and infinity are
// written as 0.
std::wstring FormatPercent(double quotient, int decimals);

}  // namespace tellurvane
