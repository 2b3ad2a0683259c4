#include "ui/ScreenPlace.h"

#include <gtest/gtest.h>

#include <ostream>

namespace tellurvane {

void PrintTo(const ScreenPlace& place, std::ostream* out) {
  *out << place.left << ", " << place.top << ", " << place.width << " x " << place.height;
}

namespace {

struct PlaceCase {
  const char* what;
  ScreenPlace place;
  ScreenPlace inside;
};

constexpr ScreenPlace kOneScreen[] = {{0, 0, 1'920, 1'080}};

TEST(ScreenPlaceTest, IsPulledInsideEachEdgeAndKeepsItsSize) {
  for (const PlaceCase& row : {
           PlaceCase{"left of a screen that is gone", {-900, 400, 300, 120}, {0, 400, 300, 120}},
           PlaceCase{"inside", {100, 200, 300, 120}, {100, 200, 300, 120}},
           PlaceCase{"in the left upper corner", {0, 0, 300, 120}, {0, 0, 300, 120}},
           PlaceCase{"in the right lower corner", {1'620, 960, 300, 120}, {1'620, 960, 300, 120}},
           PlaceCase{"a pixel beyond the left edge", {-1, 200, 300, 120}, {0, 200, 300, 120}},
           PlaceCase{"beyond the upper edge", {100, -40, 300, 120}, {100, 0, 300, 120}},
           PlaceCase{
               "a pixel beyond the right edge", {1'621, 200, 300, 120}, {1'620, 200, 300, 120}},
           PlaceCase{
               "wholly beyond the right edge", {5'000, 200, 300, 120}, {1'620, 200, 300, 120}},
           PlaceCase{"beyond the lower edge", {100, 1'000, 300, 120}, {100, 960, 300, 120}},
           PlaceCase{"beyond two edges", {-5, 2'000, 300, 120}, {0, 960, 300, 120}},
           PlaceCase{"as large as the screen", {7, -7, 1'920, 1'080}, {0, 0, 1'920, 1'080}},
           PlaceCase{"wider than the screen", {10, 10, 2'000, 120}, {-80, 10, 2'000, 120}},
           PlaceCase{"higher than the screen", {10, 10, 300, 1'100}, {10, -20, 300, 1'100}},
       }) {
    EXPECT_EQ(PulledInside(row.place, kOneScreen), row.inside) << row.what;
    EXPECT_EQ(PulledInside(row.inside, kOneScreen), row.inside) << row.what << ", once more";
    EXPECT_EQ(PulledInside(row.place, {}), row.place) << row.what << ", without a screen";
  }
}

// Two screens beside each other, the left one beginning below 0 and lower down, and a smaller one
// above the right one.
constexpr ScreenPlace kScreens[] = {
    {0, 0, 1'920, 1'080}, {-1'280, 200, 1'280, 1'024}, {400, -600, 800, 600}};

TEST(ScreenPlaceTest, StaysOnTheScreenThatItIsNearestTo) {
  for (const PlaceCase& row : {
           PlaceCase{"on the left screen", {-900, 400, 300, 120}, {-900, 400, 300, 120}},
           PlaceCase{"on the upper screen", {500, -500, 300, 120}, {500, -500, 300, 120}},
           PlaceCase{"mostly on the left one", {-200, 400, 300, 120}, {-300, 400, 300, 120}},
           PlaceCase{"mostly on the main one", {-100, 400, 300, 120}, {0, 400, 300, 120}},
           PlaceCase{"half on each", {-150, 400, 300, 120}, {0, 400, 300, 120}},
           PlaceCase{
               "beside the left one's upper edge", {-900, 0, 300, 120}, {-900, 200, 300, 120}},
           PlaceCase{"left of all", {-3'000, 1'000, 300, 120}, {-1'280, 1'000, 300, 120}},
           PlaceCase{"right of all", {4'000, 400, 300, 120}, {1'620, 400, 300, 120}},
           PlaceCase{"above all", {700, -5'000, 300, 120}, {700, -600, 300, 120}},
           PlaceCase{"right of the upper one", {1'300, -500, 300, 120}, {900, -500, 300, 120}},
           PlaceCase{"below the left one", {-500, 1'500, 300, 120}, {-500, 1'104, 300, 120}},
           PlaceCase{"higher than the upper one", {500, -900, 300, 700}, {500, -700, 300, 700}},
       }) {
    EXPECT_EQ(PulledInside(row.place, kScreens), row.inside) << row.what;
  }
}

TEST(ScreenPlaceTest, IsCentredOnItsOwnerInsideTheWorkArea) {
  constexpr ScreenPlace kArea = {-1'280, 200, 1'280, 984};
  struct Centring {
    const char* what;
    ScreenPlace place;
    ScreenPlace around;
    ScreenPlace centred;
  };
  constexpr ScreenPlace kPlace = {0, 0, 300, 120};
  constexpr ScreenPlace kOwner = {-900, 400, 400, 200};
  for (const Centring& row : {
           Centring{"in the middle", kPlace, kOwner, {-850, 440, 300, 120}},
           Centring{"on the area itself", kPlace, kArea, {-790, 632, 300, 120}},
           Centring{"left edge", kPlace, {-1'280, 400, 100, 200}, {-1'280, 440, 300, 120}},
           Centring{"lower right corner", kPlace, {-50, 1'150, 100, 50}, {-300, 1'064, 300, 120}},
           Centring{"too large", {0, 0, 1'400, 1'000}, kOwner, {-1'280, 200, 1'400, 1'000}},
       }) {
    EXPECT_EQ(CentredOn(row.place, row.around, kArea), row.centred) << row.what;
  }
}

}  // namespace
}  // namespace tellurvane
