// The boundary that no exception may cross: window procedures, timers, COM callbacks.
#pragma once

#include <exception>

namespace tellurvane {

// Ends the program after an error that nobody handled. Must not return.
using FatalHandler = void (*)(const std::exception_ptr& error);

// Set once by the entry routine. Without one the process is terminated.
void SetFatalHandler(FatalHandler handler);

// True while the fatal handler is at work. Its message box runs a message loop of its own;
// handlers stay away meanwhile, so that nothing is run or saved any more.
bool IsEnding();

[[noreturn]] void EndAfter(const std::exception_ptr& error) noexcept;

// Calls the handler; what it throws ends the program. The result while the program is ending is
// the handler's empty value.
template <typename Handler>
auto GuardBoundary(Handler handler) noexcept -> decltype(handler()) {
  if (IsEnding()) return decltype(handler())();
  try {
    return handler();
  } catch (...) {
    EndAfter(std::current_exception());
  }
}

}  // namespace tellurvane
