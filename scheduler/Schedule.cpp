#include "scheduler/Schedule.h"

#include <algorithm>

namespace tellurvane {
namespace {

std::int64_t SecondsPerUnit(std::int32_t unit) {
  switch (unit) {
    case kMinutes:
      return 60;
    case kHours:
      return 3'600;
    default:
      return kSecondsPerDay;
  }
}

bool IsPast(DateSerial moment, DateSerial now, CatchUp variant) {
  return variant == CatchUp::kStrict ? IsEarlier(moment, now) : !IsEarlier(now, moment);
}

std::int64_t MinuteOf(DateSerial moment) {
  const std::int64_t seconds = SecondsFromSerial(moment);
  return seconds >= 0 ? seconds / 60 : -((-seconds + 59) / 60);
}

}  // namespace

bool HasSchedule(const TaskRecord& task) {
  return task.IntervalUnit >= kMinutes && task.IntervalUnit <= kDays && task.Interval >= 1;
}

bool IsDue(const TaskRecord& task, DateSerial now) {
  return HasSchedule(task) && !IsEarlier(now, task.NextRun);
}

DateSerial CaughtUpNextRun(const TaskRecord& task, DateSerial now, CatchUp variant) {
  if (!HasSchedule(task) || !IsPast(task.NextRun, now, variant)) return task.NextRun;

  const std::int64_t step = SecondsPerUnit(task.IntervalUnit) * task.Interval;
  const std::int64_t start = SecondsFromSerial(task.NextRun);
  const auto after = [&](std::int64_t steps) {
    // The years end before the product can overflow: both factors are below 2^48 seconds.
    return SerialFromSeconds(std::min(start + steps * step, kLastSecond));
  };
  // Enough whole steps to reach the second of now, and one more where that is still past.
  const std::int64_t late = std::max<std::int64_t>(SecondsFromSerial(now) - start, 0);
  const std::int64_t steps = std::max<std::int64_t>((late + step - 1) / step, 1);
  const DateSerial reached = after(steps);
  return IsPast(reached, now, variant) ? after(steps + 1) : reached;
}

std::int64_t MinutesBetween(DateSerial from, DateSerial to) {
  return MinuteOf(to) - MinuteOf(from);
}

std::wstring ScheduleText(const TaskRecord& task) {
  static constexpr const wchar_t* kUnitWords[] = {L" 分鐘", L" 小時", L" 天"};
  std::wstring text = L"每 " + std::to_wstring(task.Interval);
  if (task.IntervalUnit >= kMinutes && task.IntervalUnit <= kDays) {
    text += kUnitWords[task.IntervalUnit];
  }
  return text + L"執行一次";
}

}  // namespace tellurvane
