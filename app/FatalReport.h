// The end of the program after a fatal error.
#pragma once

#include <exception>

namespace tellurvane {

// Removes the tray icon, shows one box with the error in Chinese, and ends the process with exit
// code 1. Does not return.
void ReportFatal(const std::exception_ptr& error);

}  // namespace tellurvane
