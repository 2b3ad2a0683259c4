// The clock when a window cannot be created.
#include <windows.h>

#include <gtest/gtest.h>

#include "clock/FrmTime.h"
#include "tests/support/EachCallFails.h"
#include "tests/support/Moments.h"
#include "tests/support/WindowTestSupport.h"

namespace tellurvane {
namespace {

void UseClock() {
  DateSerial now = At(2026, 11, 21, 9, 5, 7);
  FrmTime clock({.clock = [&] { return now; },
                 .pause = [](unsigned) {},
                 .dayHalf = [](DateSerial) { return L"上午"; },
                 .openTrayMenu = [](HWND, std::optional<POINT>) {},
                 .keyboardIsFree = [] {},
                 .nextWindow = [] {}});
  clock.ShowClock();
  Pump();
  now = At(2026, 11, 22, 10, 6, 8);
  clock.HideClock();
  clock.ShowClock();
  Pump();
  clock.Unload();
  // Loaded a second time.
  clock.ShowClock();
  Pump();
}

TEST(FailingCallsTest, TheClockIsShownOrFails) {
  FailEachCall({"clock", UseClock, {"CreateWindowExW"}});
}

}  // namespace
}  // namespace tellurvane
