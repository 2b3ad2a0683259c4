#include "ui/Timer.h"

#include <gtest/gtest.h>

#include "tests/support/WindowTestSupport.h"

namespace tellurvane {
namespace {

TEST(TimerTest, TicksWhileEnabledAndNeverAfterwards) {
  int ticks = 0;
  Timer timer;
  timer.Tick = [&] { ++ticks; };
  timer.Interval(10);
  EXPECT_FALSE(timer.Enabled());
  timer.Enabled(true);
  EXPECT_TRUE(timer.Enabled());
  EXPECT_TRUE(PumpUntil([&] { return ticks >= 3; }));
  timer.Enabled(false);
  const int seen = ticks;
  int others = 0;
  Timer other;
  other.Tick = [&] { ++others; };
  other.Interval(10);
  other.Enabled(true);
  EXPECT_TRUE(PumpUntil([&] { return others >= 5; }));
  EXPECT_EQ(ticks, seen);
}

TEST(TimerTest, MayBeDestroyedByItsOwnTick) {
  bool ticked = false;
  auto timer = std::make_unique<Timer>();
  timer->Tick = [&] {
    timer.reset();
    ticked = true;
  };
  timer->Interval(10);
  timer->Enabled(true);
  EXPECT_TRUE(PumpUntil([&] { return ticked; }));
}

TEST(TimerTest, LeavesNothingBehind) {
  EXPECT_EQ(LeakedBy([] {
              Timer timer;
              timer.Enabled(true);
            }),
            ResourceCounts());
}

}  // namespace
}  // namespace tellurvane
