// The text of a row of the task list, which nobody sees: screen readers read it.
#pragma once

#include <string>

#include "base/DateText.h"
#include "mainwin/PlaybackSign.h"
#include "scheduler/RunOutcome.h"
#include "scheduler/TaskRecord.h"

namespace tellurvane {

// Begins with the name: typed letters find the row by it.
std::wstring RowDescription(const TaskRecord& task, PlaybackSign sign, const RunOutcome& outcome,
                            const DateWriter& writeDate);

}  // namespace tellurvane
