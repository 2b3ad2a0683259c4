// Task lists as a user of many years might have them, for the benchmarks.
#pragma once

#include "base/DateText.h"
#include "scheduler/TaskRecord.h"

namespace tellurvane {

// Tasks of all four kinds, with names and sources of uneven length and dates of all hours. Next
// runs are spread over the week that begins at `firstRun`.
TaskList SampleTasks(size_t count, DateSerial firstRun);

// As many of them as a list file may hold, with space for longer dates.
TaskList FullSampleTasks(DateSerial firstRun, const DateWriter& writeDate);

}  // namespace tellurvane
