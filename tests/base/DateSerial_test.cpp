#include "base/DateSerial.h"

#include <gtest/gtest.h>

#include <chrono>
#include <limits>
#include <utility>

#include "tests/support/Moments.h"

namespace tellurvane {
namespace {

constexpr int kDays = 2'958'465 + 657'434 + 1;  // 1 January 100 to 31 December 9999

// The standard library's calendar, day by day, each with another time of day.
CivilDateTime CivilOf(std::chrono::sys_days day, int secondOfDay) {
  const std::chrono::year_month_day date(day);
  return {static_cast<int>(date.year()),
          static_cast<int>(static_cast<unsigned>(date.month())),
          static_cast<int>(static_cast<unsigned>(date.day())),
          secondOfDay / 3'600,
          secondOfDay / 60 % 60,
          secondOfDay % 60};
}

TEST(DateSerialTest, KeepsEveryDayThereIs) {
  using namespace std::chrono;
  const sys_days first = year(100) / January / 1;
  ASSERT_EQ((sys_days(year(9999) / December / 31) - first).count() + 1, kDays);
  for (int i = 0; i < kDays; ++i) {
    const int secondOfDay = static_cast<int>((std::int64_t{i} * 7'919) % kSecondsPerDay);
    const CivilDateTime civil = CivilOf(first + days(i), secondOfDay);
    const std::int64_t seconds = kFirstSecond + i * kSecondsPerDay + secondOfDay;
    const auto serial = SerialFromCivil(civil);
    const bool isKept = serial && CivilFromSerial(*serial) == civil && IsDateSerial(*serial) &&
                        SecondsFromSerial(*serial) == seconds &&
                        SerialFromSeconds(seconds) == *serial;
    ASSERT_TRUE(isKept) << civil.year << '-' << civil.month << '-' << civil.day;
  }
}

TEST(DateSerialTest, CountsDaysSinceThirtyDecember1899) {
  const struct {
    CivilDateTime civil;
    DateSerial serial;
  } rows[] = {
      {{1899, 12, 30, 0, 0, 0}, 0},
      {{1899, 12, 30, 12, 0, 0}, 0.5},
      {{1900, 2, 28, 0, 0, 0}, 60},
      {{1970, 1, 1, 0, 0, 0}, 25'569},
      {{2011, 2, 14, 12, 0, 0}, 40'588.5},
      {{9999, 12, 31, 0, 0, 0}, 2'958'465},
      // Before the zero day the time of day counts away from it.
      {{1899, 12, 29, 0, 0, 0}, -1},
      {{1899, 12, 29, 12, 0, 0}, -1.5},
      {{1899, 12, 29, 18, 0, 0}, -1.75},
      {{1899, 12, 28, 6, 0, 0}, -2.25},
      {{100, 1, 1, 0, 0, 0}, -657'434},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(SerialFromCivil(row.civil), row.serial) << row.serial;
    EXPECT_EQ(CivilFromSerial(row.serial), row.civil) << row.serial;
  }
}

TEST(DateSerialTest, RefusesDatesThatDoNotExist) {
  const CivilDateTime missing[] = {
      {1900, 2, 29},       {2100, 2, 29},       {2023, 2, 29},          {2024, 2, 30},
      {2011, 4, 31},       {2011, 6, 31},       {2011, 9, 31},          {2011, 11, 31},
      {2011, 1, 32},       {2011, 0, 1},        {2011, 13, 1},          {2011, 1, 0},
      {99, 12, 31},        {10'000, 1, 1},      {2011, 1, 1, 24},       {2011, 1, 1, -1},
      {2011, 1, 1, 0, 60}, {2011, 1, 1, 0, -1}, {2011, 1, 1, 0, 0, 60}, {2011, 1, 1, 0, 0, -1}};
  for (const CivilDateTime& at : missing) {
    EXPECT_FALSE(SerialFromCivil(at))
        << at.year << '-' << at.month << '-' << at.day << ' ' << at.hour << ':' << at.minute;
  }
}

TEST(DateSerialTest, RoundsToTheNearestSecond) {
  constexpr double kMillisecond = 1.0 / 86'400'000;
  EXPECT_EQ(CivilFromSerial(40'588.5 + 499 * kMillisecond).second, 0);
  EXPECT_EQ(CivilFromSerial(40'588.5 + 501 * kMillisecond).second, 1);
  EXPECT_EQ(CivilFromSerial(-1.5 - 501 * kMillisecond).second, 1);
  // The last half second of a day is the next day.
  EXPECT_EQ(CivilFromSerial(40'589 - 400 * kMillisecond), (CivilDateTime{2011, 2, 15}));
  EXPECT_EQ(CivilFromSerial(-1 - (1 - 400 * kMillisecond)), (CivilDateTime{1899, 12, 30}));
}

TEST(IsDateSerialTest, EndsWithTheYears100And9999) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  const std::pair<double, bool> rows[] = {
      {0, true},
      {SerialFromSeconds(kFirstSecond), true},
      {SerialFromSeconds(kFirstSecond - 1), false},
      {-657'434.999, true},  // late on the first day
      {-657'435, false},
      {SerialFromSeconds(kLastSecond), true},
      {SerialFromSeconds(kLastSecond + 1), false},
      {2'958'465.999999, false},  // rounds up to the next day
      {1e300, false},
      {kInfinity, false},
      {-kInfinity, false},
      {std::numeric_limits<double>::quiet_NaN(), false},
  };
  for (const auto& [value, expected] : rows) EXPECT_EQ(IsDateSerial(value), expected) << value;
}

TEST(IsEarlierTest, FollowsTimeOnBothSidesOfTheZeroDay) {
  const DateSerial inOrder[] = {
      At(100, 1, 1),       At(100, 1, 1, 23, 59, 59), At(1899, 12, 28, 23),
      At(1899, 12, 29),    At(1899, 12, 29, 1),       At(1899, 12, 29, 23),
      At(1899, 12, 30),    At(1899, 12, 30, 12),      At(1899, 12, 31),
      At(2011, 2, 14, 12), At(2011, 2, 14, 12, 0, 1), At(9999, 12, 31, 23),
  };
  for (const DateSerial& left : inOrder) {
    for (const DateSerial& right : inOrder) {
      EXPECT_EQ(IsEarlier(left, right), &left < &right) << left << " and " << right;
    }
  }
}

}  // namespace
}  // namespace tellurvane
