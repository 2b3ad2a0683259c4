// What the clock draws: digits, labels, hands and face.
#include <gmock/gmock.h>

#include <cmath>

#include "tests/clock/ClockFixture.h"

namespace tellurvane {
namespace {

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
  const auto label = [](const wchar_t* text, int x, int y, int width) {
    return Label{text, PixelsFromTwips(x), PixelsFromTwips(y), PixelsFromTwips(width),
                 PixelsFromTwips(285)};
  };
  EXPECT_THAT(Labels(), testing::UnorderedElementsAre(
                            label(L"年", 2'016, 132, 285), label(L"月", 2'904, 132, 285),
                            label(L"日", 3'756, 132, 285), label(L"時", 2'016, 540, 285),
                            label(L"分", 2'904, 540, 285), label(L"秒", 3'744, 540, 285),
                            label(L"上午", 984, 540, 432)));
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
  // Asked to show itself while it is shown, it changes nothing.
  ShowAt(At(2026, 12, 1, 0, 0, 1));
  EXPECT_EQ(DateShown(), "2026-11-30");
  // Opened again it tells the date of then.
  clock->HideClock();
  ShowAt(At(2026, 12, 1, 0, 0, 2));
  EXPECT_EQ(TimeShown(), "00:00:02");
  EXPECT_EQ(DateShown(), "2026-12-01");
  EXPECT_EQ(HalfShown(), L"上午");
  ShowAnewAt(At(2026, 12, 1, 12, 0, 2));
  EXPECT_EQ(DateShown(), "2026-12-01");
  EXPECT_EQ(HalfShown(), L"下午");
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

}  // namespace
}  // namespace tellurvane
