// What the clock draws: digits, labels, hands and face.
#include <gmock/gmock.h>

#include <cmath>

#include "tests/clock/ClockFixture.h"

namespace tellurvane {
namespace {

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
    ShowNewClockAt(row.moment);
    EXPECT_EQ(DateShown(), row.date);
    EXPECT_EQ(TimeShown(), row.time);
  }
  const WindowDc screen(BoxWindow(kSecond));
  EXPECT_EQ(DigitStrip::CellOf(screen.Get(), 1), strip.Cell(8)) << "it is on the screen too";
}

TEST_F(FrmTimeTest, NoBoxCoversAnother) {
  ShowAt(kMorning);
  for (const Box box : kAllBoxes) {
    const RECT place = OnScreen(BoxWindow(box));
    EXPECT_EQ(place.right - place.left, box == kYear ? 64 : 32);
    EXPECT_EQ(place.bottom - place.top, 25);
    for (const HWND other : InsideOf(clock->hwnd(), L"TellurvanePictureBox")) {
      if (other == BoxWindow(box)) continue;
      // The AM/PM box shows only a part of itself.
      RECT seen = OnScreen(other);
      RECT region = {};
      if (GetWindowRgnBox(other, &region) != ERROR) seen.left += region.left;
      RECT common = {};
      EXPECT_FALSE(IntersectRect(&common, &place, &seen)) << box;
    }
  }
}

TEST_F(FrmTimeTest, EachBoxIsInsideTheRim) {
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

TEST_F(FrmTimeTest, TheLabelsAreAtTheirDesignedPlaces) {
  ShowAt(kMorning);
  const auto label = [](const wchar_t* text, int x, int y, int width) {
    return Label{text, PixelsFromTwips(x), PixelsFromTwips(y), PixelsFromTwips(width),
                 PixelsFromTwips(285)};
  };
  EXPECT_THAT(Labels(), testing::UnorderedElementsAre(
                            label(L"年", 2'016, 132, 285), label(L"月", 2'904, 132, 285),
                            label(L"日", 3'756, 132, 285), label(L"時", 2'016, 540, 285),
                            label(L"分", 2'904, 540, 285), label(L"秒", 3'744, 540, 285),
                            label(L"上午", 984, 540, 432)));
  LOGFONTW font = {};
  const LRESULT used = SendMessageW(InsideOf(clock->hwnd(), L"Static").at(0), WM_GETFONT, 0, 0);
  GetObjectW(reinterpret_cast<HGDIOBJ>(used), sizeof(font), &font);
  EXPECT_STREQ(font.lfFaceName, L"Tahoma");
}

TEST_F(FrmTimeTest, FollowsTheTime) {
  ShowAt(kMorning);
  now = At(2026, 11, 21, 9, 5, 8);
  EXPECT_TRUE(PumpUntil([this] { return TimeShown() == "09:05:08"; }));
  now = At(2026, 11, 21, 10, 0, 0);
  EXPECT_TRUE(PumpUntil([this] { return TimeShown() == "10:00:00"; }));
}

TEST_F(FrmTimeTest, ReadsTheTimeForEachNumber) {
  now = At(2026, 11, 21, 9, 59, 59);
  step = 1.0 / 86'400;
  clock->ShowClock();
  step = 0;
  EXPECT_EQ(TimeShown(), "09:00:01");
}

TEST_F(FrmTimeTest, PastMidnightAndNoonDateAndDesignatorStay) {
  ShowAt(At(2026, 11, 30, 23, 59, 59));
  ASSERT_EQ(HalfShown(), L"下午");
  now = At(2026, 12, 1, 0, 0, 0);
  EXPECT_TRUE(PumpUntil([this] { return TimeShown() == "00:00:00"; }));
  EXPECT_EQ(DateShown(), "2026-11-30");
  EXPECT_EQ(HalfShown(), L"下午");
  // Showing a visible clock changes no date.
  ShowAt(At(2026, 12, 1, 0, 0, 1));
  EXPECT_EQ(DateShown(), "2026-11-30");
  // Showing a hidden one does.
  clock->HideClock();
  ShowAt(At(2026, 12, 1, 0, 0, 2));
  EXPECT_EQ(TimeShown(), "00:00:02");
  EXPECT_EQ(DateShown(), "2026-12-01");
  EXPECT_EQ(HalfShown(), L"上午");
}

TEST_F(FrmTimeTest, TheHandsPointAtTheTime) {
  const auto fromCentre = [this](int x, int y) { return Face(Middle() + x, Middle() + y); };
  ShowAt(kMorning);
  EXPECT_EQ(fromCentre(21, -24), kRed);
  EXPECT_EQ(fromCentre(7, -8), kRed);
  EXPECT_EQ(fromCentre(16, -28), kBlue);
  EXPECT_EQ(fromCentre(8, -14), kBlue);
  for (int x = -23; x < 0; ++x) EXPECT_EQ(fromCentre(x, 0), kBlack) << x;
  EXPECT_NE(fromCentre(-24, 0), kBlack);

  ShowAt(At(2026, 11, 21, 15, 40, 31));
  EXPECT_EQ(fromCentre(-3, 32), kRed);
  EXPECT_NE(fromCentre(21, -24), kRed) << "the previous hands are gone";
  EXPECT_NE(fromCentre(8, -14), kBlue);
  EXPECT_NE(fromCentre(-15, 0), kBlack);

  ShowAt(At(2026, 11, 22));
  for (int y = -32; y <= 0; ++y) EXPECT_EQ(fromCentre(0, y), kRed) << "covers the others";
  EXPECT_NE(fromCentre(0, -33), kRed);

  ShowAt(At(2026, 11, 22, 0, 0, 30));
  for (int y = -31; y < 0; ++y) EXPECT_EQ(fromCentre(0, y), kBlue) << "covers the hour hand";
}

TEST_F(FrmTimeTest, TheFaceHasItsDotsAndMarks) {
  ShowAt(kMorning);
  const auto isBlackOrHand = [this](int x, int y) {
    const Color color = Face(x, y);
    return color == kBlack || color == kRed || color == kBlue;
  };
  for (int minute = 0; minute < 60; ++minute) {
    const double angle = minute * std::acos(-1) / 30;
    const auto at = [angle](int radius) {
      return POINT{Middle() + std::lround(radius * std::cos(angle)),
                   Middle() + std::lround(radius * std::sin(angle))};
    };
    const POINT dot = at(32);
    const bool isHour = minute % 5 == 0;
    const int reach = isHour ? 1 : 0;
    for (int dy = -reach; dy <= reach; ++dy) {
      for (int dx = -reach; dx <= reach; ++dx) {
        EXPECT_TRUE(isBlackOrHand(dot.x + dx, dot.y + dy)) << minute;
      }
    }
    const POINT outside = at(isHour ? 36 : 35);
    EXPECT_NE(Face(outside.x, outside.y), kBlack) << minute;
  }
}

}  // namespace
}  // namespace tellurvane
