#include "ui/Strip.h"

#include <gtest/gtest.h>

namespace tellurvane {
namespace {

TEST(StripTest, IsTheLargestThatFitsElseTheSmallest) {
  struct Case {
    int wanted;
    int size;
  };
  for (const Case& row : {Case{3, 16}, Case{16, 16}, Case{23, 16}, Case{24, 24}, Case{31, 24},
                          Case{32, 32}, Case{99, 32}}) {
    const Strip strip = LoadStrip(7, 16, row.wanted);
    BITMAP picture = {};
    GetObjectW(strip.bitmap.Get(), sizeof(picture), &picture);
    EXPECT_EQ(strip.size, row.size) << row.wanted;
    EXPECT_EQ(picture.bmHeight, row.size) << row.wanted;
  }
}

}  // namespace
}  // namespace tellurvane
