// The clock as a window: its place, showing, hiding, moving and closing.
#include "clock/FrmTime.h"

#include <gmock/gmock.h>

#include <vector>

#include "tests/clock/ClockFixture.h"
#include "tests/support/ContrastScheme.h"
#include "tests/support/FailingImport.h"
#include "tests/ui/ClipboardSupport.h"

namespace tellurvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(FrmTimeTest, IsTopmostTranslucentAndNotInTheTaskbar) {
  ShowAt(kMorning);
  const LONG_PTR style = GetWindowLongPtrW(clock->hwnd(), GWL_EXSTYLE);
  EXPECT_TRUE(style & WS_EX_TOPMOST);
  EXPECT_TRUE(style & WS_EX_TOOLWINDOW);
  EXPECT_FALSE(style & WS_EX_APPWINDOW);
  EXPECT_TRUE(style & WS_EX_LAYERED);
  EXPECT_EQ(OpacityOf(clock->hwnd()), 210);
  EXPECT_FALSE(GetWindowLongPtrW(clock->hwnd(), GWL_STYLE) & WS_CAPTION);
}

TEST_F(FrmTimeTest, OpensAtTheRightUpperCornerOfTheWorkArea) {
  RECT work = {};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
  ShowAt(kMorning);
  const RECT place = OnScreen(clock->hwnd());
  EXPECT_GE(place.left, work.left);
  EXPECT_LE(place.right, work.right);
  EXPECT_GT(place.right, work.right - 20);
  EXPECT_GE(place.top, work.top);
  EXPECT_LT(place.top, work.top + 20);
  // Hidden it keeps its place; unloaded it does not.
  SetWindowPos(clock->hwnd(), nullptr, 200, 300, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  clock->HideClock();
  ShowAt(kMorning);
  EXPECT_EQ(OnScreen(clock->hwnd()).left, 200);
  clock->Unload();
  ShowAt(kMorning);
  EXPECT_EQ(OnScreen(clock->hwnd()).left, place.left);
  EXPECT_EQ(OnScreen(clock->hwnd()).top, place.top);
}

TEST_F(FrmTimeTest, TakesTheKeyboardFromNoWindow) {
  TestForm form;
  SetForegroundWindow(form.hwnd());
  SetFocus(form.hwnd());
  Pump();
  ShowAt(kMorning);
  EXPECT_EQ(GetFocus(), form.hwnd());
  EXPECT_EQ(GetForegroundWindow(), form.hwnd());
  // Nor do a click and a move.
  EXPECT_EQ(SendMessageW(clock->hwnd(), WM_MOUSEACTIVATE, reinterpret_cast<WPARAM>(clock->hwnd()),
                         HTCLIENT),
            MA_NOACTIVATE);
  CaughtMessage caught(clock->hwnd(), WM_SYSCOMMAND);
  SendMessageW(clock->hwnd(), WM_NCLBUTTONDOWN, HTCAPTION, 0);
  EXPECT_THAT(caught.Taken(), ElementsAre(WPARAM{SC_MOVE | HTCAPTION}));
  SetWindowPos(clock->hwnd(), nullptr, 200, 300, 0, 0, SWP_NOSIZE);
  EXPECT_EQ(OnScreen(clock->hwnd()).left, 200);
  EXPECT_EQ(GetFocus(), form.hwnd());
  EXPECT_EQ(GetForegroundWindow(), form.hwnd());
}

TEST_F(FrmTimeTest, HasKeysWhileItHasTheKeyboard) {
  ShowAt(kMorning);
  SetFocus(clock->hwnd());
  const auto press = [&](UINT key, LPARAM lParam) {
    PostMessageW(clock->hwnd(), WM_KEYDOWN, key, lParam);
    Pump();
  };
  press(VK_F6, 1);
  press(VK_F6, 0x4000'0001);
  EXPECT_EQ(passes, 1) << "a key that is held down acts once";
  {
    const HeldKeys held({VK_CONTROL});
    press(VK_F6, 1);
  }
  EXPECT_EQ(passes, 1) << "another key";
  press(VK_ESCAPE, 1);
  EXPECT_EQ(returns, 1);
  EXPECT_TRUE(clock->Visible());
  EXPECT_EQ(menus, 0);
  SendMessageW(clock->hwnd(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(clock->hwnd()), -1);
  EXPECT_EQ(menus, 1);
  ASSERT_TRUE(menuPlace);
  EXPECT_EQ(menuPlace->x, OnScreen(clock->hwnd()).left);
  EXPECT_EQ(menuPlace->y, OnScreen(clock->hwnd()).bottom);
  SendMouse(clock->hwnd(), WM_RBUTTONDOWN, 5, 5, MK_RBUTTON);
  EXPECT_EQ(menus, 2);
  EXPECT_FALSE(menuPlace) << "at the mouse";
  clock->HideClock();
  EXPECT_EQ(returns, 2);
}

TEST_F(FrmTimeTest, HasAThickRimWhileItHasTheKeyboard) {
  ShowAt(kMorning);
  const auto rim = [this] {
    int width = 0;
    while (Face(width, 3) == Face(0, 3)) ++width;
    return width;
  };
  EXPECT_EQ(rim(), 1);
  const std::string time = TimeShown();
  const auto red = [this] {
    return std::ranges::count(PixelsIn(clock->Dc(), {0, 0, 2 * Middle(), 2 * Middle()}), kRed);
  };
  const auto hand = red();
  EXPECT_GT(hand, 10);
  SetFocus(clock->hwnd());
  EXPECT_EQ(rim(), 3);
  EXPECT_EQ(red(), hand) << "the hands are drawn again";
  ShowAt(kMorning + 1.0 / 86'400);
  EXPECT_EQ(rim(), 3) << "after a tick";
  SetFocus(nullptr);
  EXPECT_EQ(rim(), 1);
}

std::vector<UINT> intervals;

UINT_PTR WINAPI RecordInterval(HWND, UINT_PTR, UINT milliseconds, TIMERPROC) {
  intervals.push_back(milliseconds);
  return 4'711;
}

TEST_F(FrmTimeTest, TicksEachSecond) {
  FailingImport timers({"SetTimer"});
  timers.Replace(RecordInterval);
  ShowAt(kMorning);
  EXPECT_THAT(intervals, ElementsAre(1'000));
}

TEST_F(FrmTimeTest, HiddenItStaysLoadedAndComesBackUpToDate) {
  clock->HideClock();
  EXPECT_FALSE(clock->IsLoaded()) << "nothing to hide";
  ShowAt(kMorning);
  const HWND window = clock->hwnd();
  clock->HideClock();
  EXPECT_FALSE(clock->Visible());
  EXPECT_EQ(clock->hwnd(), window);
  EXPECT_THAT(log.opacities, IsEmpty()) << "hiding does not fade";
  ShowAt(At(2026, 11, 21, 18, 44, 32));
  EXPECT_TRUE(clock->Visible());
  EXPECT_EQ(clock->hwnd(), window);
  EXPECT_EQ(TimeShown(), "18:44:32");
  EXPECT_EQ(Face(Middle() - 7, Middle() + 31), kRed);
  EXPECT_EQ(OpacityOf(window), 210);
}

TEST_F(FrmTimeTest, FadesOutFromTwoHundredWhenItIsUnloaded) {
  ShowAt(kMorning);
  SendMessageW(clock->hwnd(), WM_CLOSE, 0, 0);
  EXPECT_TRUE(clock->Visible()) << "a close message does nothing";
  clock->Unload();
  EXPECT_THAT(log.opacities, ElementsAre(200, 160, 120, 80, 40, 0));
  EXPECT_THAT(log.milliseconds, ElementsAre(30, 30, 30, 30, 30, 30));
  EXPECT_FALSE(clock->IsLoaded());

  ShowAt(At(2027, 2, 3, 4, 15, 26));
  EXPECT_EQ(DateShown(), "2027-02-03") << "loaded again";
  EXPECT_EQ(TimeShown(), "04:15:26");
  log.Forget();
  clock->HideClock();
  clock->Unload();
  EXPECT_THAT(log.milliseconds, IsEmpty()) << "a hidden clock does not fade";
}

TEST_F(FrmTimeTest, ALeftPressHandsTheWindowToTheSystemsMove) {
  ShowAt(kMorning);
  CaughtMessage caught(clock->hwnd(), WM_NCLBUTTONDOWN);
  SendMouse(clock->hwnd(), WM_LBUTTONDOWN, 36, 36, MK_LBUTTON);
  EXPECT_THAT(caught.Taken(), ElementsAre(WPARAM{HTCAPTION}));
  for (const Box box : kAllBoxes) {
    SetCapture(BoxWindow(box));
    SendMouse(BoxWindow(box), WM_LBUTTONDOWN, 5, 5, MK_LBUTTON);
    EXPECT_THAT(caught.Taken(), ElementsAre(WPARAM{HTCAPTION})) << box;
    EXPECT_EQ(GetCapture(), nullptr);
  }
  EXPECT_EQ(menus, 0);
}

TEST_F(FrmTimeTest, ARightPressAnywhereOpensTheTrayMenu) {
  ShowAt(kMorning);
  CaughtMessage caught(clock->hwnd(), WM_NCLBUTTONDOWN);
  SendMouse(clock->hwnd(), WM_RBUTTONDOWN, 36, 36, MK_RBUTTON);
  EXPECT_EQ(menus, 1);
  const std::vector<HWND> boxes = InsideOf(clock->hwnd(), L"TellurvanePictureBox");
  EXPECT_EQ(boxes.size(), 13U);
  for (const HWND box : boxes) {
    const HWND label = GetWindow(box, GW_CHILD);
    if (label != nullptr) {
      EXPECT_EQ(SendMessageW(label, WM_NCHITTEST, 0, 0), HTTRANSPARENT) << "its box is pressed";
    }
    SendMouse(box, WM_RBUTTONDOWN, 5, 5, MK_RBUTTON);
  }
  EXPECT_EQ(menus, 14);
  SendMouse(clock->hwnd(), WM_MBUTTONDOWN, 36, 36, MK_MBUTTON);
  SendMouse(BoxWindow(kYear), WM_MBUTTONDOWN, 5, 5, MK_MBUTTON);
  EXPECT_EQ(menus, 14);
  EXPECT_THAT(caught.Taken(), IsEmpty());
}

TEST_F(FrmTimeTest, IsPulledBackWhenTheMouseMovesOverIt) {
  ShowAt(kMorning);
  ExpectPulledInside(clock->hwnd(), clock->hwnd());
  for (const Box box : kAllBoxes) ExpectPulledInside(clock->hwnd(), BoxWindow(box));
}

TEST_F(FrmTimeTest, IsShownInsideTheScreen) {
  ShowAt(kMorning);
  clock->HideClock();
  SetWindowPos(clock->hwnd(), nullptr, -3'000, 40, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  clock->ShowClock();
  EXPECT_EQ(OnScreen(clock->hwnd()).left, 0);
  EXPECT_EQ(OnScreen(clock->hwnd()).top, 40);
}

TEST_F(FrmTimeTest, TheDesignatorsBoxLeavesTheFaceFree) {
  ShowAt(kMorning);
  POINT edge = {Middle() + 32, PixelsFromTwips(540) + 3};
  ClientToScreen(clock->hwnd(), &edge);
  EXPECT_EQ(WindowFromPoint(edge), clock->hwnd());
}

TEST_F(FrmTimeTest, LeaksNothing) {
  ShowAt(kMorning);
  EXPECT_EQ(LeakedBy([this] {
              clock->HideClock();
              ShowAt(now + 1);
            }),
            ResourceCounts());
  EXPECT_EQ(LeakedBy([this] {
              clock->Unload();
              ShowAt(kMorning);
            }),
            ResourceCounts());
}

TEST_F(FrmTimeTest, DoesNotFadeWithoutAnimations) {
  SetUserPreferences({.hasAnimations = [] { return false; }});
  ShowAt(kMorning);
  clock->Unload();
  EXPECT_THAT(log.opacities, IsEmpty());
  SetUserPreferences({});
}

// The system sends them to the windows one by one, and nobody draws a child after it.
TEST_F(FrmTimeTest, KeepsAllDigitsWhenAThemeOrTheColorsChange) {
  ShowAt(kMorning);
  for (const UINT message : {WM_THEMECHANGED, WM_SYSCOLORCHANGE, WM_SETTINGCHANGE}) {
    SendMessageW(clock->hwnd(), message, 0, 0);
    for (const HWND child : InsideOf(clock->hwnd(), L"TellurvanePictureBox")) {
      SendMessageW(child, message, 0, 0);
    }
    EXPECT_EQ(DateShown(), "2026-11-21") << message;
    EXPECT_EQ(TimeShown(), "09:05:07") << message;
  }
}

// A switch of the colours is no new showing.
TEST_F(FrmTimeTest, KeepsItsDateWhenTheColorsChange) {
  ShowAt(kMorning);
  const std::vector<Color> day = DigitStrip::CellOf(ObjectOf(BoxWindow(kDay)).Dc(), 1);
  now += 1;
  {
    const ContrastScheme scheme(kBlackScheme, clock->hwnd());
    EXPECT_NE(DigitStrip::CellOf(ObjectOf(BoxWindow(kDay)).Dc(), 1), day);
    EXPECT_EQ(OpacityOf(clock->hwnd()), 255);
  }
  EXPECT_EQ(DigitStrip::CellOf(ObjectOf(BoxWindow(kDay)).Dc(), 1), day);
  EXPECT_EQ(OpacityOf(clock->hwnd()), 210);
}

}  // namespace
}  // namespace tellurvane
