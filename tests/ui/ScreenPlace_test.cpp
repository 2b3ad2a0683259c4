#include "ui/ScreenPlace.h"

#include <gtest/gtest.h>

#include <ostream>

namespace tellurvane {

void PrintTo(const ScreenPlace& place, std::ostream* out) {
  *out << place.left << ", " << place.top << ", " << place.width << " x " << place.height;
}

namespace {

constexpr ScreenPlace kOneScreen[] = {{0, 0, 1'920, 1'080}};

TEST(ScreenPlaceTest, IsPulledInsideEachEdgeAndKeepsItsSize) {
  struct Row {
    const char* what;
    ScreenPlace place;
    ScreenPlace inside;
  };
  for (const Row& row : {
           Row{"inside", {100, 200, 300, 120}, {100, 200, 300, 120}},
           Row{"in the left upper corner", {0, 0, 300, 120}, {0, 0, 300, 120}},
           Row{"in the right lower corner", {1'620, 960, 300, 120}, {1'620, 960, 300, 120}},
           Row{"a pixel beyond the left edge", {-1, 200, 300, 120}, {0, 200, 300, 120}},
           Row{"wholly beyond the left edge", {-900, 200, 300, 120}, {0, 200, 300, 120}},
           Row{"beyond the upper edge", {100, -40, 300, 120}, {100, 0, 300, 120}},
           Row{"a pixel beyond the right edge", {1'621, 200, 300, 120}, {1'620, 200, 300, 120}},
           Row{"wholly beyond the right edge", {5'000, 200, 300, 120}, {1'620, 200, 300, 120}},
           Row{"beyond the lower edge", {100, 1'000, 300, 120}, {100, 960, 300, 120}},
           Row{"beyond two edges", {-5, 2'000, 300, 120}, {0, 960, 300, 120}},
           Row{"as large as the screen", {7, -7, 1'920, 1'080}, {0, 0, 1'920, 1'080}},
           Row{"wider than the screen", {10, 10, 2'000, 120}, {-80, 10, 2'000, 120}},
           Row{"higher than the screen", {10, 10, 300, 1'100}, {10, -20, 300, 1'100}},
       }) {
    EXPECT_EQ(PulledInside(row.place, kOneScreen), row.inside) << row.what;
    EXPECT_EQ(PulledInside(row.inside, kOneScreen), row.inside) << row.what << ", once more";
  }
}

// Two screens beside each other, the left one beginning below 0 and lower down, and a smaller one
// above the right one.
constexpr ScreenPlace kScreens[] = {
    {0, 0, 1'920, 1'080}, {-1'280, 200, 1'280, 1'024}, {400, -600, 800, 600}};

TEST(ScreenPlaceTest, StaysOnTheScreenThatItIsNearestTo) {
  struct Row {
    const char* what;
    ScreenPlace place;
    ScreenPlace inside;
  };
  for (const Row& row : {
           Row{"on the left screen", {-900, 400, 300, 120}, {-900, 400, 300, 120}},
           Row{"on the upper screen", {500, -500, 300, 120}, {500, -500, 300, 120}},
           Row{"mostly on the left one", {-200, 400, 300, 120}, {-300, 400, 300, 120}},
           Row{"mostly on the main one", {-100, 400, 300, 120}, {0, 400, 300, 120}},
           Row{"half on each", {-150, 400, 300, 120}, {0, 400, 300, 120}},
           Row{"beside the left one's upper edge", {-900, 0, 300, 120}, {-900, 200, 300, 120}},
           Row{"left of all", {-3'000, 1'000, 300, 120}, {-1'280, 1'000, 300, 120}},
           Row{"right of all", {4'000, 400, 300, 120}, {1'620, 400, 300, 120}},
           Row{"above all", {700, -5'000, 300, 120}, {700, -600, 300, 120}},
           Row{"right of the upper one", {1'300, -500, 300, 120}, {900, -500, 300, 120}},
           Row{"below the left one", {-500, 1'500, 300, 120}, {-500, 1'104, 300, 120}},
           Row{"higher than the upper one", {500, -900, 300, 700}, {500, -700, 300, 700}},
       }) {
    EXPECT_EQ(PulledInside(row.place, kScreens), row.inside) << row.what;
  }
}

TEST(ScreenPlaceTest, AScreenThatIsGoneLeavesItsWindowsToTheNearest) {
  EXPECT_EQ(PulledInside({-900, 400, 300, 120}, kOneScreen), (ScreenPlace{0, 400, 300, 120}));
}

TEST(ScreenPlaceTest, StaysWithoutAScreen) {
  EXPECT_EQ(PulledInside({-900, 400, 300, 120}, {}), (ScreenPlace{-900, 400, 300, 120}));
}

TEST(ScreenPlaceTest, IsCentredOnItsOwnerInsideTheWorkArea) {
  constexpr ScreenPlace kArea = {-1'280, 200, 1'280, 984};
  struct Row {
    const char* what;
    ScreenPlace place;
    ScreenPlace around;
    ScreenPlace centred;
  };
  for (const Row& row : {
           Row{"in the middle", {0, 0, 300, 120}, {-900, 400, 400, 200}, {-850, 440, 300, 120}},
           Row{"on the area itself", {0, 0, 300, 120}, kArea, {-790, 632, 300, 120}},
           Row{"owner at the left edge",
               {0, 0, 300, 120},
               {-1'280, 400, 100, 200},
               {-1'280, 440, 300, 120}},
           Row{"owner at the lower right corner",
               {0, 0, 300, 120},
               {-50, 1'150, 100, 50},
               {-300, 1'064, 300, 120}},
           Row{"larger than the area",
               {0, 0, 1'400, 1'000},
               {-900, 400, 400, 200},
               {-1'280, 200, 1'400, 1'000}},
       }) {
    EXPECT_EQ(CentredOn(row.place, row.around, kArea), row.centred) << row.what;
  }
}

}  // namespace
}  // namespace tellurvane
