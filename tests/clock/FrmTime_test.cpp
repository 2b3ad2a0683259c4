#include "clock/FrmTime.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/Moments.h"
#include "tests/ui/FormProbe.h"
#include "tests/ui/UiTestSupport.h"
#include "ui/Handle.h"
#include "ui/Twips.h"

namespace tellurvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kCellWidth = 16;
constexpr int kCellHeight = 25;
constexpr Color kStrange = Rgb(255, 0, 255);
constexpr Color kRed = Rgb(255, 0, 0);
constexpr Color kBlue = Rgb(0, 0, 255);

// The digits as they lie in the executable.
class Strip {
 public:
  Strip()
      : picture_(LoadBitmapW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(102))),
        context_(CreateCompatibleDC(nullptr)),
        selected_(context_.Get(), picture_.Get()) {}

  SIZE Size() const {
    BITMAP facts = {};
    GetObjectW(picture_.Get(), sizeof(facts), &facts);
    return {facts.bmWidth, facts.bmHeight};
  }
  std::vector<Color> Cell(int digit) const { return CellOf(context_.Get(), digit); }
  // Of any picture: its pixels row by row.
  static std::vector<Color> CellOf(HDC context, int position) {
    std::vector<Color> pixels;
    for (int y = 0; y < kCellHeight; ++y) {
      for (int x = 0; x < kCellWidth; ++x) {
        pixels.push_back(PixelOf(context, position * kCellWidth + x, y));
      }
    }
    return pixels;
  }

 private:
  UniqueBitmap picture_;
  UniqueMemoryDc context_;
  SelectedObject selected_;
};

// Of the face, from the window's left upper corner.
int Middle() { return TwipsPerPixelY() == 12 ? 37 : 36; }

enum Box { kYear, kMonth, kDay, kHour, kMinute, kSecond };
constexpr Box kAllBoxes[] = {kYear, kMonth, kDay, kHour, kMinute, kSecond};

class FrmTimeTest : public testing::Test {
 protected:
  void SetUp() override { MakeClock(); }

  void MakeClock() {
    clock = std::make_unique<FrmTime>(ClockSurroundings{
        .clock = [this] { return now; },
        .pause = log.Pause(),
        .dayHalf =
            [](DateSerial moment) {
              return std::wstring(CivilFromSerial(moment).hour < 12 ? L"上午" : L"下午");
            },
        .openTrayMenu = [this] { ++menus; }});
  }
  void ShowAt(DateSerial moment) {
    now = moment;
    clock->ShowClock();
    Pump();
    log.window = clock->hwnd();
  }
  // A fresh one, as at the next start of the program.
  void ShowAnewAt(DateSerial moment) {
    MakeClock();
    ShowAt(moment);
  }

  // The boxes without a label, in the order in which they are read.
  HWND BoxWindow(Box box) const {
    std::vector<HWND> boxes = InsideOf(clock->hwnd(), L"TellurvanePictureBox");
    std::erase_if(boxes, [](HWND window) { return GetWindow(window, GW_CHILD) != nullptr; });
    std::ranges::sort(boxes, {}, [](HWND window) {
      const RECT place = OnScreen(window);
      return std::pair(place.top, place.left);
    });
    EXPECT_EQ(boxes.size(), 6U);
    return boxes.at(box);
  }
  HDC PictureOf(Box box) const { return ObjectOf(BoxWindow(box)).Dc(); }
  // The digit that stands at a position counted from 0, told by its cell of the strip.
  std::string DigitAt(Box box, int position) const {
    const std::vector<Color> shown = Strip::CellOf(PictureOf(box), position);
    for (int digit = 0; digit < 10; ++digit) {
      if (shown == strip.Cell(digit)) return std::to_string(digit);
    }
    return "?";
  }
  std::string DigitsIn(Box box) const {
    std::string digits;
    for (int position = 0; position < (box == kYear ? 4 : 2); ++position) {
      digits += DigitAt(box, position);
    }
    return digits;
  }
  std::string TimeShown() const {
    return DigitsIn(kHour) + ":" + DigitsIn(kMinute) + ":" + DigitsIn(kSecond);
  }
  std::string DateShown() const {
    return DigitsIn(kYear) + "-" + DigitsIn(kMonth) + "-" + DigitsIn(kDay);
  }
  // The labels' texts with their boxes' places in the window.
  struct Label {
    std::wstring text;
    int x;
    int y;
    int width;
    int height;
    bool operator==(const Label&) const = default;
  };
  std::vector<Label> Labels() const {
    std::vector<Label> labels;
    for (const HWND label : InsideOf(clock->hwnd(), L"Static")) {
      RECT place = OnScreen(GetParent(label));
      MapWindowPoints(nullptr, clock->hwnd(), reinterpret_cast<POINT*>(&place), 2);
      labels.push_back({WindowText(label), static_cast<int>(place.left),
                        static_cast<int>(place.top), static_cast<int>(place.right - place.left),
                        static_cast<int>(place.bottom - place.top)});
    }
    return labels;
  }
  std::wstring HalfShown() const { return std::ranges::max(Labels(), {}, &Label::width).text; }
  Color Face(int x, int y) const { return PixelOf(clock->Dc(), x, y); }

