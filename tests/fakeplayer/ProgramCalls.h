// Calls of the program that do not reach the system unchanged: its monotonic clock, and its wish to
// keep the computer awake. The fake control lies in the same process, so the program is the one
// that is shipped.
#pragma once

#include <windows.h>

#include <functional>

namespace fakeplayer {

// Replaces the entries of the program's import table. A stored address of a function is not
// replaced.
void TakeProgramCalls(std::function<void(bool isAwake)> keepsAwake);

// How far the program's clock is ahead of the system's.
void SetClockAhead(double seconds);
// On the program's clock.
double ProgramSeconds();

}  // namespace fakeplayer
