// The properties of a task list file with any bytes. The fuzz target and the tests check them.
#pragma once

#include <string>
#include <string_view>

#include "tests/support/HostDates.h"

namespace tellurvane {

// Loads the bytes, which rewrites the file, and loads the rewritten file. Both lists must agree in
// all stored fields, and the second load must not change the file. If the list cannot hold all of
// the bytes, a backup must keep them. Returns the fault; empty if there is none.
std::string TaskListRoundTripFault(std::string_view bytes, const HostLocale& locale);

}  // namespace tellurvane
