#include "clock/ClockFace.h"

#include <gtest/gtest.h>

#include <ostream>
#include <set>
#include <utility>
#include <vector>

namespace tellurvane {

void PrintTo(const ClockFace& face, std::ostream* out) {
  *out << "centre " << face.centre << ", radius " << face.radius;
}
void PrintTo(const FacePoint& point, std::ostream* out) { *out << point.x << ", " << point.y; }
void PrintTo(const FaceHands& hands, std::ostream* out) {
  *out << "hour " << hands.hour.x << ", " << hands.hour.y << "; minute " << hands.minute.x << ", "
       << hands.minute.y << "; second " << hands.second.x << ", " << hands.second.y;
}
void PrintTo(const TwoDigits& digits, std::ostream* out) { *out << digits.tens << digits.units; }

namespace {

constexpr ClockFace kFace = {.centre = 36, .radius = 32};

TEST(ClockFaceTest, KeepsItsPixelsUpTo120DpiAndGrowsFromThereOn) {
  struct Row {
    int dpi;
    ClockFace face;
    int digitWidth;
  };
  for (const Row& row : {
           Row{96, {36, 32}, 16},
           Row{108, {36, 32}, 16},
           Row{120, {37, 32}, 16},  // the middle stands a pixel further right and down
           Row{121, {45, 40}, 20},
           Row{144, {54, 48}, 24},
           Row{168, {63, 56}, 28},
           Row{192, {72, 64}, 32},
           Row{288, {108, 96}, 48},
       }) {
    EXPECT_EQ(FaceAt(row.dpi), row.face) << row.dpi;
    EXPECT_EQ(FaceScale(row.dpi).Scaled(16), row.digitWidth) << row.dpi;
  }
}

TEST(ClockFaceTest, ALargerFaceHasLongerHands) {
  EXPECT_EQ(HandsAt({.centre = 72, .radius = 64}, 3, 15, 0),
            (FaceHands{{118, 72}, {136, 72}, {72, 8}}));
}

// Worked out by hand: middle 36, radius 32, hour hand 22.857; 12 o'clock is up.
TEST(ClockFaceTest, TheHandsPointWhereTheTimeSays) {
  struct Row {
    int hour;
    int minute;
    int second;
    FaceHands hands;
  };
  for (const Row& row : {
           Row{9, 5, 7, {{13, 36}, {52, 8}, {57, 12}}},
           Row{0, 0, 0, {{36, 13}, {36, 4}, {36, 4}}},
           Row{12, 0, 0, {{36, 13}, {36, 4}, {36, 4}}},
           Row{3, 15, 15, {{59, 36}, {68, 36}, {68, 36}}},
           Row{6, 30, 30, {{36, 59}, {36, 68}, {36, 68}}},
           Row{18, 45, 45, {{36, 59}, {4, 36}, {4, 36}}},
           Row{23, 59, 59, {{25, 16}, {33, 4}, {33, 4}}},
           Row{13, 20, 50, {{47, 16}, {64, 52}, {8, 20}}},
       }) {
    EXPECT_EQ(HandsAt(kFace, row.hour, row.minute, row.second), row.hands)
        << row.hour << ':' << row.minute << ':' << row.second;
  }
}

TEST(ClockFaceTest, TheHourHandMovesOnTheFullHourOnly) {
  for (int hour = 0; hour < 24; ++hour) {
    const FacePoint full = HandsAt(kFace, hour, 0, 0).hour;
    for (int minute = 0; minute < 60; ++minute) {
      ASSERT_EQ(HandsAt(kFace, hour, minute, 59).hour, full) << hour << ':' << minute;
    }
    ASSERT_NE(HandsAt(kFace, hour + 1, 0, 0).hour, full) << hour;
    ASSERT_EQ(HandsAt(kFace, hour + 12, 0, 0).hour, full) << hour;
  }
}

TEST(ClockFaceTest, MovesWithItsMiddle) {
  EXPECT_EQ(HandsAt({.centre = 37, .radius = 32}, 9, 5, 7),
            (FaceHands{{14, 37}, {53, 9}, {58, 13}}));
}

TEST(ClockFaceTest, HasADotForEachMinuteAndTheFirstOnceMore) {
  const std::vector<FacePoint> dots = MinuteDots(kFace);
  ASSERT_EQ(dots.size(), 61U);
  EXPECT_EQ(dots[0], (FacePoint{68, 36}));
  EXPECT_EQ(dots[1], (FacePoint{68, 39}));
  EXPECT_EQ(dots[2], (FacePoint{67, 43}));
  EXPECT_EQ(dots[15], (FacePoint{36, 68}));
  EXPECT_EQ(dots[30], (FacePoint{4, 36}));
  EXPECT_EQ(dots[45], (FacePoint{36, 4}));
  EXPECT_EQ(dots[60], dots[0]);
  std::set<std::pair<int, int>> places;
  for (const FacePoint& dot : dots) places.insert({dot.x, dot.y});
  EXPECT_EQ(places.size(), 60U);
}

TEST(ClockFaceTest, HasAMarkForEachHourAndTheFirstOnceMore) {
  EXPECT_EQ(HourMarks(kFace), (std::vector<FacePoint>{{68, 36},
                                                      {64, 52},
                                                      {52, 64},
                                                      {36, 68},
                                                      {20, 64},
                                                      {8, 52},
                                                      {4, 36},
                                                      {8, 20},
                                                      {20, 8},
                                                      {36, 4},
                                                      {52, 8},
                                                      {64, 20},
                                                      {68, 36}}));
}

TEST(DigitsOfTest, WritesALeadingZero) {
  struct Row {
    int value;
    TwoDigits digits;
  };
  for (const Row& row : {Row{0, {0, 0}}, Row{5, {0, 5}}, Row{9, {0, 9}}, Row{10, {1, 0}},
                         Row{12, {1, 2}}, Row{59, {5, 9}}, Row{99, {9, 9}}}) {
    EXPECT_EQ(DigitsOf(row.value), row.digits) << row.value;
  }
}

}  // namespace
}  // namespace tellurvane
