#include "clock/ClockFace.h"

#include <gtest/gtest.h>

#include <ostream>
#include <set>
#include <utility>
#include <vector>

namespace tellurvane {

void PrintTo(const FacePoint& point, std::ostream* out) { *out << point.x << ", " << point.y; }
void PrintTo(const FaceHands& hands, std::ostream* out) {
  *out << "hour " << hands.hour.x << ", " << hands.hour.y << "; minute " << hands.minute.x << ", "
       << hands.minute.y << "; second " << hands.second.x << ", " << hands.second.y;
}

namespace {

constexpr ClockFace kFace = {.centre = 36, .radius = 32};

TEST(ClockFaceTest, KeepsItsPixelsUpTo120Dpi) {
  struct Row {
    int dpi;
    ClockFace face;
    int digitWidth;
  };
  for (const Row& row : {
           Row{96, {36, 32}, 16},
           Row{108, {36, 32}, 16},
           Row{120, {37, 32}, 16},  // the centre is one pixel further right and down
           Row{121, {45, 40}, 20},
           Row{144, {54, 48}, 24},
           Row{192, {72, 64}, 32},
           Row{288, {108, 96}, 48},
       }) {
    EXPECT_EQ(FaceAt(row.dpi), row.face) << row.dpi;
    EXPECT_EQ(FaceScale(row.dpi).Scaled(16), row.digitWidth) << row.dpi;
  }
}

// Calculated by hand: the hour hand of radius 32 is 22.857 long; 12 o'clock is up.
TEST(ClockFaceTest, TheHandsPointAtTheTime) {
  struct Row {
    int hour;
    int minute;
    int second;
    FaceHands hands;
    ClockFace face = kFace;
  };
  for (const Row& row : {
           Row{9, 5, 7, {{13, 36}, {52, 8}, {57, 12}}},
           Row{0, 0, 0, {{36, 13}, {36, 4}, {36, 4}}},
           Row{12, 0, 0, {{36, 13}, {36, 4}, {36, 4}}},
           Row{3, 15, 15, {{59, 36}, {68, 36}, {68, 36}}},
           Row{6, 30, 30, {{36, 59}, {36, 68}, {36, 68}}},
           Row{18, 45, 45, {{36, 59}, {4, 36}, {4, 36}}},
           // The hour hand moves on the full hour only.
           Row{23, 59, 59, {{25, 16}, {33, 4}, {33, 4}}},
           Row{13, 20, 50, {{47, 16}, {64, 52}, {8, 20}}},
           Row{9, 5, 7, {{14, 37}, {53, 9}, {58, 13}}, {.centre = 37, .radius = 32}},
           Row{3, 15, 0, {{118, 72}, {136, 72}, {72, 8}}, {.centre = 72, .radius = 64}},
       }) {
    EXPECT_EQ(HandsAt(row.face, row.hour, row.minute, row.second), row.hands)
        << row.hour << ':' << row.minute << ':' << row.second;
  }
}

TEST(ClockFaceTest, HasADotForEachMinuteAndTheFirstTwice) {
  const std::vector<FacePoint> dots = MinuteDots(kFace);
  ASSERT_EQ(dots.size(), 61U);
  EXPECT_EQ(dots[0], (FacePoint{68, 36}));
  EXPECT_EQ(dots[1], (FacePoint{68, 39}));
  EXPECT_EQ(dots[2], (FacePoint{67, 43}));
  EXPECT_EQ(dots[15], (FacePoint{36, 68}));
  EXPECT_EQ(dots[45], (FacePoint{36, 4}));
  EXPECT_EQ(dots[60], dots[0]);
  std::set<std::pair<int, int>> places;
  for (const FacePoint& dot : dots) places.insert({dot.x, dot.y});
  EXPECT_EQ(places.size(), 60U);
}

TEST(ClockFaceTest, HasAMarkForEachHourAndTheFirstTwice) {
  const std::vector<FacePoint> marks = HourMarks(kFace);
  ASSERT_EQ(marks.size(), 13U);
  const std::vector<FacePoint> quarter(marks.begin(), marks.begin() + 4);
  EXPECT_EQ(quarter, (std::vector<FacePoint>{{68, 36}, {64, 52}, {52, 64}, {36, 68}}));
  EXPECT_EQ(marks[9], (FacePoint{36, 4}));
  EXPECT_EQ(marks[12], marks[0]);
}

}  // namespace
}  // namespace tellurvane
