// A window of another program.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include "tests/support/WindowTestSupport.h"
#include "ui/Timer.h"

namespace tellurvane {

// The X server reports the focus some time after a window was shown, and Wine then makes that
// window the foreground window again.
inline void LetFocusSettle() {
  bool isOver = false;
  Timer timer;
  timer.Interval(500);
  timer.Tick = [&] { isOver = true; };
  timer.Enabled(true);
  EXPECT_TRUE(PumpUntil([&] { return isOver; }));
}

// Another program's window, in the foreground.
class OtherWindow : public TestForm {
 public:
  OtherWindow() : TestForm(800, 600) { ComeToFront(); }

  void ComeToFront() {
    LetFocusSettle();
    SetForegroundWindow(hwnd());
    LetFocusSettle();
    EXPECT_TRUE(PumpUntil([&] { return GetForegroundWindow() == hwnd(); }));
  }
};

}  // namespace tellurvane
