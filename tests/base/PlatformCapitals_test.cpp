#include <windows.h>

#include <gtest/gtest.h>

#include "base/LetterCase.h"

namespace tellurvane {
namespace {

TEST(PlatformCapitalsTest, EveryUnitIsRaisedAsThePlatformRaisesIt) {
  for (unsigned unit = 1; unit <= 0xFFFF; ++unit) {
    const auto small = static_cast<wchar_t>(unit);
    wchar_t expected = 0;
    ASSERT_EQ(LCMapStringW(LOCALE_USER_DEFAULT, LCMAP_UPPERCASE, &small, 1, &expected, 1), 1);
    ASSERT_EQ(Capital(small), expected) << unit;
  }
}

// Markers are compared in small letters, and only ASCII letters become ASCII letters.
TEST(PlatformCapitalsTest, NothingElseIsLoweredToAnAsciiLetter) {
  for (unsigned unit = 0x80; unit <= 0xFFFF; ++unit) {
    const auto large = static_cast<wchar_t>(unit);
    wchar_t lowered = 0;
    ASSERT_EQ(LCMapStringW(LOCALE_USER_DEFAULT, LCMAP_LOWERCASE, &large, 1, &lowered, 1), 1);
    ASSERT_GE(lowered, 0x80) << unit;
  }
}

}  // namespace
}  // namespace tellurvane
