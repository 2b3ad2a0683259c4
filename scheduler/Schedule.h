// When a task runs next, and how its schedule reads.
#pragma once

#include <string>

#include "base/DateSerial.h"
#include "scheduler/TaskRecord.h"

namespace tellurvane {

// Which moments count as past.
enum class CatchUp {
  kStrict,     // those before the present; used at load and when the editor saves
  kInclusive,  // the present too, so that the result lies in the future; used after a run
};

// Whether the task has a known unit and an interval of at least 1. A task without a schedule stays
// in the list, is never moved and never falls due.
bool HasSchedule(const TaskRecord& task);

// Whether the task has a schedule and its next run is not later than now.
bool IsDue(const TaskRecord& task, DateSerial now);

// The next run moved past the present by whole intervals, in constant time, with the phase kept.
// The same moment as stepping one interval at a time. Local time is used without
// correction where daylight saving begins or ends. A moment past the last second of the
// year 9999 is that second.
DateSerial CaughtUpNextRun(const TaskRecord& task, DateSerial now, CatchUp variant);

// The number of minute boundaries from one moment to the other; negative when it is earlier.
std::int64_t MinutesBetween(DateSerial from, DateSerial to);

// "每 5 分鐘執行一次". Without a unit word when the unit is unknown.
std::wstring ScheduleText(const TaskRecord& task);

}  // namespace tellurvane