  const DateSerial kMorning = At(2026, 11, 21, 9, 5, 7);
  Strip strip;
  DateSerial now = 0;
  FadeLog log;
  int menus = 0;
  std::unique_ptr<FrmTime> clock;
};

TEST_F(FrmTimeTest, TheStripHasThirteenCellsAndTenDigitsThatDiffer) {
  EXPECT_EQ(strip.Size().cx, 208);
  EXPECT_EQ(strip.Size().cy, 25);
  for (int digit = 1; digit < 10; ++digit) {
    for (int other = 0; other < digit; ++other) {
      EXPECT_NE(strip.Cell(digit), strip.Cell(other)) << digit << " and " << other;
    }
  }
}

TEST_F(FrmTimeTest, ShowsTheDigitsOfTheMomentWithLeadingZeros) {
  struct Row {
    DateSerial moment;
    const char* date;
    const char* time;
  };
  for (const Row& row : {Row{At(2026, 11, 21, 9, 5, 7), "2026-11-21", "09:05:07"},
                         Row{At(2027, 1, 2, 0, 0, 0), "2027-01-02", "00:00:00"},
                         Row{At(2034, 9, 30, 23, 59, 59), "2034-09-30", "23:59:59"},
                         Row{At(2048, 10, 8, 16, 37, 48), "2048-10-08", "16:37:48"}}) {
    ShowAnewAt(row.moment);
    EXPECT_EQ(DateShown(), row.date);
    EXPECT_EQ(TimeShown(), row.time);
  }
}

TEST_F(FrmTimeTest, TheScreenShowsWhatWasDrawn) {
  ShowAt(kMorning);
  const WindowDc screen(BoxWindow(kSecond));
  EXPECT_EQ(Strip::CellOf(screen.Get(), 1), strip.Cell(7));
}

TEST_F(FrmTimeTest, TheDigitBoxesHaveTheStatedSizesAndTouchNothing) {
  ShowAt(kMorning);
  for (const Box box : kAllBoxes) {
    const RECT place = OnScreen(BoxWindow(box));
    EXPECT_EQ(place.right - place.left, box == kYear ? 64 : 32);
    EXPECT_EQ(place.bottom - place.top, 25);
    for (const HWND other : InsideOf(clock->hwnd(), L"TellurvanePictureBox")) {
      if (other == BoxWindow(box)) continue;
      // The half of the day's box is larger than what it shows.
      RECT seen = OnScreen(other);
      RECT region = {};
      if (GetWindowRgnBox(other, &region) != ERROR) {
        seen.left += region.left;
      }
      RECT common = {};
      EXPECT_FALSE(IntersectRect(&common, &place, &seen)) << box;
    }
  }
}

TEST_F(FrmTimeTest, EverythingInItLiesInsideItsRim) {
  ShowAt(kMorning);
  RECT inside = OnScreen(clock->hwnd());
  InflateRect(&inside, -1, -1);
  EXPECT_GE(inside.bottom - inside.top, 2 * Middle() - 1);
  for (const HWND box : InsideOf(clock->hwnd(), L"TellurvanePictureBox")) {
    const RECT place = OnScreen(box);
    RECT common = {};
    IntersectRect(&common, &place, &inside);
    EXPECT_TRUE(EqualRect(&common, &place)) << place.left << ", " << place.top;
  }
}

