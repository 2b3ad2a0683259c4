#include "ui/ScreenPlace.h"

#include <gtest/gtest.h>

#include <ostream>

namespace tellurvane {

void PrintTo(const ScreenPlace& place, std::ostream* out) {
  *out << place.left << ", " << place.top << ", " << place.width << " x " << place.height;
}

namespace {

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
    EXPECT_EQ(PulledInside(row.place, 1'920, 1'080), row.inside) << row.what;
    EXPECT_EQ(PulledInside(row.inside, 1'920, 1'080), row.inside) << row.what << ", once more";
  }
}

}  // namespace
}  // namespace tellurvane
