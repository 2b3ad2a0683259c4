#include "packaging/kit/Desktop.h"

#include <gtest/gtest.h>

namespace tellurvane {
namespace {

DWORD ForegroundLock() {
  DWORD milliseconds = 0;
  SystemParametersInfoW(SPI_GETFOREGROUNDLOCKTIMEOUT, 0, &milliseconds, 0);
  return milliseconds;
}

TEST(DesktopTest, LetsWindowsComeToTheFrontDuringItsLife) {
  const DWORD before = ForegroundLock();
  SystemParametersInfoW(SPI_SETFOREGROUNDLOCKTIMEOUT, 0, ULongToPtr(12'345), 0);
  {
    const Desktop desktop;
    EXPECT_EQ(ForegroundLock(), 0U);
  }
  EXPECT_EQ(ForegroundLock(), 12'345U);
  SystemParametersInfoW(SPI_SETFOREGROUNDLOCKTIMEOUT, 0, ULongToPtr(before), 0);
}

TEST(DesktopTest, RestoresTheColors) {
  const int index = COLOR_WINDOW;
  const COLORREF before = GetSysColor(index);
  const COLORREF other = before ^ RGB(1, 2, 3);
  {
    const Desktop desktop;
    SetSysColors(1, &index, &other);
    desktop.RestoreColors();
    EXPECT_EQ(GetSysColor(index), before);
    SetSysColors(1, &index, &other);
  }
  EXPECT_EQ(GetSysColor(index), before);
}

}  // namespace
}  // namespace tellurvane
