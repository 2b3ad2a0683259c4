// A timer that calls its owner every so many milliseconds while it is enabled.
#pragma once

#include <windows.h>

#include <functional>

namespace tellurvane {

class Timer {
 public:
  Timer() = default;
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;
  ~Timer() { Enabled(false); }

  // Called on the thread that enabled the timer, from its message loop. It may disable or destroy
  // the timer.
  std::function<void()> Tick;

  // Starts the interval anew when the timer runs. Throws as Enabled does.
  void Interval(unsigned milliseconds);

  bool Enabled() const { return id_ != 0; }
  // Enabling an enabled timer starts its interval anew. After disabling no tick comes any more.
  // Throws FatalError where the system refuses a timer.
  void Enabled(bool enabled);

 private:
  static void CALLBACK Procedure(HWND window, UINT message, UINT_PTR id, DWORD time);

  UINT_PTR id_ = 0;
  unsigned milliseconds_ = 1'000;
};

}  // namespace tellurvane
