#include "ui/Color.h"

#include <gtest/gtest.h>

namespace tellurvane {
namespace {

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
      {kBlack, kWhite, 100, 0x9B9B9B},
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

}  // namespace
}  // namespace tellurvane
