#include "ui/Color.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tellurvane {
namespace {

TEST(ColorTest, HasRedInTheLowestByte) {
  EXPECT_EQ(Rgb(0x12, 0x34, 0x56), 0x563412U);
  EXPECT_EQ(Rgb(255, 255, 255), kWhite);
  EXPECT_EQ(SystemColor(15), 0x8000000FU);
}

TEST(ColorTest, BlendsEachChannelByItsOpacity) {
  struct Case {
    Color over, under;
    int opacity;
    Color expected;
  };
  const Case rows[] = {
      {Rgb(10, 20, 30), Rgb(200, 100, 50), 0, Rgb(200, 100, 50)},
      {Rgb(10, 20, 30), Rgb(200, 100, 50), 255, Rgb(10, 20, 30)},
      // The slider's bar: (255 * 105 + 206 * 150) / 255 = 226.2, 154 gives 195.6, 0 gives 105.
      {Rgb(206, 154, 0), kWhite, 150, Rgb(226, 196, 105)},
      // The box in its frame: 255 * 155 / 255.
      {kBlack, kWhite, 100, Rgb(155, 155, 155)},
      {kWhite, kBlack, 1, Rgb(1, 1, 1)},
      // Only the three channels count.
      {0xFF112233, 0xFF445566, 255, 0x112233},
      {0xFF112233, 0xFF445566, 0, 0x445566},
      // Beyond full opacity: (255 * -77 + 155 * 332) / 255 = 124.8, and 130.2; kept in the channel.
      {Rgb(155, 0, 0), Rgb(255, 0, 0), 332, Rgb(125, 0, 0)},
      {Rgb(0, 100, 0), kBlack, 332, Rgb(0, 130, 0)},
      {Rgb(200, 0, 0), Rgb(0, 0, 255), 400, Rgb(255, 0, 0)},
  };
  for (const Case& row : rows) {
    EXPECT_EQ(Blend(row.over, row.under, row.opacity), row.expected) << row.opacity;
  }
}

TEST(ColorTest, RoundsToTheNearest) {
  for (int upper = 0; upper <= 255; ++upper) {
    for (int lower = 0; lower <= 255; lower += 5) {
      for (int opacity = 0; opacity <= 255; ++opacity) {
        const double exact =
            (lower * (255.0 - opacity) + upper * static_cast<double>(opacity)) / 255;
        const auto expected = static_cast<Color>(std::nearbyint(exact));
        const Color over = static_cast<Color>(upper) << 8;
        const Color under = static_cast<Color>(lower) << 8;
        ASSERT_EQ(Blend(over, under, opacity), expected << 8)
            << upper << " over " << lower << " at " << opacity;
      }
    }
  }
}

}  // namespace
}  // namespace tellurvane
