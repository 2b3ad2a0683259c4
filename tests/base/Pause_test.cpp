#include "base/Pause.h"

#include <windows.h>

#include <gtest/gtest.h>

namespace tellurvane {
namespace {

TEST(SleepForTest, LetsNoLessThanTheTimePass) {
  const ULONGLONG start = GetTickCount64();
  SleepFor(50);
  // The clock that tells advances by up to 16 ms at a time. However slow the machine is, it is not
  // less.
  EXPECT_GE(GetTickCount64() - start, 30U);
}

TEST(SleepForTest, HandlesNoMessageMeanwhile) {
  ASSERT_TRUE(PostThreadMessageW(GetCurrentThreadId(), WM_APP, 7, 0));
  SleepFor(1);
  MSG message = {};
  ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_APP, WM_APP, PM_REMOVE));
  EXPECT_EQ(message.wParam, 7U);
}

}  // namespace
}  // namespace tellurvane
