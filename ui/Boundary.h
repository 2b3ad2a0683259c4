// The boundary that no exception may cross: window procedures, timers, COM callbacks.
#pragma once

#include <exception>

namespace tellurvane {

// Ends the program after an unhandled error. Must not return.
using FatalHandler = void (*)(const std::exception_ptr& error);

// Set once by the entry routine. Without one the process is terminated.
void SetFatalHandler(FatalHandler handler);

// True while the fatal handler runs. Its message box has a message loop; no handler is called from
// it, so that nothing is run or saved any more.
bool IsEnding();

[[noreturn]] void EndAfter(const std::exception_ptr& error) noexcept;

// Calls the handler; an exception ends the program. While the program is ending the handler is not
// called, and the result is an empty value.
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
