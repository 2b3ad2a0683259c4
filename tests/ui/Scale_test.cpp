#include "ui/Scale.h"

#include <gtest/gtest.h>

namespace tellurvane {
namespace {

struct ScaledLength {
  int dpi;
  int length;
  int pixels;
};

TEST(ScaleTest, RoundsPixelsOf96DpiToTheNearestPixelOfTheScreen) {
  for (const ScaledLength& row :
       {ScaledLength{96, 49, 49}, ScaledLength{96, -1, -1}, ScaledLength{96, 0, 0},
        ScaledLength{120, 28, 35}, ScaledLength{120, 86, 108}, ScaledLength{120, -1, -1},
        ScaledLength{144, 19, 29}, ScaledLength{144, -1, -2}, ScaledLength{168, 16, 28},
        ScaledLength{168, 5, 9}, ScaledLength{192, 19, 38}, ScaledLength{216, 86, 194},
        ScaledLength{288, 86, 258}}) {
    EXPECT_EQ(Scale{row.dpi}.Scaled(row.length), row.pixels) << row.length << " at " << row.dpi;
  }
}

TEST(ScaleTest, ConvertsTwipsWithExactFractionsAndTowardsZero) {
  // A pixel has 8.57 twips at 168 dpi; by whole twips 5,320 would be 665 pixels.
  for (const ScaledLength& row :
       {ScaledLength{96, 1'000, 66}, ScaledLength{96, -1'000, -66}, ScaledLength{120, 1'000, 83},
        ScaledLength{144, 5'320, 532}, ScaledLength{168, 5'320, 620}, ScaledLength{168, 1'440, 168},
        ScaledLength{192, 5'320, 709}, ScaledLength{192, 1'440, 192}, ScaledLength{216, 1'440, 216},
        ScaledLength{216, 5'000, 750}}) {
    EXPECT_EQ(Scale{row.dpi}.PixelsFromTwips(row.length), row.pixels)
        << row.length << " at " << row.dpi;
  }
}

TEST(ScaleTest, PixelsComeBackFromTwipsAtEveryDensity) {
  for (int dpi = 72; dpi <= 480; ++dpi) {
    for (const int pixels : {-3'000, -331, -7, -1, 0, 1, 2, 7, 100, 331, 1'920, 7'680}) {
      const Scale scale = {dpi};
      ASSERT_EQ(scale.PixelsFromTwips(scale.TwipsFromPixels(pixels)), pixels) << dpi;
    }
  }
  EXPECT_EQ(Scale{96}.TwipsFromPixels(-2), -30);
  EXPECT_EQ(Scale{168}.TwipsFromPixels(168), 1'440);
}

}  // namespace
}  // namespace tellurvane