TEST_F(FrmTimeTest, TheLabelsStandWhereTheyAreDesigned) {
  ShowAt(kMorning);
  const int x = TwipsPerPixelX();
  const int y = TwipsPerPixelY();
  EXPECT_THAT(Labels(),
              testing::UnorderedElementsAre(Label{L"年", 2'016 / x, 132 / y, 285 / x, 285 / y},
                                            Label{L"月", 2'904 / x, 132 / y, 285 / x, 285 / y},
                                            Label{L"日", 3'756 / x, 132 / y, 285 / x, 285 / y},
                                            Label{L"時", 2'016 / x, 540 / y, 285 / x, 285 / y},
                                            Label{L"分", 2'904 / x, 540 / y, 285 / x, 285 / y},
                                            Label{L"秒", 3'744 / x, 540 / y, 285 / x, 285 / y},
                                            Label{L"上午", 984 / x, 540 / y, 432 / x, 285 / y}));
}

TEST_F(FrmTimeTest, GoesOnByItself) {
  ShowAt(kMorning);
  now = At(2026, 11, 21, 9, 5, 8);
  EXPECT_TRUE(PumpUntil([this] { return TimeShown() == "09:05:08"; }));
  now = At(2026, 11, 21, 10, 0, 0);
  EXPECT_TRUE(PumpUntil([this] { return TimeShown() == "10:00:00"; }));
}

TEST_F(FrmTimeTest, OverMidnightAndNoonTheDateAndTheHalfOfTheDayStay) {
  ShowAt(At(2026, 11, 30, 23, 59, 59));
  ASSERT_EQ(HalfShown(), L"下午");
  now = At(2026, 12, 1, 0, 0, 0);
  EXPECT_TRUE(PumpUntil([this] { return TimeShown() == "00:00:00"; }));
  EXPECT_EQ(DateShown(), "2026-11-30");
  EXPECT_EQ(HalfShown(), L"下午");
  // Hidden and shown it is the same clock; only one that is loaded anew begins again.
  clock->HideClock();
  ShowAt(At(2026, 12, 1, 0, 0, 1));
  EXPECT_EQ(TimeShown(), "00:00:01");
  EXPECT_EQ(DateShown(), "2026-11-30");
  EXPECT_EQ(HalfShown(), L"下午");
  ShowAnewAt(At(2026, 12, 1, 0, 0, 2));
  EXPECT_EQ(DateShown(), "2026-12-01");
  EXPECT_EQ(HalfShown(), L"上午");
}

TEST_F(FrmTimeTest, OnlyTheDigitsThatChangeAreDrawn) {
  ShowAt(kMorning);
  for (const Box box : kAllBoxes) {
    SetPixel(PictureOf(box), 3, 3, kStrange);
    SetPixel(PictureOf(box), kCellWidth + 3, 3, kStrange);
  }
  // Nothing changes, then the second's units, then minute and second.
  const auto untouched = [this](Box box, int position) {
    return PixelOf(PictureOf(box), position * kCellWidth + 3, 3) == kStrange;
  };
  ShowAt(kMorning);
  for (const Box box : kAllBoxes) {
    EXPECT_TRUE(untouched(box, 0)) << box;
    EXPECT_TRUE(untouched(box, 1)) << box;
  }
  ShowAt(At(2026, 11, 21, 9, 5, 8));
  EXPECT_FALSE(untouched(kSecond, 1));
  EXPECT_TRUE(untouched(kSecond, 0));
  EXPECT_TRUE(untouched(kMinute, 1));
  ShowAt(At(2026, 11, 21, 9, 6, 18));
  EXPECT_FALSE(untouched(kMinute, 1));
  EXPECT_TRUE(untouched(kMinute, 0));
  EXPECT_FALSE(untouched(kSecond, 0));
  for (const Box box : {kYear, kMonth, kDay, kHour}) {
    EXPECT_TRUE(untouched(box, 0)) << box;
    EXPECT_TRUE(untouched(box, 1)) << box;
  }
}

// How far a pixel lies from the line between the middle and a hand's end.
double FromHand(int x, int y, double degrees, double length) {
  const double angle = degrees * std::acos(-1) / 180;
  const double along = (x - Middle()) * std::cos(angle) + (y - Middle()) * std::sin(angle);
  const double aside = (y - Middle()) * std::cos(angle) - (x - Middle()) * std::sin(angle);
  return std::hypot(along - std::clamp(along, 0.0, length), aside);
}

struct Hand {
  double degrees;
  double length;
  Color color;
  int endX;  // from the middle
  int endY;
};

// Every pixel of the hand's colour lies on it, and it has as many as its longer side.
void ExpectHand(HDC face, const Hand& hand, int covered) {
  int pixels = 0;
  for (int y = 0; y < 2 * Middle(); ++y) {
    for (int x = 0; x < 2 * Middle(); ++x) {
      if (PixelOf(face, x, y) != hand.color) continue;
      ++pixels;
      EXPECT_LT(FromHand(x, y, hand.degrees, hand.length), 1.01) << x << ", " << y;
    }
  }
  EXPECT_NEAR(pixels, std::max(std::abs(hand.endX), std::abs(hand.endY)) + 1 - covered / 2,
              covered / 2 + covered % 2);
  EXPECT_EQ(PixelOf(face, Middle() + hand.endX, Middle() + hand.endY), hand.color);
}

TEST_F(FrmTimeTest, TheHandsPointWhereTheTimeSays) {
  ShowAt(kMorning);
  // The last one lies on the others near the middle.
  ExpectHand(clock->Dc(), {-48, 32, kRed, 21, -24}, 0);
  ExpectHand(clock->Dc(), {-60, 32, kBlue, 16, -28}, 8);
  // Of the hour's hand, which is black as the marks are, the end and what lies before it.
  for (int x = Middle() - 22; x < Middle(); ++x) EXPECT_EQ(Face(x, Middle()), kBlack) << x;
  EXPECT_EQ(Face(Middle() - 23, Middle()), kBlack);
  EXPECT_NE(Face(Middle() - 24, Middle()), kBlack);
}

TEST_F(FrmTimeTest, AtMidnightTheSecondsHandCoversTheOthers) {
  ShowAt(At(2026, 11, 21));
  ExpectHand(clock->Dc(), {-90, 32, kRed, 0, -32}, 0);
  for (int y = 0; y < Middle(); ++y) EXPECT_NE(Face(Middle(), y), kBlue);
}

TEST_F(FrmTimeTest, TheHandsOfTheSecondBeforeAreGone) {
  ShowAt(kMorning);
  ShowAt(At(2026, 11, 21, 15, 40, 31));
  ExpectHand(clock->Dc(), {96, 32, kRed, -3, 32}, 0);
  // Where the three hands ended before.
  EXPECT_NE(Face(Middle() + 18, Middle() - 20), kRed);
  EXPECT_NE(Face(Middle() + 8, Middle() - 14), kBlue);
  EXPECT_NE(Face(Middle() - 15, Middle()), kBlack);
}

TEST_F(FrmTimeTest, TheFaceHasItsDotsAndMarks) {
  ShowAt(kMorning);
  int marks = 0;
  for (int minute = 0; minute < 60; ++minute) {
    const double angle = minute * std::acos(-1) / 30;
    const int x = Middle() + static_cast<int>(std::lround(32 * std::cos(angle)));
    const int y = Middle() + static_cast<int>(std::lround(32 * std::sin(angle)));
    const auto isBlackOrHand = [&](int atX, int atY) {
      const Color color = Face(atX, atY);
      return color == kBlack || color == kRed || color == kBlue;
    };
    EXPECT_TRUE(isBlackOrHand(x, y)) << minute;
    if (minute % 5 != 0) {
      // A single pixel: inward and outward of it is the ground.
      const int outwardX = Middle() + static_cast<int>(std::lround(35 * std::cos(angle)));
      const int outwardY = Middle() + static_cast<int>(std::lround(35 * std::sin(angle)));
      EXPECT_NE(Face(outwardX, outwardY), kBlack) << minute;
      continue;
    }
    ++marks;
    for (int dy = -1; dy <= 1; ++dy) {
      for (int dx = -1; dx <= 1; ++dx) EXPECT_TRUE(isBlackOrHand(x + dx, y + dy)) << minute;
    }
    EXPECT_FALSE(isBlackOrHand(x + 2, y + 2) && isBlackOrHand(x - 2, y - 2)) << minute;
  }
  EXPECT_EQ(marks, 12);
}

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

TEST_F(FrmTimeTest, TheHalfOfTheDaysBoxLeavesTheFaceFree) {
  ShowAt(kMorning);
  // The face's right edge, at the height of that box.
  const POINT edge = {Middle() + 32, 540 / TwipsPerPixelY() + 3};
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
