#include "mainwin/QuietWait.h"

#include <windows.h>

#include <gtest/gtest.h>

#include "tests/ui/UiTestSupport.h"
#include "ui/Timer.h"

namespace tellurvane {
namespace {

constexpr unsigned kLong = 20'000;

// A form that counts what reaches it.
class CountingForm : public TestForm {
 public:
  int presses = 0;
  int keys = 0;
  int others = 0;

 protected:
  LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
    if (message == WM_LBUTTONDOWN) ++presses;
    if (message == WM_KEYDOWN) ++keys;
    if (message == WM_APP) ++others;
    return TestForm::HandleMessage(message, wParam, lParam);
  }
};

TEST(AwaitQuietly, ReturnsAtOnceWhenItHolds) {
  EXPECT_TRUE(AwaitQuietly([] { return true; }, 0));
}

TEST(AwaitQuietly, GivesUpWhenTheTimeIsOver) {
  EXPECT_FALSE(AwaitQuietly([] { return false; }, 30));
}

TEST(AwaitQuietly, HandlesOtherMessagesMeanwhile) {
  CountingForm form;
  Pump();
  PostMessageW(form.hwnd(), WM_APP, 0, 0);
  EXPECT_TRUE(AwaitQuietly([&] { return form.others == 1; }, kLong));
}

TEST(AwaitQuietly, ThrowsKeysAndClicksAway) {
  CountingForm form;
  Pump();
  PostMessageW(form.hwnd(), WM_LBUTTONDOWN, 0, 0);
  PostMessageW(form.hwnd(), WM_KEYDOWN, VK_RETURN, 0);
  PostMessageW(form.hwnd(), WM_APP, 0, 0);
  EXPECT_TRUE(AwaitQuietly([&] { return form.others == 1; }, kLong));
  Pump();
  EXPECT_EQ(form.presses, 0);
  EXPECT_EQ(form.keys, 0);
}

TEST(AwaitQuietly, HoldsOurTimersBack) {
  CountingForm form;
  Pump();
  int ticks = 0;
  Timer timer;
  timer.Tick = [&] { ++ticks; };
  timer.Interval(10);
  timer.Enabled(true);
  // Long enough for the system to have had a tick ready: a window of the system's own gets one.
  int systemTicks = 0;
  const HWND other =
      CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
  ASSERT_NE(other, nullptr);
  SetTimer(other, 1, 10, nullptr);
  SetWindowLongPtrW(other, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&systemTicks));
  SetWindowLongPtrW(other, GWLP_WNDPROC,
                    reinterpret_cast<LONG_PTR>(+[](HWND window, UINT message, WPARAM w, LPARAM l) {
                      auto* const count =
                          reinterpret_cast<int*>(GetWindowLongPtrW(window, GWLP_USERDATA));
                      if (message == WM_TIMER && count != nullptr) ++*count;
                      return DefWindowProcW(window, message, w, l);
                    }));
  EXPECT_TRUE(AwaitQuietly([&] { return systemTicks >= 5; }, kLong));
  EXPECT_EQ(ticks, 0);
  EXPECT_TRUE(PumpUntil([&] { return ticks > 0; })) << "it is only late";
  DestroyWindow(other);
}

TEST(AwaitQuietly, EndsWhenTheProgramIsToEnd) {
  PostQuitMessage(7);
  EXPECT_FALSE(AwaitQuietly([] { return false; }, kLong));
  MSG message = {};
  ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
  EXPECT_EQ(message.wParam, 7U);
}

}  // namespace
}  // namespace tellurvane
