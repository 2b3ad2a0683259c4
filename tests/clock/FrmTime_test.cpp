// The clock as a window: where it stands, how it is shown, hidden, moved and ended.
#include "clock/FrmTime.h"

#include <gmock/gmock.h>

#include <vector>

#include "tests/clock/ClockFixture.h"

namespace tellurvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(FrmTimeTest, StandsAboveAllTranslucentAndOutOfTheTaskbar) {
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
  // Its place is kept while it is hidden, and nowhere else.
  SetWindowPos(clock->hwnd(), nullptr, 200, 300, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  clock->HideClock();
  ShowAt(kMorning);
  EXPECT_EQ(OnScreen(clock->hwnd()).left, 200);
  clock->Unload();
  ShowAt(kMorning);
  EXPECT_EQ(OnScreen(clock->hwnd()).left, place.left);
  EXPECT_EQ(OnScreen(clock->hwnd()).top, place.top);
}

TEST_F(FrmTimeTest, LeavesTheKeyboardToWhoeverHasIt) {
  TestForm form;
  SetForegroundWindow(form.hwnd());
  SetFocus(form.hwnd());
  Pump();
  ShowAt(kMorning);
  EXPECT_EQ(GetFocus(), form.hwnd());
  EXPECT_EQ(GetForegroundWindow(), form.hwnd());
  // Neither a click on it nor the move that begins with one takes it away.
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

TEST_F(FrmTimeTest, HiddenItStaysLoadedAndComesBackUpToDate) {
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
  ExpectHand(clock->Dc(), {102, 32, kRed, -7, 31}, 0);
  EXPECT_EQ(OpacityOf(window), 210);
}

TEST_F(FrmTimeTest, HidingWhatIsNotLoadedDoesNothing) {
  clock->HideClock();
  EXPECT_FALSE(clock->IsLoaded());
}

TEST_F(FrmTimeTest, FadesOutFromTwoHundredWhenItEnds) {
  ShowAt(kMorning);
  clock->Unload();
  EXPECT_THAT(log.opacities, ElementsAre(200, 160, 120, 80, 40, 0));
  EXPECT_THAT(log.milliseconds, ElementsAre(30, 30, 30, 30, 30, 30));
  EXPECT_FALSE(clock->IsLoaded());
}

TEST_F(FrmTimeTest, NobodyWaitsForTheFadeOfAHiddenClock) {
  ShowAt(kMorning);
  clock->HideClock();
  clock->Unload();
  EXPECT_THAT(log.milliseconds, IsEmpty());
}

TEST_F(FrmTimeTest, ACloseMessageDoesNothing) {
  ShowAt(kMorning);
  SendMessageW(clock->hwnd(), WM_CLOSE, 0, 0);
  EXPECT_TRUE(clock->IsLoaded());
  EXPECT_TRUE(clock->Visible());
  EXPECT_THAT(log.opacities, IsEmpty());
}

TEST_F(FrmTimeTest, CanBeLoadedAgainAfterItsEnd) {
  ShowAt(kMorning);
  clock->Unload();
  ShowAt(At(2027, 2, 3, 4, 15, 26));
  EXPECT_EQ(DateShown(), "2027-02-03");
  EXPECT_EQ(TimeShown(), "04:15:26");
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

TEST_F(FrmTimeTest, ARightPressOnTheFaceAndOnTheDigitsOpensTheTrayMenu) {
  ShowAt(kMorning);
  CaughtMessage caught(clock->hwnd(), WM_NCLBUTTONDOWN);
  SendMouse(clock->hwnd(), WM_RBUTTONDOWN, 36, 36, MK_RBUTTON);
  EXPECT_EQ(menus, 1);
  for (const Box box : kAllBoxes) SendMouse(BoxWindow(box), WM_RBUTTONDOWN, 5, 5, MK_RBUTTON);
  EXPECT_EQ(menus, 7);
  SendMouse(clock->hwnd(), WM_MBUTTONDOWN, 36, 36, MK_MBUTTON);
  SendMouse(BoxWindow(kYear), WM_MBUTTONDOWN, 5, 5, MK_MBUTTON);
  EXPECT_EQ(menus, 7);
  EXPECT_THAT(caught.Taken(), IsEmpty());
}

TEST_F(FrmTimeTest, AsDoesARightPressOnEachOfTheTexts) {
  ShowAt(kMorning);
  int pressed = 0;
  for (HWND box = GetWindow(clock->hwnd(), GW_CHILD); box != nullptr;
       box = GetWindow(box, GW_HWNDNEXT)) {
    const HWND text = GetWindow(box, GW_CHILD);
    if (text == nullptr) continue;
    EXPECT_EQ(SendMessageW(text, WM_NCHITTEST, 0, 0), HTTRANSPARENT) << "its box is pressed";
    SendMouse(box, WM_RBUTTONDOWN, 5, 5, MK_RBUTTON);
    EXPECT_EQ(menus, ++pressed);
  }
  EXPECT_EQ(pressed, 7);
}

TEST_F(FrmTimeTest, IsPulledBackWhenTheMouseMovesOverIt) {
  ShowAt(kMorning);
  const RECT outer = OnScreen(clock->hwnd());
  const auto right = static_cast<int>(GetSystemMetrics(SM_CXSCREEN) - (outer.right - outer.left));
  const auto bottom = static_cast<int>(GetSystemMetrics(SM_CYSCREEN) - (outer.bottom - outer.top));
  struct Row {
    int x;
    int y;
    LONG left;
    LONG top;
  };
  const std::vector<HWND> windows = {clock->hwnd(),     BoxWindow(kYear), BoxWindow(kMonth),
                                     BoxWindow(kDay),   BoxWindow(kHour), BoxWindow(kMinute),
                                     BoxWindow(kSecond)};
  for (const HWND window : windows) {
    for (const Row& row : {Row{-30, 50, 0, 50}, Row{50, -30, 50, 0}, Row{right + 30, 50, right, 50},
                           Row{50, bottom + 30, 50, bottom}, Row{70, 80, 70, 80}}) {
      SetWindowPos(clock->hwnd(), nullptr, row.x, row.y, 0, 0,
                   SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
      SendMouse(window, WM_MOUSEMOVE, 5, 5);
      EXPECT_EQ(OnScreen(clock->hwnd()).left, row.left) << row.x << ", " << row.y;
      EXPECT_EQ(OnScreen(clock->hwnd()).top, row.top) << row.x << ", " << row.y;
    }
  }
}

TEST_F(FrmTimeTest, IsShownInsideTheScreenWhereverItWasHidden) {
  ShowAt(kMorning);
  clock->HideClock();
  SetWindowPos(clock->hwnd(), nullptr, -3'000, 40, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  clock->ShowClock();
  EXPECT_EQ(OnScreen(clock->hwnd()).left, 0);
  EXPECT_EQ(OnScreen(clock->hwnd()).top, 40);
}

TEST_F(FrmTimeTest, TheHalfOfTheDaysBoxLeavesTheFaceFree) {
  ShowAt(kMorning);
  // The face's right edge, at the height of that box.
  const POINT edge = {Middle() + 32, PixelsFromTwips(540) + 3};
  POINT onScreen = edge;
  ClientToScreen(clock->hwnd(), &onScreen);
  EXPECT_EQ(WindowFromPoint(onScreen), clock->hwnd());
}

TEST_F(FrmTimeTest, ShowingAndHidingLeavesNothingBehind) {
  ShowAt(kMorning);
  int second = 0;
  EXPECT_EQ(LeakedBy([&] {
              clock->HideClock();
              ++second;
              ShowAt(At(2026, 11, 21, 12, second % 60, second % 60));
            }),
            ResourceCounts());
}

TEST_F(FrmTimeTest, LoadingAndEndingLeavesNothingBehind) {
  EXPECT_EQ(LeakedBy([this] {
              ShowAt(kMorning);
              clock->Unload();
            }),
            ResourceCounts());
}

}  // namespace
}  // namespace tellurvane
