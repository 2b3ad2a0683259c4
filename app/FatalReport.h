// The one place where a fatal error ends.
#pragma once

#include <exception>

namespace tellurvane {

// Takes the tray icon away, shows one box that says in Chinese what went wrong, lets another copy
// start, and ends the process with exit code 1. Does not return.
void ReportFatal(const std::exception_ptr& error);

}  // namespace tellurvane
