// Who has called the code that runs.
#pragma once

namespace tellurvane {

// True inside whatever the system calls the program back for: a window procedure, a timer, an
// enumeration. The first call has to come from outside of any.
bool IsInCallback();

}  // namespace tellurvane
