#include "base/Pause.h"

#include <windows.h>

#include <gtest/gtest.h>

namespace tellurvane {
namespace {

TEST(SleepForTest, LetsTheTimePass) {
  const ULONGLONG start = GetTickCount64();
  SleepFor(50);
  // The clock that tells advances by up to 16 ms at a time.
  EXPECT_GE(GetTickCount64() - start, 30U);
}

}  // namespace
}  // namespace tellurvane
