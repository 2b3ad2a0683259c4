// A timer that ticks while it is enabled.
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

  // Called from the message loop of the thread that enabled the timer. May disable it.
  std::function<void()> Tick;

  // Restarts a running timer. Throws as Enabled does.
  void Interval(unsigned milliseconds);

  bool Enabled() const { return id_ != 0; }
  // Enabling an enabled timer restarts it. After disabling no tick comes. Throws FatalError when
  // the system has no timer.
  void Enabled(bool enabled);

 private:
  static void CALLBACK Procedure(HWND window, UINT message, UINT_PTR id, DWORD time);

  UINT_PTR id_ = 0;
  unsigned milliseconds_ = 1'000;
};

}  // namespace tellurvane
