#include "scheduler/Schedule.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/support/Moments.h"

namespace tellurvane {
namespace {

constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();

TaskRecord Task(std::int32_t unit, std::int32_t interval, DateSerial nextRun) {
  TaskRecord task;
  task.IntervalUnit = unit;
  task.Interval = interval;
  task.NextRun = nextRun;
  return task;
}

DateSerial Strict(const TaskRecord& task, DateSerial now) {
  return CaughtUpNextRun(task, now, CatchUp::kStrict);
}
DateSerial Inclusive(const TaskRecord& task, DateSerial now) {
  return CaughtUpNextRun(task, now, CatchUp::kInclusive);
}

TEST(CaughtUpNextRunTest, MovesByWholeIntervalsPastThePresent) {
  const DateSerial nine = At(2011, 2, 14, 9);
  const struct {
    std::int32_t unit, interval;
    DateSerial next, now, strict, inclusive;
  } rows[] = {
      // The phase is kept: 15:00, not 16:30.
      {kHours, 2, nine, At(2011, 2, 14, 14, 30), At(2011, 2, 14, 15), At(2011, 2, 14, 15)},
      // Exactly now.
      {kHours, 2, nine, nine, nine, At(2011, 2, 14, 11)},
      {kMinutes, 5, nine, At(2011, 2, 14, 9, 10), At(2011, 2, 14, 9, 10), At(2011, 2, 14, 9, 15)},
      // A second before and after a step.
      {kMinutes, 5, nine, At(2011, 2, 14, 9, 9, 59), At(2011, 2, 14, 9, 10),
       At(2011, 2, 14, 9, 10)},
      {kMinutes, 5, nine, At(2011, 2, 14, 9, 10, 1), At(2011, 2, 14, 9, 15),
       At(2011, 2, 14, 9, 15)},
      // In the future.
      {kMinutes, 1, nine, At(2011, 2, 14, 8, 59, 59), nine, nine},
      {kDays, 7, At(2012, 1, 1), nine, At(2012, 1, 1), At(2012, 1, 1)},
      // Missed for ten days, daily: ten single days on, and the time of day stays.
      {kDays, 1, nine, At(2011, 2, 24, 8), At(2011, 2, 24, 9), At(2011, 2, 24, 9)},
      {kDays, 1, nine, At(2011, 2, 24, 9), At(2011, 2, 24, 9), At(2011, 2, 25, 9)},
      // Over a leap day, the end of a year, the end of a century without one.
      {kDays, 1, At(2012, 2, 28, 9), At(2012, 2, 28, 10), At(2012, 2, 29, 9), At(2012, 2, 29, 9)},
      {kDays, 2, At(2012, 2, 28, 9), At(2012, 2, 29), At(2012, 3, 1, 9), At(2012, 3, 1, 9)},
      {kHours, 1, At(2011, 12, 31, 23, 30), At(2011, 12, 31, 23, 45), At(2012, 1, 1, 0, 30),
       At(2012, 1, 1, 0, 30)},
      {kDays, 1, At(1900, 2, 28), At(1900, 2, 28, 1), At(1900, 3, 1), At(1900, 3, 1)},
      // Over the zero day, where serials change their direction.
      {kHours, 6, At(1899, 12, 28, 20), At(1899, 12, 30, 1), At(1899, 12, 30, 2),
       At(1899, 12, 30, 2)},
  };
  for (const auto& row : rows) {
    const TaskRecord task = Task(row.unit, row.interval, row.next);
    EXPECT_EQ(Strict(task, row.now), row.strict) << ScheduleText(task) << ' ' << row.now;
    EXPECT_EQ(Inclusive(task, row.now), row.inclusive) << ScheduleText(task) << ' ' << row.now;
  }
}

TEST(CaughtUpNextRunTest, ReachesThePresentFromTheFirstYearAndEndsWithTheYear9999) {
  const DateSerial last = At(9999, 12, 31, 23, 59, 59);
  const struct {
    std::int32_t unit, interval;
    DateSerial next, now, expected;
  } rows[] = {
      {kMinutes, 1, At(100, 1, 1, 0, 0, 7), At(9999, 12, 31, 23, 0, 59),
       At(9999, 12, 31, 23, 1, 7)},
      {kDays, 1, At(9999, 12, 31, 12), At(9999, 12, 31, 13), last},
      {kMinutes, 1, last, last, last},
      {kDays, kMost, At(2011, 2, 14), At(2011, 2, 15), last},
      {kDays, kMost, At(100, 1, 1), last, last},
      {kMinutes, kMost, At(2011, 2, 14), At(2011, 2, 15), At(6094, 3, 8, 2, 7)},
      {kHours, kMost, At(100, 1, 1), At(100, 1, 1), last},
  };
  for (const auto& row : rows) {
    const TaskRecord task = Task(row.unit, row.interval, row.next);
    EXPECT_EQ(Inclusive(task, row.now), row.expected) << ScheduleText(task);
  }
}

TEST(HasScheduleTest, NeedsAKnownUnitAndAnIntervalOfAtLeastOne) {
  const DateSerial past = At(2011, 2, 14);
  const DateSerial now = At(2026, 11, 20);
  const struct {
    std::int32_t unit, interval;
    bool expected;
  } rows[] = {
      {kMinutes, 1, true},   {kHours, 1, true},   {kDays, kMost, true},   {kMinutes, 61, true},
      {-1, 1, false},        {3, 1, false},       {kLeast, 1, false},     {kMost, 1, false},
      {kMinutes, 0, false},  {kHours, -1, false}, {kDays, kLeast, false}, {kLeast, kLeast, false},
      {kMost, kMost, false},
  };
  for (const auto& row : rows) {
    const TaskRecord task = Task(row.unit, row.interval, past);
    EXPECT_EQ(HasSchedule(task), row.expected) << row.unit << ' ' << row.interval;
    EXPECT_EQ(IsDue(task, now), row.expected) << row.unit << ' ' << row.interval;
    EXPECT_EQ(Strict(task, now) != past, row.expected) << row.unit << ' ' << row.interval;
    EXPECT_EQ(Inclusive(task, now) != past, row.expected) << row.unit << ' ' << row.interval;
  }
}

TEST(MinutesBetweenTest, CountsTheBoundariesOfMinutes) {
  const struct {
    DateSerial from, to;
    std::int64_t expected;
  } rows[] = {
      {At(2011, 2, 14, 10, 0, 59), At(2011, 2, 14, 10, 1), 1},
      {At(2011, 2, 14, 10, 0, 0), At(2011, 2, 14, 10, 0, 59), 0},
      {At(2011, 2, 14, 10, 1, 0), At(2011, 2, 14, 10, 0, 59), -1},
      {At(2011, 2, 14, 10, 0, 0), At(2011, 2, 14, 9, 30), -30},
      {At(2011, 12, 31, 23, 59, 59), At(2012, 1, 1), 1},
      {At(1899, 12, 29, 23, 59, 59), At(1899, 12, 30), 1},
      {At(1899, 12, 29, 23, 59, 0), At(1899, 12, 29, 23, 59, 59), 0},
      {At(1899, 12, 29, 23, 58, 1), At(1899, 12, 30, 0, 1), 3},
      {At(100, 1, 1), At(9999, 12, 31, 23, 59, 59), std::int64_t{3'615'900} * 1'440 - 1},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(MinutesBetween(row.from, row.to), row.expected) << row.from << ' ' << row.to;
  }
}

TEST(ScheduleTextTest, NamesTheIntervalAndItsUnit) {
  const struct {
    std::int32_t unit, interval;
    const wchar_t* expected;
  } rows[] = {
      {kMinutes, 5, L"每 5 分鐘執行一次"},
      {kHours, 24, L"每 24 小時執行一次"},
      {kDays, 1, L"每 1 天執行一次"},
      {kMinutes, 0, L"每 0 分鐘執行一次"},
      {-1, 5, L"每 5執行一次"},
      {3, -5, L"每 -5執行一次"},
      {kMost, 5, L"每 5執行一次"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(ScheduleText(Task(row.unit, row.interval, 0)), row.expected);
}

}  // namespace
}  // namespace tellurvane
