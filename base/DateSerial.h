// Date values: days since 30 December 1899 ("the zero day") in a double, with the time of day as
// the fraction, in local time. Like the platform's automation date: before the zero day the
// fraction still counts forward from midnight, so -1.5 is noon of the 29th.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>

namespace tellurvane {

using DateSerial = double;

// The present moment, to the second.
using Clock = std::function<DateSerial()>;

struct CivilDateTime {
  int year = 1899;
  int month = 12;  // 1 to 12
  int day = 30;    // 1 to 31
  int hour = 0;
  int minute = 0;
  int second = 0;

  bool operator==(const CivilDateTime&) const = default;
};

inline constexpr std::int64_t kSecondsPerDay = 86'400;

// Whole seconds since the zero day for the first and the last representable second
// (1 January 100, 00:00:00 and 31 December 9999, 23:59:59).
inline constexpr std::int64_t kFirstSecond = -657'434 * kSecondsPerDay;
inline constexpr std::int64_t kLastSecond = 2'958'466 * kSecondsPerDay - 1;

// Whether the value is a date of the platform: finite and within the years 100 to 9999.
bool IsDateSerial(double value);

// Nothing when the date does not exist (31 April) or lies outside the years 100 to 9999.
std::optional<DateSerial> SerialFromCivil(const CivilDateTime& civil);

// To the nearest second. The serial must be a date (IsDateSerial).
CivilDateTime CivilFromSerial(DateSerial serial);

// Whole seconds since the zero day on a line without the oddity, to the nearest second.
std::int64_t SecondsFromSerial(DateSerial serial);
DateSerial SerialFromSeconds(std::int64_t seconds);

// The day since the zero day, and the second of that day, of a number of whole seconds.
struct DaySecond {
  std::int64_t day = 0;
  std::int64_t second = 0;  // 0 to 86,399
};
DaySecond DayAndSecond(std::int64_t seconds);

// Plain comparison is wrong before the zero day.
bool IsEarlier(DateSerial left, DateSerial right);

}  // namespace tellurvane
