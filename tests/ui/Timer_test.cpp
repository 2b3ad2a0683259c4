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
  EXPECT_FALSE(PumpUntil([&] { return ticks > seen; }, std::chrono::milliseconds(60)));
}

}  // namespace
}  // namespace tellurvane
