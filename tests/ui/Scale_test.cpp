#include "ui/Scale.h"

#include <gtest/gtest.h>

namespace tellurvane {
namespace {

TEST(ScaleTest, RoundsPixelsOf96DpiToTheNearestPixelOfTheScreen) {
  struct Row {
    int dpi;
    int pixels;
    int scaled;
  };
  for (const Row& row : {
           Row{96, 49, 49},
           Row{96, -1, -1},
           Row{96, 0, 0},
           Row{120, 28, 35},
           Row{120, 86, 108},  // 107.5
           Row{120, -1, -1},   // -1.25
           Row{144, 19, 29},   // 28.5
           Row{144, -1, -2},   // -1.5
           Row{168, 16, 28},
           Row{168, 5, 9},  // 8.75
           Row{192, 19, 38},
           Row{216, 86, 194},  // 193.5
           Row{288, 86, 258},
       }) {
    EXPECT_EQ(Scale{row.dpi}.Scaled(row.pixels), row.scaled) << row.pixels << " at " << row.dpi;
  }
}

TEST(ScaleTest, ConvertsTwipsWithExactFractionsAndTowardsZero) {
  struct Row {
    int dpi;
    int twips;
    int pixels;
  };
  for (const Row& row : {
           Row{96, 1'000, 66},
           Row{96, -1'000, -66},
           Row{120, 1'000, 83},
           Row{144, 5'320, 532},
           Row{168, 5'320, 620},  // 8.57 twips a pixel; by whole ones it would be 665
           Row{168, 1'440, 168},
           Row{192, 5'320, 709},  // 7.5
           Row{192, 1'440, 192},
           Row{216, 1'440, 216},  // 6.67
           Row{216, 5'000, 750},
       }) {
    EXPECT_EQ(Scale{row.dpi}.PixelsFromTwips(row.twips), row.pixels)
        << row.twips << " at " << row.dpi;
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
