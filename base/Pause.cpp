#include "base/Pause.h"

#include <windows.h>

namespace tellurvane {

void SleepFor(unsigned milliseconds) { Sleep(milliseconds); }

}  // namespace tellurvane
